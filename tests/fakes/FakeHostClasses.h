#pragma once

#include "platform/desktop/HostClasses.h"

#include <QHash>
#include <QString>

/// Looks up the host's classes in a table that the test fills.
class FakeHostClasses final : public platform::HostClasses {
public:
    QObject *classNamed(const QString &name) override { return classes.value(name); }
    QHash<QString, QObject *> classes;
};
