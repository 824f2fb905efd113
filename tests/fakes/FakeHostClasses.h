#pragma once

#include "platform/desktop/HostClasses.h"

#include <QHash>
#include <QString>

/// Looks host classes up in a table.
class FakeHostClasses final : public platform::HostClasses {
public:
    QObject *classNamed(const QString &name) override { return classes.value(name); }
    QHash<QString, QObject *> classes;
};
