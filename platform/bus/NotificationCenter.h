#pragma once

#include <QString>
#include <QVariantMap>

#include <functional>
#include <vector>

namespace platform {

/// A posted notification: its name, its object (compared by identity, may be null) and its user info.
struct Notification {
    QString name;
    const void *object = nullptr;
    QVariantMap userInfo;
};

using NotificationHandler = std::function<void(const Notification &)>;

/// Delivers posts to observers. Main thread only. The handlers of one name run in order of registration.
class NotificationCenter {
public:
    virtual ~NotificationCenter() = default;

    /// Calls `handler` for every later post of `name`. `observer` identifies the registration for
    /// removeObserver().
    virtual void addObserver(const void *observer, const QString &name, NotificationHandler handler) = 0;
    virtual void removeObserver(const void *observer, const QString &name) = 0;
    virtual void postNotificationName(const QString &name, const void *object = nullptr,
                                      const QVariantMap &userInfo = {}) = 0;
};

/// A notification center inside the process. postNotificationName() returns after every handler has run.
class LocalNotificationCenter final : public NotificationCenter {
public:
    void addObserver(const void *observer, const QString &name, NotificationHandler handler) override;
    void removeObserver(const void *observer, const QString &name) override;
    void postNotificationName(const QString &name, const void *object = nullptr,
                              const QVariantMap &userInfo = {}) override;
    [[nodiscard]] bool hasObservers(const QString &name) const;

private:
    struct Registration {
        const void *observer;
        QString name;
        NotificationHandler handler;
    };
    std::vector<Registration> mRegistrations;
};

} // namespace platform
