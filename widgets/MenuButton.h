#pragma once

#include <QToolButton>

/// A button that only opens its menu. Assistive programs can open the menu and reach its items as children of
/// the button; QToolButton's accessible object supports neither.
class MenuButton : public QToolButton {
    Q_OBJECT
public:
    explicit MenuButton(QWidget *parent = nullptr);

protected:
    /// Draws the icon itself. Breeze would draw the icon of a focused button in the colour of selected text,
    /// which is white on a white background.
    void paintEvent(QPaintEvent *event) override;
    void actionEvent(QActionEvent *event) override;

private:
    /// Sends the button the leave event that is missing on Wayland when the pointer moves into its menu.
    /// Without it, the button would stay highlighted.
    void endHover();
};
