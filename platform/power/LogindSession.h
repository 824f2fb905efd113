#pragma once

#include "platform/bus/NotificationCenter.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class QDBusMessage;
class QDBusServiceWatcher;

namespace platform {

class BusConnection;

/// The workspace's notification center. It posts a notification when logind's property Active changes: the
/// user's session then gains or loses the screen. It does nothing until the first observer is added. It then
/// opens `bus` in the background, and also uses a bus or a logind that appears later.
class LogindSession final : public QObject, public NotificationCenter {
    Q_OBJECT
public:
    explicit LogindSession(std::shared_ptr<BusConnection> bus);
    ~LogindSession() override;

    void addObserver(const void *observer, const QString &name, NotificationHandler handler) override;
    void removeObserver(const void *observer, const QString &name) override;
    void postNotificationName(const QString &name, const void *object, const QVariantMap &userInfo) override;
    /// Whether the session is active; empty before logind's first reply or signal.
    [[nodiscard]] std::optional<bool> isActive() const { return mActive; }

private Q_SLOTS:
    void propertiesChanged(const QString &interface, const QVariantMap &changed, const QStringList &invalid);

private:
    using Answer = std::function<void(const QDBusMessage &)>;
    void start();
    void subscribe();
    void findSession();
    void findSessionOfProcess();
    void findDisplayOfUser();
    void watchSession(const QString &path);
    void unwatchSession();
    void readActive();
    void setActive(bool active);
    void ask(const QDBusMessage &question, Answer answer);

    LocalNotificationCenter mObservers;
    std::shared_ptr<BusConnection> mBus;
    std::unique_ptr<QDBusServiceWatcher> mWatcher;
    QString mSessionPath;
    std::optional<bool> mActive;
    bool mStarted = false;
};

} // namespace platform
