#!/usr/bin/env python3
"""Prints the ratios of benchmarks that come in pairs, `<name>/ours` and `<name>/<peer>`.

The times are medians of the repetitions, and `ratio` is that of the medians. `at best` is the ratio
of the fastest repetitions, which other programs of the machine have disturbed least.

usage: bench_table.py RESULTS.json...   (Google Benchmark's JSON output, with repetitions)
"""

import json
import statistics
import sys

NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def readable(nanoseconds):
    """A time with a unit that keeps it between 1 and 1000."""
    for unit in ("ns", "us", "ms"):
        if nanoseconds < 1000:
            return f"{nanoseconds:.2f} {unit}"
        nanoseconds /= 1000
    return f"{nanoseconds:.2f} s"


def main(files):
    times = {}
    for file in files:
        with open(file, encoding="utf-8") as results:
            content = results.read()
        if not content.strip():
            continue  # the filter left nothing of this program
        for run in json.loads(content)["benchmarks"]:
            if run["run_type"] == "iteration":
                pair, _, side = run["run_name"].partition("/")
                time = run["cpu_time"] * NANOSECONDS[run["time_unit"]]
                times.setdefault(pair, {}).setdefault(side.split("/")[0], []).append(time)

    rows = [("benchmark", "ours", "peer", "", "ratio", "at best")]
    for pair, sides in times.items():
        if "ours" not in sides:
            continue  # the filter left the peer alone
        ours = sides.pop("ours")
        for peer, others in sides.items():
            medians = statistics.median(ours), statistics.median(others)
            rows.append(
                (
                    pair,
                    *map(readable, medians),
                    peer,
                    f"{medians[0] / medians[1]:.2f}",
                    f"{min(ours) / min(others):.2f}",
                )
            )
    widths = [max(map(len, column)) for column in zip(*rows)]
    for row in rows:
        cells = zip(row, "<>><>>", widths)
        print("  ".join(f"{cell:{align}{width}}" for cell, align, width in cells))


if __name__ == "__main__":
    main(sys.argv[1:])
