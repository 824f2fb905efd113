#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace agent_check {

/// One operation of an interface, with the signatures of its arguments and of its reply.
struct Operation {
    QString name;
    QString interface;
    QString in;
    QString out;
    /// The registered name of the object that serves it. Empty for an operation from introspection.
    QString registeredName;

    /// Name and argument types, such as "setName(ss)".
    [[nodiscard]] QString call() const { return name + QLatin1Char('(') + in + QLatin1Char(')'); }
};

/// Parses the operations of an introspection text, in their order. A malformed text has none.
QVector<Operation> operationsIn(const QByteArray &introspection);

/// The operations of the contract, parsed from the interfaces' XML.
const QVector<Operation> &declaredOperations();
/// Returns the contract's operation of this name. The name must exist.
const Operation &declaredOperation(const QString &name);

} // namespace agent_check
