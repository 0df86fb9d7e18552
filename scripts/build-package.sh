#!/usr/bin/env bash
# Makes the Debian package in build/package: with the profile-guided compiler, or with --plain without a profile. The
# compiler's name is norvane-compiler there, since "compiler" is too general a name for everybody's PATH.
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")/.."
mkdir -p build/package
build=build/pgo
if [ "${1:-}" = --plain ]; then
    build=build/package/plain
    cmake --preset release -B $build -DNORVANE_TESTS=OFF -DNORVANE_BENCHMARKS=OFF
else
    scripts/build-with-profile.sh
fi
cmake $build -DNORVANE_TOOLS=ON -DNORVANE_COMPILER_NAME=norvane-compiler
cmake --build $build --target compiler norvane_program pages
(cd build/package && cpack -G DEB --config ../../$build/CPackConfig.cmake)
ls build/package/*.deb
