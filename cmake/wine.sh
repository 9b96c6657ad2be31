#!/bin/sh
# Runs a Windows program built by the cross compiler, with the compiler's own run-time libraries and
# those of the build tree in reach. Wine keeps its state in a folder of its own.
set -eu
compiler=x86_64-w64-mingw32-g++-posix
paths=$(dirname "$("$compiler" -print-file-name=libstdc++-6.dll)")
threads=$("$compiler" -print-file-name=libwinpthread-1.dll)
paths="$paths;$(dirname "$threads")"
[ -z "${XO_DLL_DIR:-}" ] || paths="$XO_DLL_DIR;$paths"
export WINEPATH="$paths"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEPREFIX="${WINEPREFIX:-${TMPDIR:-/tmp}/xotypemgr-wine}"
for wine in wine wine64 /usr/lib/wine/wine64; do
  if command -v "$wine" >/dev/null 2>&1; then exec "$wine" "$@"; fi
done
echo "wine.sh: no Wine found" >&2
exit 2
