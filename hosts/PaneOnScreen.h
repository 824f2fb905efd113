#pragma once

#include "pane/PreferencePane.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>
#include <QVariant>
#include <QWidget>

/// Puts the pane's view into `place`, an empty widget of the host. Calls willSelect() when the place is shown
/// and didUnselect() when it is hidden.
/// The pane outlives the place, so the view is taken out before the place is destroyed. With several places,
/// the view moves to the place that was created or shown last.
class PaneOnScreen : public QObject {
public:
    /// `place` and this object may be destroyed in either order. A host that ends destroys `place` first.
    PaneOnScreen(platform::PreferencePane *pane, QWidget *place)
        : mPane(pane)
        , mPlace(place)
    {
        auto *layout = new QVBoxLayout(place);
        layout->setContentsMargins(0, 0, 0, 0);
        takeView();
        place->installEventFilter(this);
        // Take the view out in time: QWidget emits destroyed() before it deletes its children.
        connect(place, &QObject::destroyed, this, &PaneOnScreen::releaseView);
        connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] { unselect(); });
    }

    ~PaneOnScreen() override { releaseView(); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // Ignore spontaneous events. They come from minimising or restoring the window, and a minimised pane
        // counts as shown.
        if (!event->spontaneous() && event->type() == QEvent::Show)
            QTimer::singleShot(0, this, [this] { selectIfVisible(); });
        else if (!event->spontaneous() && event->type() == QEvent::Hide)
            unselect();
        return QObject::eventFilter(watched, event);
    }

private:
    /// The name of a dynamic property of the view. Its value is the PaneOnScreen that contains the view now.
    static constexpr const char *Holder = "ks7PaneOnScreen";

    [[nodiscard]] PaneOnScreen *holder() const
    {
        return static_cast<PaneOnScreen *>(mPane->mainView()->property(Holder).value<QObject *>());
    }

    void takeView()
    {
        if (holder() == this)
            return;
        if (holder())
            holder()->unselect();
        mPane->mainView()->setProperty(Holder, QVariant::fromValue<QObject *>(this));
        mPlace->layout()->addWidget(mPane->mainView());
        mPane->mainView()->show();
    }

    void releaseView()
    {
        unselect();
        if (holder() != this)
            return;
        mPane->mainView()->setParent(nullptr);
        mPane->mainView()->setProperty(Holder, QVariant());
    }

    // Called on the next turn of the event loop after a show event. willSelect() may block on the agent and
    // open a sheet, which needs a visible window.
    void selectIfVisible()
    {
        if (mSelected || !mPlace || !mPlace->isVisible())
            return;
        takeView();
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
