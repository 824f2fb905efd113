#include "pane/PaneWords.h"

#include "cameras/KS7AnimatingStatusTableView.h"
#include "pane/Outlets.h"
#include "preview/KS7PreviewController.h"
#include "preview/KS7QTCaptureView.h"
#include "widgets/Announcement.h"
#include "widgets/NoticeStrip.h"

#include <QLabel>
#include <QPushButton>
#include <QToolButton>

#include <utility>

PaneWords::PaneWords(const Outlets &outlets)
    : mOutlets(outlets)
{
}

void PaneWords::show(const PaneFacts &facts)
{
    const PaneFacts before = std::exchange(mFacts, facts);
    mOutlets.noticeStrip->setMessage(PaneSentences::notice(mFacts));
    showList();
    showButtons();
    showPicture();
    const QString news = PaneSentences::news(before, mFacts);
    if (news != mOutlets.cameraListTable->accessibleDescription() || !isListRead(before))
        announce(mOutlets.cameraListTable, news);
}

bool PaneWords::isListRead(const PaneFacts &before) const
{
    // When the selected row is removed, the focus moves to the list itself, and a screen reader reads the
    // list's description.
    const bool losesRow = before.hasSelection && !mFacts.hasSelection;
    return losesRow ? mOutlets.cameraListTable->hasFocus() : isDescriptionRead(mOutlets.cameraListTable);
}

void PaneWords::showList() const
{
    const QString next = PaneSentences::hint(mFacts);
    mOutlets.listHint->setText(next);
    mOutlets.listHint->setVisible(!next.isEmpty());
    mOutlets.cameraListTable->setPlaceholderText(PaneSentences::emptyList(mFacts));
    describe(mOutlets.cameraListTable, PaneSentences::listDescription(mFacts));
}

void PaneWords::showButtons() const
{
    mOutlets.addButton->setToolTip(PaneSentences::addButton(mFacts));
    mOutlets.removeButton->setToolTip(PaneSentences::removeButton(mFacts));
    mOutlets.pulldownMenu->setToolTip(PaneSentences::actionsButton(mFacts));
    mOutlets.startButton->setToolTip(PaneSentences::startButton(mFacts));
}

void PaneWords::showPicture() const
{
    const QString text = PaneSentences::caption(mFacts);
    mOutlets.pictureCaption->setText(text);
    describe(mOutlets.previewView->qtView, text);
}
