#include "simulator/bus/PaneListener.h"

#include "agent/AgentContract.h"
#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "platform/bus/BusNames.h"
#include "simulator/bus/FaultInjector.h"
#include "simulator/bus/Recorder.h"
#include "simulator/model/AgentModel.h"

#include <QDBusArgument>

namespace simulator {

PaneListener::PaneListener(AgentModel &model, Recorder &recorder, FaultInjector &faults,
                           const QDBusConnection &bus)
    : mModel(model)
    , mRecorder(recorder)
    , mFaults(faults)
    , mBus(bus)
{
}

bool PaneListener::listen()
{
    // Subscribe without a member name, to record unknown notifications as well.
    return mBus.connect(QString(), RemoteNames::NotificationPath, RemoteNames::NotificationInterface,
                        QString(), this, SLOT(heard(QDBusMessage)));
}

void PaneListener::heard(const QDBusMessage &message)
{
    if (message.service() == mBus.baseService())
        return;
    // Check the signature first, because qdbus_cast() aborts the process on a container of another type.
    const auto userInfo = message.signature() == platform::bus::UserInfoSignature
        ? qdbus_cast<QVariantMap>(message.arguments().value(0))
        : QVariantMap();
    const QString name = message.member();
    mRecorder.recordPost(name, userInfo);
    if (mFaults.isHanging(name))
        mFaults.hold([this, name, userInfo] { act(name, userInfo); });
    else
        act(name, userInfo);
}

void PaneListener::act(const QString &name, const QVariantMap &userInfo)
{
    const QVariant value = userInfo.value(UserInfoKeys::Value);
    if (name == NotificationNames::StartDiscovering)
        mModel.discover();
    else if (name == NotificationNames::ChangedOptimizedPreference)
        mModel.preferences().synchronize();
    else if (name == NotificationNames::ToggleEnabled && value.isValid())
        mModel.switchService(value.toInt() != 0);
    else if (name == NotificationNames::ToggleStatusMenu && value.isValid())
        mModel.preferences().set(PreferenceKeys::ShowStatusMenu, value.toInt() != 0);
    else if (name == NotificationNames::ToggleDebugLog && value.isValid())
        mModel.preferences().set(PreferenceKeys::LogToFile, value.toInt() != 0);
}

} // namespace simulator
