#pragma once

#include "pane/KS7SettingsWindowController.h"
#include "pane/KSPreferencesPanePref.h"
#include "pane/SharedPane.h"

#include <QVBoxLayout>
#include <QWidget>

/// Shows the process's only pane in a window, as a host would.
class PaneWindow {
public:
    PaneWindow()
    {
        mWindow.setLayout(new QVBoxLayout);
        mWindow.resize(900, 600);
        mWindow.layout()->addWidget(mPane->mainView());
    }
    void show()
    {
        mPane->mainView()->show();
        mWindow.show();
        mPane->willSelect();
    }
    void hide()
    {
        mPane->didUnselect();
        mWindow.hide();
    }
    /// Paints the whole window synchronously into a pixmap, without the window system.
    void paint() { mWindow.grab(); }
    [[nodiscard]] KS7SettingsWindowController &controller() const
    {
        return *mPane->mSettingsWindowController;
    }
    [[nodiscard]] KS7AnimatingStatusTableView *table() const { return controller().outlets.cameraListTable; }

private:
    KSPreferencesPanePref *const mPane = sharedPane();
    QWidget mWindow;
};
