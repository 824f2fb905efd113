#pragma once

#include <QMessageBox>

namespace platform {

struct AlertSheet;

/// An alert on screen: plain text, an icon for its kind, one button.
class AlertBox final : public QMessageBox {
    Q_OBJECT
public:
    explicit AlertBox(const AlertSheet &alert);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace platform
