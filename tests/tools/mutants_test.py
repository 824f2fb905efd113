#!/usr/bin/python3
"""Tests which planted mistakes tools/mutants/run refuses, and that none of them is left out silently. Stand-ins take the
place of git, cmake and ctest."""

import json
import sys
import unittest

from checkout import CheckoutTest

MISTAKE = '[[mutant]]\nname = "{name}"\nfile = "{file}"\ntest = "{test}"\nreplace = "one"\nby = "two"\n'
# A test that fails if the file has the mistake.
TEST = ["sh", "-c", "! grep two number.txt || { echo 'FAIL!  : the number is two'; exit 1; }"]


class MutantsTest(CheckoutTest):
    TOOLS = ["tools/mutants/run"]

    def setUp(self):
        super().setUp()
        self.write("number.txt", "one\n")
        self.add_program("git", "printf 'number.txt\\n'")
        self.add_program("cmake", "case $* in *help*) echo; echo number_test: phony ;; esac")
        self.list_tests(self.checkout / "build-mutants/0/source")

    def list_tests(self, folder):
        properties = [{"name": "WORKING_DIRECTORY", "value": str(folder)}, {"name": "TIMEOUT", "value": 60}]
        listed = {"tests": [{"name": "number_test", "command": TEST, "properties": properties}]}
        self.add_program("ctest", f"cat <<'END'\n{json.dumps(listed)}\nEND")

    def plant(self, *mistakes):
        self.write("tools/mutants/mutants.toml", "\n".join(
            MISTAKE.format(**{"name": "number-is-two", "file": "number.txt", "test": "number_test", **mistake})
            for mistake in mistakes))

    def try_mistakes(self, *options):
        return self.run_tool("tools/mutants/run", *options)

    def test_a_mistake_that_its_test_sees_is_noticed(self):
        self.plant({})
        code, said = self.try_mistakes()
        self.assertEqual(code, 0, said)
        self.assertIn("number-is-two: noticed (number_test", said)
        self.assertIn("1 of 1 noticed", said)

    def test_a_mistake_without_a_test_does_not_fit(self):
        self.plant({"name": "lost", "test": "old_test"}, {})
        for options in (["--dry"], []):
            code, said = self.try_mistakes(*options)
            self.assertEqual(code, 1, said)
            self.assertRegex(said, r"lost: DOES NOT FIT .*ctest does not list its test")
            self.assertRegex(said, r"number-is-two: (fits|noticed)")

    def test_a_mistake_without_its_text_does_not_fit(self):
        self.write("number.txt", "three\n")
        self.plant({})
        code, said = self.try_mistakes("--dry")
        self.assertEqual(code, 1, said)
        self.assertIn("DOES NOT FIT", said)

    def test_an_exception_while_trying_is_a_failure(self):
        self.plant({})
        self.list_tests("/nonexistent")
        code, said = self.try_mistakes()
        self.assertEqual(code, 1, said)
        self.assertIn("FileNotFoundError", said)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
