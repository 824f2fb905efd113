#include "simulator/bus/AgentService.h"

#include "agent/KS7DeviceControllerAdaptor.h"
#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "agent/TernUSBCommandControllerAdaptor.h"
#include "platform/bus/BusNames.h"
#include "simulator/script/Demo.h"

#include "ScriptAdaptor.h"

#include <QCoreApplication>

namespace simulator {

namespace {

Behaviour behaviourFor(const Options &options)
{
    const auto timing = options.quick ? Timing::quick() : Timing();
    if (options.scenario != Scenario::Scripted)
        return {.timing = timing};
    return {.connect = false, .discover = false, .demoFailures = false, .timing = timing};
}

} // namespace

AgentService::AgentService(const Options &options, const QDBusConnection &bus)
    : mOptions(options)
    , mBus(bus)
    , mNotifier(bus)
    , mPreferences(platform::makeFileUserDefaults())
    , mModel(mNotifier, mPreferences, behaviourFor(options))
    , mListener(mModel, mRecorder, mFaults, bus)
    , mInterceptor(mRecorder, mFaults, bus)
    , mDeviceController(mModel)
    , mUsbController(mModel.cable())
    , mScript(mModel, mNotifier, mRecorder, mFaults)
{
    if (!options.picture)
        return;
    mPicture.emplace(options.pictureSettings);
    connect(&mModel.registry(), &CameraRegistry::changed, this, &AgentService::showPicture);
}

std::optional<QString> AgentService::start()
{
    mPreferences.synchronize();
    if (mOptions.fillsPreferences)
        mPreferences.fillIn();
    if (!publish() || !mListener.listen())
        return QStringLiteral("the bus does not take the agent's objects");
    if (auto why = takeNames())
        return why;
    mBus.connect(QString(), platform::bus::LocalPath, platform::bus::LocalInterface,
                 platform::bus::LocalDisconnected, this, SLOT(busHasGone()));
    mNotifier.post(NotificationNames::AgentStarted, {});
    if (mOptions.scenario == Scenario::Demo)
        Demo::begin(mModel);
    return {};
}

bool AgentService::publish()
{
    registerWireTypes();
    // QtDBus requires the served object, here mScript, as the parent of its adaptor. The parent deletes the
    // adaptor.
    new ScriptAdaptor(&mScript);
    return publish<KS7DeviceControllerAdaptor>(RemoteNames::AgentServer, mDeviceController)
        && publish<TernUSBCommandControllerAdaptor>(RemoteNames::AgentServerUSB, mUsbController)
        && publish(Script::registeredName(), mScript);
}

template <class Adaptor, class Agent>
bool AgentService::publish(const QString &registeredName, Agent &agent)
{
    auto *object = new QObject(this);
    new Adaptor(object, agent, mInterceptor);
    return publish(registeredName, *object);
}

bool AgentService::publish(const QString &registeredName, QObject &object)
{
    return mBus.registerObject(RemoteNames::objectPath(registeredName), &object);
}

std::optional<QString> AgentService::takeNames()
{
    // Take the agent's main name last, because a client that sees it expects the other objects to be there.
    for (const QString &name :
         {Script::registeredName(), RemoteNames::AgentServerUSB, RemoteNames::AgentServer}) {
        if (!mBus.registerService(RemoteNames::busName(name)))
            return QStringLiteral("another agent is running: the bus name %1 is taken")
                .arg(RemoteNames::busName(name));
    }
    return {};
}

void AgentService::showPicture()
{
    const auto camera = mModel.registry().streaming();
    mPicture->show(camera ? camera->name : QString());
}

void AgentService::busHasGone()
{
    QCoreApplication::quit();
}

} // namespace simulator
