#!/usr/bin/env bash
# Does what a page tells its reader to do, and compares what is printed with what the page says.
#   PageCommands.sh PAGE PROGRAMS_FOLDER SOURCE_FOLDER SCRATCH_FOLDER
# Fenced blocks of the page that count:
#   ```st lamp.st       (or csv, any first word) with a name of a file: that file's text
#   ```console          commands behind "$ ", each with what it prints, standard error included
# The reader stands in a folder desk/ of the source folder, here of a copy that holds examples/ and share/ only.
set -u
page=$(realpath "$1") source=$(realpath "$3") scratch=$(realpath -m "$4")
PATH=$(realpath "$2"):$PATH

rm -rf "$scratch"
mkdir -p "$scratch/desk"
cp -r "$source/examples" "$source/share" "$scratch"
cd "$scratch/desk" || exit 1

kind= name= command= line_number=0 commands=0 failed=0 status=0
: >../expected

run_command() {
    [ -n "$command" ] || return 0
    ( exit "$status" )
    eval "$command" >../printed 2>&1
    status=$?
    commands=$((commands + 1))
    if ! cmp -s ../expected ../printed; then
        echo "$page($command_line): \$ $command"
        diff -u ../expected ../printed
        failed=1
    fi
    command=
    : >../expected
}

while IFS= read -r line; do
    line_number=$((line_number + 1))
    case $kind:$line in
        :'```console')  kind=console ;;
        :'```'*' '*)    kind=file name=${line##* }
                        : >"$name" ;;
        :'```'*)        kind=other ;;
        *:'```')        run_command
                        kind= ;;
        console:'$ '*)  run_command
                        command=${line#'$ '} command_line=$line_number ;;
        console:*)      printf '%s\n' "$line" >>../expected ;;
        file:*)         printf '%s\n' "$line" >>"$name" ;;
    esac
done <"$page"

if [ -n "$kind" ] || [ "$commands" -lt 5 ]; then
    echo "$page: only $commands commands were found, or a block is not closed"
    exit 1
fi
[ "$failed" -eq 0 ] && echo "$commands commands print what the page says"
exit $failed
