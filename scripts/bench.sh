#!/usr/bin/env bash
# Installs what is needed, builds the optimised library and runs its benchmarks. Prints one table:
# what was measured, our time, the time of a named peer in the same run, and their ratio, of the
# medians and of the fastest repetitions.
# usage: scripts/bench.sh [FILTER]   (a regular expression over the names)
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install_packages.sh build test bench
cmake --preset release >/dev/null
cmake --build --preset release -j2 >/dev/null

results=$(mktemp -d)
trap 'rm -rf "$results"' EXIT
for program in build/release/bench/*_benchmark; do
  echo "running $(basename "$program")" >&2
  "$program" --benchmark_filter="${1:-.}" --benchmark_repetitions=25 \
    --benchmark_enable_random_interleaving=true --benchmark_min_time=0.02 \
    --benchmark_out_format=json --benchmark_out="$results/$(basename "$program").json" >/dev/null
done
python3 scripts/bench_table.py "$results"/*.json
