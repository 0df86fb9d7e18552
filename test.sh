#!/usr/bin/env bash
# Builds and runs the whole test suite, first under AddressSanitizer and UBSan, then as released; then each fuzz target
# for some seconds, where clang is there or can be installed.
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/packages.sh

need_build_tools
need_test_libraries
need_norvane_libraries
install_missing

if command -v clang-format >/dev/null 2>&1; then
    echo "== the format of what has changed"
    scripts/check-format.sh
fi

export CTEST_PARALLEL_LEVEL="${CTEST_PARALLEL_LEVEL:-$(nproc)}"

for preset in asan release; do
    echo "== $preset: configure and build"
    options=(-DNORVANE_TESTS=ON -DNORVANE_WERROR=ON)
    [ "$preset" = asan ] || options+=(-DNORVANE_BENCHMARKS=ON)
    cmake --preset "$preset" "${options[@]}"
    cmake --build --preset "$preset"
done

echo "== the suite under AddressSanitizer and UBSan"
ctest --preset asan
echo "== the suite as released"
ctest --preset release

echo "== fuzzing, 15 seconds for each target"
if ( need_fuzzer && install_missing ); then
    scripts/fuzz.sh 15
else
    echo "not run: clang with libFuzzer can't be installed here"
fi
