#pragma once

#include <QCoreApplication>

#include <functional>

/// Lets the pane ask the host to show its overview. The pane finds this object by its object name among the
/// application's children.
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
