#pragma once

#include "simulator/model/AgentPreferences.h"
#include "simulator/model/AudioLevels.h"
#include "simulator/model/Behaviour.h"
#include "simulator/model/CameraRegistry.h"
#include "simulator/model/Discovery.h"
#include "simulator/model/ErrorCodes.h"
#include "simulator/model/StreamingSequence.h"
#include "simulator/model/UsbCable.h"

namespace simulator {

/// The agent: its cameras and settings, and the rules by which it changes them.
class AgentModel final : public QObject {
    Q_OBJECT
public:
    AgentModel(Notifier &notifier, AgentPreferences &preferences, const Behaviour &behaviour,
               const Timing &timing);

    CameraRegistry &roster() { return mRoster; }
    UsbCable &cable() { return mCable; }
    AudioLevels &levels() { return mLevels; }
    AgentPreferences &preferences() { return mPreferences; }
    Behaviour &behaviour() { return mBehaviour; }
    WantedErrors &errors() { return mErrors; }
    [[nodiscard]] bool isStreaming() const;

    /// Makes a listed camera the preferred one and starts it; any other address is ignored.
    void choose(const QString &address);
    /// Removes the camera at a row of the sorted list, if there is one. One that stays a favourite keeps its
    /// name and is found again by the next search.
    void removeRow(int row, bool fromFavorites);
    /// Lets the preferred camera go if it is the one described and no longer listed.
    void dropIfCurrent(const QVariantMap &record);
    /// 1 to 63 characters between the blanks around them, none of them a control character.
    static bool isValidName(const QString &name);
    /// Stores the name; a bad name or an unknown address changes nothing.
    void rename(const QString &address, const QString &name);
    /// An ignored camera is not listed.
    void ignore(const QVariantMap &record, bool ignored);

    void discover();
    void switchService(bool on);
    void switchBluetooth(bool on);
    /// What a part of the agent says of the preferred camera.
    void report(int status);

private:
    void callPreferred();
    void pluggedIn(const QString &address);

    Notifier &mNotifier;
    AgentPreferences &mPreferences;
    Behaviour mBehaviour;
    WantedErrors mErrors;
    CameraRegistry mRoster;
    StreamingSequence mCourse;
    Discovery mDiscovery;
    UsbCable mCable;
    AudioLevels mLevels;
    bool mBluetooth = true;
};

} // namespace simulator
