"""Tests that the German translation has every text of the pane, and no text that the pane no longer uses."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

SOURCE = pathlib.Path(__file__).resolve().parents[2]
TRANSLATIONS = SOURCE / "resources/translations"


def messages(file):
    """Returns the translation elements of a file by context, source text and comment."""
    return {(context.findtext("name"), message.findtext("source"), message.findtext("comment")): message.find("translation")
            for context in ElementTree.parse(file).getroot().iter("context")
            for message in context.iter("message")}


def placeholders(text):
    return sorted(re.findall(r"%(?:\d+|@|d)", text))


# Texts that replace another text of the same button. Both texts may have the same letter as their mnemonic.
SECOND_TEXTS = {"Stop &Preview"}


def mnemonics(text):
    return re.findall(r"&(\w)", text)


class TranslationsTest(unittest.TestCase):
    def setUp(self):
        self.template = messages(TRANSLATIONS / "ks7.ts")
        self.german = messages(TRANSLATIONS / "ks7_de.ts")

    def test_the_template_has_the_texts_of_the_sources(self):
        with tempfile.TemporaryDirectory() as folder:
            for file in TRANSLATIONS.glob("*.ts"):
                shutil.copy(file, folder)
            done = subprocess.run([SOURCE / "tools/update-translations", folder], stdin=subprocess.DEVNULL,
                                  capture_output=True, text=True)
            self.assertEqual(done.returncode, 0, done.stderr)
            updated = messages(pathlib.Path(folder) / "ks7.ts")
        self.assertEqual(set(updated), set(self.template),
                         "cmake --build build --target update-translations brings the files up to date")

    def test_german_has_all_texts(self):
        self.assertEqual(set(self.german), set(self.template))

    def test_german_is_complete(self):
        for key, translation in self.german.items():
            self.assertNotIn(translation.get("type"), ("unfinished", "obsolete", "vanished"), key)
            self.assertTrue(translation.text, key)

    def test_placeholders_survive(self):
        for (context, source, _), translation in self.german.items():
            self.assertEqual(placeholders(source), placeholders(translation.text), (context, source))

    def test_mnemonics_are_kept_and_differ_within_a_window(self):
        used = {}
        for (context, source, _), translation in self.german.items():
            self.assertEqual(len(mnemonics(source)), len(mnemonics(translation.text)), (context, source))
            if source not in SECOND_TEXTS:
                used.setdefault(context, []).extend(letter.lower() for letter in mnemonics(translation.text))
        for context, letters in used.items():
            self.assertEqual(len(letters), len(set(letters)), (context, letters))

    def test_texts_belong_to_our_classes(self):
        # Qt looks up translations by context. If a host used the same context, our translation would also change the
        # host's texts.
        general = {"", None, "QObject", "QCoreApplication", "QWidget", "QDialog", "MainWindow", "Form"}
        contexts = {context for context, _, _ in self.template}
        self.assertEqual(contexts & general, set())
        self.assertEqual({name for name in contexts if name.startswith("Q")}, set())


if __name__ == "__main__":
    os.environ.setdefault("LUPDATE", "lupdate")
    unittest.main(verbosity=2)
