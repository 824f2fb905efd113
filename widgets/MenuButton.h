#pragma once

#include <QToolButton>

/// A button that is there for its menu only. Assistive programs open the menu by it and meet the menu's items
/// below it, open or not; the toolkit's own offers them neither.
class MenuButton : public QToolButton {
    Q_OBJECT
public:
    explicit MenuButton(QWidget *parent = nullptr);

protected:
    /// Breeze draws the icon of a focused button in the colour of selected text, white on the button's white.
    void paintEvent(QPaintEvent *event) override;
    void actionEvent(QActionEvent *event) override;

private:
    /// On Wayland the pointer that left the button for its menu is never reported as gone.
    void endHover();
};
