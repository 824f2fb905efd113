#pragma once

#include <QMessageBox>

namespace platform {

struct AlertSheet;

/// An alert on screen: plain text, an icon for its kind, one button.
class AlertBox final : public QMessageBox {
    Q_OBJECT
public:
    /// Chooses a width for the box that fits `window` and its screen.
    AlertBox(const AlertSheet &alert, const QWidget *window);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace platform
