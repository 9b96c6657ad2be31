#!/bin/sh
# Runs a Windows program built by the cross compiler, with the compiler's own run-time libraries and
# those of the build tree in reach. Wine keeps its state in a folder of its own.
#
#   wine.sh PROGRAM [ARGUMENT...]   runs the program
#   wine.sh --start                 makes the folder and starts a server that stays
#   wine.sh --stop                  ends that server
#
# Without a server that stays, each program starts one when none runs and the server ends some
# seconds after its last program; a program that comes just then finds its connection cut.
set -eu
compiler=x86_64-w64-mingw32-g++-posix
paths=$(dirname "$("$compiler" -print-file-name=libstdc++-6.dll)")
threads=$("$compiler" -print-file-name=libwinpthread-1.dll)
paths="$paths;$(dirname "$threads")"
[ -z "${XO_DLL_DIR:-}" ] || paths="$XO_DLL_DIR;$paths"
export WINEPATH="$paths"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEPREFIX="${WINEPREFIX:-${TMPDIR:-/tmp}/xotypemgr-wine}"

first_of() {
  for candidate in "$@"; do
    if command -v "$candidate" >/dev/null 2>&1; then echo "$candidate"; return; fi
  done
  echo "wine.sh: no Wine found" >&2
  exit 2
}
wine=$(first_of wine wine64 /usr/lib/wine/wine64)
server=$(first_of wineserver /usr/lib/wine/wineserver /usr/lib/wine/wineserver64)

case "${1:-}" in
  --start)
    mkdir -p "$WINEPREFIX"
    "$server" -p >/dev/null 2>&1 </dev/null
    exec "$wine" wineboot -u >/dev/null 2>&1
    ;;
  --stop)
    # 2 tells that no server runs.
    "$server" -k || [ $? -eq 2 ]
    exit 0
    ;;
esac

# A failure of Wine itself, which it reports as such, says nothing of the program: try again.
report=$(mktemp)
trap 'rm -f "$report"' EXIT
for attempt in 1 2 3; do
  status=0
  "$wine" "$@" 2>"$report" || status=$?
  cat "$report" >&2
  if [ "$status" -eq 0 ] || ! grep -q '^wine client error' "$report"; then break; fi
  echo "wine.sh: Wine failed in attempt $attempt" >&2
done
exit "$status"
