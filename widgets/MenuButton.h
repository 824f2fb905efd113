#pragma once

#include <QToolButton>

/// A button that only opens its menu. Assistive programs can open the menu and reach its items as children of
/// the button; QToolButton's accessible object supports neither.
class MenuButton : public QToolButton {
    Q_OBJECT
public:
    explicit MenuButton(QWidget *parent = nullptr);

protected:
    /// Breeze draws a focused button's icon in the colour of selected text: white on the button's white
    /// background.
    void paintEvent(QPaintEvent *event) override;
    void actionEvent(QActionEvent *event) override;

private:
    /// On Wayland the button receives no leave event when the pointer moves into its menu.
    void endHover();
};
