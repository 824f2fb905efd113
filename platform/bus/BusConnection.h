#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

class QSocketNotifier;

namespace platform {

class BusHandshake;

/// The pane's own connection to the session bus or the system bus: neither is the connection that the host
/// shares used, nor is its loss felt. A bus that accepts and keeps silent holds the caller up for the time of
/// one call in all. A bus that is not there is looked for at growing intervals for about a minute; after that
/// at the next reopenIfLost(). Main thread only.
class BusConnection : public QObject {
    Q_OBJECT
public:
    static inline const QString AnyOwner = QStringLiteral("own-connection");

    /// `owner` begins the connection's name, which the host's connections must not have.
    explicit BusConnection(QDBusConnection::BusType type, const QString &owner = AnyOwner);
    /// Leaves the connection open for the next object of its type: Qt would close it in a thread of its own,
    /// with replies still on their way.
    ~BusConnection() override;

    /// The connection, opened on first use; a dead one while there is no bus.
    QDBusConnection connection();
    [[nodiscard]] bool isOpen() const { return mOpen && mConnection.isConnected(); }
    /// Whether the bus has gone and lost() has not been emitted yet.
    [[nodiscard]] bool isLostUnreported() const { return mOpen && !mConnection.isConnected(); }
    /// Emits lost() for a loss not yet reported, then tries to reach a bus that was lost or never there.
    void reopenIfLost();
    /// Opens without ever waiting: opened() follows when the bus has answered.
    void openInBackground();
    /// The unique name of the owner of `busName`; empty when there is none or the bus does not reply. A bus
    /// that has let one question time out is not waited for again before it has replied.
    QString ownerOf(const QString &busName);

Q_SIGNALS:
    /// A connection is there, without any subscriptions yet.
    void opened();
    /// Follows opened() when the bus had been away: what was broadcast meanwhile has been missed.
    void foundAgain();
    void lost();
    /// A broadcast is about to be delivered: report first what ended before it was sent.
    void aboutToDeliver();

private Q_SLOTS:
    void disconnected();

private:
    enum class Patience { Wait, LookOnly };
    void tryToOpen(Patience patience);
    void connectToBus();
    void leaveBus();
    void listenForAnswer();
    void stopListening();
    void searchOn();
    void endSearch();
    void reportLoss();
    [[nodiscard]] bool isHung() const { return mSignOfLife && !mSignOfLife->isFinished(); }

    const QDBusConnection::BusType mType;
    const QString mName;
    QDBusConnection mConnection;
    bool mOpen = false;
    bool mTried = false;
    bool mWasAway = false;
    std::shared_ptr<BusHandshake> mHandshake;
    QSocketNotifier *mListener = nullptr;
    QTimer mNextTry;
    std::chrono::milliseconds mInterval;
    /// A question without a time limit, asked of a bus that hangs.
    std::optional<QDBusPendingCall> mSignOfLife;
};

class SessionBus final : public BusConnection {
public:
    explicit SessionBus(const QString &owner = AnyOwner)
        : BusConnection(QDBusConnection::SessionBus, owner)
    {
    }
};

class SystemBus final : public BusConnection {
public:
    explicit SystemBus(const QString &owner = AnyOwner)
        : BusConnection(QDBusConnection::SystemBus, owner)
    {
    }
};

} // namespace platform
