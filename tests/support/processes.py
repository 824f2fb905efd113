"""Stops processes of a test."""

import os
import pathlib
import signal

from accessible import wait_until


def is_stopped(pid):
    """True if the kernel has stopped every thread of the process."""
    states = []
    for stat in pathlib.Path(f"/proc/{pid}/task").glob("*/stat"):
        try:
            states.append(stat.read_text().rpartition(")")[2].split()[0])
        except (FileNotFoundError, ProcessLookupError):
            pass  # The thread has ended since its folder was listed.
    return bool(states) and set(states) == {"T"}


def stop_process(pid):
    """Stops the process and waits until all its threads have stopped: kill() returns earlier, and until then the process
    may still reply."""
    os.kill(pid, signal.SIGSTOP)
    wait_until(lambda: is_stopped(pid), f"process {pid} to stop")
