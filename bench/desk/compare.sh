#!/usr/bin/env bash
# The machine beside Lua 5.4 on the same four programs: the best user time of five runs each, in seconds.
# Usage: bench/desk/compare.sh [BUILD_FOLDER]
set -eu
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$(cd "${1:-$here/../../build/release}" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

# Best user time of five runs of the command.
best() {
    local TIMEFORMAT=%U times=()
    for _ in 1 2 3 4 5; do times+=("$( { time "$@" > /dev/null; } 2>&1 )"); done
    printf '%s\n' "${times[@]}" | sort -n | head -1
}

printf '%-8s %8s %8s\n' program norvane lua
for program in sieve loops filter calls; do
    "$build/compiler" "$here/$program.st" -i "$here/../../examples/target.xml" -o "$program.asm" > /dev/null
    ours=$(best "$build/norvane" run "$program.asm" --max-instructions 4000000000)
    theirs=$(best lua5.4 "$here/$program.lua")
    printf '%-8s %8s %8s\n' "$program" "$ours" "$theirs"
done
