#pragma once

#include "cameras/KS7Cam.h"

#include <QAbstractTableModel>

class KS7AnimatingStatusTableView;

Q_DECLARE_METATYPE(std::shared_ptr<KS7Cam>)

/// Adapts a CameraTableSource to Qt's model. It counts the rows only in reload(), but reads each value when
/// Qt asks for it.
class CameraTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Role {
        /// Gives the row's std::shared_ptr<KS7Cam>; an invalid variant for a row without a record.
        RecordRole = Qt::UserRole
    };

    explicit CameraTableModel(KS7AnimatingStatusTableView *table);

    /// Counts the rows again and reports all values as changed. A selected row that still exists stays
    /// selected.
    void reload();
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    /// Returns "friendly name, status", in which sanitizedLine() has escaped line breaks.
    [[nodiscard]] QString textOfRow(int row) const;

private:
    /// Returns the row's text and the camera ID, because several cameras may have the same name.
    [[nodiscard]] QString toolTipOfRow(int row) const;
    void setRowCount(int rows);

    KS7AnimatingStatusTableView *mTable;
    int mRows = 0;
};
