#pragma once

#include <QMenu>

class KS7AnimatingStatusTableView;
class QActionGroup;

/// A menu of the listed cameras, for the keyboard. An entry does what a click on its row does.
class ChooseCameraMenu : public QMenu {
    Q_OBJECT
public:
    explicit ChooseCameraMenu(KS7AnimatingStatusTableView *table, QWidget *parent = nullptr);

private:
    void rebuild();
    [[nodiscard]] QStringList names() const;
    /// As the row's text; one of several cameras of that name gets its ID.
    [[nodiscard]] QString textOfEntry(int row, const QStringList &names) const;

    KS7AnimatingStatusTableView *mTable;
    QActionGroup *mGroup = nullptr;
};
