#pragma once

#include <QtGlobal>

/// The time limit in milliseconds for conditions that tests wait for. Qt's default of 5 s is too short on a
/// busy machine under a sanitizer. KS7_TIMEOUT sets a limit in seconds: tools/mutants/run uses a short one,
/// because it expects failures.
inline const int Timeout =
    qEnvironmentVariableIsSet("KS7_TIMEOUT") ? 1000 * qEnvironmentVariableIntValue("KS7_TIMEOUT") : 60'000;
