#pragma once

#include "simulator/model/Camera.h"
#include "simulator/model/Timing.h"

#include <QTimer>
#include <QVector>

namespace simulator {

class AgentPreferences;
class CameraRegistry;
class Notifier;

/// A search for cameras: it is announced, finds one camera and ends.
class Discovery final : public QObject {
    Q_OBJECT
public:
    Discovery(CameraRegistry &roster, AgentPreferences &preferences, Notifier &notifier, const Timing &timing);

    /// Does nothing while a search runs.
    void start();
    /// Ends a running search before its time.
    void stop();
    /// This camera is out there: the next search finds it before any other.
    void leaveToBeFound(const Camera &camera);

private:
    void find();
    [[nodiscard]] QString nextNewAddress() const;

    CameraRegistry &mRoster;
    AgentPreferences &mPreferences;
    Notifier &mNotifier;
    Timing mTiming;
    QTimer mFinding;
    QTimer mSearching;
    bool mIsSearching = false;
    QVector<Camera> mToBeFound;
};

} // namespace simulator
