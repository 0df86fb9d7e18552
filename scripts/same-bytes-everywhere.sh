#!/usr/bin/env bash
# Shows that the compiler's bytes depend on the sources alone: not on the C++ compiler and its optimisation, the sign of
# char, the locale, the time zone or the folder. Builds the variants in build/variants and compares each with the release
# build on all cases, examples and generated programs. Exit status 1 where anything differs.
#   scripts/same-bytes-everywhere.sh [GENERATED_PROGRAMS]         200
set -eu
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
count=${1:-200}
release=$top/build/release/compiler
cd "$top"
cmake --preset release >/dev/null
cmake --build --preset release --target compiler >/dev/null

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

compare() {   # WHAT OLD NEW
    printf '%-40s ' "$1"
    if scripts/same-bytes.sh "$2" "$3" "$count" >"$scratch/result"; then
        tail -n 1 "$scratch/result"
    else
        failed=1
        echo
        cat "$scratch/result"
    fi
}

# Another build of the same sources.
variant() {   # NAME C++_COMPILER FLAGS
    if ! command -v "$2" >/dev/null 2>&1; then
        echo "$1: not run, there is no $2"
        return
    fi
    cmake -S . -B "build/variants/$1" -G Ninja -DCMAKE_CXX_COMPILER="$2" -DCMAKE_CXX_FLAGS_RELEASE="$3" \
          -DCMAKE_BUILD_TYPE=Release -DNORVANE_TESTS=OFF -DNORVANE_BENCHMARKS=OFF >/dev/null
    cmake --build "build/variants/$1" --target compiler >/dev/null
    compare "$1" "$release" "$top/build/variants/$1/compiler"
}

# The release build under other settings of the environment.
surrounded() {   # NAME SETTING...
    local name=$1
    shift
    printf '#!/bin/sh\nexec env %s %s "$@"\n' "$*" "$release" >"$scratch/$name"
    chmod +x "$scratch/$name"
}

# As "de_DE.UTF-8" is called by `locale -a`; without it one is made for this run alone, where that is possible.
find_comma_locale() {
    locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$' && return
    mkdir "$scratch/locales"
    localedef -i de_DE -f UTF-8 "$scratch/locales/de_DE.UTF-8" >/dev/null 2>&1 || return 1
    export LOCPATH=$scratch/locales
}

variant g++-O0 g++ -O0
variant g++-unsigned-char g++ "-O3 -DNDEBUG -funsigned-char"
variant clang++-O0 clang++ -O0
variant clang++-O3 clang++ "-O3 -DNDEBUG"

if find_comma_locale && [ "$(LC_ALL=de_DE.UTF-8 locale decimal_point)" = , ]; then
    surrounded comma LC_ALL=de_DE.UTF-8
    compare "locale with a decimal comma" "$release" "$scratch/comma"
    unset LOCPATH
else
    echo "locale with a decimal comma: not run, it can't be made here (Debian package locales)"
fi

# File times and the time of the run are local by rule; with a fixed date nothing of the zone may be left.
surrounded here TZ=UTC
surrounded elsewhere TZ=Asia/Kolkata
SOURCE_DATE_EPOCH=1704067200 compare "another time zone" "$scratch/here" "$scratch/elsewhere"

NEW_FOLDER='an other/place of work' compare "another folder" "$release" "$release"
exit $failed
