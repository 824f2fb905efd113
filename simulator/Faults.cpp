#include "simulator/Faults.h"

#include <cstdlib>

namespace simulator {

namespace {

constexpr double LongestHang = 1'000'000;
constexpr int CodeOfDeath = 70;

} // namespace

Faults::Faults()
{
    mHang.setSingleShot(true);
    connect(&mHang, &QTimer::timeout, this, &Faults::resume);
}

void Faults::hang(const QString &operation, double seconds)
{
    mHangsInAll = operation.isEmpty();
    mHangsIn = operation;
    mHang.stop();
    if (seconds > 0)
        mHang.start(int(qMin(seconds, LongestHang) * 1000));
}

void Faults::resume()
{
    mHang.stop();
    mHangsInAll = false;
    mHangsIn.clear();
    const auto held = std::exchange(mHeld, {});
    for (const auto &work : held)
        work();
}

bool Faults::isHanging(const QString &operation) const
{
    return mHangsInAll || (!mHangsIn.isEmpty() && mHangsIn == operation);
}

void Faults::dieIfDue(const QString &operation) const
{
    if (!mDeadly.isEmpty() && mDeadly == operation)
        die();
}

void Faults::die()
{
    std::_Exit(CodeOfDeath);
}

void Faults::setGarbage(const QString &operation, const QString &kind)
{
    mGarbage.insert(operation, kind);
}

} // namespace simulator
