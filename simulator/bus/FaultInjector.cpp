#include "simulator/bus/FaultInjector.h"

#include <cstdlib>

namespace simulator {

namespace {

constexpr double LongestHang = 1'000'000;
constexpr int CodeOfDeath = 70;

} // namespace

FaultInjector::FaultInjector()
{
    mHang.setSingleShot(true);
    connect(&mHang, &QTimer::timeout, this, &FaultInjector::resume);
}

void FaultInjector::hang(const QString &operation, double seconds)
{
    mHangsInAll = operation.isEmpty();
    mHangsIn = operation;
    mHang.stop();
    if (seconds > 0)
        mHang.start(int(qMin(seconds, LongestHang) * 1000));
}

void FaultInjector::resume()
{
    mHang.stop();
    mHangsInAll = false;
    mHangsIn.clear();
    const auto held = std::exchange(mHeld, {});
    for (const auto &work : held)
        work();
}

bool FaultInjector::isHanging(const QString &operation) const
{
    return mHangsInAll || (!mHangsIn.isEmpty() && mHangsIn == operation);
}

void FaultInjector::dieIfDue(const QString &operation) const
{
    if (!mDeadly.isEmpty() && mDeadly == operation)
        die();
}

void FaultInjector::die()
{
    std::_Exit(CodeOfDeath);
}

void FaultInjector::malformReplies(const QString &operation, const QString &kind)
{
    mMalformations.insert(operation, kind);
}

} // namespace simulator
