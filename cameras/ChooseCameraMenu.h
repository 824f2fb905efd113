#pragma once

#include <QMenu>

class KS7AnimatingStatusTableView;

/// A menu of the listed cameras, for the keyboard. An entry does what a click on its row does.
class ChooseCameraMenu : public QMenu {
    Q_OBJECT
public:
    explicit ChooseCameraMenu(KS7AnimatingStatusTableView *table, QWidget *parent = nullptr);

private:
    void rebuild();

    KS7AnimatingStatusTableView *mTable;
};
