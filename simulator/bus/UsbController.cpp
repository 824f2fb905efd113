#include "simulator/bus/UsbController.h"

#include "simulator/model/UsbCable.h"

namespace simulator {

UsbController::UsbController(UsbCable &cable, const CallInterceptor &interceptor)
    : mCable(cable)
    , mInterceptor(interceptor)
{
}

QVariant UsbController::answer(const QString &operation, const QVariantList &arguments,
                               const std::function<QVariant()> &work)
{
    return mInterceptor.answer(*this, operation, arguments, [work] { return QVariantList{work()}; }).value(0);
}

int UsbController::startUpdate()
{
    return answer(QStringLiteral("startUpdate"), {}, [this] { return mCable.startUpdate(); }).toInt();
}

bool UsbController::connectedCamNeedsFirmwareUpdate()
{
    const auto work = [this] { return mCable.needsFirmware(); };
    return answer(QStringLiteral("connectedCamNeedsFirmwareUpdate"), {}, work).toBool();
}

int UsbController::setPassKey(const QString &passKey)
{
    const auto work = [this, passKey] { return mCable.setPassKey(passKey); };
    return answer(QStringLiteral("setPassKey"), {passKey}, work).toInt();
}

bool UsbController::connectedCamHasBTAddress(const QString &address)
{
    const auto work = [this, address] { return mCable.holds(address); };
    return answer(QStringLiteral("connectedCamHasBTAddress"), {address}, work).toBool();
}

} // namespace simulator
