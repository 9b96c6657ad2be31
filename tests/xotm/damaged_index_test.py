"""Index files cut short, altered, or of another make: an answer or one clear line, never a crash."""

import random
import re
import struct
import unittest

from xotm_support import DONE, IS_SANITIZED, NOTHING_FOUND, TROUBLE, ToolTest, new_seed

PAGE = 4096
META_MAGIC = b"XOTMIDX\0"
COMMANDS = (
    ["find", "i", "77"],
    ["range", "i", "0", "100000"],
    ["range", "i", "0", "100000", "--count"],
    ["range", "i", "50", "2000", "--json"],
    ["stat", "i"],
    ["verify", "i"],
)


def mixed_lines():
    """Lines that give a tree of some depth: many values, one of many lines, and long lines."""
    lines = [f"{number * 7 % 5000}\tline {number}" for number in range(5000)]
    lines += [f"77\tagain {number}" for number in range(2000)]
    lines += [f"{number}\t{'long' * 3000}" for number in range(100, 110)]
    return "\n".join(lines) + "\n"


TEXT_COMMANDS = (
    ["find", "i", "word 77"],
    ["find", "i", "word 1*", "--ignore-case"],
    ["find", "i", "*7", "--skip-spaces", "--count"],
    ["range", "i", "word 2", "word 3", "--json"],
    ["stat", "i"],
    ["verify", "i"],
    ["create", "i", "--rebuild"],
)


def text_lines():
    """Texts of which many have their keys cut at the same place, and some are long."""
    lines = [f"word {number * 7 % 5000}" for number in range(3000)] + ["word 77"] * 500
    lines += [f"Ångström{'-α' * (number % 9)} {number}" for number in range(500)]
    lines += [f"long {number}{'x' * 5000}" for number in range(10)]
    return "\n".join(lines) + "\n"


class Damage(ToolTest):
    COMMANDS = COMMANDS

    def setUp(self):
        super().setUp()
        self.make()
        self.whole = self.read("i")

    def make(self):
        self.create("i", mixed_lines())

    def replace(self, old, new, count):
        self.assertEqual((self.whole.count(old), len(old)), (count, len(new)))
        self.write("i", self.whole.replace(old, new))

    def overwrite(self, *changes):
        content = bytearray(self.whole)
        for offset, replacement in changes:
            content[offset : offset + len(replacement)] = replacement
        self.write("i", content)

    def assert_refused(self, *fragments):
        """All commands that read refuse the file; a build leaves it alone."""
        content = self.read("i")
        for command in COMMANDS:
            result = self.index(*command)
            self.assert_trouble(result, *fragments)
            self.assertEqual(result.stdout, b"")
        result = self.index("create", "i", "--type", "o_8b", "--input", "-", input="1\n")
        self.assert_trouble(result, *fragments)
        self.assertEqual(self.read("i"), content)


