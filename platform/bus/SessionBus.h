#pragma once

#include <QDBusConnection>
#include <QObject>

#include <chrono>

namespace platform {

/// The pane's own connection to the session bus: opened by a name of its own on first use, so that neither
/// the connection that the host shares is used nor its loss is felt. Main thread only.
class SessionBus : public QObject {
    Q_OBJECT
public:
    SessionBus();
    ~SessionBus() override;

    /// The connection; a dead one when there is no bus or it was lost.
    QDBusConnection connection();
    /// Tries once more to reach a bus that was lost or was never there.
    void reopenIfLost();
    /// The unique name of the owner of `busName`, empty when nobody owns it or the bus does not answer.
    QString ownerOf(const QString &busName);

Q_SIGNALS:
    /// A connection is there, without any subscriptions yet.
    void opened();
    void lost();

private Q_SLOTS:
    void disconnected();

private:
    void open();
    void close();
    void reportLoss();

    QString mName;
    QDBusConnection mConnection;
    bool mOpen = false;
    bool mTried = false;
    std::chrono::milliseconds mPatience;
};

} // namespace platform
