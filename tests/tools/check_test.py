#!/usr/bin/python3
"""Tests that tools/check fails without a list of files."""

import sys
import unittest

from checkout import CheckoutTest


class CheckTest(CheckoutTest):
    TOOLS = ["tools/check", "tools/include_graph.py"]

    def test_fails_with_gits_reason_where_git_fails(self):
        self.add_program("git", "echo 'fatal: detected dubious ownership' >&2; exit 128")
        code, said = self.run_tool("tools/check", "words")
        self.assertEqual(code, 1, said)
        self.assertIn("fatal: detected dubious ownership", said)
        self.assertNotIn("good", said)

    def test_a_warning_of_git_hides_no_file(self):
        self.write("notes.md", "TO" + "DO: more\n")
        self.add_program("git", "echo 'warning: an ignored file is unreadable' >&2; printf 'notes.md\\0'")
        code, said = self.run_tool("tools/check", "words")
        self.assertEqual(code, 1, said)
        self.assertIn("notes.md:1: ", said)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