class KnownDamage(Damage):
    def test_AFileCutShortAnywhereIsTruncated(self):
        size = len(self.whole)
        for length in (size - 1, size - PAGE, size // 2, 2 * PAGE + 1, 2 * PAGE):
            with self.subTest(length=length):
                self.write("i", self.whole[:length])
                self.assert_refused("i is damaged", "truncated")

    def test_AFileCutShortInItsHeaderIsNoWholeIndex(self):
        for length in (PAGE + 151, PAGE, 200):
            with self.subTest(length=length):
                self.write("i", self.whole[:length])
                self.assert_refused("i is damaged", "header page")
        for length in (151, 16, 1):
            with self.subTest(length=length):
                self.write("i", self.whole[:length])
                self.assert_refused("i is no index")

    def test_AnotherLayoutVersionIsNamed(self):
        self.replace(META_MAGIC + struct.pack("<I", 2), META_MAGIC + struct.pack("<I", 1), 1)
        self.assert_refused("layout version 1", "version 2")

    def test_AnotherVersionOfTheStoreIsNamed(self):
        version = struct.pack("<I", 2)
        self.overwrite((20, version), (PAGE + 20, version))
        self.assert_refused("another version of LMDB")

    def test_AStoreOfAnotherProgramIsNoIndex(self):
        self.replace(b"meta", b"data", 1)
        self.assert_refused("i is no index made by xotm")
        self.write("i", self.whole.replace(META_MAGIC, b"NOTMIDX\0"))
        self.assert_refused("i is no index made by xotm")

    def test_AChangedRecordOfTheIndexIsDamage(self):
        start = self.whole.index(META_MAGIC)
        for offset in range(12, 112, 5):
            with self.subTest(offset=offset):
                changed = bytes([self.whole[start + offset] ^ 0x10])
                self.overwrite((start + offset, changed))
                self.assert_trouble(self.index("find", "i", "77"), "i is damaged", "record")

    def test_AnImpossiblePageSizeIsDamage(self):
        for size in (0, 1, 511, 4097, 1 << 17, 0xFFFFFFFF):
            with self.subTest(size=size):
                replacement = struct.pack("<I", size)
                self.overwrite((40, replacement), (PAGE + 40, replacement))
                self.assert_refused("i is damaged", "page size")

    def test_ALastPageBehindTheEndIsTruncation(self):
        # The last page is counted behind the map size and both database records of a header.
        offset = 16 + 24 + 96
        for last in (1 << 20, 1 << 52, (1 << 64) - 1):
            replacement = struct.pack("<Q", last)
            self.overwrite((offset, replacement), (PAGE + offset, replacement))
            self.assert_refused("i is damaged", "truncated")

    def test_ADamagedSecondHeaderIsDamage(self):
        self.overwrite((PAGE + 16, b"\0\0\0\0"))
        self.assert_refused("i is damaged", "second header page")

    def test_AMissingDatabaseIsDamage(self):
        self.replace(b"lines", b"limes", 1)
        for command in COMMANDS:
            self.assert_trouble(self.index(*command), "i is damaged")

    def test_PagesOfZerosAreDamage(self):
        self.write("i", self.whole[: 2 * PAGE] + bytes(len(self.whole) - 2 * PAGE))
        for command in COMMANDS:
            self.assert_trouble(self.index(*command), "i")


@unittest.skipIf(IS_SANITIZED, "the store reads astray by itself, which the sanitizer reports")
class RandomDamage(Damage):
    ROUNDS = 40

    def assert_survived(self, result):
        self.assertIn(result.returncode, (DONE, NOTHING_FOUND, TROUBLE), result.stderr[-500:])
        if result.returncode == TROUBLE:
            self.assert_trouble(result)
        else:
            self.assertEqual(result.stderr, b"")

    def check(self, change):
        """`change` damages a copy of the whole file."""
        seed = new_seed()
        generator = random.Random(seed)
        for round_number in range(self.ROUNDS):
            content = bytearray(self.whole)
            change(generator, content)
            self.write("i", content)
            with self.subTest(seed=seed, round=round_number):
                for command in self.COMMANDS:
                    self.assert_survived(self.index(*command, timeout=20))
                result = self.index(
                    "create", "i", "--type", "o_4b", "--input", "-", input="1\n", timeout=20
                )
                self.assert_survived(result)

    def test_FlippedBytesAnywhereNeverCrashATool(self):
        def change(generator, content):
            for _ in range(generator.choice((1, 10, 100, 1000))):
                content[generator.randrange(len(content))] ^= generator.randrange(1, 256)

        self.check(change)

    def test_FlippedBytesInPageHeadersNeverCrashATool(self):
        def change(generator, content):
            for _ in range(generator.choice((1, 5, 50))):
                page = generator.randrange(len(content) // PAGE)
                offset = generator.randrange(160 if page < 2 else 48)
                content[page * PAGE + offset] = generator.choice((0, 1, 2, 0x7F, 0x80, 0xFF))

        self.check(change)

    def test_PagesThatChangedPlacesNeverCrashATool(self):
        def change(generator, content):
            for _ in range(generator.choice((1, 4))):
                a, b = (generator.randrange(2, len(content) // PAGE) * PAGE for _ in range(2))
                content[a : a + PAGE], content[b : b + PAGE] = (
                    content[b : b + PAGE],
                    content[a : a + PAGE],
                )

        self.check(change)

    def test_FilesCutAnywhereNeverCrashATool(self):
        def change(generator, content):
            del content[generator.randrange(len(content)) :]

        self.check(change)


class RandomDamageOfText(RandomDamage):
    ROUNDS = 20
    COMMANDS = TEXT_COMMANDS

    def make(self):
        self.create("i", text_lines(), "--key-length", "20", type="XoString")

    def test_LengthsOfKeysAndRecordsThatLieNeverCrashATool(self):
        def change(generator, content):
            places = [match.start() for match in re.finditer(b"\xfe[\x02\x82]|\xfd\0", content)]
            for _ in range(generator.choice((1, 10, 200))):
                place = generator.choice(places)
                content[place - 2 : place] = generator.randbytes(2)

        self.check(change)


if __name__ == "__main__":
    unittest.main()
