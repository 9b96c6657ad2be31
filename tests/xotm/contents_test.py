"""`xotm index stat` and `verify`."""

import json
import struct
import unittest

from xotm_support import DONE, ToolTest


class Statistics(ToolTest):
    def stat(self, name):
        result = self.index("stat", name, "--json")
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        return json.loads(result.stdout)

    def test_JsonTellsWhatTheIndexHolds(self):
        self.create("i", "7\n7\n9\n", "--byte-order", "big", type="BlockId")
        stat = self.stat("i")
        self.assertEqual(
            (stat["type"], stat["typeId"], stat["formatByte"], stat["byteOrder"]),
            ("BlockId", 14, 2, "big"),
        )
        self.assertEqual((stat["entries"], stat["distinctKeys"]), (3, 2))
        self.assertEqual(stat["fileBytes"], len(self.read("i")))
        one_page = {"depth": 1, "branchPages": 0, "leafPages": 1, "overflowPages": 0}
        self.assertEqual((stat["keys"], stat["lines"]), (one_page, one_page))

    def test_TreesGrowWithTheirEntries(self):
        count = 20000
        self.create("i", "\n".join(map(str, range(count))))
        stat = self.stat("i")
        self.assertEqual((stat["entries"], stat["distinctKeys"]), (count, count))
        # A page has room for at most one entry of 8 bytes of key and 8 of line number in 16.
        self.assertGreaterEqual(stat["keys"]["leafPages"], count * 16 // stat["pageSize"])
        self.assertGreaterEqual(stat["keys"]["branchPages"], 1)
        self.assertGreaterEqual(stat["keys"]["depth"], 2)

    def test_LongLinesTakeOverflowPages(self):
        self.create("i", "1\t" + "x" * 20000 + "\n")
        stat = self.stat("i")
        self.assertEqual(stat["lines"]["overflowPages"], 20000 // stat["pageSize"] + 1)

    def test_TextSaysTheSame(self):
        self.create("i", "7\n7\n8\n", type="o_u2b")
        result = self.index("stat", "i")
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        rows = dict(line.split("  ", 1) for line in result.stdout.decode().splitlines())
        rows = {name.strip(): value.strip() for name, value in rows.items()}
        self.assertEqual(rows["type"], "o_u2b (id 5)")
        self.assertEqual(rows["format byte"], "1 (little-endian)")
        self.assertEqual((rows["entries"], rows["distinct keys"]), ("3", "2"))
        pages = "depth 1, pages: 0 branch, 1 leaf, 0 overflow"
        self.assertEqual((rows["tree of keys"], rows["tree of lines"]), (pages, pages))
        self.assertEqual(rows["file"], f"{len(self.read('i'))} bytes")


class Verifying(ToolTest):
    def test_AnIndexInOrderIsCountedThrough(self):
        self.create("i", "3\n1\n3\n2\n")
        result = self.index("verify", "i")
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        self.assertEqual(
            result.stdout, b"i is in order: 4 entries, 3 distinct keys, 4 lines checked\n"
        )

    def alter(self, name, old, new):
        """Puts `new` in the place of the bytes `old`, which must be there once."""
        content = self.read(name)
        self.assertEqual((content.count(old), len(old)), (1, len(new)))
        self.write(name, content.replace(old, new))

    # Values whose bytes occur nowhere else in the file.
    LOW, MIDDLE, HIGH = 0x1122334455667788, 0x2233445566778899, 0x33445566778899AA

    def create_three(self):
        self.create("i", f"{self.MIDDLE}\tfirst\n{self.LOW}\tsecond\n{self.HIGH}\tthird\n")

    def test_AKeyOutOfOrderIsFound(self):
        self.create_three()
        self.alter("i", struct.pack("<q", self.MIDDLE), struct.pack("<q", -1))
        self.assert_trouble(self.index("verify", "i"), "i is damaged", "keys out of order")

    def test_AKeyThatIsThereTwiceIsFound(self):
        self.create_three()
        self.alter("i", struct.pack("<q", self.MIDDLE), struct.pack("<q", self.LOW))
        self.assert_trouble(self.index("verify", "i"), "i is damaged", "lines of a key")

    def test_AChangedKeyInItsPlaceIsFound(self):
        self.create_three()
        self.alter("i", struct.pack("<q", self.MIDDLE), struct.pack("<q", self.MIDDLE + 1))
        self.assert_trouble(self.index("verify", "i"), "i is damaged", "checksum of the keys")

    def test_AChangedLineIsFound(self):
        self.create_three()
        self.alter("i", b"second", b"sekond")
        self.assert_trouble(self.index("verify", "i"), "i is damaged", "checksum of the lines")

    def test_ALineNumberThatLeadsNowhereIsFound(self):
        self.create_three()
        old = struct.pack("<qQ", self.LOW, 2)
        self.alter("i", old, struct.pack("<qQ", self.LOW, 77))
        self.assert_trouble(self.index("verify", "i"), "i is damaged", "line 77 is not there")
        self.assert_trouble(self.index("find", "i", self.LOW), "line 77 is not there")

    def test_LineNumbersThatChangedPlacesAreFound(self):
        self.create_three()
        self.alter("i", struct.pack("<qQ", self.LOW, 2), struct.pack("<qQ", self.LOW, 3))
        self.alter("i", struct.pack("<qQ", self.HIGH, 3), struct.pack("<qQ", self.HIGH, 2))
        self.assert_trouble(self.index("verify", "i"), "checksum of the keys")

    def test_LinesOfOneValueOutOfOrderAreFound(self):
        self.create("i", f"{self.LOW}\n{self.LOW}\n")
        self.alter("i", struct.pack("<QQ", 1, 2), struct.pack("<QQ", 2, 1))
        self.assert_trouble(self.index("verify", "i"), "i is damaged", "lines of a key out of order")


if __name__ == "__main__":
    unittest.main()
