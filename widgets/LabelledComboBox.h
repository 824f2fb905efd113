#pragma once

#include <QComboBox>

/// A combo box that assistive programs know by its label, with its choice as its text. The toolkit's own goes
/// by the choice alone, so that a list of a window's controls does not say what is chosen there.
class LabelledComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit LabelledComboBox(QWidget *parent = nullptr);
};
