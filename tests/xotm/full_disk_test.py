"""Disks that are full: a build fails with one clear line, and what was there stays."""

import resource
import subprocess
import unittest

from xotm_support import ToolTest

BIG = "\n".join(f"{number}\tsome text that takes room" for number in range(100000))


class FileSizeLimit(ToolTest):
    def limit(self, size):
        return lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))

    def test_TheEarlierIndexStaysSearchable(self):
        self.create("i", "1\n2\n3\n")
        before = self.read("i")
        for limit in (0, len(before), 10 * len(before)):
            with self.subTest(limit=limit):
                result = self.index(
                    "create",
                    "i",
                    "--type",
                    "o_8b",
                    "--input",
                    "-",
                    input=BIG,
                    preexec_fn=self.limit(limit),
                )
                self.assert_trouble(result, "i cannot be written", "File too large")
                self.assertEqual(self.read("i"), before)
                self.assertEqual(self.files(), ["i"])
                self.assertEqual(self.lines("range", "i", "0", "9"), ["1", "2", "3"])
                self.assert_in_order("i")

    def test_ANewIndexLeavesNothingBehind(self):
        for limit in (0, 100, 4096, 10000, 1000000):
            with self.subTest(limit=limit):
                result = self.index(
                    "create",
                    "i",
                    "--type",
                    "o_8b",
                    "--input",
                    "-",
                    input=BIG,
                    preexec_fn=self.limit(limit),
                )
                self.assert_trouble(result, "i cannot be written")
                self.assertEqual(self.files(), [])

    def test_SearchingNeedsNoRoom(self):
        self.create("i", "1\n")
        self.assertEqual(self.lines("find", "i", "1", preexec_fn=self.limit(0)), ["1"])


class FullFileSystem(ToolTest):
    """In a file system of a few pages, where this machine lets a test mount one."""

    def setUp(self):
        super().setUp()
        mounted = subprocess.run(
            ["mount", "-t", "tmpfs", "-o", "size=2m", "tmpfs", self.folder], capture_output=True
        )
        if mounted.returncode != 0:
            self.skipTest("no file system can be mounted here")
        self.addCleanup(subprocess.run, ["umount", self.folder], check=True)

    def fill(self):
        with open(self.path("filler"), "wb", buffering=0) as file:
            try:
                while True:
                    file.write(bytes(4096))
            except OSError:
                pass

    def test_TheEarlierIndexStaysSearchable(self):
        self.create("i", "1\n2\n3\n")
        for _ in range(2):
            result = self.index("create", "i", "--type", "o_8b", "--input", "-", input=BIG)
            self.assert_trouble(result, "i cannot be written", "No space left on device")
            self.assertEqual(self.lines("range", "i", "0", "9"), ["1", "2", "3"])
            self.assert_in_order("i")
            self.fill()
        self.assertEqual(self.files(), ["filler", "i"])

    def test_ANewIndexLeavesNothingBehind(self):
        for files in ([], ["filler"]):
            result = self.index("create", "i", "--type", "o_8b", "--input", "-", input=BIG)
            self.assert_trouble(result, "i cannot be written", "No space left on device")
            self.assertEqual(self.files(), files)
            self.fill()


if __name__ == "__main__":
    unittest.main()
