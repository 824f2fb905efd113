#include "simulator/model/AudioLevels.h"

#include <cmath>

namespace simulator {

namespace {

/// Returns a level from 0 to 0.6 that resembles speech: fast syllables on a slowly changing volume.
double heardAt(double seconds)
{
    const double swell = 0.5 + 0.5 * std::sin(seconds * 1.3);
    const double syllables = 0.5 + 0.5 * std::sin(seconds * 11.0);
    return 0.05 + 0.55 * swell * syllables;
}

constexpr double LaterAtTheRight = 0.35;

} // namespace

std::pair<double, double> AudioLevels::current(bool streaming) const
{
    if (mFixed)
        return *mFixed;
    if (!streaming)
        return {0, 0};
    const double seconds = double(mSince.elapsed()) / 1000.0;
    return {heardAt(seconds), heardAt(seconds + LaterAtTheRight)};
}

} // namespace simulator
