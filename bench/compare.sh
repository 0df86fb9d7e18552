#!/usr/bin/env bash
# Measures the compiler beside luac5.4 and tcc on the same program in three languages. Installs nothing. Exit
# status 1 where starting takes more than 1.5 times luac's time.
#   bench/compare.sh [PRESET [FUNCTIONS [ROUNDS]]]         release, 25000 (a million lines), 7
set -eu
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
preset=${1:-release}
build=$top/build/$preset

missing=()
command -v luac5.4 >/dev/null || missing+=("luac5.4 (Debian package lua5.4)")
command -v tcc >/dev/null || missing+=("tcc (Debian package tcc)")
if [ ${#missing[@]} -gt 0 ]; then
    printf 'missing: %s\n' "${missing[@]}" >&2
    exit 2
fi
if [ ! -x "$build/compiler" ]; then
    echo "missing: $build/compiler; build the preset $preset first" >&2
    exit 2
fi

tool=$(mktemp -d)
trap 'rm -rf "$tool"' EXIT
"${CXX:-g++}" -std=c++20 -O1 "$top/bench/Compare.cpp" "$top/bench/ThreeLanguages.cpp" -o "$tool/compare"
"$tool/compare" "$build/compiler" "$top/bench/target.xml" "$top/examples/first.st" "${2:-25000}" "${3:-7}"
