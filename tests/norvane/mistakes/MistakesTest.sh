#!/usr/bin/env bash
# Shows norvane each mistake of the table, compares its first line and hint, and has the mended source compiled.
#   MistakesTest.sh TABLE PROGRAMS_FOLDER TARGET SCRATCH_FOLDER
set -u
export LC_ALL=C
table=$(realpath "$1") target=$(realpath "$3") scratch=$(realpath -m "$4")
PATH=$(realpath "$2"):$PATH
rm -rf "$scratch"
mkdir -p "$scratch"
cd "$scratch" || exit 1
cp "$target" target.xml

count=0 hinted=0 failed=0 part= title=
report() { echo "$title: $*"; failed=1; }

finish() {
    [ -n "$title" ] || return 0
    count=$((count + 1))
    norvane check main.st -i target.xml --color never >shown 2>said
    [ -s said ] && report "$(cat said)"
    [ "$(head -n 1 shown)" = "$first" ] || report "shows $(head -n 1 shown), expected $first"
    found=$(sed -n 's/^      hint: //p' shown | head -n 1)
    [ "$found" = "$hint" ] || report "hints $found, expected $hint"
    [ -n "$hint" ] && hinted=$((hinted + 1))
    [ -n "$mend" ] || return 0
    sed "$mend" main.st >mended.st
    norvane check mended.st -i target.xml --notes=error >shown 2>&1 || report "mended, it draws $(cat shown)"
}

while IFS= read -r line || [ -n "$line" ]; do
    case $line in
        '=== '*)      finish
                      title=${line#=== } part=source first= hint= mend=
                      : >main.st ;;
        '--- first')  part=first ;;
        '--- hint')   part=hint ;;
        '--- mended') part=mended ;;
        *)  case $part in
                source) printf '%s\n' "$line" >>main.st ;;
                first)  first=$line part= ;;
                hint)   hint=$line part= ;;
                mended) mend=$line part= ;;
            esac ;;
    esac
done <"$table"
finish

if [ "$count" -lt 50 ] || [ "$hinted" -lt 45 ]; then
    echo "$count mistakes, $hinted hints: too few"
    failed=1
fi
[ "$failed" -eq 0 ] && echo "$count mistakes, $hinted show what to do at once"
exit $failed
