#!/bin/sh
# Runs two builds of the compiler on every case and compares what they print and all files that they leave.
#     scripts/compare_outputs.sh OLD_COMPILER NEW_COMPILER
# For changes that may change no byte. Lists the cases that differ; exit status 1 if there are any.
set -u
export LC_ALL=C
[ $# -eq 2 ] || { echo "usage: $0 OLD_COMPILER NEW_COMPILER" >&2; exit 2; }
old=$(realpath "$1") || exit 2
new=$(realpath "$2") || exit 2
cases=$(realpath "$(dirname "$0")/../tests/cases")
work=$(mktemp -d) || exit 2
trap 'rm -rf "$work"' EXIT

# The same folder for both, since a run may print where it is. What no two runs share is made equal: the process id in
# the name of an extracted library, and the time of sources that the case writes itself.
run() {
    rm -rf "$work/bin" "$work/run"
    mkdir "$work/bin" "$work/run"
    ln -s "$1" "$work/bin/compiler"
    cp "$cases/target.xml" "$work/run"
    find "$2" -maxdepth 1 -type f -exec cp {} "$work/run" \;
    (cd "$work/run" && rm -f stdout stderr status stdout.part stderr.part absent && touch -d '2024-01-01 00:00:00 UTC' -- *)
    script='compiler main.st -i target.xml'
    [ -f "$2/cmd" ] && script='. ./cmd'
    (cd "$work/run" && TZ=UTC PATH="$work/bin:$PATH" sh -c "$script" > .stdout 2> .stderr; echo $? > .status)
    find "$work/run" -type p -delete
    find "$work/run" -name '*.~st*' | while read -r name; do mv "$name" "${name%.~st*}.~stPID"; done
    find "$work/run" -type f -exec sed -i -E 's/(\.~st)[0-9]+/\1PID/g; s/(FILETIME |filetime=")-?[0-9]+/\1TIME/g' {} +
}

count=0
differing=0
for folder in "$cases"/*/*/; do
    count=$((count + 1))
    run "$old" "$folder"
    rm -rf "$work/old"
    mv "$work/run" "$work/old"
    run "$new" "$folder"
    if ! difference=$(diff -r "$work/old" "$work/run" 2>&1); then
        differing=$((differing + 1))
        echo "$folder"
        echo "$difference" | head -n 5
    fi
done
echo "$count cases, $differing differ"
[ "$differing" -eq 0 ]
