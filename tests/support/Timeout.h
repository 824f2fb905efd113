#pragma once

#include <QtGlobal>

/// Time limit in milliseconds for conditions that tests wait for. Qt's five seconds are too short on a busy
/// machine under a sanitizer. A condition that holds earlier ends the wait. KS7_TIMEOUT (seconds) replaces
/// it: tools/mutants/run expects failures.
inline const int Timeout =
    qEnvironmentVariableIsSet("KS7_TIMEOUT") ? 1000 * qEnvironmentVariableIntValue("KS7_TIMEOUT") : 60'000;
