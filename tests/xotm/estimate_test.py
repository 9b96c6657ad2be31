"""`xotm index estimate`: errors of estimates where they are known beforehand, and their picture."""

import json
import os
import re
import shutil
import unittest

from xotm_support import DONE, ToolTest


class EstimateTest(ToolTest):
    def estimate(self, *arguments):
        result = self.index("estimate", "i", *arguments, "--json")
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        return json.loads(result.stdout)


class Errors(EstimateTest):
    def test_EvenlySpreadNumbersAreEstimatedWithoutError(self):
        self.create("i", "".join(f"{n}\n" for n in range(1, 501)), type="o_4b")
        told = self.estimate()
        self.assertEqual(told["keys"], 500)
        for kind, errors in told["kinds"].items():
            # Shares are of single precision.
            self.assertLess(errors["largest"], 0.001, kind)

    def test_SquaresAreMissedByAQuarterAtMostAndOftenByThreeSixteenths(self):
        # Of x of the keys below a value, which are x * x of the range, the error is x - x * x.
        self.create("i", "".join(f"{n * n}\n" for n in range(1, 1001)), type="o_4b")
        errors = self.estimate("--predicates", "3000")["kinds"]["< and >"]
        self.assertEqual(errors["count"], 2000)
        self.assertAlmostEqual(errors["median"], 100 * 3 / 16, delta=1)
        self.assertAlmostEqual(errors["largest"], 25, delta=0.2)
        quantiles = [errors[name] for name in ("q25", "median", "q75", "q95", "largest")]
        self.assertEqual(quantiles, sorted(quantiles))

    def test_PredicatesAreOfAllKindsInTurn(self):
        self.create("i", "1\n2\n3\n", type="o_4b")
        kinds = self.estimate("--predicates", "60")["kinds"]
        self.assertEqual({kind: errors["count"] for kind, errors in kinds.items()},
                         {"<": 10, "<=": 10, ">": 10, ">=": 10, "=": 10, "<>": 10, "< and >": 40})

    def test_TextsAreAlsoLookedForByTheirBeginnings(self):
        self.create("i", "ab\nac\n*\n?x\n", type="XoString")
        kinds = self.estimate("--predicates", "70")["kinds"]
        self.assertEqual(kinds["= prefix*"]["count"], 10)
        self.assertEqual(kinds["< and >"]["count"], 40)
        self.assertEqual(kinds["< and > with prefixes"]["count"], 50)
        # No beginning without a wildcard.
        self.create("i", "*\n?x\n", type="XoString")
        self.assertNotIn("= prefix*", self.estimate("--predicates", "70")["kinds"])

    def test_TheChoiceIsThatOfTheSeed(self):
        self.create("i", "".join(f"{n ** 3}\n" for n in range(1, 301)), type="o_8b")
        self.assertEqual(self.estimate("--seed", "7"), self.estimate("--seed", "7"))
        self.assertNotEqual(self.estimate("--seed", "7"), self.estimate("--seed", "8"))

    def test_TheReportHasARowForEachKind(self):
        self.create("i", "1\n2\n3\n", type="o_4b")
        lines = self.index("estimate", "i", "--predicates", "12").stdout.decode().splitlines()
        self.assertEqual(lines[0], "i: 3 keys of type o_4b")
        self.assertEqual(lines[1], "error of the estimate, in percentage points")
        self.assertEqual(lines[2].split(), "kind count 25 % median 75 % 95 % largest".split())
        self.assertEqual(lines[3].split(), "< 2 0.00 0.00 0.00 0.00 0.00".split())
        self.assertEqual(lines[-1].split(), "< and > 8 0.00 0.00 0.00 0.00 0.00".split())


class Plots(EstimateTest):
    def test_ThePictureHasAPointForEachPredicate(self):
        if shutil.which("gnuplot") is None:
            self.skipTest("gnuplot is not installed")
        self.create("i", "".join(f"{n}\n" for n in range(1, 101)), type="o_4b")
        name = "it's a plot.svg"
        self.estimate("--predicates", "120", "--plot", name)
        picture = self.read(name).decode()
        self.assertIn("<svg", picture)
        self.assertTrue(picture.rstrip().endswith("</svg>"))
        # And one for each kind in the key.
        points = re.findall(r"<use xlink:href='#gpPt\d+' transform='translate", picture)
        self.assertEqual(len(points), 126)

    def test_APictureThatCannotBeWrittenIsTrouble(self):
        if shutil.which("gnuplot") is None:
            self.skipTest("gnuplot is not installed")
        self.create("i", "1\n2\n", type="o_4b")
        result = self.index("estimate", "i", "--plot", "no/such/folder.svg")
        self.assert_trouble(result, "gnuplot could not draw no/such/folder.svg")
        self.assert_trouble(self.index("estimate", "i", "--plot", "a\nb"), "no name for a plot")

    def test_WithoutGnuplotThereIsOneClearLine(self):
        self.create("i", "1\n2\n", type="o_4b")
        os.mkdir(self.path("empty"))
        result = self.index("estimate", "i", "--plot", "out.svg",
                            env={**os.environ, "PATH": self.path("empty")})
        self.assert_trouble(result, "gnuplot, which is not installed")
        self.assertEqual(result.stdout, b"")
        self.assertNotIn("out.svg", self.files())


if __name__ == "__main__":
    unittest.main()
