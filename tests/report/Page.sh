#!/usr/bin/env bash
# Opens reports in a browser without a screen and uses them: no fault in the script, sums as in the debug file, sorting,
# filtering, maps and tree at work, in a wide and in a narrow window.
#   Page.sh PROGRAMS_FOLDER SOURCE_FOLDER SCRATCH_FOLDER
set -u
programs=$1 source=$2 scratch=$3
tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$tests/Chromium.sh"
find_chromium
rm -rf "$scratch"
mkdir -p "$scratch"
cd "$scratch" || exit 1
failed=0
complain() {
    echo "$*"
    failed=1
}

name='</script><script>window.pwned = 1</script>'
cp "$source/examples/tank/tank.st" "$source/examples/tank/target.xml" .
"$programs/compiler" tank.st -i target.xml -o tank.asm -n "$name" >printed 2>&1 || complain "tank.st does not compile"
echo 'tank.st(1,2) : warning, <script>window.pwned = 1</script>' >>printed
"$programs/norvane" report tank.asm -i target.xml --messages printed -o tank.html || complain "there is no report"
add_check tank.html "$tests/page.js" >checked.html

of_dbi() {   # ELEMENT ATTRIBUTE
    sed -n "s/.*<$1 .*\b$2=\"\(-\{0,1\}[0-9]*\)\".*/\1/p" tank.dbi
}
of_page() {
    sed -n "s/^value $1 //p" result
}
same() {   # WHAT PAGE DBI
    [ -n "$2" ] && [ "$2" = "$3" ] || complain "$1: the page says '$2', the debug file '$3'"
}

for width in 1200 480; do
    dump_page "$PWD/checked.html" $width --virtual-time-budget=4000 >dumped
    get_result <dumped >result
    grep -qx end result || complain "$width: the check did not come to its end: $(grep -v dbus browser.log)"
    grep '^FAILED' result && complain "at a width of $width"
    [ "$(grep -c '^ok ' result)" -ge 23 ] || complain "$width: only $(grep -c '^ok ' result) checks were made"

    same "bytes of the global area" "$(of_page 'used global')" "$(of_dbi AREAS globalused)"
    # The last byte of the retain area holds a bit alone, which isn't counted.
    same "bytes of the retain area" "$(($(of_page 'used retain') - 1))" "$(of_dbi AREAS retainused)"
    same "size of the stack" "$(of_page stacksize)" "$(of_dbi RETURNSTACK size)"
    same "deepest program" "$(of_page deepest)" "$(of_dbi RETURNSTACK maxdepth)"
    same "all programs" "$(of_page nested)" "$(of_dbi RETURNSTACK maxnesteddepth)"
    for sign in globalsign retainsign dbisign; do
        same $sign "$(of_page $sign)" "$(of_dbi AREAS $sign)"
    done
    same "number of globals" "$(of_page variables)" "$(grep -c '<VARIABLE ' tank.dbi)"
    instructions=$(grep -cE '^	(PUSH|POP|ADD|SUB|MUL|DIV|CMP|J[MNCS]|RTS|DUP|NOT|AND|OR|MIN|MAX|ADDRESS|LOCAL|NOP|MEMCPY|TO_)' tank.asm)
    same "instructions" "$(of_page instructions)" "$instructions"
    grep -qxF "value title $name 0" <(sed 's/&lt;/</g; s/&gt;/>/g' result) || complain "the title is not the program's name"
done
[ $failed -eq 0 ] && echo "$(grep -c '^ok ' result) checks hold at both widths"
exit $failed
