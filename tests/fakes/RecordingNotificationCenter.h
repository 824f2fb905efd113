#pragma once

#include "platform/bus/NotificationCenter.h"
#include "tests/fakes/Journal.h"

#include <vector>

/// A notification center that delivers synchronously and records every post.
class RecordingNotificationCenter final : public platform::NotificationCenter {
public:
    /// Selects the operations that go into the journal.
    enum Noted { ObserversOnly, PostsToo };
    explicit RecordingNotificationCenter(Journal journal, Noted noted = ObserversOnly);
    void addObserver(const void *observer, const QString &name,
                     platform::NotificationHandler handler) override;
    void removeObserver(const void *observer, const QString &name) override;
    void postNotificationName(const QString &name, const void *object, const QVariantMap &userInfo) override;

    /// Delivers a notification of another process: observers receive it, but `posts` does not contain it.
    void deliver(const QString &name, const QVariantMap &userInfo = {}, const void *object = nullptr);
    [[nodiscard]] int postCount(const QString &name) const;
    [[nodiscard]] QVariantMap lastUserInfo(const QString &name) const;
    /// Observed names, in the order of registration.
    QStringList registrations;
    std::vector<platform::Notification> posts;

private:
    Journal mJournal;
    Noted mNoted;
    platform::LocalNotificationCenter mCenter;
};
