#include "widgets/NoticeStrip.h"

#include "widgets/Announcement.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

NoticeStrip::NoticeStrip(QWidget *parent)
    : QFrame(parent)
    , mMessage(new QLabel(this))
    , mButton(new QPushButton(this))
{
    setFrameShape(QFrame::StyledPanel);
    mMessage->setObjectName(QStringLiteral("noticeMessage"));
    mMessage->setWordWrap(true);
    mButton->setObjectName(QStringLiteral("noticeButton"));
    mButton->setAutoDefault(false);
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(mMessage, 1);
    layout->addWidget(mButton);
    hide();
}

void NoticeStrip::setMessage(const QString &message)
{
    mMessage->setText(message);
    describe(mButton, message);
    setVisible(!message.isEmpty());
}

QString NoticeStrip::message() const
{
    return mMessage->text();
}
