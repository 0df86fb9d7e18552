#!/usr/bin/env bash
# Gathers what the fuzzers start from, a folder for each target, out of the cases and the examples.
#   scripts/fuzz-seeds.sh FOLDER ENCODER          ENCODER: the program encode_library of a build
set -eu
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
folder=$1
encoder=$(realpath "$2")
mkdir -p "$folder"/{source,program,target,library,encodings,base64}
folder=$(realpath "$folder")
cd "$top"

# By their contents, so that equal ones are there once.
seed() {   # TARGET FILE
    cp "$2" "$folder/$1/$(cksum <"$2" | tr ' ' -)"
}

while read -r file; do
    seed source "$file"
    # The first byte is the choice of the encoding: by a byte that occurs in all of them.
    { printf '\1'; cat "$file"; } >"$folder/seed"
    seed encodings "$folder/seed"
    "$encoder" <"$file" >"$folder/seed"
    seed library "$folder/seed"
    seed base64 "$folder/seed"
done < <(find tests/cases examples share/st -name '*.st' -size -20k)
while read -r file; do
    seed target "$file"
    seed encodings "$file"
done < <(find tests/cases examples -name '*.xml' -size -20k)
# Decisions of the program generator are any bytes, the longer the larger the program.
for ((length = 64; length <= 4096; length *= 2)); do
    head -c $length fuzz/ProgramGenerator.cpp >"$folder/seed"
    seed program "$folder/seed"
    tail -c $length fuzz/ProgramGenerator.cpp >"$folder/seed"
    seed program "$folder/seed"
done
rm -f "$folder/seed"
for target in "$folder"/*/; do
    printf '%s %s seeds\n' "$(find "$target" -type f | wc -l)" "$(basename "$target")"
done
