#include "tests/support/RecordingAgent.h"

#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "agent/WireTypes.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDBusVirtualObject>
#include <QMutex>
#include <QThread>
#include <QTimer>
#include <QUuid>

#include <utility>

namespace {

QString describe(const QVariant &value)
{
    if (value.userType() != qMetaTypeId<QDBusArgument>())
        return value.toString();
    QStringList entries;
    const auto map = qdbus_cast<QVariantMap>(value);
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
        entries.append(entry.key() + QLatin1Char('=') + entry.value().toString());
    return entries.join(QLatin1Char(','));
}

QString describe(const QDBusMessage &message)
{
    QStringList words{message.member()};
    if (message.type() == QDBusMessage::SignalMessage)
        words.prepend(QStringLiteral("post"));
    const auto arguments = message.arguments();
    for (const auto &argument : arguments)
        words.append(describe(argument));
    words.removeAll(QString());
    return words.join(QLatin1Char(' '));
}

QStringList describeAll(const QList<QDBusMessage> &messages)
{
    QStringList lines;
    for (const auto &message : messages)
        lines.append(describe(message));
    return lines;
}

/// The replies of an agent without cameras.
QHash<QString, QVariantList> answersOfAnIdleAgent()
{
    return {{QStringLiteral("cameraDict"), {QVariant::fromValue(CameraDictionary())}},
            {QStringLiteral("getAudioLevel_l"), {0.0, 0.0}},
            {QStringLiteral("indexOfPreferredKS7Cam"), {QVariant::fromValue(qulonglong(NoPreferredCamera))}},
            {QStringLiteral("validateName"), {true}},
            {QStringLiteral("sortedDeviceList"), {QStringList()}},
            {QStringLiteral("cameras"), {QVariant::fromValue(CameraRecords())}},
            {QStringLiteral("getPreferredKS7Cam"), {QVariantMap()}},
            {QStringLiteral("isPreferredDeviceAddress"), {false}},
            {QStringLiteral("startUpdate"), {0}},
            {QStringLiteral("connectedCamNeedsFirmwareUpdate"), {false}},
            {QStringLiteral("setPassKey"), {0}},
            {QStringLiteral("connectedCamHasBTAddress"), {false}}};
}

} // namespace

/// The part of RecordingAgent that lives in the agent's thread. mMutex guards the members that the test's
/// thread also uses.
class AgentWorker final : public QDBusVirtualObject {
    Q_OBJECT
public:
    AgentWorker()
        : mAnswers(answersOfAnIdleAgent())
        , mName(QStringLiteral("recording-agent-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
    {
        registerWireTypes();
        moveToThread(&mThread);
        mThread.start();
        run([this] { joinBus(); });
    }
    ~AgentWorker() override
    {
        run([this] { leave(); });
        mThread.quit();
        mThread.wait();
    }

    /// Runs `work` in the agent's thread and blocks until it has finished.
    template <class Work>
    void run(Work work)
    {
        QMetaObject::invokeMethod(this, work, Qt::BlockingQueuedConnection);
    }
    template <class Work>
    auto locked(Work work) const
    {
        const QMutexLocker lock(&mMutex);
        return work();
    }

    /// Leaves the bus. Unregisters first, because QtDBus closes the connection later in another thread, which
    /// must not find a half-destroyed object.
    void leave()
    {
        auto connection = bus();
        connection.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
        for (const auto &name : paneNotifications())
            connection.disconnect({}, RemoteNames::NotificationPath, RemoteNames::NotificationInterface, name,
                                  this, SLOT(record(QDBusMessage)));
        QDBusConnection::disconnectFromBus(mName);
    }
    [[nodiscard]] QDBusConnection bus() const { return QDBusConnection(mName); }
    [[nodiscard]] bool registerName(const QString &registeredName,
                                    QDBusConnectionInterface::ServiceQueueOptions options) const
    {
        auto *interface = bus().interface();
        const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply = interface->registerService(
            RemoteNames::busName(registeredName), options, QDBusConnectionInterface::AllowReplacement);
        return reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
    }

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        record(message);
        const auto method = message.member();
        if (locked([&] { return mDying.contains(method); })) {
            leave();
            return true;
        }
        if (locked([&] { return mHangsAlways || mHanging.contains(method); }))
            return true;
        if (const auto error = locked([&] { return mFailing.value(method); }); !error.isEmpty())
            return connection.send(message.createErrorReply(error, QStringLiteral("no")));
        const auto reply = message.createReply(locked([&] { return mAnswers.value(method); }));
        if (const auto delay = locked([&] { return mDelays.value(method, 0); }); delay > 0) {
            QTimer::singleShot(delay, this, [reply, connection] { connection.send(reply); });
            return true;
        }
        return connection.send(reply);
    }

    mutable QMutex mMutex;
    QString mUniqueName;
    QList<QDBusMessage> mMessages;
    QHash<QString, QVariantList> mAnswers;
    /// The delay of each method's replies, in milliseconds.
    QHash<QString, int> mDelays;
    QStringList mHanging;
    /// The error names of the methods that fail.
    QHash<QString, QString> mFailing;
    QStringList mDying;
    bool mHangsAlways = false;

private Q_SLOTS:
    void record(const QDBusMessage &message)
    {
        locked([&] { mMessages.append(message); });
    }

private:
    static QStringList paneNotifications()
    {
        namespace Names = NotificationNames;
        return {Names::SystemPrefsShowing, Names::StartDiscovering, Names::ToggleStatusMenu,
                Names::ToggleEnabled,      Names::ToggleDebugLog,   Names::ChangedOptimizedPreference};
    }

    void joinBus()
    {
        auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, mName);
        bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
        for (const auto &name : paneNotifications())
            bus.connect({}, RemoteNames::NotificationPath, RemoteNames::NotificationInterface, name, this,
                        SLOT(record(QDBusMessage)));
        mUniqueName = bus.baseService();
    }

