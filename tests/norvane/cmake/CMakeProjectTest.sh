#!/usr/bin/env bash
# Configures a small project with norvane_add_program and looks at what is built again when a file changes.
#   CMakeProjectTest.sh SOURCE_FOLDER PROGRAMS_FOLDER SCRATCH_FOLDER GENERATOR
set -u
source=$(realpath "$1") programs=$(realpath "$2") scratch=$(realpath -m "$3") generator=$4
case $generator in
    Ninja) tool=ninja ;;
    *)     tool=make ;;
esac
if ! command -v $tool >/dev/null; then
    echo "not run: there is no $tool"
    exit 77
fi
rm -rf "$scratch"
mkdir -p "$scratch"
cp -r "$source/tests/norvane/cmake/project" "$scratch/project"
cp "$source/tests/cases/target.xml" "$scratch/project/plc"
cd "$scratch/project/plc" || exit 1
mkdir lib
for name in twice half; do
    printf 'FUNCTION %s : INT\nVAR_INPUT a : INT; END_VAR\n%s := a + a;\nEND_FUNCTION\n' $name $name >lib/$name.st
done
program() { printf 'PROGRAM main\nVAR x : INT; END_VAR\nx := %s;\nEND_PROGRAM\n' "$2" >"$1.st"; }
program pump 'twice(x)'
program valve 'twice(x + 1)'
program both 'half(twice(x))'
program heater 'half(x)'
program 'the lamp' 1
cd "$scratch" || exit 1

failed=0
check() {   # WHAT EXPECTED FOUND
    [ "$2" = "$3" ] && return
    echo "$1: expected [$2], found [$3]"
    failed=1
}
cmake -S project -B build -G "$generator" -DNORVANE_PROGRAM="$programs/norvane" -DNORVANE_SHARE="$source/share" \
    >configured 2>&1 || { cat configured; exit 1; }

# Which programs one run compiles, in the order of the alphabet.
build() {
    cmake --build build -j8 >printed 2>&1 || echo failed
    sed -n 's/.*Compiling \([a-z]*\)$/\1/p' printed | sort | tr '\n' ' '
}
edit() {   # newer than the outputs, whatever the file system's clock
    sleep 0.02
    echo '(* changed *)' >>"project/plc/$1"
}

check "the first build" "both heater lamp pump valve " "$(build)"
check "nothing changed" "" "$(build)"
check "outputs" "build/plc/heater.asm build/plc/heater.dbi build/plc/images/both.asm build/plc/images/both.dbi \
build/plc/lamp.asm build/plc/lamp.dbi build/plc/pump.asm build/plc/pump.dbi build/plc/valve.asm build/plc/valve.dbi " \
    "$(find build -name '*.asm' -o -name '*.dbi' | LC_ALL=C sort | tr '\n' ' ')"
edit lib/twice.st
check "a library of three programs" "both pump valve " "$(build)"
edit lib/half.st
check "a library of two programs" "both heater " "$(build)"
edit 'the lamp.st'
check "one program" "lamp " "$(build)"
sleep 0.02; sed -i 's/size="4096"/size="4000"/' project/plc/target.xml
check "the target" "both heater lamp pump valve " "$(build)"
check "nothing changed again" "" "$(build)"

# Names in the outputs are those of the project, and options arrive.
check "names" "" "$(grep -l "$scratch" $(find build -name '*.asm' -o -name '*.dbi'))"
check "a source's name" "1" "$(grep -c 'file lib/twice.st' build/plc/pump.asm)"
check "-rs 512" "1" "$(grep -c ' size="512"' build/plc/valve.dbi)"

# A fault stops the build, shows itself, and leaves the earlier outputs.
cp build/plc/pump.asm earlier.asm
sleep 0.02; sed -i 's/twice(x)/twice(y)/' project/plc/pump.st
check "a fault" "failed pump " "$(build | tr '\n' ' ')"
check "its message" "1" "$(grep -c '^pump.st:3:12: error: variable y not declared' printed)"
cmp -s earlier.asm build/plc/pump.asm || check "the earlier output" same other
sleep 0.02; sed -i 's/twice(y)/twice(x)/' project/plc/pump.st
check "mended" "pump " "$(build)"

[ "$failed" -eq 0 ] && echo "exactly what depends on a file is built again"
exit $failed
