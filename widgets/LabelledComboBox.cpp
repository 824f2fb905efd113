#include "widgets/LabelledComboBox.h"

#include "widgets/Accessible.h"
#include "widgets/Announcement.h"

#include <QAbstractItemView>
#include <QWheelEvent>

namespace {

class ComboBoxAccessible final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit ComboBoxAccessible(LabelledComboBox *comboBox)
        : QAccessibleWidget(comboBox, QAccessible::ComboBox)
    {
    }

    // Overrides for QAccessibleWidget. The only accessible child of the combo box is its list.
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? choice() : QAccessibleWidget::text(kind);
    }
    [[nodiscard]] QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        state.hasPopup = true;
        state.expandable = true;
        state.expanded = isOpen();
        state.collapsed = !isOpen();
        return state;
    }
    [[nodiscard]] int childCount() const override { return 1; }
    [[nodiscard]] QAccessibleInterface *child(int index) const override
    {
        if (index != 0)
            return nullptr;
        // Clear the current item: Qt reports the current item of a closed list as focused, and a screen
        // reader that starts would go there. The closing itself is too early for this, because Qt reads the
        // chosen item after it.
        if (!isOpen())
            comboBox()->view()->selectionModel()->clearCurrentIndex();
        return QAccessible::queryAccessibleInterface(comboBox()->view());
    }
    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override
    {
        return isOpen() && child(0)->rect().contains(x, y) ? child(0) : nullptr;
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *other) const override
    {
        return other->object() == comboBox()->view() ? 0 : -1;
    }

    // Two actions open and close the list. Two choose the neighbour, because the items of Qt's list can be
    // selected by assistive programs, but not chosen.
    [[nodiscard]] QStringList actionNames() const override
    {
        return {showMenuAction(), pressAction(), increaseAction(), decreaseAction()};
    }
    void doAction(const QString &name) override
    {
        if (!actionNames().contains(name) || !comboBox()->isEnabled())
            return;
        if (name == increaseAction() || name == decreaseAction())
            choose(comboBox()->currentIndex() + (name == increaseAction() ? 1 : -1));
        else
            isOpen() ? comboBox()->hidePopup() : comboBox()->showPopup();
    }

    // Overrides for the text interface. The text is the current choice, which is read-only here.
    void selection(int, int *start, int *end) const override { *start = *end = 0; }
    [[nodiscard]] int selectionCount() const override { return 0; }
    void addSelection(int, int) override { }
    void removeSelection(int) override { }
    void setSelection(int, int, int) override { }
    [[nodiscard]] int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override { }
    [[nodiscard]] QString text(int start, int end) const override { return choice().mid(start, end - start); }
    [[nodiscard]] int characterCount() const override { return static_cast<int>(choice().size()); }
    [[nodiscard]] QRect characterRect(int) const override { return rect(); }
    [[nodiscard]] int offsetAtPoint(const QPoint &) const override { return -1; }
    void scrollToSubstring(int, int) override { }
    QString attributes(int, int *start, int *end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }

protected:
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

private:
    [[nodiscard]] LabelledComboBox *comboBox() const { return static_cast<LabelledComboBox *>(widget()); }
    [[nodiscard]] QString choice() const { return comboBox()->currentText(); }
    [[nodiscard]] bool isOpen() const { return comboBox()->view()->isVisible(); }

    /// Does the same as a choice by mouse or keyboard.
    void choose(int index)
    {
        if (index < 0 || index >= comboBox()->count())
            return;
        comboBox()->setCurrentIndex(index);
        Q_EMIT comboBox()->activated(index);
    }
};

} // namespace

LabelledComboBox::LabelledComboBox(QWidget *parent)
    : QComboBox(parent)
{
    platform::installAccessible<LabelledComboBox, ComboBoxAccessible>();
    // QComboBox has Qt::WheelFocus: the wheel would first give it the focus and then change the choice.
    setFocusPolicy(Qt::StrongFocus);
}

void LabelledComboBox::keyPressEvent(QKeyEvent *event)
{
    const int before = currentIndex();
    QComboBox::keyPressEvent(event);
    // Qt reports a new choice as a new name, but the name here is the label.
    if (currentIndex() != before)
        announce(this, currentText());
}

void LabelledComboBox::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}
