#pragma once

#include <QMenu>

class KS7AnimatingStatusTableView;
class QActionGroup;

/// A menu of the listed cameras for users of the keyboard. Triggering an entry acts like a click on the
/// camera's row.
class ChooseCameraMenu : public QMenu {
    Q_OBJECT
public:
    explicit ChooseCameraMenu(KS7AnimatingStatusTableView *table, QWidget *parent = nullptr);

private:
    void rebuild();
    [[nodiscard]] QStringList names() const;
    /// Returns the text of an entry: the text of its row, with the camera ID if several cameras have that
    /// name.
    [[nodiscard]] QString textOfEntry(int row, const QStringList &names) const;

    KS7AnimatingStatusTableView *mTable;
    QActionGroup *mGroup = nullptr;
};
