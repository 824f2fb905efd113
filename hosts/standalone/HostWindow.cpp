#include "hosts/standalone/HostWindow.h"

#include "hosts/standalone/HostIcon.h"

#include <QIcon>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedLayout>
#include <QStyle>
#include <QToolButton>

namespace {

/// Room for the frame that the window manager adds to the window, in logical pixels.
constexpr QSize Frame{16, 48};

/// Shows the pane. Adds scroll bars if the screen is too small; on larger screens the window cannot become
/// smaller than the pane.
class PaneArea final : public QScrollArea {
public:
    explicit PaneArea(QWidget *content)
    {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidget(content);
    }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        constexpr QSize FrameAndBar{40, 100};
        return widget()->minimumSizeHint().boundedTo(screen()->availableSize() - FrameAndBar);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::LayoutRequest) {
            updateGeometry();
            fitContent();
        }
        return QScrollArea::eventFilter(watched, event);
    }
    void resizeEvent(QResizeEvent *event) override
    {
        QScrollArea::resizeEvent(event);
        fitContent();
    }

private:
    // Do not use setWidgetResizable(): it would scroll a pane below its size hint, although the pane can
    // shrink to its minimum size hint.
    void fitContent()
    {
        const QSize least = widget()->minimumSizeHint();
        QSize room = maximumViewportSize();
        if (least.height() > room.height())
            room.rwidth() -= verticalScrollBar()->sizeHint().width();
        widget()->resize(room.expandedTo(least));
    }
};

} // namespace

HostWindow::HostWindow(platform::PreferencePane *pane)
    : mShowAll(new QPushButton(tr("Show &All"), this))
    // A layout and not a QStackedWidget, because screen readers announce that one as a layered pane.
    , mPages(new QStackedLayout)
    , mPanePage(new QWidget)
    , mOverview(new QWidget)
    , mPaneIcon(new QToolButton(mOverview))
    , mOnScreen(pane, mPanePage)
{
    setCentralWidget(new QWidget);
    // The window needs no margins, because each of its pages has margins.
    auto *layout = new QVBoxLayout(centralWidget());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(makeBar());
    layout->addLayout(mPages, 1);
    buildOverview();
    mPages->addWidget(new PaneArea(mPanePage));
    mPages->addWidget(mOverview);
    showPane();
}

QLayout *HostWindow::makeBar()
{
    mShowAll->setObjectName(QStringLiteral("showAllButton"));
    mShowAll->setAutoDefault(false);
    connect(mShowAll, &QPushButton::clicked, this, &HostWindow::showOverview);
    auto *bar = new QHBoxLayout;
    bar->setContentsMargins(style()->pixelMetric(QStyle::PM_LayoutLeftMargin),
                            style()->pixelMetric(QStyle::PM_LayoutTopMargin),
                            style()->pixelMetric(QStyle::PM_LayoutRightMargin), 0);
    bar->addWidget(mShowAll);
    bar->addStretch();
    return bar;
}

void HostWindow::buildOverview()
{
    mPaneIcon->setObjectName(QStringLiteral("paneIcon"));
    mPaneIcon->setText(tr("KS-7"));
    mPaneIcon->setIcon(hostIcon());
    mPaneIcon->setIconSize(QSize(64, 64));
    mPaneIcon->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    mPaneIcon->setAutoRaise(true);
    mPaneIcon->setFocusPolicy(Qt::StrongFocus);
    connect(mPaneIcon, &QToolButton::clicked, this, &HostWindow::showPane);
    (new QVBoxLayout(mOverview))->addWidget(mPaneIcon, 0, Qt::AlignTop | Qt::AlignLeft);
}

QSize HostWindow::sizeHint() const
{
    constexpr QSize ListBesidePicture{860, 560};
    const QSize wanted = QMainWindow::sizeHint().expandedTo(ListBesidePicture);
    return wanted.boundedTo(screen()->availableSize() - Frame);
}

void HostWindow::showPane()
{
    setWindowTitle(tr("KS-7"));
    mShowAll->setEnabled(true);
    mPages->setCurrentIndex(0);
}

void HostWindow::showOverview()
{
    setWindowTitle(tr("All Preferences"));
    mPages->setCurrentWidget(mOverview);
    mShowAll->setEnabled(false);
    mPaneIcon->setFocus();
}
