#pragma once

#include "cameras/KS7Cam.h"

#include <QRect>
#include <QString>

#include <memory>

class QFont;
class QPainter;
class QWidget;

namespace platform {
class Bundle;
}

class KS7AnimatingStatusTableView;

/// Positions of a row's parts, in the table's coordinates.
struct CamCellLayout {
    QRect name;
    /// Top left of the status text.
    QPoint status;
    QRect dot;
};

/// `scale` multiplies every length; 1 at the desktop's default text size.
CamCellLayout camCellLayout(const QRect &frame, const QSize &dotSize, double scale = 1.0);

/// How much larger than the default the desktop's text is; 1 or more.
double textScale(const QFont &font);

/// Draws one row of the camera table: name, status and a coloured dot. The table draws all its rows with one
/// cell.
class CamCell {
public:
    /// Ignores the text. The first call loads the dots from the bundle.
    CamCell *initTextCell(const QString &text, std::shared_ptr<const platform::Bundle> bundle);
    /// A new cell that holds no record.
    [[nodiscard]] std::unique_ptr<CamCell> copy() const;
    void setObjectValue(std::shared_ptr<KS7Cam> record) { mDevice = std::move(record); }
    [[nodiscard]] const std::shared_ptr<KS7Cam> &objectValue() const { return mDevice; }
    void setEnabled(bool enabled) { mEnabled = enabled; }
    void setHighlighted(bool highlighted) { mHighlighted = highlighted; }
    /// Draws the row. Starts the table's animation for a pairing or starting camera.
    void drawWithFrame(QPainter *painter, const QRect &frame, KS7AnimatingStatusTableView *inView) const;

private:
    static void cacheImages(const platform::Bundle &bundle);
    void drawName(QPainter *painter, const CamCellLayout &layout, const QWidget *view) const;
    void drawStatus(QPainter *painter, const CamCellLayout &layout, const QWidget *view) const;
    void drawDot(QPainter *painter, const CamCellLayout &layout, KS7AnimatingStatusTableView *view) const;
    [[nodiscard]] std::int32_t status() const;

    std::shared_ptr<KS7Cam> mDevice;
    std::shared_ptr<const platform::Bundle> mBundle;
    bool mEnabled = true;
    bool mHighlighted = false;

    struct Dots;
    /// Never released: a static QIcon would be destroyed after the application object.
    static Dots *mDots;
};
