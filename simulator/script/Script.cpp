#include "simulator/script/Script.h"

#include "agent/RemoteNames.h"
#include "platform/bus/BusNames.h"
#include "simulator/bus/FaultInjector.h"
#include "simulator/bus/Recorder.h"
#include "simulator/model/AgentModel.h"
#include "simulator/model/BusNotifier.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QTimer>

#include <algorithm>

namespace simulator {

namespace {

constexpr int MostCameras = 20'000;

bool isMemberName(const QString &name)
{
    const auto isGood = [](QChar each) {
        return each.unicode() < 0x80 && (each.isLetterOrNumber() || each == QLatin1Char('_'));
    };
    return !name.isEmpty() && name.size() < 256 && !name.at(0).isDigit()
        && std::all_of(name.begin(), name.end(), isGood);
}

Camera numberedCamera(int number)
{
    const auto digits = QStringLiteral("%1").arg(number, 4, 16, QLatin1Char('0'));
    const QString address =
        QStringLiteral("00-1b-dc-10-") + digits.left(2) + QLatin1Char('-') + digits.mid(2);
    return {address, factoryNameFor(address), cameraIDFor(address), kKS7CamNotStreaming, true};
}

} // namespace

Script::Script(AgentModel &model, BusNotifier &notifier, Recorder &recorder, FaultInjector &faults)
    : mModel(model)
    , mNotifier(notifier)
    , mRecorder(recorder)
    , mFaults(faults)
{
}

void Script::refuse(const QString &why)
{
    if (calledFromDBus())
        sendErrorReply(QDBusError::InvalidArgs, why);
}

void Script::addCamera(const QString &address, const QString &name, const QString &cameraID, int status)
{
    mModel.registry().add(Camera{address, name, cameraID, status, status != kKS7CamNotFound});
}

void Script::addManyCameras(int count)
{
    if (count < 0 || count > MostCameras) {
        refuse(QStringLiteral("from 0 to %1 cameras").arg(MostCameras));
        return;
    }
    QVector<Camera> cameras;
    for (int number = 0; number < count; ++number)
        cameras.append(numberedCamera(number));
    mModel.registry().add(cameras);
}

void Script::removeCamera(const QString &address)
{
    mModel.registry().remove(address);
}

void Script::setStatus(const QString &address, int status)
{
    mModel.registry().setStatus(address, status);
}

void Script::renameCamera(const QString &address, const QString &name)
{
    mModel.registry().setName(address, name);
}

void Script::setSorted(const QStringList &addresses)
{
    mModel.registry().pretendOrder(addresses);
}

void Script::unsetSorted()
{
    mModel.registry().pretendOrder(std::nullopt);
}

void Script::setPreferred(const QString &address)
{
    mModel.registry().setPreferred(address);
}

void Script::plugUSB(const QString &address, bool needsFirmware)
{
    mModel.cable().plug(address, needsFirmware);
}

void Script::unplugUSB()
{
    mModel.cable().unplug();
}

void Script::bluetooth(bool on)
{
    mModel.switchBluetooth(on);
}

void Script::setAudioLevels(double left, double right)
{
    if (left < 0 || right < 0)
        mModel.levels().fix(std::nullopt);
    else
        mModel.levels().fix(std::pair(left, right));
}

void Script::setPreference(const QString &key, const QDBusVariant &value)
{
    if (value.variant().userType() == qMetaTypeId<QDBusArgument>())
        mModel.preferences().set(key, qdbus_cast<QVariantMap>(value.variant()));
    else
        mModel.preferences().set(key, value.variant());
}

QDBusVariant Script::preference(const QString &key)
{
    const QVariant value = mModel.preferences().value(key);
    if (!value.isValid())
        refuse(QStringLiteral("no such preference: %1").arg(key));
    // QtDBus cannot marshal an invalid variant, not even for a call that refuse() answers with an error. So
    // return an empty string then.
    return QDBusVariant(value.isValid() ? value : QVariant(QString()));
}

void Script::setBehaviour(const QString &name, bool on)
{
    if (bool *behaviour = mModel.behaviour().find(name))
        *behaviour = on;
    else
        refuse(QStringLiteral("no such behaviour: %1").arg(name));
}

void Script::setErrorCode(const QString &operation, int code)
{
    mModel.behaviour().errors.insert(operation, code);
}

void Script::post(const QString &name, const QVariantMap &userInfo)
{
    if (isMemberName(name))
        mNotifier.post(name, userInfo);
    else
        refuse(QStringLiteral("not a name: %1").arg(name));
}

void Script::hang(double seconds)
{
    mFaults.hang(QString(), seconds);
}

void Script::hangDuring(const QString &operation, double seconds)
{
    if (operation.isEmpty())
        refuse(QStringLiteral("which operation?"));
    else
        mFaults.hang(operation, seconds);
}

void Script::resume()
{
    mFaults.resume();
}

void Script::die()
{
    // Send the reply before the process exits. When the bus daemon has replied to GetId, it has received the
    // reply as well.
    connection().send(message().createReply());
    connection().call(QDBusMessage::createMethodCall(platform::bus::Daemon, platform::bus::DaemonPath,
                                                     platform::bus::Daemon, QStringLiteral("GetId")));
    FaultInjector::die();
}

void Script::dieDuring(const QString &operation)
{
    mFaults.dieDuring(operation);
}

void Script::malformReplies(const QString &operation, const QString &kind)
{
    mFaults.malformReplies(operation, kind);
}

void Script::mute(bool on)
{
    mNotifier.setMute(on);
}

void Script::forgetKeys(bool on)
{
    mModel.preferences().setForgetful(on);
}

bool Script::releaseName(const QString &registeredName)
{
    return connection().unregisterService(RemoteNames::busName(registeredName));
}

bool Script::takeName(const QString &registeredName)
{
    return connection().registerService(RemoteNames::busName(registeredName));
}

QStringList Script::recordedCalls()
{
    return mRecorder.calls();
}

QStringList Script::recordedPosts()
{
    return mRecorder.posts();
}

QStringList Script::recordedEvents()
{
    return mRecorder.events();
}

void Script::clearRecord()
{
    mRecorder.clear();
}

void Script::quit()
{
    QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
}

} // namespace simulator
