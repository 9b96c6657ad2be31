"""`xotm blob`: stored blob records, whole and damaged."""

import random
import struct
import unittest

from xotm_support import DONE, TROUBLE, ToolTest, new_seed

NULL = 0xFFFFFFFF


def record(*contents, order="<"):
    """The stored form of blobs, None being null."""
    elements = b"".join(
        struct.pack(order + "I", NULL if each is None else len(each)) + (each or b"")
        for each in contents)
    return struct.pack(order + "I", len(elements)) + elements


def walk(bytes, order="<"):
    """The elements of a record up to the first damage, and its offset, None if there is none."""
    if len(bytes) < 4:
        return [], len(bytes)
    total = struct.unpack_from(order + "I", bytes)[0]
    if total >= 2**31:
        return [], 0
    found, at = [], 4
    while at < 4 + total:
        if at + 4 > min(4 + total, len(bytes)):
            return found, at
        length = struct.unpack_from(order + "I", bytes, at)[0]
        if length == NULL:
            found.append((at, None))
            at += 4
            continue
        if at + 4 + length > min(4 + total, len(bytes)):
            return found, at
        found.append((at, length))
        at += 4 + length
    return found, at if len(bytes) > at else None


class Blob(ToolTest):
    def show(self, bytes, *options):
        return self.run_tool("blob", bytes.hex(" "), *options)

    def elements(self, result):
        """(offset, length) of the elements that a report lists."""
        lines = result.stdout.decode().split("\n\n")
        rows = lines[1].splitlines()[1:] if len(lines) > 1 else []
        cells = [row.split() for row in rows]
        return [(int(row[0]), None if row[2] == "null" else int(row[2])) for row in cells]

    def assert_damaged(self, bytes, offset, reason, *options):
        result = self.show(bytes, *options)
        self.assert_trouble(result, f"record, offset {offset}: {reason}")
        return result

    def test_ElementsAreListedWithTheirOffsets(self):
        result = self.show(record(b"hello", None, b"", b"\x00\xff"))
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        self.assertEqual(
            result.stdout.decode(),
            "byte order little\n"
            "total      23\n"
            "elements   4\n"
            "\n"
            "offset  element  length  bytes\n"
            "     4        1  5       68 65 6c 6c 6f  hello\n"
            "    13        2  null\n"
            "    17        3  0\n"
            "    21        4  2       00 ff  ..\n")

    def test_ARecordWithoutElementsIsWhole(self):
        result = self.show(record())
        self.assertEqual((result.returncode, result.stdout),
                         (DONE, b"byte order little\ntotal      0\nelements   0\n"))

    def test_TheByteOrderIsThatInWhichTheRecordIsWhole(self):
        for order, name in (("<", "little"), (">", "big")):
            result = self.show(record(b"abc", order=order))
            self.assertEqual(result.returncode, DONE)
            self.assertIn(f"byte order {name}\n", result.stdout.decode())
        self.assert_damaged(record(b"abc", order=">"), 4,
                            "element 1 says 50331648 bytes, where the record has 3",
                            "--byte-order", "little")

    def test_FilesAndStandardInputAreRead(self):
        stored = record(b"x" * 40)
        self.write("blob.bin", stored)
        for result in (self.run_tool("blob", "blob.bin"), self.run_tool("blob", "-", input=stored)):
            self.assertEqual(result.returncode, DONE)
            self.assertEqual(self.elements(result), [(4, 40)])
            self.assertIn(" 78" * 16 + " ...  " + "x" * 16 + "\n", " " + result.stdout.decode())
        result = self.run_tool("blob", "blob.bin", "--bytes", "2")
        self.assertIn("78 78 ...  xx\n", result.stdout.decode())

    def test_EachKindOfDamageIsToldWithItsPlace(self):
        word = struct.Struct("<I").pack
        self.assert_damaged(b"", 0, "the record has 0 bytes")
        self.assert_damaged(b"\x00\x00\x00", 3, "the record has 3 bytes")
        self.assert_damaged(word(2**31) + b"\x00" * 8, 0, "the total says 2147483648 bytes")
        self.assert_damaged(word(2) + b"\x00\x00", 4, "the total leaves 2 bytes for element 1")
        self.assert_damaged(word(8) + word(0), 8, "the record ends 0 bytes into element 2")
        self.assert_damaged(word(8) + word(0) + b"\x00", 8, "the record ends 1 byte into element 2")
        self.assert_damaged(word(5) + word(2) + b"a", 4,
                            "element 1 says 2 bytes, where the total leaves 1")
        self.assert_damaged(word(6) + word(2) + b"a", 4,
                            "element 1 says 2 bytes, where the record has 1")
        self.assert_damaged(word(8) + word(0) + word(NULL - 1), 8,
                            "element 2 says 4294967294 bytes, where the total leaves 0")
        self.assert_damaged(record(b"a") + b"bc", 9, "2 bytes behind the end")

    def test_ADamagedFileIsNamedBehindItsElements(self):
        self.write("blob.bin", record(b"ab", b"cd")[:-1])
        result = self.run_tool("blob", "blob.bin")
        self.assert_trouble(result, "blob.bin, offset 10: element 2")
        self.assertEqual(self.elements(result), [(4, 2)])

    def test_WhatIsNeitherFileNorBytesIsTrouble(self):
        for source in ("absent", "0", "0g", "0 0", "00 0"):
            self.assert_trouble(self.run_tool("blob", source), f"'{source}'", "hexadecimal")
        self.assert_trouble(self.run_tool("blob", "."), "directory")
        self.assert_trouble(self.run_tool("blob"), "--help")
        self.assert_trouble(self.run_tool("blob", "00000000", "--byte-order", "middle"))

    def test_BytesThatHaveChangedShowAsASlowWalkSees(self):
        seed = new_seed()
        source = random.Random(seed)
        whole = record(b"hello", None, b"", b"ab", None)
        for _ in range(150):
            bytes = bytearray(whole)
            for _ in range(source.randrange(3)):
                place = source.randrange(len(bytes))
                bytes[place] = source.choice((0, 1, 2, 5, 0x7F, 0x80, 0xFF))
            del bytes[source.randrange(len(bytes) + 1):]
            bytes += b"\x00" * source.choice((0, 0, 0, 1, 4))
            order, name = source.choice((("<", "little"), (">", "big")))
            with self.subTest(bytes=bytes.hex(), order=name, seed=f"XOTM_SEED={seed}"):
                elements, offset = walk(bytes, order)
                result = self.show(bytes, "--byte-order", name)
                self.assertEqual(self.elements(result), elements)
                self.assertEqual(result.returncode, DONE if offset is None else TROUBLE)
                if offset is not None:
                    self.assertRegex(result.stderr.decode(), rf"\Axotm: record, offset {offset}: ")


if __name__ == "__main__":
    unittest.main()
