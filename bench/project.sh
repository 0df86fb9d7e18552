#!/bin/bash
# Builds a project of many small programs with one and with two jobs: wall time and processor time.
#   bench/project.sh PROGRAMS_FOLDER [NUMBER]       (1000 programs)
set -e
if [ ! -x "${1:-}/norvane" ] || [ ! -x "$1/compiler" ]; then
    echo "usage: bench/project.sh PROGRAMS_FOLDER [NUMBER], where norvane and compiler lie in the folder" >&2
    exit 2
fi
programs=$(realpath "$1") count=${2:-1000} target=$(realpath "$(dirname "$0")/target.xml")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
cp "$target" target.xml
{
    printf '{"target": "target.xml", "programs": ['
    for ((i = 0; i < count; ++i)); do
        {
            echo 'VAR_GLOBAL level, high : INT; pump AT %QX0.0 : BOOL; END_VAR'
            echo 'PROGRAM main'
            echo 'VAR sum : INT; a : ARRAY [0..9] OF INT; END_VAR'
            for ((k = 0; k < 20; ++k)); do
                echo "IF level > $((i % 100 + k)) THEN sum := sum + a[$((k % 10))]; ELSE a[$((k % 10))] := level; END_IF;"
            done
            echo 'pump := sum > high;'
            echo 'END_PROGRAM'
        } >p$i.st
        [ $i -eq 0 ] || printf ', '
        printf '{"name": "p%d", "sources": ["p%d.st"]}' $i $i
    done
    printf ']}\n'
} >norvane.json
TIMEFORMAT='%R s, of the processor %U s and %S s'
for jobs in 1 2; do
    rm -rf out
    printf '%s programs, -j%s: ' "$count" "$jobs"
    { time "$programs/norvane" build --project norvane.json -j $jobs >printed; } 2>&1
    [ "$(cat printed)" = "$count of $count programs built" ] || { cat printed; exit 1; }
    [ "$(find out -name '*.dbi' | wc -l)" -eq "$count" ]
done
