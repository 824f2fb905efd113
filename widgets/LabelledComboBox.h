#pragma once

#include <QComboBox>

/// A combo box with its label as accessible name and its choice as accessible text. Qt's own accessible combo
/// box has the choice as its name, so a screen reader's list of controls omits the label. A choice by a key
/// is announced. Without the focus, it leaves the wheel to the page that it is on, so that scrolling a page
/// changes no setting.
class LabelledComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit LabelledComboBox(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
};
