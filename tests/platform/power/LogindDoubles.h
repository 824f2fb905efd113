#pragma once

#include "platform/bus/BusNames.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

inline const QString SessionPath = platform::bus::LogindPath + QStringLiteral("/session/c1");
inline const QString UserPath = platform::bus::LogindPath + QStringLiteral("/user/self");
inline const QString Active = QStringLiteral("Active");

/// A session as a user's property Display names it.
struct NamedSession {
    QString name;
    QDBusObjectPath path;
};

inline QDBusArgument &operator<<(QDBusArgument &argument, const NamedSession &session)
{
    argument.beginStructure();
    argument << session.name << session.path;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument &operator>>(const QDBusArgument &argument, NamedSession &session)
{
    argument.beginStructure();
    argument >> session.name >> session.path;
    argument.endStructure();
    return argument;
}

Q_DECLARE_METATYPE(NamedSession)

/// A logind with one session, which has the screen or not. It comes and goes as it is told.
class SmallLogind final : public QDBusVirtualObject {
public:
    enum class Finds { ByName, ByProcess, ByDisplay };

    explicit SmallLogind(Finds finds = Finds::ByName)
        : mBus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("small logind")))
        , mFinds(finds)
    {
        qDBusRegisterMetaType<NamedSession>();
        mBus.registerVirtualObject(platform::bus::LogindPath, this, QDBusConnection::SubPath);
    }
    ~SmallLogind() override
    {
        go();
        mBus.unregisterObject(platform::bus::LogindPath, QDBusConnection::UnregisterTree);
    }
    SmallLogind(const SmallLogind &) = delete;
    SmallLogind &operator=(const SmallLogind &) = delete;

    void come(bool active)
    {
        mActive = active;
        mBus.registerService(platform::bus::Logind);
    }
    void go() { mBus.unregisterService(platform::bus::Logind); }

    /// Announces a switch with the new value, or only that the old value is invalid.
    void switches(bool active)
    {
        mActive = active;
        announce({{Active, active}}, {});
    }
    void switchesWithoutSaying(bool active)
    {
        mActive = active;
        announce({}, {Active});
    }

    /// Answers no question about the session's state until answerNow().
    void keepAnswersBack() { mKeepsAnswersBack = true; }
    [[nodiscard]] bool hasUnanswered() const { return !mUnanswered.isEmpty(); }
    void answerNow()
    {
        mKeepsAnswersBack = false;
        for (const QDBusMessage &question : std::exchange(mUnanswered, {}))
            mBus.send(answerTo(question));
    }
    /// The ways in which the session was looked for, each once.
    [[nodiscard]] QStringList searches() const { return mSearches; }

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &question, const QDBusConnection &connection) override
    {
        const bool isSearch = question.path() != SessionPath;
        if (isSearch && !mSearches.contains(question.member()))
            mSearches.append(question.member());
        if (isSearch || !mKeepsAnswersBack)
            return connection.send(answerTo(question));
        mUnanswered.append(question);
        return true;
    }

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &question) const
    {
        const auto session = QVariant::fromValue(QDBusObjectPath(SessionPath));
        const auto is = [&question](const QString &path, const char *method, const QVariantList &arguments) {
            return question.path() == path && question.member() == QLatin1String(method)
                && question.arguments() == arguments;
        };
        if (mFinds == Finds::ByName && is(platform::bus::LogindPath, "GetSession", {QStringLiteral("c1")}))
            return question.createReply(session);
        const auto process = static_cast<uint>(QCoreApplication::applicationPid());
        if (mFinds == Finds::ByProcess && is(platform::bus::LogindPath, "GetSessionByPID", {process}))
            return question.createReply(session);
        const NamedSession display{QStringLiteral("c1"), QDBusObjectPath(SessionPath)};
        if (mFinds == Finds::ByDisplay
            && is(UserPath, "Get", {platform::bus::LogindUser, QStringLiteral("Display")}))
            return question.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(display))));
        if (is(SessionPath, "Get", {platform::bus::LogindSession, Active}))
            return question.createReply(QVariant::fromValue(QDBusVariant(mActive)));
        return question.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("Not known here"));
    }

    void announce(const QVariantMap &changed, const QStringList &invalid)
    {
        auto signal = QDBusMessage::createSignal(SessionPath, platform::bus::Properties,
                                                 QStringLiteral("PropertiesChanged"));
        signal << platform::bus::LogindSession << changed << invalid;
        mBus.send(signal);
    }

    QDBusConnection mBus;
    const Finds mFinds;
    bool mActive = false;
    bool mKeepsAnswersBack = false;
    QList<QDBusMessage> mUnanswered;
    QStringList mSearches;
};

/// A logind that grants inhibitors, as late as it is told, and knows which of them are still held.
class InhibitingLogind final : public QDBusVirtualObject {
public:
    InhibitingLogind()
        : mBus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("inhibiting logind")))
    {
        mBus.registerVirtualObject(platform::bus::LogindPath, this);
        mBus.registerService(platform::bus::Logind);
    }
    ~InhibitingLogind() override
    {
        mBus.unregisterService(platform::bus::Logind);
        mBus.unregisterObject(platform::bus::LogindPath);
        for (const int end : mReadEnds)
            ::close(end);
    }
    InhibitingLogind(const InhibitingLogind &) = delete;
    InhibitingLogind &operator=(const InhibitingLogind &) = delete;

    void prepares(bool start)
    {
        auto signal = QDBusMessage::createSignal(platform::bus::LogindPath, platform::bus::LogindManager,
                                                 platform::bus::PrepareForSleep);
        signal << start;
        mBus.send(signal);
    }

    void keepAnswersBack() { mKeepsAnswersBack = true; }
    [[nodiscard]] bool hasUnanswered() const { return !mUnanswered.isEmpty(); }
    void answerNow()
    {
        mKeepsAnswersBack = false;
        for (const QDBusMessage &question : std::exchange(mUnanswered, {}))
            answer(question);
    }
    [[nodiscard]] int questions() const { return mQuestions; }
    /// The inhibitors that were handed out and whose last descriptor is not closed yet.
    [[nodiscard]] int held() const
    {
        return static_cast<int>(std::count_if(mReadEnds.begin(), mReadEnds.end(), [](int end) {
            pollfd state{end, 0, 0};
            return ::poll(&state, 1, 0) == 0;
        }));
    }

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &question, const QDBusConnection &) override
    {
        if (question.member() != QLatin1String("Inhibit"))
            return false;
        ++mQuestions;
        if (mKeepsAnswersBack)
            mUnanswered.append(question);
        else
            answer(question);
        return true;
    }

private:
    void answer(const QDBusMessage &question)
    {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            return;
        mReadEnds.push_back(ends[0]);
        mBus.send(question.createReply(QVariant::fromValue(QDBusUnixFileDescriptor(ends[1]))));
        ::close(ends[1]);
    }

    QDBusConnection mBus;
    bool mKeepsAnswersBack = false;
    int mQuestions = 0;
    QList<QDBusMessage> mUnanswered;
    std::vector<int> mReadEnds;
};
