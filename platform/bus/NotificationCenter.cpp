#include "platform/bus/NotificationCenter.h"

#include <algorithm>

namespace platform {

void LocalNotificationCenter::addObserver(const void *observer, const QString &name,
                                          NotificationHandler handler)
{
    mRegistrations.push_back({observer, name, std::move(handler)});
}

void LocalNotificationCenter::removeObserver(const void *observer, const QString &name)
{
    std::erase_if(mRegistrations, [&](const Registration &registration) {
        return registration.observer == observer && registration.name == name;
    });
}

void LocalNotificationCenter::postNotificationName(const QString &name, const void *object,
                                                   const QVariantMap &userInfo)
{
    // Iterate over a copy: a handler may add and remove observers.
    const auto registrations = mRegistrations;
    const Notification notification{name, object, userInfo};
    for (const auto &registration : registrations) {
        if (registration.name == name)
            registration.handler(notification);
    }
}

bool LocalNotificationCenter::hasObservers(const QString &name) const
{
    return std::any_of(mRegistrations.begin(), mRegistrations.end(),
                       [&](const Registration &registration) { return registration.name == name; });
}

} // namespace platform
