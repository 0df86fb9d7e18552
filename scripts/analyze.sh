#!/usr/bin/env bash
# Reads all sources of src/ and tools/ with clang-tidy (.clang-tidy says which checks, and why some are left out) and
# cppcheck (scripts/cppcheck-exceptions.txt likewise). Exit status 1 where one of them finds something, 77 where a tool is missing.
#   scripts/analyze.sh [FILE...]           all sources
set -eu
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
missing=()
for tool in clang-tidy cppcheck; do command -v $tool >/dev/null || missing+=("$tool"); done
if [ ${#missing[@]} -gt 0 ]; then
    echo "not run, missing: ${missing[*]} (Debian packages of these names)"
    exit 77
fi
files=()
for file in "$@"; do files+=("$(realpath "$file")"); done
cd "$top"
[ ${#files[@]} -gt 0 ] || mapfile -t files < <(find src tools -name '*.cpp' | sort)
cmake --preset release >/dev/null
cmake --build --preset release --target norvane_frontend >/dev/null   # the generated parser and scanner

failed=0
echo "== clang-tidy, ${#files[@]} files"
printf '%s\0' "${files[@]}" |
    xargs -0 -n 1 -P "$(nproc)" clang-tidy -quiet -p build/release 2>/dev/null || failed=1

echo "== cppcheck"
cppcheck --enable=warning,performance,portability --inline-suppr --std=c++20 --language=c++ -I src -I tools \
         -I build/release/generated --suppressions-list=scripts/cppcheck-exceptions.txt --quiet -j "$(nproc)" \
         --error-exitcode=1 --template='{file}:{line}: {severity}: {message} [{id}]' "${files[@]}" || failed=1
exit $failed
