#!/usr/bin/env bash
# Shows that two builds of the compiler print and write the same bytes: on all cases and examples, and on generated
# programs under six sets of options. Exit status 1 where anything differs. With WITHOUT_NOTES=1 in the environment the notes on
# standard error are left out; with NEW_FOLDER the new compiler runs in a folder of that name, and what shows where a run
# took place is made equal; with SOURCE_DATE_EPOCH the file times are compared, too.
#   scripts/same-bytes.sh OLD_COMPILER NEW_COMPILER [GENERATED_PROGRAMS]
set -eu
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
old=$(realpath "$1")
new=$(realpath "$2")
count=${3:-1000}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/old-bin" "$scratch/new-bin"
ln -s "$old" "$scratch/old-bin/compiler"
ln -s "$new" "$scratch/new-bin/compiler"
"${CXX:-g++}" -std=c++20 -O1 "$top"/fuzz/GenerateProgram.cpp "$top"/fuzz/ProgramGenerator.cpp -o "$scratch/generate"
export TZ=UTC LC_ALL=C

# The number of the process stands in the firmware library's name, and the time of day in what a case has written for
# itself.
leave_out=(-e 's/~st[0-9][0-9]*/~st0/g')
[ -n "${SOURCE_DATE_EPOCH:-}" ] || leave_out+=(-e 's/^DBI FILETIME .*/DBI FILETIME/' -e 's/ filetime="[-0-9]*"//')

compared=0
different=0

# Runs the file `cmd` of the folder `work` with the old and the new compiler, in a folder of the same name.
compare() {
    local name=$1 side run
    for side in old new; do
        run=$scratch/run
        [ "$side" = old ] || run=$scratch/${NEW_FOLDER:-run}
        rm -rf "$run"
        mkdir -p "$(dirname "$run")"
        cp -r "$scratch/work" "$run"
        find "$run" -type f -exec touch -d 2024-01-01T00:00:00 {} +
        ( cd "$run" && PATH="$scratch/$side-bin:$PATH" && { . ./cmd; echo "status $?"; } >.stdout 2>.stderr ) || true
        ( cd "$run" && find . -type f -size -50M -exec sed -i "${leave_out[@]}" -e "s|$run|RUN|g" {} + ) 2>/dev/null || true
        [ -z "${WITHOUT_NOTES:-}" ] || sed -i '/ : note N[0-9]*: /d' "$run/.stderr"
        find "$run" -type p -delete   # a case's pipes; nothing can be read from them
        rm -rf "$scratch/$side"
        mv "$run" "$scratch/$side"
    done
    compared=$((compared + 1))
    if ! diff -r --no-dereference "$scratch/old" "$scratch/new" >"$scratch/diff" 2>&1; then
        different=$((different + 1))
        echo "different: $name"
        head -n 5 "$scratch/diff"
    fi
}

for folder in "$top"/tests/cases/*/*/; do
    rm -rf "$scratch/work"
    mkdir "$scratch/work"
    cp "$top/tests/cases/target.xml" "$scratch/work"
    find "$folder" -maxdepth 1 -type f -exec cp {} "$scratch/work" \;
    rm -f "$scratch"/work/{stdout,stderr,status,stdout.part,stderr.part,absent}
    [ -e "$scratch/work/cmd" ] || echo 'compiler main.st -i target.xml' >"$scratch/work/cmd"
    compare "${folder#"$top"/}"
done

# The tables of the examples and the library name the sources that are compiled together.
while read -r table; do
    rm -rf "$scratch/work"
    mkdir "$scratch/work"
    cp -r "$top/examples" "$top/share" "$scratch/work"
    folder=$(dirname "${table#"$top"/}")
    echo "cd $folder && compiler $(sed -n 's/^# program: *//p' "$table") -i target.xml" >"$scratch/work/cmd"
    compare "${table#"$top"/}"
done < <(find "$top/examples" "$top/share" -name '*.csv')

options=("" "-o1" "-b" "-bs0 -cso0" "-fbo0" "-o1 -bs0 -cso0 -fbo0 -x")
for ((seed = 1; seed <= count; ++seed)); do
    rm -rf "$scratch/work"
    mkdir "$scratch/work"
    cp "$top/tests/cases/target.xml" "$scratch/work"
    "$scratch/generate" "$seed" >"$scratch/work/main.st"
    : >"$scratch/work/cmd"
    for set in "${!options[@]}"; do
        echo "compiler main.st -i target.xml -n p -o out$set.asm ${options[set]}" >>"$scratch/work/cmd"
    done
    compare "the program of seed $seed"
done

echo "$compared compared, $different different"
[ "$different" -eq 0 ]
