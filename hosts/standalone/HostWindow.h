#pragma once

#include "hosts/PaneOnScreen.h"

#include <QMainWindow>

class QLayout;
class QPushButton;
class QStackedLayout;
class QToolButton;

/// The only window of the stand-alone host. It shows either the pane or an overview with the pane's icon.
class HostWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit HostWindow(platform::PreferencePane *pane);

    void showPane();
    void showOverview();
    /// Wide enough for the list beside the picture, but with the window's frame not larger than the screen.
    [[nodiscard]] QSize sizeHint() const override;

private:
    [[nodiscard]] QLayout *makeBar();
    void buildOverview();

    QPushButton *mShowAll;
    QStackedLayout *mPages;
    QWidget *mPanePage;
    QWidget *mOverview;
    QToolButton *mPaneIcon;
    PaneOnScreen mOnScreen;
};
