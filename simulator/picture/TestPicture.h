#pragma once

#include <QImage>
#include <QMutex>
#include <QSize>
#include <QString>

#include <cstdint>

namespace simulator {

/// A test picture: a colour and the camera's name, with a bar that moves across it; black without a camera.
class TestPicture {
public:
    explicit TestPicture(const QSize &size)
        : mSize(size)
    {
    }

    /// The name of the camera to show; empty for none. From any thread.
    void setCaption(const QString &caption);
    /// Draws the picture at a time, given in nanoseconds, as 32-bit BGRx pixels.
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
