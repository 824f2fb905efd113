#pragma once

#include "cameras/KS7Cam.h"

#include <QAbstractTableModel>

class KS7AnimatingStatusTableView;

Q_DECLARE_METATYPE(std::shared_ptr<KS7Cam>)

/// Brings the controller's rows to the table: counted once for each reload, each value asked for when it is
/// needed and never kept.
class CameraTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Role {
        /// The row's std::shared_ptr<KS7Cam>, nothing for a row without one.
        RecordRole = Qt::UserRole
    };

    explicit CameraTableModel(KS7AnimatingStatusTableView *table);

    /// Counts the rows again and says that every value may have changed. Rows that stay keep their selection.
    void reload();
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    /// "friendly name, status" in one line.
    [[nodiscard]] QString textOfRow(int row) const;

private:
    void setRowCount(int rows);

    KS7AnimatingStatusTableView *mTable;
    int mRows = 0;
};
