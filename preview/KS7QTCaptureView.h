#pragma once

#include "platform/capture/Capture.h"

/// Shows the frames of its session while the session runs, and black otherwise.
class KS7QTCaptureView : public platform::CaptureView {
    Q_OBJECT
public:
    /// The view is created hidden; KS7PreviewController shows it.
    explicit KS7QTCaptureView(QWidget *parent = nullptr);

    void awakeFromNib() { }

protected:
    void drawRect(const QRect &rect) override;
};
