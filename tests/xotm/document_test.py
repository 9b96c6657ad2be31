"""The documents: what the boxes of commands show is what the tool prints."""

import os
import re
import subprocess
import unittest

from xotm_support import TOOL, ToolTest

DOCUMENTS = os.path.join(os.path.dirname(__file__), "..", "..", "docs")
# Word lists change with their packages.
OTHERS = "/usr/share/dict"


def commands(document):
    """(command, output) of all boxes of a document in their order."""
    with open(os.path.join(DOCUMENTS, document), encoding="utf-8") as file:
        text = file.read()
    for box in re.findall(r"^```console\n(.*?)^```$", text, re.MULTILINE | re.DOTALL):
        for part in re.split(r"^\$ ", box, flags=re.MULTILINE)[1:]:
            command, _, output = part.partition("\n")
            yield command, output.rstrip("\n")


class Documents(ToolTest):
    def test_BoxesShowWhatTheToolPrints(self):
        count = 0
        for document in sorted(name for name in os.listdir(DOCUMENTS) if name.endswith(".md")):
            for command, output in commands(document):
                if OTHERS in command:
                    continue
                count += 1
                with self.subTest(document=document, command=command):
                    result = subprocess.run(
                        ["bash", "-c", 'xotm() { "$XOTM" "$@"; }; ' + command], cwd=self.folder,
                        env={**os.environ, "XOTM": TOOL, "LC_ALL": "C.UTF-8"}, timeout=60,
                        stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
                    self.assertEqual(result.stdout.decode().rstrip("\n"), output)
        self.assertGreaterEqual(count, 25)


if __name__ == "__main__":
    unittest.main()
