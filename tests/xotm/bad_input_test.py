"""Input and files that `xotm index` cannot work with: one clear line, and earlier data intact."""

import os
import unittest

from xotm_support import DONE, IS_SANITIZED, ToolTest


class BadInput(ToolTest):
    def setUp(self):
        super().setUp()
        self.create("i", "1\n2\n3\n")

    def assert_refused(
        self, *fragments, arguments=(), type="o_8b", source="-", text=b"", **options
    ):
        """The build fails, over an index and anew, with the same words and without a trace."""
        others = [name for name in self.files() if name != "i"]
        for name in ("i", "new"):
            result = self.index(
                "create", name, "--type", type, "--input", source, *arguments, input=text, **options
            )
            self.assert_trouble(result, *fragments)
            self.assertEqual(result.stdout, b"")
        self.assertEqual(self.lines("range", "i", "0", "9"), ["1", "2", "3"])
        self.assert_in_order("i")
        self.assertEqual([name for name in self.files() if name != "i"], others)

    def test_AMissingFile(self):
        self.assert_refused("absent.txt", "No such file", source="absent.txt")

    def test_AFileInAMissingFolder(self):
        self.assert_refused("absent/a.txt", "No such file", source="absent/a.txt")

    def test_AnUnreadableFile(self):
        self.write("locked", "1\n")
        os.chmod(self.path("locked"), 0)
        user = self.as_ordinary_user()
        self.assert_refused("locked", "Permission denied", source="locked", **user)

    def test_AFolder(self):
        os.mkdir(self.path("folder"))
        self.assert_refused("folder", "directory", source="folder")

    def test_AnEmptyFile(self):
        self.write("empty", "")
        self.assert_refused("empty is empty", source="empty")

    def test_NothingBehindTheSkippedLines(self):
        self.assert_refused("standard input", "empty", arguments=["--skip", "2"], text="a\nb\n")
        self.assert_refused("standard input", "empty", arguments=["--skip", "9"], text="a\nb\n")

    def test_NoLineWithAValue(self):
        self.assert_refused(
            "none of its 2 lines", arguments=["--on-error", "skip"], text="a\nb\n"
        )

    def test_ALineThatIsNoNumberIsNamedWithFileNumberAndText(self):
        self.write("sizes.txt", "1\n2\nthree\n")
        self.assert_refused("sizes.txt, line 3", "'three'", "no value of type o_8b", source="sizes.txt")

    def test_ALineOutOfRangeIsNamedWithFileNumberAndText(self):
        self.write("sizes.txt", "1\n40000\n")
        self.assert_refused(
            "sizes.txt, line 2",
            "'40000'",
            "out of the range of o_2b",
            "from -32768 to 32767",
            source="sizes.txt",
            type="o_2b",
        )

    def test_LinesAreCountedWithTheSkippedOnes(self):
        self.assert_refused("line 4", arguments=["--skip", "2"], text="a\nb\n1\nc\n")

    def test_LongTextIsCutAndControlCharactersAreEscaped(self):
        self.assert_refused("'" + "x" * 40 + "...'", text="x" * 100000)
        self.assert_refused(
            r"'\x1b[31m\x00\xff'", arguments=["--delimiter", ";"], text=b"\x1b[31m\x00\xff\n"
        )

    def test_AMissingColumn(self):
        self.assert_refused(
            "standard input, line 2",
            "there is no column 2",
            arguments=["--column", "2"],
            text="a\t1\nb\n",
        )

    def test_ALineWithoutEnd(self):
        self.assert_refused("/dev/zero, line 1", "longer than", source="/dev/zero")

    def test_AnUnknownTypeWithTheNearNames(self):
        self.assert_refused("unknown type 'o_9b'", "o_2b, o_4b, o_8b", type="o_9b", text="1\n")
        self.assert_refused("unknown type 'O_DUBLE'", "o_double", type="O_DUBLE", text="1\n")
        self.assert_refused("unknown type", "'xotm types' lists", type="zzzzzz", text="1\n")

    def test_ATypeWithNoDiskForm(self):
        self.assert_refused("illegal", "no disk form", type="illegal", text="1\n")

    def test_EveryTypeEitherWorksOrSaysWhyNot(self):
        table = self.run_tool("types").stdout.decode().splitlines()[1:]
        for name in (line.split()[1] for line in table):
            result = self.index("create", "any", "--type", name, "--input", "-", input="1\n")
            if result.returncode != DONE:
                self.assert_trouble(result, name)


