#pragma once

#include <QElapsedTimer>

#include <optional>
#include <utility>

namespace simulator {

/// What the camera's microphones hear, left and right, from 0 to 1.
class AudioLevels {
public:
    AudioLevels() { mSince.start(); }

    /// These from now on, whatever is streaming; nothing goes back to what is heard.
    void fix(const std::optional<std::pair<double, double>> &levels) { mFixed = levels; }
    [[nodiscard]] std::pair<double, double> current(bool streaming) const;

private:
    QElapsedTimer mSince;
    std::optional<std::pair<double, double>> mFixed;
};

} // namespace simulator
