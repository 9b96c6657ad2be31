#!/usr/bin/env bash
# Installs the Debian packages named in the given groups, where they are missing.
# usage: scripts/install_packages.sh build|demo|test|bench...
set -euo pipefail

packages=()
for group in "$@"; do
  case $group in
    build) packages+=(g++ cmake ninja-build pkg-config libcli11-dev libfmt-dev liblmdb-dev
      nlohmann-json3-dev) ;;
    demo) packages+=(gnuplot-nox wngerman wswedish wpolish wfrench) ;;
    test) packages+=(libgtest-dev googletest python3 unicode-data unicode-cldr-core
      gnuplot-nox libicu-dev clang-14 libclang-rt-14-dev g++-mingw-w64-x86-64-posix wine64
      wamerican wngerman wfrench wspanish witalian wportuguese wdutch wswedish wdanish wpolish) ;;
    bench) packages+=(libbenchmark-dev libicu-dev python3 wamerican wngerman wfrench) ;;
    *)
      echo "install_packages.sh: unknown group '$group'" >&2
      exit 2
      ;;
  esac
done

missing=()
for package in "${packages[@]}"; do
  state=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null || true)
  [[ $state == "install ok installed" ]] || missing+=("$package")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "installing: ${missing[*]}"
as_root=()
[[ $(id -u) -eq 0 ]] || as_root=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
