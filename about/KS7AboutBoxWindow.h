#pragma once

#include <QDialog>

#include <functional>
#include <memory>

namespace platform {
class Bundle;
class Workspace;
}

class KSHandTextField;
class QLabel;
class QPushButton;

/// The about box: version and web site of the product.
class KS7AboutBoxWindow : public QDialog {
    Q_OBJECT
public:
    explicit KS7AboutBoxWindow(QWidget *parent = nullptr);

    QLabel *version = nullptr;
    KSHandTextField *website = nullptr;

    /// Fills version and web site; `workspace` is what a click on the site opens it with.
    void awakeFromNib(const platform::Bundle &bundle, std::shared_ptr<platform::Workspace> workspace);

    /// What "Copy Diagnosis" puts on the clipboard.
    void setDiagnosis(std::function<QString()> report);

protected:
    void showEvent(QShowEvent *event) override;

private:
    QPushButton *mOkay = nullptr;
    QPushButton *mCopy = nullptr;
    QLabel *mIcon = nullptr;
};
