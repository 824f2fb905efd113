#pragma once

#include <QComboBox>

/// A combo box with its label as accessible name and its choice as accessible text. Qt's own accessible combo
/// box has the choice as its name, so a screen reader's list of controls omits the label.
class LabelledComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit LabelledComboBox(QWidget *parent = nullptr);
};
