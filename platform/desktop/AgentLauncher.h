#pragma once

#include <QString>

#include <memory>

namespace platform {

/// Starts another program, detached and without a shell.
class AgentLauncher {
public:
    virtual ~AgentLauncher() = default;

    /// Starts the camera agent's program once. False when there is nothing to start.
    virtual bool launch() = 0;
};

/// The program that is started, there or not: in a folder that is an application, its program.
QString agentProgram();

/// The agent that $KS7_AGENT names, else the one at its installed place.
std::shared_ptr<AgentLauncher> makeAgentLauncher();

} // namespace platform
