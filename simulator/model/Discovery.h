#pragma once

#include "simulator/model/Behaviour.h"
#include "simulator/model/Camera.h"

#include <QTimer>
#include <QVector>

namespace simulator {

class AgentPreferences;
class CameraRegistry;
class BusNotifier;

/// A search for cameras, which finds one camera.
class Discovery final : public QObject {
    Q_OBJECT
public:
    Discovery(CameraRegistry &registry, AgentPreferences &preferences, BusNotifier &notifier,
              const Behaviour &behaviour);

    /// Does nothing while a search runs.
    void start();
    /// Ends a running search before its time.
    void stop();
    /// The next search finds this camera first.
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
