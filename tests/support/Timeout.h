#pragma once

/// How long a test waits for what ought to come, in milliseconds. Qt's own five seconds are not enough on a
/// machine that is busy with other tests under a sanitizer; where it comes, nothing is waited for.
constexpr int Timeout = 60'000;
