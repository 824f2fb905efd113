#pragma once

#include "platform/Services.h"

#include <QStringList>

#include <memory>

class AgentProxyFactory;

/// What the pane finds on this machine, as plain text for a bug report. Its readers are developers, so it is
/// not translated; it holds no passkey and no value of a setting. Nothing is started for it, and whoever does
/// not answer is waited for a few seconds at most.
class Diagnosis {
public:
    Diagnosis(platform::Services services, std::shared_ptr<AgentProxyFactory> protocols);

    /// The report, one finding a line; complete also when nothing at all is there. Needs no display.
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
