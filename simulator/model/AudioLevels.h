#pragma once

#include <QElapsedTimer>

#include <optional>
#include <utility>

namespace simulator {

/// The audio levels of the left and the right channel, from 0 to 1.
class AudioLevels {
public:
    AudioLevels() { mSince.start(); }

    /// Replaces the simulated levels by constant ones. nullopt restores the simulated levels.
    void fix(const std::optional<std::pair<double, double>> &levels) { mFixed = levels; }
    [[nodiscard]] std::pair<double, double> current(bool streaming) const;

private:
    QElapsedTimer mSince;
    std::optional<std::pair<double, double>> mFixed;
};

} // namespace simulator
