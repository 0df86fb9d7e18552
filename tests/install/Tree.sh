#!/usr/bin/env bash
# Tree.sh CMAKE BUILD SCRATCH: what is installed is complete, and works where it lies.
set -eu
cmake=$1 build=$2 scratch=$3
rm -rf "$scratch"
mkdir -p "$scratch/work"
"$cmake" --install "$build" --prefix "$scratch/usr" >"$scratch/installed"
missing=0
for file in bin/compiler bin/norvane share/man/man1/compiler.1 share/man/man1/norvane.1 share/man/man1/norvane-run.1 \
            share/bash-completion/completions/norvane share/zsh/vendor-completions/_norvane share/norvane/share/target.xsd \
            share/norvane/share/st/timers.st share/norvane/share/cmake/NorvaneProgram.cmake share/doc/norvane/README.md share/doc/norvane/desk.md \
            share/norvane/examples/first.st; do
    [ -f "$scratch/usr/$file" ] || { echo "missing: $file"; missing=1; }
done
[ $missing -eq 0 ]

# norvane finds the compiler beside itself.
cp -r "$scratch/usr/share/norvane/." "$scratch/work"
cd "$scratch/work/examples"
PATH=/usr/bin:/bin "$scratch/usr/bin/norvane" test motor
mv "$scratch/usr/bin/compiler" "$scratch/usr/bin/norvane-compiler"
PATH=/usr/bin:/bin "$scratch/usr/bin/norvane" test motor
