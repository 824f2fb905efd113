#pragma once

#include "cameras/KS7Cam.h"

#include <QAbstractTableModel>

class KS7AnimatingStatusTableView;

Q_DECLARE_METATYPE(std::shared_ptr<KS7Cam>)

/// Adapts the table's source to Qt: counts the rows once per reload and asks for each value when it is
/// needed.
class CameraTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Role {
        /// The row's std::shared_ptr<KS7Cam>; invalid for a row without a record.
        RecordRole = Qt::UserRole
    };

    explicit CameraTableModel(KS7AnimatingStatusTableView *table);

    /// Counts the rows again and reports every value as changed. Remaining rows keep their selection.
    void reload();
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    /// "friendly name, status", sanitized for one line.
    [[nodiscard]] QString textOfRow(int row) const;

private:
    /// The row's text with the camera ID, which tells cameras of the same name apart.
    [[nodiscard]] QString toolTipOfRow(int row) const;
    void setRowCount(int rows);

    KS7AnimatingStatusTableView *mTable;
    int mRows = 0;
};
