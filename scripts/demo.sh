#!/usr/bin/env bash
# Installs what is needed, builds the tool, and shows the library's main job on real numbers: an
# index of the sizes of all files below /usr, searched on disk.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install_packages.sh build
build=build/demo
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DXO_BUILD_TESTS=OFF -DXO_BUILD_BENCHMARKS=OFF >/dev/null
cmake --build "$build" -j2
xotm=$build/tools/xotm

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
sizes=$work/sizes.tsv
index=$work/sizes.index

echo
echo "== The sizes of all files below /usr, with their paths, as an index of o_8b values"
# Folders that may not be read, and paths with a line feed in them, are passed over.
find /usr -type f -printf '%s\t%p\n' >"$sizes" 2>/dev/null || true
"$xotm" index create "$index" --type o_8b --input "$sizes" --column 1 --on-error skip
"$xotm" index stat "$index"
"$xotm" index verify "$index"

echo
echo "== Which files are from 1 MiB to 2 MiB?"
"$xotm" index range "$index" 1048576 2097152 --stats >"$work/found"
echo "$(wc -l <"$work/found") files, the first and the last three:"
head -n 3 "$work/found"
echo "..."
tail -n 3 "$work/found"

echo
size=$(stat -c %s /usr/bin/env)
echo "== Which files are exactly as long as /usr/bin/env, $size bytes?"
"$xotm" index find "$index" "$size" --stats
