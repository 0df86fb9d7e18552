#!/usr/bin/env bash
# Builds the compiler twice in build/pgo: with counters, which a training run fills, then optimised by what they tell.
# The training is what the repository holds and makes: the cases, the examples, generated programs under several sets
# of options. Its outputs are thrown away.
#   scripts/build-with-profile.sh [GENERATED_PROGRAMS]         300
set -eu
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
count=${1:-300}
build=$top/build/pgo
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$top"
export CCACHE_DISABLE=1   # it does not know each version's counters

build() {   # HOW
    echo "== $1"
    cmake --preset pgo -DNORVANE_PROFILE="$1" >/dev/null
    cmake --build --preset pgo --target compiler
}

# Counters of an earlier training would be added to, and don't fit code that has changed since.
[ ! -d "$build" ] || find "$build" -name '*.gcda' -delete
build generate
"${CXX:-g++}" -std=c++20 -O1 fuzz/GenerateProgram.cpp fuzz/ProgramGenerator.cpp -o "$scratch/generate"

echo "== training"
mkdir "$scratch/bin"
ln -s "$build/compiler" "$scratch/bin/compiler"
runs=0

# Runs the file `cmd` of the folder `work`. A case may well fail: that is what it shows.
train() {
    ( cd "$scratch/work" && PATH="$scratch/bin:$PATH" && . ./cmd ) >/dev/null 2>&1 </dev/null || true
    runs=$((runs + 1))
    rm -rf "$scratch/work"
}

for folder in tests/cases/*/*/; do
    # A limit that a case sets would hold for the counters' files, too.
    ! grep -qs 'ulimit' "$folder/cmd" || continue
    mkdir "$scratch/work"
    cp tests/cases/target.xml "$scratch/work"
    find "$folder" -maxdepth 1 -type f -exec cp {} "$scratch/work" \;
    [ -e "$scratch/work/cmd" ] || echo 'compiler main.st -i target.xml' >"$scratch/work/cmd"
    train
done

while read -r table; do
    mkdir "$scratch/work"
    cp -r examples share "$scratch/work"
    echo "cd $(dirname "$table") && compiler $(sed -n 's/^# program: *//p' "$table") -i target.xml" >"$scratch/work/cmd"
    train
done < <(find examples share -name '*.csv')

for ((seed = 1; seed <= count; ++seed)); do
    mkdir "$scratch/work"
    cp tests/cases/target.xml "$scratch/work"
    "$scratch/generate" "$seed" >"$scratch/work/main.st"
    for options in "" "-o1" "-bs0 -cso0" "-fbo0"; do
        echo "compiler main.st -i target.xml $options"
    done >"$scratch/work/cmd"
    train
done
echo "$runs training runs"

build use
echo "The compiler: build/pgo/compiler"
