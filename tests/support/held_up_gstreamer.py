"""GStreamer's first start in a home, made long: it reads all of its plug-ins through a helper, which is held up here.

    gstreamer = HeldUpGStreamer()
    program = start(env=gstreamer.environment())
    wait_until(gstreamer.has_begun, "the helper is held up")
    gstreamer.let_go()
"""

import os
import pathlib
import tempfile

# More than are ever started.
HELPERS = 100


class HeldUpGStreamer:
    def __init__(self):
        self._folder = pathlib.Path(tempfile.mkdtemp(dir=os.environ["KS7_SESSION_FOLDER"]))
        self._begun = self._folder / "begun"
        self._helper = self._folder / "helper"
        gate = self._folder / "gate"
        os.mkfifo(gate)
        # Read and write, so that neither end waits for the other.
        self._gate = open(gate, "r+b", buffering=0)
        self._helper.write_text(f"#!/bin/sh\ntouch {self._begun}\nread _ < {gate}\n")
        self._helper.chmod(0o700)

    def environment(self):
        """What a program needs to be held up: nothing known of any plug-in, and this helper to find out."""
        return {"GST_REGISTRY": str(self._folder / "registry"), "GST_PLUGIN_SCANNER_1_0": str(self._helper)}

    def has_begun(self):
        return self._begun.exists()

    def let_go(self):
        """Of this helper and of any that is started later; a program whose helper ends without an answer helps itself."""
        if not self._gate.closed:
            self._gate.write(b"\n" * HELPERS)

    def close(self):
        self.let_go()
        self._gate.close()
