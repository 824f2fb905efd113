#pragma once

#include <QMenu>

class KS7AnimatingStatusTableView;

/// The listed cameras as a menu, for those who use the keyboard: an entry does what a click on its row does.
class ChooseCameraMenu : public QMenu {
    Q_OBJECT
public:
    explicit ChooseCameraMenu(KS7AnimatingStatusTableView *table, QWidget *parent = nullptr);

private:
    void rebuild();

    KS7AnimatingStatusTableView *mTable;
};
