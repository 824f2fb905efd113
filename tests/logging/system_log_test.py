#!/usr/bin/python3
"""Tests the messages that the C library sends to the socket of a log daemon. The socket's path is fixed, so the logging
program runs in a mount namespace with its own /dev."""

import os
import pathlib
import socket
import subprocess
import sys
import unittest

WRITER = pathlib.Path(os.environ["KS7_BUILD"]) / "tests" / "system_log_writer"
FOLDER = pathlib.Path(os.environ["KS7_SESSION_FOLDER"])
# The priority of a message with facility "user" (1) and severity "error" (3).
PRIORITY = b"<11>"

OWN_DEV = 'mount -t tmpfs tmpfs /dev && ln -s "$1" /dev/log && shift && exec "$@"'


def with_log_daemon_at(path, *command):
    return ["unshare", "--map-root-user", "--mount", "sh", "-c", OWN_DEV, "sh", str(path), *map(str, command)]


class SystemLogTest(unittest.TestCase):
    def setUp(self):
        self.path = FOLDER / "log"
        if subprocess.run(with_log_daemon_at(self.path, "true"), capture_output=True).returncode != 0:
            self.skipTest("namespaces are not to be had here")
        self.daemon = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        self.addCleanup(self.daemon.close)
        self.daemon.bind(str(self.path))
        self.addCleanup(self.path.unlink)
        self.daemon.setblocking(False)

    def read(self):
        """Returns the messages received so far as pairs (priority, text), without the C library's prefix."""
        messages = []
        while True:
            try:
                datagram = self.daemon.recv(65536)
            except BlockingIOError:
                return messages
            header, _, text = datagram.partition(WRITER.name.encode() + b": ")
            messages.append((header[:4], text.decode()))

    def test_each_message_arrives_once_as_an_error(self):
        subprocess.run(with_log_daemon_at(self.path, WRITER), check=True, stderr=subprocess.DEVNULL)
        # For the system log, log() formats its message a second time, so the first message has "%%%%" for one "%".
        # OrvexErrorLog() formats only once.
        self.assertEqual(self.read(), [(PRIORITY, "Küche: 2 cameras, 100%"),
                                       (PRIORITY, "KS-7 System Preferences: code -12, 100%")])


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
