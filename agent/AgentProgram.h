#pragma once

#include <QString>

/// Returns the path of the agent's executable, which may not exist. $KS7_AGENT may name another agent than
/// the installed one. For a directory, returns the path of the `KS7Agent` inside it.
QString agentProgram();
