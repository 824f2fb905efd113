#include "agent_check/Declarations.h"

#include "agent/RemoteNames.h"

#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>

namespace agent_check {

namespace {

QString attribute(const QXmlStreamReader &xml, const char *name)
{
    return xml.attributes().value(QLatin1String(name)).toString();
}

void readElement(const QXmlStreamReader &xml, QString &interface, QVector<Operation> &operations)
{
    if (xml.name() == QLatin1String("interface"))
        interface = attribute(xml, "name");
    else if (xml.name() == QLatin1String("method"))
        operations.append({attribute(xml, "name"), interface, {}, {}, {}});
    else if (xml.name() == QLatin1String("arg") && !operations.isEmpty())
        (attribute(xml, "direction") == QLatin1String("out") ? operations.last().out
                                                             : operations.last().in) +=
            attribute(xml, "type");
}

QVector<Operation> read(const QString &registeredName)
{
    QFile file(QStringLiteral(":/agent_check/%1.xml").arg(registeredName));
    auto operations = file.open(QIODevice::ReadOnly) ? operationsIn(file.readAll()) : QVector<Operation>();
    for (Operation &operation : operations)
        operation.registeredName = registeredName;
    return operations;
}

} // namespace

QVector<Operation> operationsIn(const QByteArray &introspection)
{
    QXmlStreamReader xml(introspection);
    QVector<Operation> operations;
    QString interface;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        // Skip signals with their <arg> elements, which would count as arguments of the operation before
        // them.
        if (token == QXmlStreamReader::StartElement && xml.name() == QLatin1String("signal"))
            xml.skipCurrentElement();
        else if (token == QXmlStreamReader::StartElement)
            readElement(xml, interface, operations);
    }
    return xml.hasError() ? QVector<Operation>() : operations;
}

const QVector<Operation> &declaredOperations()
{
    static const QVector<Operation> operations =
        read(RemoteNames::AgentServer) + read(RemoteNames::AgentServerUSB);
    return operations;
}

const Operation &declaredOperation(const QString &name)
{
    const auto &all = declaredOperations();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Operation &each) { return each.name == name; });
    Q_ASSERT(found != all.end());
    return *found;
}

} // namespace agent_check
