#include "cameras/CameraTableAccessible.h"

#include "cameras/KS7AnimatingStatusTableView.h"
#include "cameras/KS7Cam.h"
#include "cameras/SanitizedLine.h"
#include "widgets/Accessible.h"

#include <QCoreApplication>
#include <QHash>
#include <QPointer>
#include <QWindow>

#include <utility>

namespace {

using Table = KS7AnimatingStatusTableView;

bool hasNamesake(const Table &table, int row)
{
    const QString name = table.cameraInRow(row)->friendlyName();
    for (int other = 0; other < table.numberOfRows(); ++other) {
        const auto camera = table.cameraInRow(other);
        if (other != row && camera && camera->friendlyName() == name)
            return true;
    }
    return false;
}

/// Returns a sentence with the camera's ID and a blank if another camera has the same name; otherwise empty.
QString idSentence(const Table &table, int row)
{
    const auto camera = table.cameraInRow(row);
    const QString id = camera ? sanitizedLine(camera->cameraIDString()) : QString();
    if (id.isEmpty() || !hasNamesake(table, row))
        return {};
    return QCoreApplication::translate("KS7Cam", "Camera ID: %1.").arg(id) + QLatin1Char(' ');
}

/// Represents a row of the camera table as one cell, because the table has only one column.
class RowAccessible final : public QAccessibleInterface,
                            public QAccessibleTableCellInterface,
                            public QAccessibleActionInterface {
public:
    RowAccessible(Table *table, int row)
        : mTable(table)
        , mRow(row)
    {
    }

    // QAccessibleInterface
    [[nodiscard]] bool isValid() const override { return mTable && mRow < mTable->numberOfRows(); }
    [[nodiscard]] QObject *object() const override { return nullptr; }
    [[nodiscard]] QWindow *window() const override
    {
        return mTable ? mTable->window()->windowHandle() : nullptr;
    }
    [[nodiscard]] QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(mTable);
    }
    [[nodiscard]] QAccessibleInterface *child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Cell; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (!isValid())
            return {};
        // The description repeats the table's one, because the selected row has the focus instead of the
        // table.
        if (kind == QAccessible::Description)
            return QString(idSentence(*mTable, mRow) + mTable->accessibleDescription());
        return kind == QAccessible::Name ? mTable->textOfRow(mRow) : QString();
    }
    void setText(QAccessible::Text, const QString &) override { }
    [[nodiscard]] QRect rect() const override
    {
        const auto inViewport = rectInViewport();
        return {mTable ? mTable->viewport()->mapToGlobal(inViewport.topLeft()) : QPoint(), inViewport.size()};
    }
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        if (state.invalid)
            return state;
        state.disabled = !mTable->isEnabled();
        state.selectable = true;
        state.focusable = true;
        state.selected = isSelected();
        state.focused = isSelected() && mTable->hasFocus();
        state.invisible = !mTable->isVisible();
        state.offscreen = !mTable->viewport()->rect().intersects(rectInViewport());
        return state;
    }

    // QAccessibleTableCellInterface
    [[nodiscard]] bool isSelected() const override { return mTable && mTable->selectedRow() == mRow; }
    [[nodiscard]] QList<QAccessibleInterface *> columnHeaderCells() const override { return {}; }
    [[nodiscard]] QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnIndex() const override { return 0; }
    [[nodiscard]] int rowIndex() const override { return mRow; }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface *table() const override { return parent(); }

    // QAccessibleActionInterface
    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString &name) override
    {
        if (isValid() && name == pressAction())
            mTable->clickRow(mRow);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString &) const override { return {}; }

protected:
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TableCellInterface)
            return static_cast<QAccessibleTableCellInterface *>(this);
        if (type == QAccessible::ActionInterface)
            return static_cast<QAccessibleActionInterface *>(this);
        return nullptr;
    }

private:
    [[nodiscard]] QRect rectInViewport() const
    {
        return isValid() ? mTable->visualRect(mTable->model()->index(mRow, 0)) : QRect();
    }

    QPointer<Table> mTable;
    int mRow;
};

