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

/// The pane's own connection to the session bus or the system bus. It shares nothing with the host's
/// connection. A bus that accepts and does not reply blocks the caller for one call's timeout in all. A bus
/// that is absent is tried again at growing intervals for about a minute, then at each reopenIfLost(). Main
/// thread only.
class BusConnection : public QObject {
    Q_OBJECT
public:
    static inline const QString AnyOwner = QStringLiteral("own-connection");

    /// `owner` begins the connection's name, which the host's connections must not have.
    explicit BusConnection(QDBusConnection::BusType type, const QString &owner = AnyOwner);
    /// Leaves the connection open for the next object of its type. Qt would close it in another thread while
    /// replies may still arrive.
    ~BusConnection() override;

    /// The connection, opened on first use. Not connected while there is no bus.
    QDBusConnection connection();
    [[nodiscard]] bool isOpen() const { return mOpen && mConnection.isConnected(); }
    /// Whether the bus is gone and lost() was not emitted yet.
    [[nodiscard]] bool isLostUnreported() const { return mOpen && !mConnection.isConnected(); }
    /// Emits lost() for an unreported loss, then tries once to open the bus if it is not open.
    void reopenIfLost();
    /// Opens without blocking; opened() is emitted once the bus has replied.
    void openInBackground();
    /// Unique name of the owner of `busName`; empty without an owner or a reply. After one timeout the bus is
    /// not asked again until it has replied.
    QString ownerOf(const QString &busName);

Q_SIGNALS:
    /// The connection is open and has no subscriptions yet.
    void opened();
    /// Emitted after opened() if the bus had been lost: broadcasts sent meanwhile were missed.
    void foundAgain();
    void lost();
    /// Emitted before each broadcast is delivered, so that a death that precedes it is reported first.
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
    /// A pending call without a timeout to a bus that hangs; its reply shows that the bus works again.
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