    QThread mThread;
    const QString mName;
};

RecordingAgent::RecordingAgent()
    : mWorker(std::make_unique<AgentWorker>())
{
}

RecordingAgent::~RecordingAgent() = default;

bool RecordingAgent::publish(const QString &registeredName)
{
    bool published = false;
    mWorker->run([&] {
        published = mWorker->registerName(registeredName, QDBusConnectionInterface::DontQueueService);
    });
    return published;
}

bool RecordingAgent::takeOver(const QString &registeredName)
{
    bool taken = false;
    mWorker->run([&] {
        taken = mWorker->registerName(registeredName, QDBusConnectionInterface::ReplaceExistingService);
    });
    return taken;
}

void RecordingAgent::publishBoth()
{
    publish(RemoteNames::AgentServer);
    publish(RemoteNames::AgentServerUSB);
}

void RecordingAgent::release(const QString &registeredName)
{
    mWorker->run([&] { mWorker->bus().unregisterService(RemoteNames::busName(registeredName)); });
}

void RecordingAgent::leaveBus()
{
    mWorker->run([this] { mWorker->leave(); });
}

void RecordingAgent::answer(const QString &method, const QVariantList &values)
{
    mWorker->locked([&] { mWorker->mAnswers[method] = values; });
}

void RecordingAgent::knowTwoCameras(const QString &kitchen, const QString &desk)
{
    const auto entry = [](int status, const QString &name) {
        return dictionaryFromRecord(CameraRecord{status, QStringLiteral("4455"), name});
    };
    const auto desksEntry = entry(1, QStringLiteral("Desk"));
    const CameraDictionary cameras{{kitchen, entry(0, QStringLiteral("Kitchen"))}, {desk, desksEntry}};
    answer(QStringLiteral("cameraDict"), {QVariant::fromValue(cameras)});
    answer(QStringLiteral("sortedDeviceList"), {QStringList{kitchen, desk}});
    answer(QStringLiteral("indexOfPreferredKS7Cam"), {1ULL});
    answer(QStringLiteral("getPreferredKS7Cam"), {desksEntry});
}

void RecordingAgent::answerError(const QString &method, const QString &error)
{
    mWorker->locked([&] { mWorker->mFailing[method] = error; });
}

void RecordingAgent::answerLate(const QString &method, std::chrono::milliseconds delay)
{
    mWorker->locked([&] { mWorker->mDelays[method] = static_cast<int>(delay.count()); });
}

void RecordingAgent::hangIn(const QString &method)
{
    mWorker->locked([&] { mWorker->mHanging += method; });
}

void RecordingAgent::hang()
{
    mWorker->locked([&] { mWorker->mHangsAlways = true; });
}

void RecordingAgent::replyAgain()
{
    mWorker->locked([&] {
        mWorker->mDelays.clear();
        mWorker->mHanging.clear();
        mWorker->mHangsAlways = false;
    });
}

void RecordingAgent::dieIn(const QString &method)
{
    mWorker->locked([&] { mWorker->mDying += method; });
}

void RecordingAgent::post(const QString &name, const QVariantMap &userInfo)
{
    postRaw(name, {userInfo});
}

void RecordingAgent::postRaw(const QString &name, const QVariantList &arguments)
{
    mWorker->run([&] {
        auto signal = QDBusMessage::createSignal(RemoteNames::NotificationPath,
                                                 RemoteNames::NotificationInterface, name);
        signal.setArguments(arguments);
        mWorker->bus().send(signal);
    });
}

QStringList RecordingAgent::takeJournal()
{
    return describeAll(mWorker->locked([&] { return std::exchange(mWorker->mMessages, {}); }));
}

QStringList RecordingAgent::journal() const
{
    return describeAll(mWorker->locked([&] { return mWorker->mMessages; }));
}

QDBusMessage RecordingAgent::lastCall(const QString &method) const
{
    const auto messages = mWorker->locked([&] { return mWorker->mMessages; });
    QDBusMessage last;
    for (const auto &message : messages) {
        if (message.member() == method)
            last = message;
    }
    return last;
}

QString RecordingAgent::uniqueName() const
{
    return mWorker->mUniqueName;
}

#include "RecordingAgent.moc"
