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

/// The pane's own connection to the session bus or the system bus, separate from the host's. Main thread
/// only. A bus that accepts the socket but does not reply blocks the caller once, for one CallTimeout. If the
/// bus is absent, a timer tries to open it at growing intervals for about a minute. After that,
/// reopenIfLost() and openInBackground() try again.
class BusConnection : public QObject {
    Q_OBJECT
public:
    static inline const QString AnyOwner = QStringLiteral("own-connection");

    /// `owner` is the prefix of the connection's name in Qt. No connection of the host may have it.
    explicit BusConnection(QDBusConnection::BusType type, const QString &owner = AnyOwner);
    /// Leaves the connection open for the next object with the same name. Qt would close it in another
    /// thread, while replies may still arrive.
    ~BusConnection() override;

    /// Returns the connection and opens it on first use. It is not connected while there is no bus.
    QDBusConnection connection();
    [[nodiscard]] bool isOpen() const { return mOpen && mConnection.isConnected(); }
    /// Whether the bus is gone and lost() has not been emitted yet.
    [[nodiscard]] bool isLostUnreported() const { return mOpen && !mConnection.isConnected(); }
    /// Emits lost() if a loss has not been reported yet. Then tries once to open the bus if it is not open.
    void reopenIfLost();
    /// Opens the bus without blocking. Emits opened() when the bus has replied.
    void openInBackground();
    /// Returns the unique name of the owner of `busName`; empty if there is no owner or no reply. After a
    /// timeout it returns empty at once, until the bus replies again.
    QString ownerOf(const QString &busName);

Q_SIGNALS:
    /// Emitted when the connection is open. It has no subscriptions yet, so receivers must subscribe now.
    void opened();
    /// Emitted after opened() if the bus was lost or absent before. Earlier broadcasts may have been missed.
    void foundAgain();
    void lost();
    /// Emitted before observers receive a broadcast. A connection whose death is not reported yet then
    /// reports it, so that observers learn of the death before the broadcast.
    void aboutToDeliver();

private Q_SLOTS:
    void disconnected();

private:
    enum class Opening { Blocking, NonBlocking };
    void tryToOpen(Opening opening);
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
    /// A call without a timeout, sent after another call timed out. Its reply shows that the bus works again.
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
