#pragma once

#include "agent/AgentServices.h"
#include "simulator/bus/CallInterceptor.h"

#include <QDBusContext>

namespace simulator {

class UsbCable;

/// The USB side of the agent, as a bus object.
class UsbController final : public USBControllerService, protected QDBusContext {
    Q_OBJECT
public:
    UsbController(UsbCable &cable, const CallInterceptor &interceptor);

    int startUpdate() override;
    bool connectedCamNeedsFirmwareUpdate() override;
    int setPassKey(const QString &passKey) override;
    bool connectedCamHasBTAddress(const QString &address) override;

private:
    /// The single result of the work.
    QVariant answer(const QString &operation, const QVariantList &arguments,
                    const std::function<QVariant()> &work);

    UsbCable &mCable;
    CallInterceptor mInterceptor;
};

} // namespace simulator
