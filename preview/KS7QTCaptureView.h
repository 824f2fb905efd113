#pragma once

#include "platform/capture/Capture.h"

/// The live picture while a session runs, black otherwise.
class KS7QTCaptureView : public platform::CaptureView {
    Q_OBJECT
public:
    /// Made hidden: the preview reveals it.
    explicit KS7QTCaptureView(QWidget *parent = nullptr);

    void awakeFromNib() { }

protected:
    void drawRect(const QRect &rect) override;
};
