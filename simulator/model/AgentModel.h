#pragma once

#include "simulator/model/AgentPreferences.h"
#include "simulator/model/AudioLevels.h"
#include "simulator/model/Behaviour.h"
#include "simulator/model/CameraRegistry.h"
#include "simulator/model/Discovery.h"
#include "simulator/model/StreamingSequence.h"
#include "simulator/model/UsbCable.h"

namespace simulator {

/// The agent's cameras and settings, and the rules that change them.
class AgentModel final : public QObject {
    Q_OBJECT
public:
    AgentModel(BusNotifier &notifier, AgentPreferences &preferences, Behaviour behaviour);

    CameraRegistry &registry() { return mRegistry; }
    UsbCable &cable() { return mCable; }
    AudioLevels &levels() { return mLevels; }
    AgentPreferences &preferences() { return mPreferences; }
    Behaviour &behaviour() { return mBehaviour; }
    [[nodiscard]] bool isStreaming() const;

    /// Makes a listed camera the preferred one and starts it; any other address is ignored.
    void choose(const QString &address);
    /// Removes the camera at a row of the sorted list, if the row exists. Unless it is also removed
    /// from the favourites, it keeps its name and the next search finds it.
    void removeRow(int row, bool fromFavorites);
    /// Clears the preferred camera if the record describes it and it was removed from the list.
    void dropIfCurrent(const std::optional<CameraRecord> &record);
    /// Whether the name has 1 to 63 characters after trimming and no control character.
    static bool isValidName(const QString &name);
    /// Stores the name. Ignores invalid names and unknown addresses.
    void rename(const QString &address, const QString &name);
    /// Ignored cameras are not listed.
    void ignore(const QVariantMap &record, bool ignored);

    void discover();
    void switchService(bool on);
    void switchBluetooth(bool on);
    /// Gives the preferred camera a status, as the agent's own components do.
    void report(int status);

private:
    void callPreferred();
    void pluggedIn(const QString &address);

    BusNotifier &mNotifier;
    AgentPreferences &mPreferences;
    Behaviour mBehaviour;
    CameraRegistry mRegistry;
    StreamingSequence mSequence;
    Discovery mDiscovery;
    UsbCable mCable;
    AudioLevels mLevels;
    bool mBluetooth = true;
};

} // namespace simulator
