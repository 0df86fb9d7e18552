#!/usr/bin/env bash
# Without arguments: builds the compiler and norvane, compiles the examples and runs one on the desk. With arguments:
# passes them to the compiler, in the caller's directory.
set -eu -o pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$top/scripts/packages.sh"

need_build_tools
install_missing >&2

# How far a build is, from its lines on standard input: one line that changes on a terminal, a line for each twentieth
# step elsewhere. To the descriptor $1, and only from the second $2 on.
progress() {
    local to=$1 after=$2 line begun=$SECONDS shown=
    while IFS= read -r line; do
        [[ $line =~ ^\[([0-9]+)/([0-9]+)\] ]] || continue
        [ $((SECONDS - begun)) -ge "$after" ] || continue
        if [ -t "$to" ]; then
            printf '\r[%d/%d] ' "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}" >&"$to"
            shown=1
        elif [ $((BASH_REMATCH[1] % 20)) -eq 0 ]; then
            printf '[%d/%d]\n' "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}" >&"$to"
        fi
    done
    [ -z "$shown" ] || printf '\r\033[K' >&"$to"
}

# What the build prints would stand between the compiler's own lines, so it is shown only where it fails. With arguments
# standard output is the compiler's, and how far the build is goes to standard error once it takes long.
progress_to=(1 0)
[ $# -eq 0 ] || progress_to=(2 3)
build() {
    local log status=0
    log=$(mktemp)
    {
        cd "$top"
        if [ ! -f build/release/CMakeCache.txt ]; then
            cmake --preset release -DNORVANE_TESTS=OFF -DNORVANE_BENCHMARKS=OFF
        fi
        cmake --build --preset release --target "$1"
    } 2>&1 | tee "$log" | progress "${progress_to[@]}" || status=$?
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
