#pragma once

#include "pane/PreferencePane.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>
#include <QVariant>
#include <QWidget>

/// Puts the pane's view into a widget of the host, the place. Tells the pane once when the place is shown
/// and once when it is hidden. The pane outlives the place, so the view is taken out before the place is
/// destroyed. With several places, the view moves to the one made or shown last; only that one tells the
/// pane.
class PaneOnScreen : public QObject {
public:
    /// `place` must be empty. Place and PaneOnScreen may be destroyed in either order; a host that ends
    /// destroys the place first.
    PaneOnScreen(platform::PreferencePane *pane, QWidget *place)
        : mPane(pane)
        , mPlace(place)
    {
        auto *layout = new QVBoxLayout(place);
        layout->setContentsMargins(0, 0, 0, 0);
        takeView();
        place->installEventFilter(this);
        // QWidget emits destroyed() before it deletes its children.
        connect(place, &QObject::destroyed, this, &PaneOnScreen::releaseView);
        connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] { unselect(); });
    }

    ~PaneOnScreen() override { releaseView(); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // Spontaneous events come from minimising and restoring the window. A minimised pane counts as shown.
        if (!event->spontaneous() && event->type() == QEvent::Show)
            QTimer::singleShot(0, this, [this] { selectIfVisible(); });
        else if (!event->spontaneous() && event->type() == QEvent::Hide)
            unselect();
        return QObject::eventFilter(watched, event);
    }

private:
    /// Property of the view: the PaneOnScreen that holds it.
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

    // Queued until after the show event: willSelect() may block on the agent and open a sheet, which needs a
    // visible window.
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
