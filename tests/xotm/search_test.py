"""`xotm index find` and `range` against answers worked out here."""

import json
import math
import random
import struct
import unittest

from xotm_support import (
    DONE,
    FLOATING_TYPES,
    INTEGER_RANGES,
    NOTHING_FOUND,
    ToolTest,
    new_seed,
)


def to_float(value):
    """The nearest number of single precision."""
    return struct.unpack("f", struct.pack("f", value))[0]


def order_key(value):
    """NaN, negative infinity, the finite numbers, positive infinity; zeros are equal."""
    return (0, 0.0) if math.isnan(value) else (1, value + 0.0)


def random_integers(generator, low, high, count):
    values = [low, low, high, high, 0, 1, max(low, -1)]
    while len(values) < count:
        # Numbers of all sizes, and some that come again and again.
        width = generator.randrange(1, 65)
        value = generator.getrandbits(width) * generator.choice((1, -1))
        values.append(min(max(value, low), high))
    generator.shuffle(values)
    return values


def random_floats(generator, type_name, count):
    texts = ["nan", "-nan", "inf", "-inf", "0", "-0", "0.0", "-0.0", "1e-30", "-1e-30"]
    while len(texts) < count:
        value = math.ldexp(generator.uniform(-1, 1), generator.randrange(-100, 100))
        texts.append(repr(value if generator.random() < 0.7 else float(round(value) % 50)))
    generator.shuffle(texts)
    convert = to_float if type_name == "o_float" else float
    return [(text, convert(float(text))) for text in texts]


class EveryType(ToolTest):
    def check(self, generator, entries, key, *create_arguments, **create_options):
        """`entries` are texts with their values, `key` the order of values."""
        lines = [f"{text}\tline {number}" for number, (text, _) in enumerate(entries, 1)]
        self.create("i", "\n".join(lines) + "\n", *create_arguments, **create_options)
        self.assert_in_order("i")

        def expected(low, high):
            inside = [
                (key(value), number)
                for number, (_, value) in enumerate(entries, 1)
                if key(low) <= key(value) <= key(high)
            ]
            return [f"{number}:{lines[number - 1]}" for _, number in sorted(inside)]

        everything = sorted(entries, key=lambda entry: key(entry[1]))
        (low_text, low), (high_text, high) = everything[0], everything[-1]
        found = self.lines("range", "i", low_text, high_text, "--line-numbers")
        self.assertEqual(found, expected(low, high))
        for _ in range(2):
            text, value = generator.choice(entries)
            found = self.lines("find", "i", text, "--line-numbers")
            self.assertEqual(found, expected(value, value), text)
            (low_text, low), (high_text, high) = generator.choices(entries, k=2)
            found = self.lines("range", "i", low_text, high_text, "--line-numbers")
            self.assertEqual(found, expected(low, high), (low_text, high_text))
            found = self.index("range", "i", low_text, high_text, "--count")
            self.assertEqual(int(found.stdout), len(expected(low, high)))

    def test_IntegersComeInNumericalOrder(self):
        seed = new_seed()
        for type_name, (low, high) in INTEGER_RANGES.items():
            for byte_order in ("little", "big"):
                with self.subTest(type=type_name, byte_order=byte_order, seed=seed):
                    generator = random.Random(seed)
                    values = random_integers(generator, low, high, 400)
                    self.check(
                        generator,
                        [(str(value), value) for value in values],
                        lambda value: value,
                        "--byte-order",
                        byte_order,
                        type=type_name,
                    )

    def test_FloatingPointComesInTotalOrder(self):
        seed = new_seed()
        for type_name in FLOATING_TYPES:
            for byte_order in ("little", "big"):
                with self.subTest(type=type_name, byte_order=byte_order, seed=seed):
                    generator = random.Random(seed)
                    self.check(
                        generator,
                        random_floats(generator, type_name, 400),
                        order_key,
                        "--byte-order",
                        byte_order,
                        type=type_name,
                    )

    def test_NansAreOneValueBelowAllOthers(self):
        self.create("i", "inf\nnan\n-inf\n-nan\n0\n", type="o_double")
        self.assertEqual(self.lines("find", "i", "nan"), ["nan", "-nan"])
        self.assertEqual(self.lines("range", "i", "nan", "-inf"), ["nan", "-nan", "-inf"])
        self.assertEqual(self.lines("range", "i", "-inf", "inf"), ["-inf", "0", "inf"])

    def test_BothZerosAreOneValue(self):
        self.create("i", "-0.0\n1\n0.0\n-1\n", type="o_float")
        self.assertEqual(self.lines("find", "i", "0"), ["-0.0", "0.0"])
        self.assertEqual(self.lines("find", "i", "-0"), ["-0.0", "0.0"])

    def test_NegativeNumbersComeBeforePositiveOnes(self):
        for byte_order in ("little", "big"):
            self.create("i", "1\n-1\n0\n-128\n127\n", "--byte-order", byte_order, type="o_char")
            self.assertEqual(
                self.lines("range", "i", "-128", "127"), ["-128", "-1", "0", "1", "127"]
            )


