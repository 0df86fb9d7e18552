#!/bin/sh
# The schema of target descriptions takes those of the examples and refuses copies with one thing wrong each.
# Needs xmllint (Debian's libxml2-utils); without it the test says that it was not run.
#   TargetSchemaTest.sh SOURCE_FOLDER
source=$1
schema=$source/share/target.xsd
if ! command -v xmllint >/dev/null 2>&1; then
    echo "not run: there is no xmllint"
    exit 77
fi
scratch=$(mktemp -d) || exit 1
trap 'rm -rf "$scratch"' EXIT
failed=0

accept() {   # FILE WHAT
    if ! xmllint --noout --nonet --schema "$schema" "$1" 2>"$scratch/errors"; then
        echo "refused: $2"
        cat "$scratch/errors"
        failed=1
    fi
}

# 3 is a document that doesn't keep to the schema; anything else is another fault.
refuse() {   # FILE WHAT
    xmllint --noout --nonet --schema "$schema" "$1" 2>/dev/null
    status=$?
    if [ $status -ne 3 ]; then
        echo "not refused (status $status): $2"
        failed=1
    fi
}

# The example with one place changed by a sed command; it has to change something.
change() {   # accept|refuse COMMAND
    sed -e "$2" "$source/examples/target.xml" >"$scratch/changed.xml"
    if cmp -s "$source/examples/target.xml" "$scratch/changed.xml"; then
        echo "changes nothing: $2"
        failed=1
        return
    fi
    $1 "$scratch/changed.xml" "$2"
}

for target in "$source"/examples/target.xml "$source"/examples/*/target.xml "$source"/share/st/tests/target.xml; do
    accept "$target" "${target#"$source"/}"
done
accept "$source/tests/cases/target.xml" tests/cases/target.xml

# Spellings that the compiler takes as they are meant.
change accept 's/size="4096"/size="0x1000"/'
change accept 's/size="4096"/size=" +4096 "/'
change accept 's/code="4"/code="-1"/'
change accept 's/initglobal="1"/initglobal="Yes"/'
change accept 's/initglobal="1"/initglobal="FALSE"/'
change accept 's/name="second"/name="_2nd_one_"/'
change accept 's/ align="2"//'
change accept 's/<VM>/<VM><PROGRAM name="first"\/>/'
change accept '/RETURNSTACK/d'
change accept '/AREA/d'
change accept 's/<\/VM>/<\/VM><LIBRARY> QUJD\n RA== <\/LIBRARY>/'

change refuse 's/DEVICE>/TARGETS>/'
change refuse 's/<IEC[^>]*>//'
change refuse 's/ PointerType="[A-Z]*"//'
change refuse 's/PointerType="UDINT"/PointerType="udint"/'
change refuse 's/PointerType="UDINT"/PointerType="BOOL"/'
change refuse 's/DATATYPE name="INT"/DATATYPE name="Int"/'
change refuse 's/DATATYPE name="INT"/DATATYPE name="UINT"/'
change refuse 's/DATATYPE name="INT"/DATATYPE/'
change refuse 's/align="8"/align="-8"/'
change refuse 's/align="8"/align="0"/'
change refuse 's/align="8"/align="0x0"/'
change refuse 's/align="8"/Align="8"/'
change refuse 's/size="4096"/size="4 kB"/'
change refuse 's/size="4096"/size="0X1000"/'
change refuse 's/size="4096"/size=" 0x1000"/'
change refuse 's/size="4096"/size="0xFFFFFFFF"/'
change refuse 's/size="4096"/size=""/'
change refuse 's/code="4"/code="four"/'
change refuse 's/AREA name="RETAIN"/AREA name="GLOBAL"/'
change refuse 's/AREA name="RETAIN"/AREA name="Retain"/'
change refuse 's/<AREA name="RETAIN"/<AREAS name="RETAIN"/'
change refuse 's/initglobal="1"/initglobal="on"/'
change refuse 's/name="second"/name="main"/'
change refuse 's/name="second"/name="2nd"/'
change refuse 's/name="second"/name="a__b"/'
change refuse 's/name="second"/name=""/'
change refuse '/PROGRAM/d'
change refuse 's/nestedprogram/nested/'
change refuse 's/<VM>/<VM>text/'
change refuse 's/<\/VM>/<\/VM><LIBRARY>QUJD-RA=<\/LIBRARY>/'

[ $failed -eq 0 ] && echo "the schema takes and refuses what it should"
exit $failed
