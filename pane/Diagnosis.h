#pragma once

#include "platform/Services.h"

#include <QStringList>

#include <memory>

class AgentProxyFactory;

/// A description of this machine, as plain text for a bug report. It is for developers and not translated,
/// and contains no passkey and no setting's value. It starts no service and waits for a service that hangs a
/// few seconds at most.
class Diagnosis {
public:
    Diagnosis(platform::Services services, std::shared_ptr<AgentProxyFactory> protocols);

    /// The report, one finding per line; complete even on a machine without bus, agent and PipeWire. Needs no
    /// display.
    QString report();

private:
    void describeProgram();
    void describeAgent();
    void describeConnection(const QString &registeredName);
    void describeCameras();
    void describePicture();
    void describeSystemServices();
    void describePreferences();
    void describeLogs();
    void add(const QString &subject, const QString &finding);

    platform::Services mServices;
    std::shared_ptr<AgentProxyFactory> mProtocols;
    QStringList mLines;
};
