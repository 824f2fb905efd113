#include "hosts/standalone/HostWindow.h"

#include <QIcon>
#include <QPushButton>
#include <QStackedWidget>
#include <QStyle>
#include <QToolButton>

HostWindow::HostWindow(platform::PreferencePane *pane)
    : mShowAll(new QPushButton(tr("Show &All"), this))
    , mPages(new QStackedWidget(this))
    , mPanePage(new QWidget)
    , mOverview(new QWidget)
    , mPaneIcon(new QToolButton(mOverview))
    , mOnScreen(pane, mPanePage)
{
    setCentralWidget(new QWidget);
    // The pages have margins of their own.
    auto *layout = new QVBoxLayout(centralWidget());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(makeBar());
    layout->addWidget(mPages, 1);
    buildOverview();
    mPages->addWidget(mPanePage);
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
    mPaneIcon->setIcon(QIcon(QStringLiteral(":/host/ks7-preferences.svg")));
    mPaneIcon->setIconSize(QSize(64, 64));
    mPaneIcon->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    mPaneIcon->setAutoRaise(true);
    mPaneIcon->setFocusPolicy(Qt::StrongFocus);
    connect(mPaneIcon, &QToolButton::clicked, this, &HostWindow::showPane);
    (new QVBoxLayout(mOverview))->addWidget(mPaneIcon, 0, Qt::AlignTop | Qt::AlignLeft);
}

void HostWindow::showPane()
{
    setWindowTitle(tr("KS-7"));
    mShowAll->setEnabled(true);
    mPages->setCurrentWidget(mPanePage);
}

void HostWindow::showOverview()
{
    setWindowTitle(tr("All Preferences"));
    mPages->setCurrentWidget(mOverview);
    mShowAll->setEnabled(false);
    mPaneIcon->setFocus();
}
