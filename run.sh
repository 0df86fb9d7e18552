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

# Copies, so that the outputs lie in build/ and the commands below can be typed there.
out=$top/build/examples
rm -rf "$out" "$top/build/share"
cp -r "$top/examples" "$out"
cp -r "$top/share" "$top/build/share"
status=0
compile() {   # FOLDER SOURCE...
    local folder=build/examples${1:+/$1}
    cd "$top/$folder"
    shift
    echo
    echo "\$ cd $folder && compiler $* -i target.xml"
    "$compiler" "$@" -i target.xml || status=1
}
compile '' first.st
for table in "$out"/*/*.csv; do
    folder=$(basename "$(dirname "$table")")
    # Behind "# program:" a table names the sources that belong together.
    read -ra sources < <(sed -n 's/^# program: *//p' "$table")
    [ "$folder" = "${last:-}" ] || compile "$folder" "${sources[@]}"
    last=$folder
done
echo
echo "The compiler:  build/release/compiler"
echo "Its outputs:   build/examples/"
( cd "$out" && ls -- *.asm *.dbi */*.asm */*.dbi ) | sed 's/^/               /'

# norvane needs libraries that may not be there; the compiler is done by now and stays.
echo
echo "Building norvane..."
need_norvane_libraries
if ( install_missing >&2 ) && ( cd "$top" && cmake --preset release >/dev/null ) && ( build norvane_program ); then
    cd "$out"
    norvane=$top/build/release/norvane
    echo
    echo "\$ norvane run traffic_light/traffic_light.asm --scans 25 --watch main.green,main.yellow,main.red"
    "$norvane" run traffic_light/traffic_light.asm --scans 25 --watch main.green,main.yellow,main.red || status=1
    echo
    echo "\$ norvane test motor"
    "$norvane" test motor || status=1
    echo
    echo "docs/desk.md goes on from here."
else
    echo "norvane is left out: its libraries can't be installed here."
fi
exit $status
