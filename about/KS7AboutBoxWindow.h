#pragma once

#include <QDialog>

#include <memory>

namespace platform {
class Bundle;
class Workspace;
}

class KSHandTextField;
class QLabel;

/// The about box: version and web site of the product.
class KS7AboutBoxWindow : public QDialog {
    Q_OBJECT
public:
    explicit KS7AboutBoxWindow(QWidget *parent = nullptr);

    QLabel *version = nullptr;
    KSHandTextField *website = nullptr;

    /// Fills version and web site; `workspace` is what a click on the site opens it with.
    void awakeFromNib(const platform::Bundle &bundle, std::shared_ptr<platform::Workspace> workspace);

private:
    QLabel *mIcon = nullptr;
};
