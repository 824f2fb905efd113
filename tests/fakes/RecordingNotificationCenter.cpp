#include "tests/fakes/RecordingNotificationCenter.h"

#include <algorithm>

RecordingNotificationCenter::RecordingNotificationCenter(Journal journal, Noted noted)
    : mJournal(std::move(journal))
    , mNoted(noted)
{
}

void RecordingNotificationCenter::addObserver(const void *observer, const QString &name,
                                              platform::NotificationHandler handler)
{
    note(mJournal, QStringLiteral("observe ") + name);
    registrations.append(name);
    mCenter.addObserver(observer, name, std::move(handler));
}

void RecordingNotificationCenter::removeObserver(const void *observer, const QString &name)
{
    note(mJournal, QStringLiteral("forget ") + name);
    registrations.removeOne(name);
    mCenter.removeObserver(observer, name);
}

void RecordingNotificationCenter::postNotificationName(const QString &name, const void *object,
                                                       const QVariantMap &userInfo)
{
    if (mNoted == PostsToo)
        note(mJournal, QStringLiteral("post ") + name);
    posts.push_back({name, object, userInfo});
    mCenter.postNotificationName(name, object, userInfo);
}

void RecordingNotificationCenter::deliver(const QString &name, const QVariantMap &userInfo,
                                          const void *object)
{
    mCenter.postNotificationName(name, object, userInfo);
}

int RecordingNotificationCenter::postCount(const QString &name) const
{
    return static_cast<int>(
        std::count_if(posts.begin(), posts.end(), [&](const auto &post) { return post.name == name; }));
}

QVariantMap RecordingNotificationCenter::lastUserInfo(const QString &name) const
{
    for (auto post = posts.rbegin(); post != posts.rend(); ++post) {
        if (post->name == name)
            return post->userInfo;
    }
    return {};
}
