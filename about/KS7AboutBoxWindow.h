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

    /// Fills in the version and the link to the web site. A click on the link opens it with `workspace`.
    void awakeFromNib(const platform::Bundle &bundle, std::shared_ptr<platform::Workspace> workspace);

    /// Sets the function that returns the text for "Copy Diagnosis"; a click copies it to the clipboard and
    /// says so.
    void setDiagnosis(std::function<QString()> report);

protected:
    void showEvent(QShowEvent *event) override;

private:
    QPushButton *mOkay = nullptr;
    QPushButton *mCopy = nullptr;
    QLabel *mIcon = nullptr;
    QLabel *mNotice = nullptr;
    QLabel *mCopied = nullptr;
};
