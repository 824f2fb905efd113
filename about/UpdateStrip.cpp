#include "about/UpdateStrip.h"

#include "widgets/AdaptiveColumns.h"
#include "widgets/Announcement.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

using platform::UpdateOffer;

UpdateStrip::UpdateStrip(UpdateOffer &offer, QWidget *parent)
    : QFrame(parent)
    , mOffer(offer)
    , mRow(new AdaptiveColumns(this))
    , mMessage(new QLabel(mRow))
    , mProgress(new QProgressBar(mRow))
{
    setObjectName(QStringLiteral("updateStrip"));
    setFrameShape(QFrame::StyledPanel);
    mMessage->setObjectName(QStringLiteral("updateMessage"));
    // A failure's reason comes from the package service and might look like markup, so show plain text.
    mMessage->setTextFormat(Qt::PlainText);
    mMessage->setWordWrap(true);
    mProgress->setObjectName(QStringLiteral("updateProgress"));
    mProgress->setAccessibleName(tr("Update progress"));
    (new QVBoxLayout(this))->addWidget(mRow);
    auto *row = new QHBoxLayout(mRow);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(mMessage, 1);
    row->addWidget(mProgress);
    mInstall = addButton(QStringLiteral("updateInstall"), tr("&Install"), &UpdateOffer::installChosen);
    mLater = addButton(QStringLiteral("updateLater"), tr("&Later"), &UpdateOffer::laterChosen);
    mSkip = addButton(QStringLiteral("updateSkip"), tr("S&kip This Version"), &UpdateOffer::skipChosen);
    mDismiss = addButton(QStringLiteral("updateDismiss"), tr("OK"), &UpdateOffer::laterChosen);
    connect(&offer, &UpdateOffer::changed, this, &UpdateStrip::follow);
    follow();
}

QPushButton *UpdateStrip::addButton(const QString &name, const QString &text, void (UpdateOffer::*answer)())
{
    auto *button = new QPushButton(text, mRow);
    button->setObjectName(name);
    button->setAutoDefault(false);
    mRow->layout()->addWidget(button);
    connect(button, &QPushButton::clicked, &mOffer, answer);
    return button;
}

void UpdateStrip::follow()
{
    const Stage stage = mOffer.stage();
    mMessage->setText(message());
    mInstall->setVisible(stage == Stage::Offered);
    mLater->setVisible(stage == Stage::Offered);
    mSkip->setVisible(stage == Stage::Offered);
    mDismiss->setVisible(stage == Stage::Installed || stage == Stage::Failed);
    mProgress->setVisible(stage == Stage::Installing);
    showProgress(mOffer.percentage());
    setVisible(stage != Stage::None);
    say(stage);
}

void UpdateStrip::say(Stage stage)
{
    // Set the name only if it differs: Qt would report an equal name as a change, at each change of the
    // percentage.
    if (accessibleName() != message())
        setAccessibleName(message());
    // Announce only a new stage. Otherwise screen readers would speak at every change of the percentage.
    if (stage != mShown)
        announce(this, message());
    mShown = stage;
}

void UpdateStrip::showProgress(int percentage)
{
    // A QProgressBar with the range 0 to 0 shows a busy indicator, which means that the progress is unknown.
    const bool known = percentage != UpdateOffer::UnknownPercentage;
    mProgress->setRange(0, known ? 100 : 0);
    mProgress->setValue(known ? percentage : -1);
}

QString UpdateStrip::message() const
{
    switch (mOffer.stage()) {
    case Stage::None:
        return {};
    case Stage::Offered:
        return tr("Version %1 of the KS-7 settings is available.").arg(mOffer.version());
    case Stage::Installing:
        return tr("Installing version %1…").arg(mOffer.version());
    case Stage::Installed:
        return tr("Version %1 is installed. Restart this application to use it.").arg(mOffer.version());
    case Stage::Failed:
        break;
    }
    const QString failed = tr("Version %1 could not be installed.").arg(mOffer.version());
    return mOffer.reason().isEmpty() ? failed : failed + QLatin1Char(' ') + mOffer.reason();
}
