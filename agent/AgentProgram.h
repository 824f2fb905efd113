#pragma once

#include <QString>

/// Path of the agent's executable, which may not exist: the one that $KS7_AGENT names, else the installed
/// one. For a directory: the `KS7Agent` inside it.
QString agentProgram();
