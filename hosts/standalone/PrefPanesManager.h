#pragma once

#include <QCoreApplication>

#include <functional>

/// How a pane finds its way back to the overview: the application's child of this name, asked for its
/// manager, then told to show all panes.
class PrefPanesManager : public QObject {
    Q_OBJECT
public:
    explicit PrefPanesManager(std::function<void()> showAllPanes)
        : QObject(QCoreApplication::instance())
        , mShowAllPanes(std::move(showAllPanes))
    {
        setObjectName(QStringLiteral("NSPrefPanesManager"));
    }

    Q_INVOKABLE QObject *prefPanesManager() { return this; }
    Q_INVOKABLE void showAll(QObject *) { mShowAllPanes(); }

private:
    std::function<void()> mShowAllPanes;
};
