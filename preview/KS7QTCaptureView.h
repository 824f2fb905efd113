#pragma once

#include "platform/capture/Capture.h"

/// Shows the frames of a running session, otherwise black.
class KS7QTCaptureView : public platform::CaptureView {
    Q_OBJECT
public:
    /// Created hidden; KS7PreviewController reveals it.
    explicit KS7QTCaptureView(QWidget *parent = nullptr);

    void awakeFromNib() { }

protected:
    void drawRect(const QRect &rect) override;
};
