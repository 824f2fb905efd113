#pragma once

#include <QComboBox>

/// A combo box whose accessible name is its label and whose accessible text is its choice. Qt's own is named
/// by the choice, so a list of the window's controls would not say what is chosen there.
class LabelledComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit LabelledComboBox(QWidget *parent = nullptr);
};