class Printing(ToolTest):
    def setUp(self):
        super().setUp()
        self.create("i", "20\tb\n10\ta\n20\tc\n-5\td\n")

    def test_BothEndsOfARangeAreInside(self):
        self.assertEqual(self.lines("range", "i", "-5", "10"), ["-5\td", "10\ta"])
        self.assertEqual(self.lines("range", "i", "-4", "9"), [])
        self.assertEqual(self.lines("range", "i", "10", "20"), ["10\ta", "20\tb", "20\tc"])

    def test_ARangeUpsideDownIsEmpty(self):
        self.assertEqual(self.index("range", "i", "20", "10").returncode, NOTHING_FOUND)

    def test_NothingFoundIsCodeOneWithoutAWord(self):
        for arguments in (["find", "i", "11"], ["range", "i", "21", "99"], ["find", "i", "1", "--json"]):
            result = self.index(*arguments)
            self.assertEqual(
                (result.returncode, result.stdout, result.stderr), (NOTHING_FOUND, b"", b"")
            )

    def test_LineNumbersStandBeforeTheLines(self):
        self.assertEqual(self.lines("find", "i", "20", "--line-numbers"), ["1:20\tb", "3:20\tc"])

    def test_CountPrintsOnlyTheNumber(self):
        self.assertEqual(self.lines("range", "i", "10", "20", "--count"), ["3"])
        none = self.index("find", "i", "11", "--count")
        self.assertEqual((none.returncode, none.stdout), (NOTHING_FOUND, b"0\n"))
        counted = self.index("find", "i", "20", "--count", "--json")
        self.assertEqual(json.loads(counted.stdout), {"count": 2})

    def test_JsonHasOneObjectForEachLine(self):
        found = [json.loads(line) for line in self.lines("range", "i", "0", "20", "--json")]
        self.assertEqual(
            found,
            [
                {"line": 2, "text": "10\ta"},
                {"line": 1, "text": "20\tb"},
                {"line": 3, "text": "20\tc"},
            ],
        )

    def test_JsonStaysJsonWhateverTheBytesOfALine(self):
        self.create("j", b'1\t"\\\x01\xff\xc3\n')
        found = json.loads(self.index("find", "j", "1", "--json").stdout)
        self.assertEqual(found["text"], '1\t"\\\x01\ufffd\ufffd')

    def test_StatsGoToStandardError(self):
        result = self.index("find", "i", "20", "--stats")
        self.assertEqual((result.returncode, result.stdout), (DONE, b"20\tb\n20\tc\n"))
        self.assertRegex(
            result.stderr.decode(),
            r"\Axotm: lines found: 2, keys visited: [1-9]\d*, comparisons: [1-9]\d*, time: [\d.]+ (micro|milli|)seconds\n\Z",
        )

    def test_ALookUpMakesAsManyComparisonsAsTheTreeIsDeep(self):
        count = 100000
        self.create("j", "\n".join(map(str, range(count))))
        result = self.index("find", "j", "77777", "--stats")
        comparisons = int(result.stderr.split(b"comparisons: ")[1].split(b",")[0])
        # A binary search needs 17; each level of the tree and the ends of the range add a few.
        self.assertLess(comparisons, 40)
        self.assertGreaterEqual(comparisons, 10)

    def test_ManyLinesOfOneValueComeInTheOrderOfTheLines(self):
        self.create("j", "\n".join(f"{number % 3}\t{number}" for number in range(9000)))
        self.assertEqual(
            self.lines("find", "j", "1"), [f"1\t{number}" for number in range(1, 9000, 3)]
        )
        self.assertEqual(self.lines("find", "j", "2", "--count"), ["3000"])
        self.assert_in_order("j")

    def test_ValuesAreReadAsInTheInput(self):
        self.assertEqual(self.lines("find", "i", " +10 "), ["10\ta"])
        self.assert_trouble(self.index("find", "i", "ten"), "'ten'", "no value of type o_8b")
        self.assert_trouble(self.index("find", "i", ""), "''", "no value of type o_8b")
        self.assert_trouble(self.index("range", "i", "0", "1e3"), "'1e3'")
        self.assert_trouble(self.index("find", "i", str(2**63)), "out of the range of o_8b")

    def test_NegativeValuesAreNoOptions(self):
        self.create("j", "-inf\n-.5\n-1.5\n", type="o_double")
        for text in ("-inf", "-.5", "-1.5"):
            self.assertEqual(self.lines("find", "j", text), [text])
        self.assertEqual(self.lines("range", "j", "-Infinity", "-.5"), ["-inf", "-1.5", "-.5"])
        self.assert_trouble(self.index("find", "i", "-inf"), "'-inf'")


class TypeInTheFile(ToolTest):
    def test_TheIndexKnowsItsTypeAndByteOrder(self):
        self.create("i", "1\n-1\n", "--byte-order", "big", type="o_2b")
        self.assertEqual(self.lines("range", "i", "-1", "1"), ["-1", "1"])
        self.assertEqual(
            self.lines("range", "i", "-1", "1", "--type", "o_2b", "--byte-order", "big"),
            ["-1", "1"],
        )

    def test_AnotherTypeOrByteOrderIsNotedAndNotUsed(self):
        self.create("i", "1\n-1\n", "--byte-order", "big", type="o_2b")
        for command in (["find", "i", "-1"], ["range", "i", "-1", "0"], ["stat", "i"], ["verify", "i"]):
            with self.subTest(command=command):
                plain = self.index(*command)
                noted = self.index(*command, "--type", "o_double", "--byte-order", "little")
                self.assertEqual((noted.returncode, noted.stdout), (DONE, plain.stdout))
                self.assertEqual(
                    noted.stderr.decode().splitlines(),
                    [
                        "xotm: note: i holds values of type o_2b, not o_double",
                        "xotm: note: i holds values in byte order big, not little",
                    ],
                )

    def test_AnUnknownTypeIsTroubleHereToo(self):
        self.create("i", "1\n")
        self.assert_trouble(self.index("find", "i", "1", "--type", "o_9b"), "unknown type 'o_9b'")


if __name__ == "__main__":
    unittest.main()
