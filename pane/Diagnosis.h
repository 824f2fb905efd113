#pragma once

#include "platform/Services.h"

#include <QStringList>

#include <memory>

class AgentProxyFactory;

namespace platform {
class ServiceProbe;
}

/// Describes this machine in plain text for a bug report. The text is for developers: it is not translated,
/// and it contains no passkey and no values of settings. The diagnosis starts no service. It waits at most
/// three seconds for both buses or the agent, and three for PipeWire.
class Diagnosis {
public:
    Diagnosis(platform::Services services, std::shared_ptr<AgentProxyFactory> protocols);

    /// Returns the report, one finding per line. It needs no display and works without a bus, an agent and
    /// PipeWire.
    QString report();

private:
    void describeProgram();
    void describeAgent(platform::ServiceProbe &sessionBus);
    void describeConnection(platform::ServiceProbe &sessionBus, const QString &registeredName);
    void describeCameras(platform::ServiceProbe &sessionBus);
    void describePicture();
    void describeSystemServices(platform::ServiceProbe &systemBus);
    void describePreferences();
    void describeLogs();
    void add(const QString &subject, const QString &finding);

    platform::Services mServices;
    std::shared_ptr<AgentProxyFactory> mProtocols;
    QStringList mLines;
};
