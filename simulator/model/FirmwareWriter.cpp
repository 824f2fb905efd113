#include "simulator/model/FirmwareWriter.h"

#include "agent/NotificationNames.h"
#include "simulator/model/BusNotifier.h"

namespace simulator {

FirmwareWriter::FirmwareWriter(const Behaviour &behaviour, BusNotifier &notifier)
    : mBehaviour(behaviour)
    , mNotifier(notifier)
{
    connect(&mTimer, &QTimer::timeout, this, &FirmwareWriter::advance);
}

int FirmwareWriter::start()
{
    if (const int wanted = mBehaviour.errors.value(QStringLiteral("startUpdate")))
        return wanted;
    if (mTimer.isActive())
        return ErrorCode::Busy;
    ++mUpdates;
    mStep = 0;
    if (mBehaviour.firmware)
        mTimer.start(mBehaviour.timing.firmwareStep);
    return 0;
}

void FirmwareWriter::advance()
{
    ++mStep;
    mNotifier.post(NotificationNames::FirmwareUpdateProgress,
                   {{UserInfoKeys::Value, mStep}, {UserInfoKeys::Total, FirmwareSteps}});
    const int code = finalCode();
    // An update that fails ends after half of its steps.
    if (mStep >= (code == 0 ? FirmwareSteps : FirmwareSteps / 2))
        end(code);
}

int FirmwareWriter::finalCode() const
{
    if (const int wanted = mBehaviour.errors.value(NotificationNames::FirmwareUpdateEnded))
        return wanted;
    const bool fails = mBehaviour.demoFailures && mUpdates % 2 == 0;
    return fails ? ErrorCode::FirmwareNotVerified : 0;
}

void FirmwareWriter::end(int code)
{
    mTimer.stop();
    mNotifier.post(NotificationNames::FirmwareUpdateEnded, {{UserInfoKeys::Result, code}});
    if (code == 0)
        Q_EMIT succeeded();
}

void FirmwareWriter::interrupt()
{
    if (!mTimer.isActive())
        return;
    mTimer.stop();
    if (mBehaviour.connect)
        end(ErrorCode::CableUnplugged);
}

} // namespace simulator
