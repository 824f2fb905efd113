#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace agent_check {

/// An operation of an interface, with the signatures of its arguments and of its reply.
struct Operation {
    QString name;
    QString interface;
    QString in;
    QString out;
    /// The registered name of the object that serves the operation. Empty if the operation comes from
    /// introspection data.
    QString registeredName;

    /// Returns name and argument types, such as "setName(ss)".
    [[nodiscard]] QString call() const { return name + QLatin1Char('(') + in + QLatin1Char(')'); }
};

/// Parses the operations of introspection data, in their order. Returns none if the data is malformed.
QVector<Operation> operationsIn(const QByteArray &introspection);

/// Returns the operations of the contract, parsed from the XML of its two interfaces.
const QVector<Operation> &declaredOperations();
/// Returns the operation with this name from the contract. The name must exist.
const Operation &declaredOperation(const QString &name);

} // namespace agent_check
