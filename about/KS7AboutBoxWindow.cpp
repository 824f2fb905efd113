#include "about/KS7AboutBoxWindow.h"

#include "about/KSHandTextField.h"
#include "about/Version.h"
#include "cameras/PrefsBundle.h"
#include "platform/desktop/Workspace.h"
#include "platform/sheets/SentenceLabel.h"
#include "ui_about.h"
#include "widgets/Announcement.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLayout>
#include <QPushButton>
#include <QShowEvent>
#include <QUrl>

namespace {

const auto WebsiteHost = QStringLiteral(KS7_WEBSITE_HOST);
const auto IconName = QStringLiteral("ks7");
constexpr int IconSize = 64;

} // namespace

KS7AboutBoxWindow::KS7AboutBoxWindow(QWidget *parent)
    : QDialog(parent)
{
    Ui::AboutBox ui;
    ui.setupUi(this);
    version = ui.version;
    website = ui.website;
    mOkay = ui.aboutButtons->button(QDialogButtonBox::Ok);
    mOkay->setObjectName(QStringLiteral("aboutOkayButton"));
    mOkay->setText(tr("OK"));
    mCopy = ui.aboutButtons->addButton(tr("&Copy Diagnosis"), QDialogButtonBox::ActionRole);
    mCopy->setObjectName(QStringLiteral("aboutCopyButton"));
    mCopy->setToolTip(tr("Copies what the pane finds on this machine, for a bug report"));
    mIcon = ui.icon;
    mNotice = ui.copyrightNotice;
    mCopied = ui.copiedMessage;
}

void KS7AboutBoxWindow::setDiagnosis(std::function<QString()> report)
{
    connect(mCopy, &QPushButton::clicked, this, [this, report = std::move(report)] {
        QGuiApplication::clipboard()->setText(report());
        mCopied->show();
        announce(mCopied, mCopied->text());
    });
}

void KS7AboutBoxWindow::showEvent(QShowEvent *event)
{
    if (!event->spontaneous())
        mCopied->hide();
    if (parentWidget())
        platform::fitSentence(mNotice, parentWidget()->window());
    // Resize the box now, because QDialog::showEvent() places it by its size.
    layout()->activate();
    QDialog::showEvent(event);
    // Give OK the focus. Otherwise the link, the first widget, would have it, and Return would open the web
    // browser.
    mOkay->setFocus(Qt::OtherFocusReason);
}

void KS7AboutBoxWindow::awakeFromNib(const platform::Bundle &bundle,
                                     std::shared_ptr<platform::Workspace> workspace)
{
    version->setText(tr("v%1").arg(paneVersion(bundle)));
    website->setTextWithLink(WebsiteHost, static_cast<int>(WebsiteHost.size()));
    website->setAlignment(Qt::AlignCenter);
    website->setAction([workspace = std::move(workspace)] {
        workspace->openURL(QUrl(QStringLiteral("http://") + WebsiteHost));
    });
    const QIcon icon = imageNamedFromOurBundle(bundle, IconName);
    mIcon->setPixmap(icon.pixmap(IconSize, IconSize));
    mIcon->setHidden(icon.isNull());
}
