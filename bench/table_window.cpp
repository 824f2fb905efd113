// The smallest Qt program with a table in a window. The pane's start-up is compared with that of this
// program.
#include <QApplication>
#include <QStandardItemModel>
#include <QTableView>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QStandardItemModel model;
    for (const auto &name : {"Kitchen", "Desk", "Porch"})
        model.appendRow(new QStandardItem(QString::fromLatin1(name)));
    QTableView table;
    table.setModel(&model);
    table.resize(900, 600);
    table.show();
    return QApplication::exec();
}
