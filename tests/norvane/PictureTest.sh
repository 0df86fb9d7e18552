#!/usr/bin/env bash
# Draws the picture of docs/for-ci.md anew from the source that the page shows, and compares.
#   PictureTest.sh SOURCE_FOLDER PROGRAMS_FOLDER SCRATCH_FOLDER
set -u
source=$(realpath "$1") scratch=$(realpath -m "$3")
PATH=$(realpath "$2"):$PATH
rm -rf "$scratch"
mkdir -p "$scratch"
cd "$scratch" || exit 1
cp "$source/examples/target.xml" .
sed -n '/^```st valve.st$/,/^```$/p' "$source/docs/for-ci.md" | sed '1d;$d' >valve.st
sh "$source/scripts/terminal-picture.sh" 'norvane check valve.st -i target.xml --color always' >check.svg
grep -q 'hint:' check.svg || { echo "the picture shows no hint"; exit 1; }
cmp check.svg "$source/docs/check.svg" && echo "the picture is what norvane prints"
