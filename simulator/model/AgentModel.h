#pragma once

#include "simulator/model/AgentPreferences.h"
#include "simulator/model/AudioLevels.h"
#include "simulator/model/Behaviour.h"
#include "simulator/model/CameraRegistry.h"
#include "simulator/model/Discovery.h"
#include "simulator/model/StreamingSequence.h"
#include "simulator/model/UsbCable.h"

namespace simulator {

/// The agent's cameras and settings, with the rules for changing them.
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

    /// Makes a listed camera the preferred one and starts its stream. Ignores the address of a camera that is
    /// not listed.
    void choose(const QString &address);
    /// Removes the camera in a row of the sorted list. Ignores a row that does not exist. If `fromFavorites`
    /// is false, the camera keeps its name and the next search finds it again.
    void removeRow(int row, bool fromFavorites);
    /// If the camera that was removed last is still the preferred one, clears the preferred camera. Does
    /// nothing if `record` has another camera ID or if the camera is listed again.
    void dropIfCurrent(const std::optional<CameraRecord> &record);
    /// Returns whether the trimmed name has 1 to 63 characters and contains no control character.
    static bool isValidName(const QString &name);
    /// Stores the user's name for a camera. Ignores an invalid name and an unknown address.
    void rename(const QString &address, const QString &name);
    /// Hides the camera with the ID of `record` from the list, or shows it again.
    void ignore(const QVariantMap &record, bool ignored);

    void discover();
    void switchService(bool on);
    void switchBluetooth(bool on);
    /// Sets the status of the started camera, or that of the preferred camera if none is started.
    /// streamingStarted() and the other operations that report a status call this function.
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
