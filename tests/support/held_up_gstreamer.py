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

# A number greater than the number of helpers that GStreamer ever starts.
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
        """Returns the environment of the program to be delayed: an empty plug-in registry, and the blocked script as
        the plug-in scanner."""
        return {"GST_REGISTRY": str(self._folder / "registry"), "GST_PLUGIN_SCANNER_1_0": str(self._helper)}

    def has_begun(self):
        return self._begun.exists()

    def let_go(self):
        """Releases the blocked script and all later ones. When its helper exits, GStreamer scans the plug-ins by
        itself."""
        if not self._gate.closed:
            self._gate.write(b"\n" * HELPERS)

    def close(self):
        self.let_go()
        self._gate.close()
