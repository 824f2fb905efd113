#pragma once

#include "simulator/model/Behaviour.h"
#include "simulator/model/Camera.h"

#include <QTimer>
#include <QVector>

namespace simulator {

class AgentPreferences;
class CameraRegistry;
class BusNotifier;

/// A search for cameras. It lasts some seconds and finds one camera.
class Discovery final : public QObject {
    Q_OBJECT
public:
    Discovery(CameraRegistry &registry, AgentPreferences &preferences, BusNotifier &notifier,
              const Behaviour &behaviour);

    /// Starts a search. Does nothing while a search is running.
    void start();
    /// Ends a running search early.
    void stop();
    /// Adds a camera to those that searches find. Without such a camera, a search invents a new one.
    void leaveToBeFound(const Camera &camera);

private:
    void find();
    [[nodiscard]] QString nextNewAddress() const;

    CameraRegistry &mRegistry;
    AgentPreferences &mPreferences;
    BusNotifier &mNotifier;
    const Behaviour &mBehaviour;
    QTimer mFinding;
    QTimer mSearching;
    bool mIsSearching = false;
    QVector<Camera> mToBeFound;
};

} // namespace simulator
