#pragma once

#include <QtGlobal>

/// How long a test waits for a condition, in milliseconds. Qt's default of five seconds is too short on a
/// machine that runs other tests under a sanitizer. KS7_TIMEOUT (seconds) shortens the wait:
/// tools/mutants/run expects failures.
inline const int Timeout =
    qEnvironmentVariableIsSet("KS7_TIMEOUT") ? 1000 * qEnvironmentVariableIntValue("KS7_TIMEOUT") : 60'000;
