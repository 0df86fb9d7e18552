#!/usr/bin/env bash
# Runs the command of share/bazel's rule as an executor would: in a folder that holds the declared inputs alone, with the
# declared environment alone, twice in different places. The outputs must be equal and name no place.
#   SandboxTest.sh SOURCE_FOLDER PROGRAMS_FOLDER SCRATCH_FOLDER
set -u
source=$(realpath "$1") programs=$(realpath "$2") scratch=$(realpath -m "$3")
rm -rf "$scratch"
failed=0
complain() { echo "$*"; failed=1; }

# The command and environment stand in the rule; this test is of no use once they differ.
rule=$source/share/bazel/norvane.bzl
for line in 'arguments.add("build")' 'arguments.add("-o", text)' 'env = {"SOURCE_DATE_EPOCH": str(ctx.attr.epoch), "TZ": "UTC"}' \
            'inputs = ctx.files.srcs + \[ctx.file.target\]' 'tools = \[ctx.executable.compiler\]'; do
    grep -q "$line" "$rule" || complain "the rule lacks: $line"
done

make_root() {   # FOLDER: what the rule declares, under the names of a build
    mkdir -p "$1/plc/lib" "$1/bin/tools" "$1/bin/plc" "$1/tmp"
    cp "$source/share/st/timers.st" "$1/plc/lib"
    printf 'VAR_GLOBAL b AT %%QX0.0 : BOOL; END_VAR\nPROGRAM main\nVAR t : TON; END_VAR\nt(IN := NOT b, PT := 5);\nb := t.Q;\nEND_PROGRAM\n' >"$1/plc/pump.st"
    cp "$source/examples/target.xml" "$1/plc"
    ln -s "$programs/norvane" "$1/bin/tools/norvane"
    cp "$programs/compiler" "$1/bin/tools/compiler"
}
run() {   # FOLDER EPOCH
    (cd "$1" && env -i SOURCE_DATE_EPOCH="$2" TZ=UTC TMPDIR="$1/tmp" bin/tools/norvane build plc/lib/timers.st plc/pump.st \
        -i plc/target.xml -o bin/plc/pump.asm --color never --compiler-option=-o1 --werror)
}

make_root "$scratch/one"
make_root "$scratch/a place/far/away"
run "$scratch/one" 0 || complain "doesn't build"
sleep 1.1
touch "$scratch/a place/far/away/plc/pump.st"
run "$scratch/a place/far/away" 0 || complain "doesn't build elsewhere"
for file in pump.asm pump.dbi; do
    cmp "$scratch/one/bin/plc/$file" "$scratch/a place/far/away/bin/plc/$file" || complain "$file differs"
    grep -q "$scratch" "$scratch/one/bin/plc/$file" && complain "$file names the place"
done
# The time is an input: another one shows, so the test above isn't blind.
run "$scratch/one" 1000000000 || complain "doesn't build at another time"
cmp -s "$scratch/one/bin/plc/pump.asm" "$scratch/a place/far/away/bin/plc/pump.asm" && complain "the time doesn't show"
[ -z "$(ls -A "$scratch/one/tmp")" ] || complain "something stays in the temporary folder"
# What isn't declared isn't there.
rm "$scratch/one/plc/lib/timers.st"
run "$scratch/one" 0 2>"$scratch/said"
[ $? -eq 2 ] && grep -q 'timers.st: cannot be read' "$scratch/said" || complain "an undeclared input isn't missed"

[ "$failed" -eq 0 ] && echo "equal outputs from two places, of declared inputs alone"
exit $failed
