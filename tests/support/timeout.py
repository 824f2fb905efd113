"""The time limit in seconds for conditions that tests wait for. Timeout.h has the limit of the C++ tests."""

import os

# Half a minute is too short, because many tests run at the same time under a sanitizer.
TIMEOUT = int(os.environ.get("KS7_TIMEOUT", 120))
