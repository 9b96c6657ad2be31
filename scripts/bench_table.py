#!/usr/bin/env python3
"""Prints the ratios of benchmarks that come in pairs, `<name>/ours` and `<name>/<peer>`.

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

    rows = [("benchmark", "ours", "peer", "", "ratio")]
    for pair, sides in times.items():
        if "ours" not in sides:
            continue  # the filter left the peer alone
        ours = statistics.median(sides.pop("ours"))
        for peer, runs in sides.items():
            other = statistics.median(runs)
            rows.append((pair, readable(ours), readable(other), peer, f"{ours / other:.2f}"))
    widths = [max(len(row[column]) for row in rows) for column in range(5)]
    for pair, ours, other, peer, ratio in rows:
        print(
            f"{pair:<{widths[0]}}  {ours:>{widths[1]}}  {other:>{widths[2]}}  "
            f"{peer:<{widths[3]}}  {ratio:>{widths[4]}}"
        )


if __name__ == "__main__":
    main(sys.argv[1:])
