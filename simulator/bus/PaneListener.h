#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>

namespace simulator {

class AgentModel;
class FaultInjector;
class Recorder;

/// Receives the pane's notifications, records them and changes the model accordingly.
class PaneListener final : public QObject {
    Q_OBJECT
public:
    PaneListener(AgentModel &model, Recorder &recorder, FaultInjector &faults, const QDBusConnection &bus);

    /// Subscribes to the notifications. Returns false if the bus refuses the subscription.
    bool listen();

private Q_SLOTS:
    void heard(const QDBusMessage &message);

private:
    void act(const QString &name, const QVariantMap &userInfo);

    AgentModel &mModel;
    Recorder &mRecorder;
    FaultInjector &mFaults;
    QDBusConnection mBus;
};

} // namespace simulator
