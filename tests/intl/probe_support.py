"""What the tests in Python share: the probe, and where the published data is."""

import os
import subprocess
import sys

sys.dont_write_bytecode = True

SOURCE = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))
TOOLS = os.path.join(SOURCE, "intl", "tools")
DATA = "/usr/share/unicode"
SKIPPED = 77

sys.path.insert(0, TOOLS)


def need_data():
    """Ends the test as skipped where the published data is not installed."""
    for name, package in (("allkeys.txt", "unicode-data"),
                          ("cldr/common/collation/root.xml", "unicode-cldr-core")):
        if not os.path.exists(os.path.join(DATA, name)):
            print(f"skipped: the Debian package {package} is not installed")
            sys.exit(SKIPPED)


def ask(questions):
    """The probe's answers to a list of questions. Its path is the test's first argument."""
    run = subprocess.run([sys.argv[1]], input="\n".join(questions) + "\n", text=True,
                         capture_output=True, check=True)
    return run.stdout.splitlines()


def finish(failures, checked):
    for failure in failures[:50]:
        print("failed:", failure)
    print(f"{checked} checked, {len(failures)} failed")
    sys.exit(1 if failures or not checked else 0)
