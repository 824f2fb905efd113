#include "cameras/ChooseCameraMenu.h"

#include "cameras/KS7AnimatingStatusTableView.h"
#include "cameras/KS7Cam.h"

namespace {

/// Every refresh makes new records, so compare their contents: the list may change while the menu is open.
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
    connect(this, &QMenu::aboutToShow, this, &ChooseCameraMenu::rebuild);
}

void ChooseCameraMenu::rebuild()
{
    clear();
    for (int row = 0; row < mTable->numberOfRows(); ++row) {
        auto name = fontMetrics().elidedText(mTable->textOfRow(row), Qt::ElideMiddle,
                                             fontMetrics().averageCharWidth() * 60);
        // Escape ampersands, which would mark mnemonics.
        auto *entry = addAction(name.replace(QLatin1Char('&'), QStringLiteral("&&")));
        entry->setCheckable(true);
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
