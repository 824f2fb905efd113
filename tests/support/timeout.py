"""How long a test waits for a condition, in seconds; the Python sibling of Timeout.h."""

import os

# Many tests run side by side under a sanitizer, and half a minute is too short then.
TIMEOUT = int(os.environ.get("KS7_TIMEOUT", 120))
