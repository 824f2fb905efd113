#pragma once

#include "platform/bus/NotificationCenter.h"
#include "tests/fakes/Journal.h"

#include <vector>

/// A notification center that delivers notifications synchronously and records every post.
class RecordingNotificationCenter final : public platform::NotificationCenter {
public:
    /// The events that the journal records: added and removed observers only, or the posts of notifications
    /// too.
    enum Noted { ObserversOnly, PostsToo };
    explicit RecordingNotificationCenter(Journal journal, Noted noted = ObserversOnly);
    void addObserver(const void *observer, const QString &name,
                     platform::NotificationHandler handler) override;
    void removeObserver(const void *observer, const QString &name) override;
    void postNotificationName(const QString &name, const void *object, const QVariantMap &userInfo) override;

    /// Delivers a notification as if another process had posted it. Observers receive it, but `posts` does
    /// not record it.
    void deliver(const QString &name, const QVariantMap &userInfo = {}, const void *object = nullptr);
    [[nodiscard]] int postCount(const QString &name) const;
    [[nodiscard]] QVariantMap lastUserInfo(const QString &name) const;
    /// The names of the observed notifications, in the order in which their observers were added.
    QStringList registrations;
    std::vector<platform::Notification> posts;

private:
    Journal mJournal;
    Noted mNoted;
    platform::LocalNotificationCenter mCenter;
};
