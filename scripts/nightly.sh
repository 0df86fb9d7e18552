#!/usr/bin/env bash
# The long runs, one behind the other, whatever the others find: same bytes everywhere, static analysis, coverage,
# mutants, half an hour of fuzzing for each target. Hours on two cores. Prints a line for each at the end; exit status 1
# where one of them failed.
#   scripts/nightly.sh [FUZZ_SECONDS]           1800
set -u
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds=${1:-1800}
logs=build/nightly
mkdir -p "$logs"
failed=0
summary=()

run() {   # NAME COMMAND...
    local name=$1 status=0 start=$SECONDS result=passed
    shift
    echo "== $name: $*"
    "$@" 2>&1 | tee "$logs/$name.log"
    status=${PIPESTATUS[0]}
    case $status in
    0) ;;
    77) result="not run" ;;
    *) result="FAILED, status $status"; failed=1 ;;
    esac
    summary+=("$name: $result, $(((SECONDS - start) / 60)) minutes, $logs/$name.log")
}

run same-bytes scripts/same-bytes-everywhere.sh 1000
run analyze scripts/analyze.sh
run coverage scripts/coverage.sh
run mutants scripts/mutate.sh
run fuzz scripts/fuzz.sh "$seconds"

echo
printf '%s\n' "${summary[@]}"
exit $failed
