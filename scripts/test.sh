#!/usr/bin/env bash
# Installs what is needed, builds everything in every way, and runs all tests: the fuzz targets for
# ten seconds each, the library's tests under Wine, and the whole suite under the sanitizers and
# optimised. Ends with the summary of the optimised run; stops at the first failure.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install_packages.sh build test bench

for preset in fuzz mingw asan release; do
  echo "== $preset"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" -j2
  ctest --preset "$preset"
done