/// Represents the camera table. Only the rows are its children, because the headers are hidden.
class TableAccessible final : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit TableAccessible(Table *table)
        : QAccessibleWidget(table, QAccessible::Table)
    {
    }
    ~TableAccessible() override { forgetRowsFrom(0); }

    // QAccessibleInterface
    [[nodiscard]] QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        // The selected row is focused instead. A screen reader that starts would take the first focused
        // object, the table, and not say a new status of the row.
        state.focused = state.focused && table()->selectedRow() < 0;
        return state;
    }
    [[nodiscard]] int childCount() const override { return rowCount(); }
    [[nodiscard]] QAccessibleInterface *child(int row) const override { return cellAt(row, 0); }
    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override
    {
        const auto point = table()->viewport()->mapFromGlobal(QPoint(x, y));
        return table()->viewport()->rect().contains(point) ? child(table()->rowAt(point.y())) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface *focusChild() const override
    {
        return table()->hasFocus() ? child(table()->selectedRow()) : nullptr;
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *child) const override
    {
        auto *cell = const_cast<QAccessibleInterface *>(child)->tableCellInterface();
        return cell ? cell->rowIndex() : -1;
    }

    // QAccessibleTableInterface: cells
    [[nodiscard]] QAccessibleInterface *caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *cellAt(int row, int column) const override
    {
        if (row < 0 || row >= rowCount() || column != 0)
            return nullptr;
        const auto known = mRows.constFind(row);
        if (known != mRows.constEnd())
            return QAccessible::accessibleInterface(*known);
        auto *cell = new RowAccessible(table(), row);
        mRows.insert(row, QAccessible::registerAccessibleInterface(cell));
        return cell;
    }
    [[nodiscard]] QString columnDescription(int) const override { return {}; }
    [[nodiscard]] QString rowDescription(int) const override { return {}; }
    [[nodiscard]] int columnCount() const override { return 1; }
    [[nodiscard]] int rowCount() const override { return table()->numberOfRows(); }

    // QAccessibleTableInterface: selection. Selecting a row acts like a click on it. A row cannot be
    // deselected.
    [[nodiscard]] int selectedCellCount() const override { return selectedRowCount(); }
    [[nodiscard]] QList<QAccessibleInterface *> selectedCells() const override
    {
        auto *cell = child(table()->selectedRow());
        return cell ? QList<QAccessibleInterface *>{cell} : QList<QAccessibleInterface *>();
    }
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] int selectedRowCount() const override { return table()->selectedRow() >= 0 ? 1 : 0; }
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] QList<int> selectedRows() const override
    {
        return selectedRowCount() > 0 ? QList<int>{table()->selectedRow()} : QList<int>();
    }
    [[nodiscard]] bool isColumnSelected(int) const override { return false; }
    [[nodiscard]] bool isRowSelected(int row) const override
    {
        return row >= 0 && row == table()->selectedRow();
    }
    bool selectRow(int row) override
    {
        table()->clickRow(row);
        return isRowSelected(row);
    }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent *) override { forgetRowsFrom(rowCount()); }

protected:
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TableInterface)
            return static_cast<QAccessibleTableInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

private:
    [[nodiscard]] Table *table() const { return static_cast<Table *>(object()); }

    void forgetRowsFrom(int first)
    {
        for (auto row = mRows.begin(); row != mRows.end();) {
            if (row.key() < first) {
                ++row;
                continue;
            }
            QAccessible::deleteAccessibleInterface(*row);
            row = mRows.erase(row);
        }
    }

    mutable QHash<int, QAccessible::Id> mRows;
};

} // namespace

void installCameraTableAccessibility()
{
    platform::installAccessible<Table, TableAccessible>();
}

CameraTableAnnouncer::CameraTableAnnouncer(KS7AnimatingStatusTableView *table)
    : QObject(table)
    , mTable(table)
{
}

void CameraTableAnnouncer::selectionMayHaveChanged()
{
    if (std::exchange(mIsPending, true))
        return;
    QMetaObject::invokeMethod(
        this, [this] { announce(); }, Qt::QueuedConnection);
}

void CameraTableAnnouncer::keyboardHasCome()
{
    const auto tell = [this] {
        if (mTable->hasFocus())
            tellOfRow(mTable->selectedRow(), QAccessible::Focus);
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void CameraTableAnnouncer::announce()
{
    mIsPending = false;
    const int row = mTable->selectedRow();
    const QString text = row < 0 ? QString() : mTable->textOfRow(row);
    const int rowBefore = std::exchange(mRow, row);
    const QString textBefore = std::exchange(mText, text);
    if (row != rowBefore) {
        tellOfRow(rowBefore, QAccessible::SelectionRemove);
        tellOfRow(row, QAccessible::Selection);
        if (mTable->hasFocus())
            tellOfFocus(row);
    } else if (text != textBefore) {
        tellOfRow(row, QAccessible::NameChanged);
    }
}

void CameraTableAnnouncer::tellOfFocus(int row)
{
    if (row >= 0)
        return tellOfRow(row, QAccessible::Focus);
    // Without this event, screen readers would stay at the row that has been removed.
    QAccessibleEvent event(mTable, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

void CameraTableAnnouncer::tellOfRow(int row, int accessibleEvent)
{
    auto *table = QAccessible::isActive() ? QAccessible::queryAccessibleInterface(mTable) : nullptr;
    auto *cell = table ? table->child(row) : nullptr;
    if (!cell)
        return;
    // Qt 6.11 warns about setChild() on an event of the table when the row is about to be removed.
    QAccessibleEvent event(cell, static_cast<QAccessible::Event>(accessibleEvent));
    QAccessible::updateAccessibility(&event);
}
