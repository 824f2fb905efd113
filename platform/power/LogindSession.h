#pragma once

#include "platform/bus/NotificationCenter.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class QDBusMessage;
class QDBusServiceWatcher;

namespace platform {

/// The workspace's notification centre: tells when the user's own session gets or loses the screen, as
/// logind's property Active says, and only on a change. Asks nothing before somebody observes; without
/// logind nothing is told. One that comes, or comes back, is asked then.
class LogindSession final : public QObject, public NotificationCenter {
    Q_OBJECT
public:
    LogindSession();
    ~LogindSession() override;

    void addObserver(const void *observer, const QString &name, NotificationHandler handler) override;
    void removeObserver(const void *observer, const QString &name) override;
    void postNotificationName(const QString &name, const void *object, const QVariantMap &userInfo) override;
    /// Whether the session has the screen; nothing before logind has answered or told of a change.
    [[nodiscard]] std::optional<bool> isActive() const { return mActive; }

private Q_SLOTS:
    void propertiesChanged(const QString &interface, const QVariantMap &changed, const QStringList &invalid);

private:
    using Answer = std::function<void(const QDBusMessage &)>;
    void start();
    void findSession();
    void findSessionOfProcess();
    void findDisplayOfUser();
    void watchSession(const QString &path);
    void unwatchSession();
    void readActive();
    void setActive(bool active);
    void ask(const QDBusMessage &question, Answer answer);

    LocalNotificationCenter mObservers;
    QDBusConnection mBus;
    std::unique_ptr<QDBusServiceWatcher> mWatcher;
    QString mSessionPath;
    std::optional<bool> mActive;
    bool mStarted = false;
};

} // namespace platform
