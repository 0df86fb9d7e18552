#!/usr/bin/env bash
# Builds the fuzz targets with clang and runs each for the seconds given, as many at once as there are cores. What is
# found stays in build/fuzz/found, new inputs in build/fuzz/corpus. Exit status 1 where something was found, 77 where
# there is no clang with a fuzzer.
#   scripts/fuzz.sh SECONDS
set -eu
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
seconds=$1
cd "$top"
. scripts/packages.sh
if ! has_fuzzer; then
    echo "not run: there is no clang++ with libFuzzer (Debian packages clang and libclang-rt-14-dev)"
    exit 77
fi

targets=(source program target library encodings base64)
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target encode_library "${targets[@]/#/fuzz_}"
build=$top/build/fuzz
scripts/fuzz-seeds.sh "$build/seeds" "$build/fuzz/encode_library"

# One target for the time; leaks are looked for, and an input that takes 20 seconds or 2 GB is a finding.
run_target() {
    local name=$1 dictionary=()
    mkdir -p "$build/corpus/$name" "$build/found/$name"
    case $name in
    source) dictionary=(-dict=fuzz/st.dict) ;;
    target) dictionary=(-dict=fuzz/target.dict) ;;
    esac
    "$build/fuzz/fuzz_$name" "${dictionary[@]}" -max_total_time="$seconds" -max_len=20000 -timeout=20 \
        -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$build/found/$name/" \
        "$build/corpus/$name" "$build/seeds/$name" >"$build/$name.log" 2>&1 </dev/null
}

failed=0
finish() {   # NAME PROCESS
    if wait "$2"; then
        echo "fuzz_$1: $(sed -n 's/^stat::number_of_executed_units: *//p' "$build/$1.log") executions"
    else
        failed=1
        echo "fuzz_$1 found something:"
        tail -n 40 "$build/$1.log"
    fi
}

cores=$(nproc)
for ((first = 0; first < ${#targets[@]}; first += cores)); do
    batch=("${targets[@]:first:cores}")
    processes=()
    for name in "${batch[@]}"; do
        run_target "$name" &
        processes+=($!)
    done
    for i in "${!batch[@]}"; do finish "${batch[i]}" "${processes[i]}"; done
done
exit $failed
