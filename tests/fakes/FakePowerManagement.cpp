#include "tests/fakes/FakePowerManagement.h"

std::uint32_t FakePowerManagement::registerForSystemPower(void *refcon, Callback callback)
{
    note(mJournal, QStringLiteral("register for power messages"));
    ++registrations;
    mRefcon = refcon;
    mCallback = callback;
    return 7;
}

void FakePowerManagement::allowPowerChange(std::uint32_t rootPort, void *messageArgument)
{
    note(mJournal, QStringLiteral("allow power change %1").arg(rootPort));
    allowed.push_back(messageArgument);
}

void FakePowerManagement::send(std::uint32_t messageType, void *argument)
{
    mCallback(mRefcon, 0, messageType, argument);
}
