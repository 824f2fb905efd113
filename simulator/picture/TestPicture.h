#pragma once

#include <QImage>
#include <QMutex>
#include <QSize>
#include <QString>

#include <cstdint>

namespace simulator {

/// Draws a coloured picture with the name of a camera and a moving bar. Without a camera the picture is
/// black.
class TestPicture {
public:
    explicit TestPicture(const QSize &size)
        : mSize(size)
    {
    }

    /// Sets the name of the camera; empty for no camera. May be called from any thread.
    void setCaption(const QString &caption);
    /// Draws the picture for `time`, in nanoseconds, into 32-bit BGRx pixels.
    void paint(std::uint8_t *pixels, std::int64_t time);

private:
    [[nodiscard]] QString caption() const;
    void drawBackground(const QString &caption);

    const QSize mSize;
    mutable QMutex mMutex; // Guards mCaption.
    QString mCaption;
    QString mDrawn;
    QImage mBackground;
};

} // namespace simulator
