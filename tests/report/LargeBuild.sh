#!/usr/bin/env bash
# A report on 10,000 variables and 2,000 POUs stays below 5 MB, and below 2 s to open: to its end, and laid out. On a
# machine that has other work to do it may take as many times as long as there are processes for a processor.
#   LargeBuild.sh PROGRAMS_FOLDER SOURCE_FOLDER SCRATCH_FOLDER
set -u
programs=$1 source=$2 scratch=$3
tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$tests/Chromium.sh"
find_chromium
rm -rf "$scratch"
mkdir -p "$scratch"
cd "$scratch" || exit 1

awk 'BEGIN {
    split("BOOL INT REAL DINT USINT", types, " ")
    print "VAR_GLOBAL"
    for (i = 0; i < 10000; ++i) printf "variable_%d : %s;\n", i, types[i % 5 + 1]
    print "END_VAR"
    # Each function calls one of the ten before it, so that there are paths of some depth.
    for (i = 0; i < 2000; ++i) {
        call = i % 10 == 0 ? "a" : sprintf("function_%d(a)", i - 1)
        printf "FUNCTION function_%d : INT\nVAR_INPUT a : INT; END_VAR\n", i
        printf "variable_%d := variable_%d + 1;\n", i % 2000 * 5 + 1, i % 2000 * 5 + 1
        printf "function_%d := %s;\nEND_FUNCTION\n", i, call
    }
    print "PROGRAM main\nVAR x : INT; END_VAR"
    for (i = 9; i < 2000; i += 10) printf "x := function_%d(x);\n", i
    print "END_PROGRAM"
}' >large.st
sed 's/name="GLOBAL" size="[0-9]*"/name="GLOBAL" size="65536"/' "$source/examples/tank/target.xml" >target.xml
"$programs/compiler" large.st -i target.xml >printed || { cat printed; exit 1; }
"$programs/norvane" report large.asm -i target.xml -o large.html || exit 1

failed=0
size=$(stat -c %s large.html)
echo "$size bytes"
[ "$size" -lt 5000000 ] || { echo "that is too much"; failed=1; }

cat >opened.js <<'END'
"use strict";
document.body.offsetHeight;   // laid out, too
const result = document.createElement("pre");
result.id = "result";
const facts = JSON.parse(document.getElementById("facts").textContent);
result.textContent = "\n" + [document.documentElement.dataset.ready, window.faults.length, facts.variables.length,
    facts.pous.length, Math.round(performance.now())].join(" ") + "\n";
document.body.append(result);
END
add_check large.html "$PWD/opened.js" >checked.html
best=999999
for try in 1 2 3; do
    dump_page "$PWD/checked.html" 1200 >dumped
    read -r ready faults variables pous clock < <(get_result <dumped | grep .)
    [ "${clock:-999999}" -lt $best ] && best=$clock
    [ $best -lt 2000 ] && break
done
# Processes that want to run, for each processor, in tenths: 10 and less is a machine with nothing else to do.
crowd=$(awk -v processors="$(nproc)" '{ printf "%d", $1 / processors * 10 }' /proc/loadavg)
[ $crowd -gt 10 ] || crowd=10
allowed=$((2000 * crowd / 10))
echo "opened in $best ms; allowed are $allowed ms"
[ "${ready:-}" = yes ] && [ "$faults" = 0 ] || { echo "its script failed"; failed=1; }
[ "${variables:-0}" -ge 10000 ] && [ "${pous:-0}" -ge 2000 ] || { echo "it holds $variables variables, $pous POUs"; failed=1; }
[ $best -lt $allowed ] || { echo "that takes too long"; failed=1; }
exit $failed
