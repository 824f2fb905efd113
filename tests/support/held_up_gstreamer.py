"""Delays GStreamer's first start in a new home folder. At this start, a helper process scans all plug-ins, and a
blocked script replaces the helper.

    gstreamer = HeldUpGStreamer()
    program = start(env=gstreamer.environment())
    wait_until(gstreamer.has_begun, "the helper is held up")
    gstreamer.let_go()
"""

import os
import pathlib
import tempfile

# The number of lines that let_go() writes to the pipe. Each line releases one blocked script, and GStreamer starts
# fewer.
HELPERS = 100


class HeldUpGStreamer:
    def __init__(self):
        self._folder = pathlib.Path(tempfile.mkdtemp(dir=os.environ["KS7_SESSION_FOLDER"]))
        self._begun = self._folder / "begun"
        self._helper = self._folder / "helper"
        gate = self._folder / "gate"
        os.mkfifo(gate)
        # Open the pipe for reading and writing, because open() for one direction blocks until the other end is open.
        self._gate = open(gate, "r+b", buffering=0)
        self._helper.write_text(f"#!/bin/sh\ntouch {self._begun}\nread _ < {gate}\n")
        self._helper.chmod(0o700)

    def environment(self):
        """Returns environment variables for the program to be delayed. With an empty registry GStreamer scans all
        plug-ins, and its scanner is a script that blocks until let_go()."""
        return {"GST_REGISTRY": str(self._folder / "registry"), "GST_PLUGIN_SCANNER_1_0": str(self._helper)}

    def has_begun(self):
        return self._begun.exists()

    def let_go(self):
        """Ends the blocked script, and each script that GStreamer starts later. Without a helper, GStreamer scans the
        plug-ins in the program's own process."""
        if not self._gate.closed:
            self._gate.write(b"\n" * HELPERS)

    def close(self):
        self.let_go()
        self._gate.close()
