#!/usr/bin/env bash
# Builds compiler.exe with mingw-w64 and runs the whole compiles with it under wine: the same outputs byte for byte, the
# same standard output but for line ends. With arguments: only the cases that they name (FEATURE/CASE).
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")/.."

missing=
command -v x86_64-w64-mingw32-g++-posix >/dev/null || missing+=" g++-mingw-w64-x86-64-posix"
wine=$(command -v wine64 || ls /usr/lib/wine/wine64 2>/dev/null) || missing+=" wine64"
if [ -n "$missing" ]; then
    echo "not run, for lack of the packages:$missing"
    exit 77
fi

cmake --preset windows >/dev/null
cmake --build --preset windows
cmake --preset release -DNORVANE_TESTS=ON >/dev/null
cmake --build --preset release --target case_runner

# What stands for the compiler: the line ends of what it prints are those of this machine again.
top=$PWD
work=$top/build/windows/cases
rm -rf "$work"
mkdir -p "$work/bin"
cat > "$work/bin/compiler" <<WRAPPER
#!/usr/bin/env bash
printed=\$(mktemp) complaints=\$(mktemp)
WINEDEBUG=-all "$wine" "$top/build/windows/compiler.exe" "\$@" >"\$printed" 2>"\$complaints"
status=\$?
sed 's/\r\$//' "\$printed"
sed 's/\r\$//' "\$complaints" >&2
rm -f "\$printed" "\$complaints"
exit \$status
WRAPPER
chmod +x "$work/bin/compiler"
export WINEPREFIX="${WINEPREFIX:-$work/prefix}"
WINEDEBUG=-all "$wine" wineboot -i >/dev/null 2>&1 || true

# What a case tries that only the other system has: links, FIFOs, signals, limits, names that Windows forbids.
left_out() { grep -q "^$1\( \|$\)" scripts/windows-left-out.txt; }

passed=0 failed=0 skipped=0
cases=("$@")
[ $# -gt 0 ] || for folder in tests/cases/*/*/; do cases+=("$(basename "$(dirname "$folder")")/$(basename "$folder")"); done
for case in "${cases[@]}"; do
    if left_out "$case"; then
        skipped=$((skipped + 1))
    elif build/release/tests/cases/case_runner "$work/bin/compiler" "$top/tests/cases/$case" "$work/scratch"; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        echo "failed: $case"
    fi
done
echo "$passed cases passed, $failed failed, $skipped left out (scripts/windows-left-out.txt)"
[ $failed -eq 0 ]
