#!/usr/bin/env bash
# Compiles the examples of the page about messages: each must draw the message in whose section it stands.
#   MessagesPage.sh PAGE PROGRAMS_FOLDER TARGET SCRATCH_FOLDER
# A section begins with "### E007: ..."; its examples are fenced: ```st draws, with options=-o1,-b behind it where the
# compile needs them, and ```xml target in front of an example that needs a target of its own.
set -u
page=$(realpath "$1") default_target=$(realpath "$3") scratch=$(realpath -m "$4")
PATH=$(realpath "$2"):$PATH
rm -rf "$scratch"
mkdir -p "$scratch"
cd "$scratch" || exit 1

id= kind= options= drawn=0 failed=0 sections=0 without=
finish() {
    [ "$kind" = st ] || return 0
    local switches=()
    for option in ${options//,/ }; do switches+=("--compiler-option=$option"); done
    norvane check main.st -i target.xml --all --format json ${switches[@]+"${switches[@]}"} >found.json 2>said
    if grep -q "\"id\":\"$id\"" found.json; then
        drawn=$((drawn + 1)) without=
    else
        echo "$id isn't drawn: $(cat found.json said)"
        failed=1
    fi
}
end_section() {
    [ -n "$without" ] && ! grep -q '^Drawn by no source\|only `compiler` itself prints this' section && {
        echo "$without has no example"
        failed=1
    }
    without=
}
while IFS= read -r line; do
    case $kind:$line in
        :'### '[EW]*)    end_section
                         id=${line#'### '} id=${id%%:*} without=$id sections=$((sections + 1))
                         : >section
                         cp "$default_target" target.xml ;;
        :'```st draws'*) kind=st options=${line#'```st draws'} options=${options# options=}
                         : >main.st ;;
        :'```xml target') kind=xml
                         : >target.xml ;;
        :'```'*)         kind=other ;;
        *:'```')         finish
                         kind= ;;
        st:*)            printf '%s\n' "$line" >>main.st ;;
        xml:*)           printf '%s\n' "$line" >>target.xml ;;
        :*)              printf '%s\n' "$line" >>section ;;
    esac
done <"$page"
end_section
if [ "$sections" -lt 90 ] || [ "$drawn" -lt 80 ]; then
    echo "only $sections sections and $drawn examples"
    failed=1
fi
[ "$failed" -eq 0 ] && echo "$drawn examples draw the messages of $sections sections"
exit $failed
