"""What the tests of the tool share: running it in a folder of their own."""

import json
import operator
import os
import pty
import random
import re
import shutil
import subprocess
import tempfile
import unittest

TOOL = os.environ["XOTM"]
IS_SANITIZED = os.environ.get("XOTM_SANITIZED", "0") == "1"

# The number of the user without rights.
NOBODY = 65534

DONE, NOTHING_FOUND, TROUBLE = 0, 1, 2

INTEGER_RANGES = {
    "o_char": (-(2**7), 2**7 - 1),
    "o_u1b": (0, 2**8 - 1),
    "o_2b": (-(2**15), 2**15 - 1),
    "o_u2b": (0, 2**16 - 1),
    "o_4b": (-(2**31), 2**31 - 1),
    "o_u4b": (0, 2**32 - 1),
    "BlockId": (0, 2**32 - 1),
    "int": (-(2**31), 2**31 - 1),
    "unsigned": (0, 2**32 - 1),
    "enum": (-(2**31), 2**31 - 1),
    "o_8b": (-(2**63), 2**63 - 1),
    "o_u8b": (0, 2**64 - 1),
}
FLOATING_TYPES = ("o_double", "o_float")

# Of predicates, by the sign that a user writes.
RELATIONS = {
    "<": operator.lt,
    "<=": operator.le,
    "=": operator.eq,
    ">=": operator.ge,
    ">": operator.gt,
    "<>": operator.ne,
}


def new_seed():
    """A seed for random input; XOTM_SEED repeats a failed run."""
    return int(os.environ.get("XOTM_SEED", random.SystemRandom().randrange(2**32)))


class ToolTest(unittest.TestCase):
    longMessage = True
    maxDiff = 2000

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="xotm-test-")
        self.addCleanup(shutil.rmtree, self.folder)

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, content):
        if isinstance(content, str):
            content = content.encode()
        with open(self.path(name), "wb") as file:
            file.write(content)
        return name

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def files(self):
        return sorted(os.listdir(self.folder))

    def as_ordinary_user(self):
        """Options for a run that may not do everything, as the superuser may."""
        if os.geteuid() != 0:
            return {}
        os.chown(self.folder, NOBODY, NOBODY)
        for name in self.files():
            os.chown(self.path(name), NOBODY, NOBODY)
        options = {"user": NOBODY, "group": NOBODY, "extra_groups": []}
        try:
            self.run_tool("--version", **options)
        except PermissionError:
            self.skipTest("the tool lies where only the superuser reaches it")
        return options

    def run_tool(self, *arguments, input=b"", **options):
        """Runs the tool in the test's folder; output and messages are bytes."""
        options.setdefault("timeout", 120)
        options.setdefault("stdout", subprocess.PIPE)
        return subprocess.run(
            [TOOL, *map(str, arguments)],
            input=input.encode() if isinstance(input, str) else input,
            stderr=subprocess.PIPE,
            cwd=self.folder,
            **options,
        )

    def on_terminal(self, *arguments, **environment):
        """What the tool writes to a terminal."""
        leader, follower = pty.openpty()
        values = {name: value for name, value in os.environ.items() if name != "NO_COLOR"}
        result = self.run_tool(*arguments, stdout=follower,
                               env={**values, "TERM": "xterm", **environment})
        os.close(follower)
        written = b""
        try:
            while block := os.read(leader, 4096):
                written += block
        except OSError:
            pass
        os.close(leader)
        self.assertEqual(result.returncode, DONE)
        return written

    def assert_coloured_on_terminal(self, *arguments):
        """Only a terminal that takes colours gets them, and no text is changed by them."""
        coloured = self.on_terminal(*arguments)
        self.assertIn(b"\x1b[", coloured)
        self.assertIn(b"\x1b[", self.on_terminal(*arguments, NO_COLOR=""))
        plain = self.run_tool(*arguments).stdout
        self.assertNotIn(b"\x1b[", plain)
        for environment in ({"NO_COLOR": "1"}, {"TERM": "dumb"}):
            shown = self.on_terminal(*arguments, **environment)
            self.assertEqual(shown.replace(b"\r\n", b"\n"), plain)
        self.assertEqual(re.sub(rb"\x1b\[[0-9;]*m", b"", coloured).replace(b"\r\n", b"\n"), plain)
        return coloured

    def start_tool(self, *arguments, **options):
        process = subprocess.Popen(
            [TOOL, *map(str, arguments)], cwd=self.folder, stderr=subprocess.PIPE, **options
        )
        self.addCleanup(self.end_process, process)
        return process

    @staticmethod
    def end_process(process):
        process.kill()
        process.wait()
        for stream in (process.stdin, process.stdout, process.stderr):
            if stream is not None:
                stream.close()

    def index(self, *arguments, **options):
        return self.run_tool("index", *arguments, **options)

    def create(self, name, text, *arguments, type="o_8b", **options):
        """Builds an index that must succeed."""
        result = self.index(
            "create", name, "--type", type, "--input", "-", *arguments, input=text, **options
        )
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        return result

    def lines(self, *arguments, **options):
        """The lines that a search prints, which must go well."""
        result = self.index(*arguments, **options)
        self.assertEqual(result.stderr, b"")
        self.assertEqual(result.returncode, DONE if result.stdout else NOTHING_FOUND)
        return result.stdout.decode().splitlines()

    def explain(self, predicate, *arguments):
        """What is told of a predicate on the index `i`."""
        result = self.index("explain", "i", "--json", *arguments, "--", predicate)
        self.assertEqual((result.returncode, result.stderr), (DONE, b""), predicate)
        told = json.loads(result.stdout)
        self.assertLessEqual(told["selected"], told["visited"])
        self.assertAlmostEqual(told["share"], told["selected"] / told["keys"])
        return told

    def assert_trouble(self, result, *fragments):
        """One clear line on standard error that holds all fragments, and exit code 2."""
        message = result.stderr.decode()
        self.assertEqual(result.returncode, TROUBLE, message)
        self.assertRegex(message, r"\Axotm: [^\n]+\n\Z")
        for fragment in fragments:
            self.assertIn(str(fragment), message)

    def assert_in_order(self, name):
        result = self.index("verify", name)
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
