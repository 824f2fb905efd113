#include "cameras/ChooseCameraMenu.h"

#include "cameras/CameraTitle.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "cameras/KS7Cam.h"

#include <QActionGroup>

namespace {

/// Whether two records describe the same camera. The list may be refreshed while the menu is open, and each
/// refresh creates new records. So compare their contents, not their pointers.
bool isSameCamera(const std::shared_ptr<KS7Cam> &before, const std::shared_ptr<KS7Cam> &now)
{
    if (!before || !now)
        return before == now;
    return before->cameraIDString() == now->cameraIDString() && before->friendlyName() == now->friendlyName();
}

} // namespace

ChooseCameraMenu::ChooseCameraMenu(KS7AnimatingStatusTableView *table, QWidget *parent)
    : QMenu(tr("Choose Camera"), parent)
    , mTable(table)
{
    // Let a menu that is higher than the screen scroll. By default it would get several columns instead.
    setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1; }"));
    connect(this, &QMenu::aboutToShow, this, &ChooseCameraMenu::rebuild);
}

QStringList ChooseCameraMenu::names() const
{
    QStringList names;
    for (int row = 0; row < mTable->numberOfRows(); ++row) {
        const auto camera = mTable->cameraInRow(row);
        names.append(camera ? camera->friendlyName() : QString());
    }
    return names;
}

QString ChooseCameraMenu::textOfEntry(int row, const QStringList &names) const
{
    const auto camera = mTable->cameraInRow(row);
    if (!camera || names.count(camera->friendlyName()) == 1)
        return mTable->textOfRow(row);
    return titleAndStatus(cameraTitle(*camera), *camera);
}

void ChooseCameraMenu::rebuild()
{
    clear();
    const auto all = names();
    delete mGroup;
    mGroup = new QActionGroup(this);
    for (int row = 0; row < mTable->numberOfRows(); ++row) {
        auto name = fontMetrics().elidedText(textOfEntry(row, all), Qt::ElideMiddle,
                                             fontMetrics().averageCharWidth() * 60);
        // Double the ampersands, because QMenu shows a single one as a mnemonic.
        auto *entry = addAction(name.replace(QLatin1Char('&'), QStringLiteral("&&")));
        entry->setCheckable(true);
        // The entries are exclusive, so that Qt draws radio marks instead of check marks.
        mGroup->addAction(entry);
        entry->setChecked(row == mTable->selectedRow());
        entry->setEnabled(mTable->isEnabled());
        connect(entry, &QAction::triggered, this, [this, row, camera = mTable->cameraInRow(row)] {
            if (isSameCamera(camera, mTable->cameraInRow(row)))
                mTable->clickRow(row);
        });
    }
    if (isEmpty())
        addAction(mTable->placeholderText())->setEnabled(false);
}
