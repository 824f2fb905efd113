"""Delays GStreamer's first start in a new home, in which a helper process scans all plug-ins: the helper is blocked.

    gstreamer = HeldUpGStreamer()
    program = start(env=gstreamer.environment())
    wait_until(gstreamer.has_begun, "the helper is held up")
    gstreamer.let_go()
"""

import os
import pathlib
import tempfile

# More helpers than GStreamer ever starts.
HELPERS = 100


class HeldUpGStreamer:
    def __init__(self):
        self._folder = pathlib.Path(tempfile.mkdtemp(dir=os.environ["KS7_SESSION_FOLDER"]))
        self._begun = self._folder / "begun"
        self._helper = self._folder / "helper"
        gate = self._folder / "gate"
        os.mkfifo(gate)
        # Opened for reading and writing, so that neither end blocks in open().
        self._gate = open(gate, "r+b", buffering=0)
        self._helper.write_text(f"#!/bin/sh\ntouch {self._begun}\nread _ < {gate}\n")
        self._helper.chmod(0o700)

    def environment(self):
        """Environment of a program to be delayed: an empty plug-in registry, and this helper as the plug-in scanner."""
        return {"GST_REGISTRY": str(self._folder / "registry"), "GST_PLUGIN_SCANNER_1_0": str(self._helper)}

    def has_begun(self):
        return self._begun.exists()

    def let_go(self):
        """Releases this helper and all later ones; a program whose helper exits scans by itself."""
        if not self._gate.closed:
            self._gate.write(b"\n" * HELPERS)

    def close(self):
        self.let_go()
        self._gate.close()
