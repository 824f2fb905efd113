#include "pane/PaneWords.h"

#include "cameras/KS7AnimatingStatusTableView.h"
#include "preview/KS7QTCaptureView.h"
#include "widgets/Announcement.h"
#include "widgets/NoticeStrip.h"

#include <QAbstractButton>
#include <QLabel>

#include <utility>

void PaneWords::show(const PaneFacts &facts)
{
    const PaneFacts before = std::exchange(mFacts, facts);
    notice->setMessage(PaneSentences::notice(mFacts));
    showList();
    showButtons();
    showPicture();
    announce(list, PaneSentences::news(before, mFacts));
}

void PaneWords::showList() const
{
    const QString next = PaneSentences::hint(mFacts);
    hint->setText(next);
    hint->setVisible(!next.isEmpty());
    list->setPlaceholderText(PaneSentences::emptyList(mFacts));
    describe(list, PaneSentences::listDescription(mFacts));
}

void PaneWords::showButtons() const
{
    addButton->setToolTip(PaneSentences::addButton(mFacts));
    removeButton->setToolTip(PaneSentences::removeButton(mFacts));
    actionsButton->setToolTip(PaneSentences::actionsButton(mFacts));
    startButton->setToolTip(PaneSentences::startButton(mFacts));
}

void PaneWords::showPicture() const
{
    const QString text = PaneSentences::caption(mFacts);
    caption->setText(text);
    describe(picture, text);
}
