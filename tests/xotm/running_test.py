"""Builds and searches that run at the same time, are stopped, or are watched on a terminal."""

import os
import pty
import random
import signal
import subprocess
import threading
import time
import unittest

from xotm_support import DONE, ToolTest, new_seed


def wait_for(condition, seconds=20):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise TimeoutError
        time.sleep(0.01)


class SideBySide(ToolTest):
    def start_build(self, name):
        """A build that has begun and waits for more lines."""
        before = set(self.files())
        build = self.start_tool(
            *["index", "create", name, "--type", "o_8b", "--input", "-"],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
        )
        build.stdin.write(b"7\n")
        build.stdin.flush()
        wait_for(lambda: set(self.files()) - before)
        return build

    def test_ASearchSeesTheEarlierIndexUntilTheBuildIsDone(self):
        self.create("i", "1\n2\n")
        build = self.start_build("i")
        self.assertEqual(self.lines("range", "i", "0", "9"), ["1", "2"])
        self.assert_in_order("i")
        build.communicate(b"8\n")
        self.assertEqual(build.returncode, DONE)
        self.assertEqual(self.lines("range", "i", "0", "9"), ["7", "8"])
        self.assertEqual(self.files(), ["i"])

    def test_AnIndexIsNotThereBeforeItIsWhole(self):
        build = self.start_build("i")
        self.assertNotIn("i", self.files())
        build.communicate()
        self.assertEqual(self.lines("range", "i", "0", "9"), ["7"])

    def test_OfTwoBuildsTheLaterOneStaysWhole(self):
        first = self.start_build("i")
        second = self.start_build("i")
        second.communicate(b"8\n")
        self.assertEqual(self.lines("range", "i", "0", "9"), ["7", "8"])
        first.communicate(b"9\n")
        self.assertEqual(self.lines("range", "i", "0", "9"), ["7", "9"])
        self.assert_in_order("i")
        self.assertEqual(self.files(), ["i"])

    def test_ASearchUnderWayIsNotDisturbedByABuild(self):
        text = "\n".join(f"{number}\t{'x' * 100}" for number in range(20000))
        self.create("i", text)
        # More than a pipe holds, so that the search stays in the middle of its output.
        search = self.start_tool("index", "range", "i", "0", "99999", stdout=subprocess.PIPE)
        first = search.stdout.readline()
        for value in "123":
            self.create("i", f"{value}\n")
        self.assertEqual((first + search.stdout.read()).decode(), text + "\n")
        self.assertEqual(search.wait(), DONE)
        self.assertEqual(self.lines("range", "i", "0", "9"), ["3"])

    def test_AStoppedBuildLeavesThingsAsTheyWere(self):
        self.create("old", "1\n")
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            for name in ("old", "new"):
                with self.subTest(signal=number, name=name):
                    build = self.start_build(name)
                    build.send_signal(number)
                    self.assertEqual(build.wait(timeout=20), -number)
                    self.assertEqual(self.files(), ["old"])
                    self.assertEqual(self.lines("range", "old", "0", "9"), ["1"])


class Killed(ToolTest):
    def test_ABuildThatIsKilledAtAnyMomentLeavesTheEarlierIndex(self):
        seed = new_seed()
        source = random.Random(seed)
        words = "".join(f"{source.choice('abcäöÅ')}{number:x} word\n" for number in range(40000))
        self.write("words", words)
        build = ["index", "create", "i", "--type", "XoString", "--input", "words"]
        begin = time.monotonic()
        self.assertEqual(self.run_tool(*build, "--key-length", "12").returncode, DONE)
        whole = time.monotonic() - begin
        for rebuild in [build] * 7 + [["index", "create", "i", "--rebuild"]] * 3:
            process = self.start_tool(*rebuild, stdout=subprocess.DEVNULL)
            time.sleep(source.uniform(0, whole))
            process.kill()
            process.wait()
            # One that was done already has put an index of the same values in its place.
            self.assert_in_order("i")
            self.assertEqual(self.lines("find", "i", words.split("\n")[77], "--count"), ["1"],
                             f"XOTM_SEED={seed}")
            for name in set(self.files()) - {"i", "words"}:
                os.remove(self.path(name))


class Watched(ToolTest):
    def watch(self, standard_error, feed):
        """Builds an index fed by `feed`; returns what it wrote to the terminal or pipe."""
        process = subprocess.Popen(
            [os.environ["XOTM"], "index", "create", "i", "--type", "o_8b", "--input", "-"],
            cwd=self.folder,
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=standard_error,
        )
        feed(process.stdin)
        output, _ = process.communicate()
        self.assertEqual(process.returncode, DONE)
        return output

    @staticmethod
    def feed_slowly(stream):
        for _ in range(4):
            stream.write(b"1\n" * 10)
            stream.flush()
            time.sleep(0.6)

    def on_terminal(self, feed):
        master, slave = pty.openpty()
        written = []

        def collect():
            while True:
                try:
                    data = os.read(master, 4096)
                except OSError:
                    return
                if not data:
                    return
                written.append(data)

        collector = threading.Thread(target=collect)
        collector.start()
        self.watch(slave, feed)
        os.close(slave)
        collector.join()
        os.close(master)
        return b"".join(written)

    def test_ALongBuildShowsProgressOnATerminalAndTakesItAway(self):
        shown = self.on_terminal(self.feed_slowly)
        self.assertRegex(shown, rb"\r\x1b\[K\d+ lines")
        self.assertTrue(shown.endswith(b"\r\x1b[K"))

    def test_AShortBuildShowsNothing(self):
        self.assertEqual(self.on_terminal(lambda stream: stream.write(b"1\n")), b"")

    def test_NothingIsShownWhereThereIsNoTerminal(self):
        with open(self.path("log"), "wb") as log:
            output = self.watch(log, self.feed_slowly)
        self.assertEqual(self.read("log"), b"")
        self.assertEqual(output, b"i: 40 entries, 1 distinct keys of type o_8b\n")


if __name__ == "__main__":
    unittest.main()
