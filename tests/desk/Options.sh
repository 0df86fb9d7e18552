#!/usr/bin/env bash
# The tables hold whatever options the compiler is given, and whatever the memory of functions holds at their calls.
#   Options.sh PROGRAMS_FOLDER SOURCE_FOLDER SCRATCH_FOLDER
set -u
programs=$1 source=$2 scratch=$3
failed=0
runs=0

tables_hold() {   # WHAT ARGUMENT...
    local what=$1
    shift
    runs=$((runs + 1))
    "$programs/norvane" test "$scratch/examples" "$scratch/share" "$@" >"$scratch/printed" 2>&1 && return
    echo "$what:"
    grep -v ': passed (' "$scratch/printed"
    failed=1
}

copy_sources() {
    rm -rf "$scratch"
    mkdir -p "$scratch"
    cp -r "$source/examples" "$source/share" "$scratch"
    rm -r "$scratch/examples/broken"
}

# With -o1 retained globals lie over the retained variables of programs (note N7), of which there are none here.
for options in "-o1" "-b" "-bs0" "-cso0" "-fbo0" "-o1 -bs0 -cso0 -fbo0" "-b -bs0 -cso0 -fbo0"; do
    copy_sources
    find "$scratch" -name '*.csv' -exec sed -i "1i # options: $options" {} +
    tables_hold "$options"
done

copy_sources
for option in --frames=keep --frames=noise --plain; do
    tables_hold "$option" "$option"
done
[ $failed -eq 0 ] && echo "the tables hold in $runs runs"
exit $failed
