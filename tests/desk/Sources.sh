#!/usr/bin/env bash
# What the tables of the examples and the library name compiles without errors, warnings and notes.
#   Sources.sh PROGRAMS_FOLDER SOURCE_FOLDER SCRATCH_FOLDER
set -u
programs=$1 source=$2 scratch=$3
failed=0
compiled=0

rm -rf "$scratch"
mkdir -p "$scratch"
cp -r "$source/examples" "$source/share" "$scratch"

clean_compile() {   # FOLDER SOURCE...
    cd "$1" || exit 1
    shift
    compiled=$((compiled + 1))
    "$programs/compiler" "$@" -i target.xml -o clean.asm >printed 2>notes
    if [ $? -ne 0 ] || ! grep -q ' - 0 error(s), 0 warning(s)$' printed || [ -s notes ]; then
        echo "$PWD: $*"
        cat printed notes
        failed=1
    fi
}

clean_compile "$scratch/examples" first.st
while read -r table; do
    read -ra sources < <(sed -n 's/^# program: *//p' "$table")
    clean_compile "$(dirname "$table")" "${sources[@]}"
done < <(find "$scratch" -name '*.csv' | sort)

# No source is forgotten by the tables.
while read -r file; do
    grep -q "^# program:.*\b$(basename "$file")" -r "$scratch" --include='*.csv' && continue
    echo "$file is in no table"
    failed=1
done < <(find "$scratch/examples/"*/ "$scratch/share" -name '*.st')
[ $failed -eq 0 ] && echo "$compiled compiles are clean"
exit $failed
