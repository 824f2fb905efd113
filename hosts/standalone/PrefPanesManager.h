#pragma once

#include <QCoreApplication>

#include <functional>

/// Shows the overview at the pane's request. The pane finds this object by its name, as a child of the
/// application.
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
