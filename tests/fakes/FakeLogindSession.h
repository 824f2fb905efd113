#pragma once

#include "platform/bus/BusNames.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <utility>

inline const QString SessionPath = platform::bus::LogindPath + QStringLiteral("/session/c1");
inline const QString UserPath = platform::bus::LogindPath + QStringLiteral("/user/self");
inline const QString Active = QStringLiteral("Active");

/// The value of the property Display of logind's user object: a session's name and object path.
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

/// A logind with one session, which is active or inactive. come() registers logind's bus name, and go()
/// unregisters it.
class FakeLogindSession final : public QDBusVirtualObject {
public:
    /// The name of the fake's bus connection, which Qt keeps after the fake is deleted. A test that restarts
    /// its bus then calls QDBusConnection::disconnectFromBus(), or the next fake would use the dead
    /// connection.
    inline static const QString ConnectionName = QStringLiteral("fake logind session");
    enum class Finds { ByName, ByProcess, ByDisplay };

    explicit FakeLogindSession(Finds finds = Finds::ByName)
        : mBus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, ConnectionName))
        , mFinds(finds)
    {
        qDBusRegisterMetaType<NamedSession>();
        mBus.registerVirtualObject(platform::bus::LogindPath, this, QDBusConnection::SubPath);
    }
    ~FakeLogindSession() override
    {
        go();
        mBus.unregisterObject(platform::bus::LogindPath, QDBusConnection::UnregisterTree);
    }
    FakeLogindSession(const FakeLogindSession &) = delete;
    FakeLogindSession &operator=(const FakeLogindSession &) = delete;

    void come(bool active)
    {
        mActive = active;
        mBus.registerService(platform::bus::Logind);
    }
    void go() { mBus.unregisterService(platform::bus::Logind); }

    /// switches() sends PropertiesChanged with the new value. switchesWithoutSaying() sends it without a
    /// value and lists the property as invalidated.
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

    /// Delays all replies of the session object until the test calls answerNow().
    void keepAnswersBack() { mKeepsAnswersBack = true; }
    [[nodiscard]] bool hasUnanswered() const { return !mUnanswered.isEmpty(); }
    void answerNow()
    {
        mKeepsAnswersBack = false;
        for (const QDBusMessage &question : std::exchange(mUnanswered, {}))
            mBus.send(answerTo(question));
    }
    /// The names of the D-Bus methods that looked up the session, without duplicates.
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
