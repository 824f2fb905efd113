// The smallest Qt program with a table in a window, as a peer in the comparison of the start-up.
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
