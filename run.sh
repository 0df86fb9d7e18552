#!/usr/bin/env bash
# Without arguments: builds the compiler and norvane, compiles the examples and runs one on the desk. With arguments:
# passes them to the compiler, in the caller's directory.
set -eu
top=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$top/scripts/packages.sh"

need_build_tools
install_missing >&2

# What the build prints would stand between the compiler's own lines, so it is shown only where it fails.
build() {
    local log status=0
    log=$(mktemp)
    {
        cd "$top"
        if [ ! -f build/release/CMakeCache.txt ]; then
            cmake --preset release -DNORVANE_TESTS=OFF -DNORVANE_BENCHMARKS=OFF
        fi
        cmake --build --preset release --target "$1"
    } >"$log" 2>&1 || status=$?
    [ "$status" -eq 0 ] || cat "$log" >&2
    rm -f "$log"
    return "$status"
}
[ $# -gt 0 ] || echo "Building the compiler..."
( build compiler ) || exit 1

compiler=$top/build/release/compiler
if [ $# -gt 0 ]; then
    exec "$compiler" "$@"
fi

out=$top/build/examples
mkdir -p "$out"
cd "$out"
cp "$top"/examples/*.st "$top"/examples/target.xml .
status=0
for source in *.st; do
    echo
    echo "\$ compiler $source -i target.xml"
    "$compiler" "$source" -i target.xml || status=1
done
echo
echo "The compiler:  build/release/compiler"
echo "Its outputs:   build/examples/"
ls -- *.asm *.dbi | sed 's/^/               /'

# norvane needs libraries that may not be there; the compiler is done by now and stays.
echo
echo "Building norvane..."
need_norvane_libraries
if ( install_missing >&2 ) && ( cd "$top" && cmake --preset release >/dev/null ) && ( build norvane_program ); then
    echo
    echo "\$ norvane run traffic_light.asm --scans 25 --set main.request=TRUE --watch main.green,main.yellow,main.red"
    "$top/build/release/norvane" run traffic_light.asm --scans 25 --set main.request=TRUE \
        --watch main.green,main.yellow,main.red || status=1
else
    echo "norvane is left out: its libraries can't be installed here."
fi
exit $status
