#include "simulator/model/FirmwareWriter.h"

#include "agent/NotificationNames.h"
#include "simulator/model/Notifier.h"

namespace simulator {

FirmwareWriter::FirmwareWriter(const Behaviour &behaviour, const WantedErrors &errors, Notifier &notifier,
                               const Timing &timing)
    : mBehaviour(behaviour)
    , mErrors(errors)
    , mNotifier(notifier)
    , mTiming(timing)
{
    connect(&mTimer, &QTimer::timeout, this, &FirmwareWriter::advance);
}

int FirmwareWriter::start()
{
    if (const int wanted = mErrors.value(QStringLiteral("startUpdate")))
        return wanted;
    if (mTimer.isActive())
        return ErrorCode::Busy;
    ++mUpdates;
    mStep = 0;
    if (mBehaviour.firmware)
        mTimer.start(mTiming.firmwareStep);
    return 0;
}

void FirmwareWriter::advance()
{
    ++mStep;
    mNotifier.post(NotificationNames::FirmwareUpdateProgress,
                   {{UserInfoKeys::Value, mStep}, {UserInfoKeys::Total, FirmwareSteps}});
    const int code = finalCode();
    // A failure shows before the bar is full.
    if (mStep >= (code == 0 ? FirmwareSteps : FirmwareSteps / 2))
        end(code);
}

int FirmwareWriter::finalCode() const
{
    if (const int wanted = mErrors.value(NotificationNames::FirmwareUpdateEnded))
        return wanted;
    const bool fails = mBehaviour.mishaps && mUpdates % 2 == 0;
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
