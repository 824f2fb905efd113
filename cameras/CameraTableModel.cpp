#include "cameras/CameraTableModel.h"

#include "cameras/CameraTableSource.h"
#include "cameras/CameraTitle.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "cameras/SanitizedLine.h"

#include <algorithm>

namespace {

/// Qt guesses whether a tool tip is rich text. Escape the text and mark it as rich, so that a camera's name
/// is never interpreted as HTML.
QString plainToolTip(const QString &text)
{
    return QStringLiteral("<qt>") + text.toHtmlEscaped() + QStringLiteral("</qt>");
}

} // namespace

CameraTableModel::CameraTableModel(KS7AnimatingStatusTableView *table)
    : QAbstractTableModel(table)
    , mTable(table)
{
}

void CameraTableModel::reload()
{
    auto *source = mTable->settingsController;
    setRowCount(source ? std::max(0, source->numberOfRowsInTableView(mTable)) : 0);
    if (mRows > 0)
        Q_EMIT dataChanged(index(0, 0), index(mRows - 1, 0));
}

void CameraTableModel::setRowCount(int rows)
{
    if (rows > mRows) {
        beginInsertRows({}, mRows, rows - 1);
        mRows = rows;
        endInsertRows();
    } else if (rows < mRows) {
        beginRemoveRows({}, rows, mRows - 1);
        mRows = rows;
        endRemoveRows();
    }
}

int CameraTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : mRows;
}

int CameraTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 1;
}

QVariant CameraTableModel::data(const QModelIndex &index, int role) const
{
    auto *source = mTable->settingsController;
    if (!index.isValid() || !source)
        return {};
    if (role == RecordRole)
        return source->tableViewObjectValue(mTable, KS7AnimatingStatusTableView::CameraColumn, index.row());
    if (role == Qt::AccessibleTextRole)
        return textOfRow(index.row());
    if (role == Qt::ToolTipRole)
        return plainToolTip(toolTipOfRow(index.row()));
    return {};
}

QString CameraTableModel::toolTipOfRow(int row) const
{
    const auto camera = data(index(row, 0), RecordRole).value<std::shared_ptr<KS7Cam>>();
    return camera ? titleAndStatus(cameraTitle(*camera), *camera) : textOfRow(row);
}

QString CameraTableModel::textOfRow(int row) const
{
    const auto camera = data(index(row, 0), RecordRole).value<std::shared_ptr<KS7Cam>>();
    return camera ? titleAndStatus(sanitizedLine(camera->friendlyName()), *camera) : tr("Unknown camera");
}
