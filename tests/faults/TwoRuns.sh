#!/bin/sh
# TwoRuns.sh COMPILER SHIM INPUTS SCRATCH: two compiles write one output at the same time, with slow renames. Whichever
# comes last: the assembler text and the debug file are of the same run.
set -eu
compiler=$1 shim=$2 inputs=$3 scratch=$4
rm -rf "$scratch"
mkdir -p "$scratch"
cp "$inputs/main.st" "$inputs/target.xml" "$scratch"
cd "$scratch"
printf 'PROGRAM main\nVAR a : INT; END_VAR\na := a + 1;\nEND_PROGRAM\n' > other.st

run() { LD_PRELOAD=$shim FAULT_SLOW=rename "$compiler" "$1.st" -i target.xml -o pair.asm > "$1.printed"; }

for source in main other; do
    run $source
    cat pair.asm pair.dbi > $source.alone
done
if cmp -s main.alone other.alone; then
    echo "the two programs make the same pair"
    exit 1
fi

parted=0 left=
for round in $(seq 40); do
    run main &
    run other &
    wait
    cat pair.asm pair.dbi > both
    cmp -s both main.alone || cmp -s both other.alone || parted=$((parted + 1))
    left=$left$(ls | grep tmp || true)
done
echo "$parted of $round pairs are parted; left behind: ${left:-nothing}"
[ $parted -eq 0 ] && [ -z "$left" ]
