#!/usr/bin/env bash
# Reads programs as they were linked: position-independent, everything bound before the start and read-only from then
# on, no executable stack, the stack guarded. A program built without all that must fail the same checks.
#   HardeningTest.sh C++_COMPILER PROGRAM...
set -u
export LC_ALL=C
cxx=$1
shift
scratch=$(mktemp -d) || exit 1
trap 'rm -rf "$scratch"' EXIT

# Prints a line for each thing that the program lacks.
lacks() {
    local header segments dynamic symbols
    header=$(readelf -hW "$1") && segments=$(readelf -lW "$1") && dynamic=$(readelf -dW "$1") &&
        symbols=$(readelf -sW "$1") || { echo "readable"; return; }
    grep -q 'Type: *DYN' <<<"$header" && grep -q 'FLAGS_1.*PIE' <<<"$dynamic" || echo "position independence"
    grep -q 'FLAGS.*\(BIND_NOW\|NOW\)' <<<"$dynamic" || echo "binding before the start"
    grep -q 'GNU_RELRO' <<<"$segments" || echo "read-only relocations"
    grep -q 'GNU_STACK.* RW ' <<<"$segments" || echo "a stack without execution"
    grep -q '__stack_chk_fail' <<<"$symbols" || echo "a guarded stack"
}

failed=0
for program in "$@"; do
    while read -r what; do
        echo "$program lacks $what"
        failed=1
    done < <(lacks "$program")
done

echo 'int main() { return 0; }' >"$scratch/open.cpp"
"$cxx" -fno-pie -fno-stack-protector -no-pie -Wl,-z,norelro -Wl,-z,lazy -Wl,-z,execstack "$scratch/open.cpp" \
    -o "$scratch/open" 2>/dev/null || { echo "the open program can't be built"; exit 1; }
found=$(lacks "$scratch/open" | wc -l)
if [ "$found" -ne 5 ]; then
    echo "of 5 things that the open program lacks $found are seen:"
    lacks "$scratch/open"
    failed=1
fi
exit $failed
