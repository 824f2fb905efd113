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
    /// The registered name of the object that serves it; empty for what was read from an agent.
    QString registeredName;

    /// As in "setName(ss)".
    [[nodiscard]] QString call() const { return name + QLatin1Char('(') + in + QLatin1Char(')'); }
};

/// The operations that an introspection text declares, in their order; none when it is malformed.
QVector<Operation> operationsIn(const QByteArray &introspection);

/// The operations of the contract, from the interfaces' declarations.
const QVector<Operation> &declaredOperations();
/// The declared operation of this name, which must exist.
const Operation &declaredOperation(const QString &name);

} // namespace agent_check
