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

/// The positions of the parts of a row, in the table's coordinates.
struct CamCellLayout {
    QRect name;
    /// The top left corner of the status text.
    QPoint status;
    QRect dot;
};

/// Computes the positions in a row. All lengths are multiplied by `scale`, which is 1 at the default text
/// size.
CamCellLayout camCellLayout(const QRect &frame, const QSize &dotSize, double scale = 1.0);

/// Returns the ratio of the view's text size to the default text size; at least 1. The size depends on the
/// font and on the desktop's font DPI.
double textScale(const QWidget *view);

/// Draws a row of the camera table: name, status and a coloured dot. One cell draws all rows of a table.
class CamCell {
public:
    /// Initialises the cell and returns it. `text` is ignored. The first call loads the images of the dots
    /// from `bundle`.
    CamCell *initTextCell(const QString &text, std::shared_ptr<const platform::Bundle> bundle);
    /// Returns a new cell without a camera record.
    [[nodiscard]] std::unique_ptr<CamCell> copy() const;
    void setObjectValue(std::shared_ptr<KS7Cam> record) { mDevice = std::move(record); }
    [[nodiscard]] const std::shared_ptr<KS7Cam> &objectValue() const { return mDevice; }
    void setEnabled(bool enabled) { mEnabled = enabled; }
    void setHighlighted(bool highlighted) { mHighlighted = highlighted; }
    /// Draws the row of the current record. If its camera is pairing or starting, starts the table's
    /// animation.
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
    /// Never deleted, because a static QIcon must not outlive the application object.
    static Dots *mDots;
};
