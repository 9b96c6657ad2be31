#!/usr/bin/env bash
# Installs what is needed, builds the tool, and shows the library's main job on real data: indexes on
# disk of the sizes of all files below /usr, and of the words of four languages, and searches in them.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install_packages.sh build demo
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

# words LIST ENCODING LANGUAGE CODE-SET WORD PATTERN PLAIN: an index of a word list, and three
# searches in it.
words() {
  local list=$1 encoding=$2 language=$3 code_set=$4 word=$5 pattern=$6 plain=$7
  local text=$work/$list.txt
  index=$work/$list.index
  iconv -f "$encoding" -t UTF-8 "/usr/share/dict/$list" >"$text"
  echo
  echo "== $language words, in the order of their language, by keys of at most 24 bytes"
  "$xotm" index create "$index" --type XoString --input "$text" \
    --language "$language" --code-set "$code_set" --key-length 24
  "$xotm" index stat "$index" | grep -E '^(cut keys|fetching)'
  "$xotm" index verify "$index"
  echo "-- $word"
  "$xotm" index find "$index" "$word" --stats
  echo "-- $pattern (a pattern; the first of what it matches)"
  "$xotm" index find "$index" "$pattern" --stats >"$work/found"
  head -n 5 "$work/found"
  echo "-- $plain, with whatever accents and case"
  "$xotm" index find "$index" "$plain" --ignore-accents --ignore-case --stats
}

words ngerman UTF-8 German ISO-8859-1 Straßenbahn 'Wörter*' ubermassig
words swedish ISO-8859-1 Swedish ISO-8859-1 ångbåt 'sjö?an*' ide
words polish UTF-8 Polish ISO-8859-2 źdźbło 'żół*' abelard
words french UTF-8 French ISO-8859-1 côté 'cot?' eleve
