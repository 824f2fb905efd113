#pragma once

#include "pane/PreferencePane.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

/// Puts a pane's view into a host's place for it, and tells the pane when that place comes on screen and when
/// it goes, once each. The view is taken out again before the place dies: hosts destroy it while the pane
/// lives on.
class PaneOnScreen : public QObject {
public:
    /// `place` is empty, and outlives this object or holds it as a member.
    PaneOnScreen(platform::PreferencePane *pane, QWidget *place)
        : mPane(pane)
        , mPlace(place)
    {
        auto *layout = new QVBoxLayout(place);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(mPane->mainView());
        mPane->mainView()->show();
        place->installEventFilter(this);
        connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] { unselect(); });
    }

    ~PaneOnScreen() override
    {
        unselect();
        if (mPlace && mPane->mainView()->parentWidget() == mPlace)
            mPane->mainView()->setParent(nullptr);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // The window system's own showing and hiding is a window that is iconified and brought back: the pane
        // stays connected meanwhile.
        if (!event->spontaneous() && event->type() == QEvent::Show)
            QTimer::singleShot(0, this, [this] { selectIfVisible(); });
        else if (!event->spontaneous() && event->type() == QEvent::Hide)
            unselect();
        return QObject::eventFilter(watched, event);
    }

private:
    // Selecting may wait for the agent and show a sheet; it comes after the event, when there is a window to
    // show it on.
    void selectIfVisible()
    {
        if (mSelected || !mPlace || !mPlace->isVisible())
            return;
        mSelected = true;
        mPane->willSelect();
    }

    void unselect()
    {
        if (!mSelected)
            return;
        mSelected = false;
        mPane->didUnselect();
    }

    platform::PreferencePane *mPane;
    QPointer<QWidget> mPlace;
    bool mSelected = false;
};
