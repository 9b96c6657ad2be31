#!/bin/sh
# Installs the library into an empty folder and builds programs against it from outside, through the
# CMake package and through pkg-config, then runs them.
# usage: test_package.sh BUILD_FOLDER SOURCE_FOLDER CXX [CXX_FLAGS...]
set -eu
build=$1 source=$2 compiler=$3
shift 3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >/dev/null

# The CMake package.
cmake -G Ninja -S "$source/tests/package" -B "$work/outside" -DCMAKE_CXX_COMPILER="$compiler" \
  -DCMAKE_CXX_FLAGS="$*" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/outside" >/dev/null
"$work/outside/outside_shared"
"$work/outside/outside_static"
echo "CMake package: shared and static program ran"

# pkg-config, with the README's first program besides.
PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name xotypemgr.pc)")
export PKG_CONFIG_PATH
libraries=$(pkg-config --variable=libdir xotypemgr)
for program in "$source/tests/package/outside.cpp" "$source/examples/first_program.cpp"; do
  # shellcheck disable=SC2046 # flags are words
  "$compiler" -std=c++20 "$@" "$program" -o "$work/program" $(pkg-config --cflags --libs xotypemgr)
  LD_LIBRARY_PATH=$libraries "$work/program"
done
echo "pkg-config: programs ran"
