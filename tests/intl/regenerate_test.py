"""The tables that are kept with the sources are those that the generator writes, and the generator
tells what it cannot read."""

import filecmp
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

from probe_support import DATA, SOURCE, TOOLS, need_data

GENERATOR = os.path.join(TOOLS, "generate.py")
FOLDER = os.path.join(SOURCE, "intl", "data")


def generate(*arguments):
    return subprocess.run([sys.executable, "-B", GENERATOR, *arguments], text=True,
                          capture_output=True, check=False)


class Regenerate(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)

    def copy_of_data(self):
        copy = os.path.join(self.folder, "unicode")
        for name in ("allkeys.txt", "Scripts.txt", "SpecialCasing.txt", "UnicodeData.txt",
                     "cldr/common/dtd/ldml.dtd"):
            target = os.path.join(copy, name)
            os.makedirs(os.path.dirname(target), exist_ok=True)
            shutil.copyfile(os.path.join(DATA, name), target)
        for name in ("collation", "main"):
            os.symlink(os.path.join(DATA, "cldr/common", name),
                       os.path.join(copy, "cldr/common", name))
        return copy

    def change(self, copy, name, old, new):
        path = os.path.join(copy, name)
        with open(path, encoding="utf-8") as file:
            text = file.read()
        self.assertIn(old, text)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text.replace(old, new, 1))
        return text[:text.index(old)].count("\n") + 1

    def test_TablesAreThoseThatTheGeneratorWrites(self):
        run = generate("--output", self.folder)
        self.assertEqual(run.returncode, 0, run.stderr)
        written = sorted(os.listdir(self.folder))
        self.assertEqual(
            written, sorted(name for name in os.listdir(FOLDER) if name.endswith(".cpp")))
        _, different, errors = filecmp.cmpfiles(self.folder, FOLDER, written, shallow=False)
        self.assertEqual((different, errors), ([], []))

    def test_ALineThatCannotBeReadIsNamed(self):
        for name, old, new in (
                ("allkeys.txt", "0061  ; [.20B3", "0061  ; [.20G3"),
                ("UnicodeData.txt", "0062;LATIN SMALL LETTER B;", "0062;"),
                ("Scripts.txt", "0041..005A    ; Latin", "0041..005A    Latin"),
                ("SpecialCasing.txt", "00DF; 00DF;", "00DX; 00DF;")):
            with self.subTest(name):
                copy = self.copy_of_data()
                line = self.change(copy, name, old, new)
                run = generate("--data", copy, "--output", self.folder)
                self.assertEqual(run.returncode, 1)
                self.assertIn(f"{os.path.join(copy, name)}:{line}: ", run.stderr)
                shutil.rmtree(copy)

    def test_AnotherVersionIsRefused(self):
        copy = self.copy_of_data()
        self.change(copy, "allkeys.txt", "@version 15.0.0", "@version 16.0.0")
        run = generate("--data", copy, "--output", self.folder)
        self.assertEqual(run.returncode, 1)
        self.assertIn("allkeys.txt: is version 16.0.0", run.stderr)
        self.assertIn("--accept-version", run.stderr)

    def test_AMissingFileIsNamed(self):
        run = generate("--data", self.folder, "--output", self.folder)
        self.assertEqual(run.returncode, 1)
        self.assertIn("allkeys.txt: No such file", run.stderr)

    def test_ChangedTablesNeedANewVersion(self):
        versions = os.path.join(self.folder, "versions.txt")
        with open(versions, "w", encoding="utf-8") as file:
            file.write("1 0123456789abcdef\n")
        run = generate("--output", self.folder, "--versions", versions)
        self.assertEqual(run.returncode, 1)
        self.assertIn("need --new-version", run.stderr)


if __name__ == "__main__":
    need_data()
    sys.exit(0 if unittest.main(argv=sys.argv[:1], exit=False, verbosity=2).result.wasSuccessful() else 1)