class BadIndexFile(ToolTest):
    COMMANDS = (["find", "1"], ["range", "1", "2"], ["stat"], ["verify"])

    def assert_refused(self, name, *fragments, **options):
        for command, *values in self.COMMANDS:
            with self.subTest(command=command):
                self.assert_trouble(self.index(command, name, *values, **options), *fragments)
        result = self.index(
            "create", name, "--type", "o_8b", "--input", "-", input="1\n", **options
        )
        self.assert_trouble(result, *fragments)

    def test_AMissingFile(self):
        for command, *values in self.COMMANDS:
            self.assert_trouble(self.index(command, "absent", *values), "absent", "No such file")
        self.assertEqual(self.files(), [])

    def test_AFolder(self):
        os.mkdir(self.path("folder"))
        self.assert_refused("folder", "folder", "directory")

    def test_APipe(self):
        os.mkfifo(self.path("pipe"))
        self.assert_refused("pipe", "pipe is no regular file")

    def test_AFileInAMissingFolder(self):
        self.assert_refused("absent/i", "absent/i", "No such file")

    def test_AnUnreadableFile(self):
        self.create("i", "1\n")
        os.chmod(self.path("i"), 0)
        user = self.as_ordinary_user()
        self.assert_refused("i", "i cannot be opened", "Permission denied", **user)

    def test_AnEmptyFile(self):
        self.write("empty", "")
        self.assert_refused("empty", "empty is empty", "no index")

    def test_AFileOfAnotherKind(self):
        for content in (b"x", b"text\n" * 10000, bytes(8192), os.urandom(20000)):
            self.write("other", content)
            self.assert_refused("other", "other is no index made by xotm")
            self.assertEqual(self.read("other"), content)

    def test_ANameWithALineFeedStaysOnOneLine(self):
        self.assert_trouble(self.index("stat", "a\nb"), r"a\nb cannot be opened")

    def test_AnIndexInAFolderThatCannotBeWrittenCanBeSearched(self):
        self.create("i", "1\n")
        user = self.as_ordinary_user()
        os.chmod(self.folder, 0o555)
        self.addCleanup(os.chmod, self.folder, 0o755)
        self.assertEqual(self.lines("find", "i", "1", **user), ["1"])
        result = self.index("create", "i", "--type", "o_8b", "--input", "-", input="1\n", **user)
        self.assert_trouble(result, "i cannot be written: Permission denied")


@unittest.skipIf(IS_SANITIZED, "the sanitizer itself needs more address space")
class LittleAddressSpace(ToolTest):
    def limit(self):
        import resource

        size = 256 << 20
        resource.setrlimit(resource.RLIMIT_AS, (size, size))

    def test_AnIndexIsBuiltAndSearched(self):
        self.create("i", "\n".join(map(str, range(50000))), preexec_fn=self.limit)
        self.assertEqual(self.lines("find", "i", "777", preexec_fn=self.limit), ["777"])

    def test_AnIndexThatIsTooLargeIsTroubleAndLeavesTheEarlierOne(self):
        self.create("i", "1\n")
        self.write("in", b"".join(b"%d\t%s\n" % (number, b"x" * 3000) for number in range(80000)))
        result = self.index(
            "create", "i", "--type", "o_8b", "--input", "in", preexec_fn=self.limit
        )
        self.assert_trouble(result, "i cannot be written")
        self.assertEqual(self.lines("range", "i", "0", "9"), ["1"])
        self.assert_in_order("i")


if __name__ == "__main__":
    unittest.main()
