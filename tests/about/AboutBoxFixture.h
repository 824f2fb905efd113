#pragma once

#include "about/KS7AboutBoxWindow.h"
#include "tests/support/ActiveWindow.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/Timeout.h"

#include <QAction>
#include <QMenu>
#include <QTest>
#include <QToolButton>

#include <algorithm>

/// A pane with its about box.
struct AboutBoxFixture : PaneFixture {
    /// Opens the box from the pane's menu. Shows the pane first if necessary.
    void showAboutBox()
    {
        if (!pane)
            show();
        const auto actions = outlets().pulldownMenu->menu()->actions();
        const auto about = std::find_if(actions.begin(), actions.end(), [](const QAction *action) {
            return action->text() == QStringLiteral("About KS-7…");
        });
        QVERIFY(about != actions.end());
        (*about)->trigger();
        QVERIFY(box());
        activate(box());
    }

    [[nodiscard]] KS7AboutBoxWindow *box() const { return window.findChild<KS7AboutBoxWindow *>(); }

    static void activate(QWidget *widget)
    {
        makeActive(widget);
        // Compare activeWindow(), because QWindow::isActive() is also true for a dialog whose parent window
        // is active.
        QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), widget, Timeout);
    }
};
