#!/bin/sh
# What run.sh shows while it builds, with a stand-in for cmake that prints a build's lines. RunProgressTest.sh ROOT SCRATCH
set -u
root=$1
scratch=$2
status=0
fail() { echo "$1" >&2; status=1; }

rm -rf "$scratch"
mkdir -p "$scratch/bin" "$scratch/build/release"
cp -r "$root/run.sh" "$root/scripts" "$scratch"
cat >"$scratch/bin/cmake" <<'END'
#!/bin/sh
case $1 in
    --version|--preset) echo "cmake"; exit 0 ;;
esac
for i in $(seq 1 50); do
    echo "[$i/50] Building step $i"
    [ $i -ne 39 ] || sleep "${PAUSE:-0}"
done
[ -z "${BREAK:-}" ] || { echo "error: broken"; exit 1; }
END
printf '#!/bin/sh\necho "compiled $*"\n' >"$scratch/build/release/compiler"
chmod +x "$scratch/bin/cmake" "$scratch/build/release/compiler"
PATH=$scratch/bin:$PATH
export PATH
cd "$scratch" || exit 1

# With arguments standard output is the compiler's alone.
[ "$(./run.sh a.st 2>quick)" = "compiled a.st" ] || fail "arguments: standard output is not the compiler's"
[ ! -s quick ] || fail "a quick build says something"
[ "$(PAUSE=4 ./run.sh a.st 2>slow)" = "compiled a.st" ] || fail "slow build: standard output is not the compiler's"
[ "$(cat slow)" = "[40/50]" ] || fail "a slow build doesn't say on standard error how far it is"

# Without any, the lines stand behind the first one. The stand-in has no examples, so the script ends there.
./run.sh >alone 2>/dev/null
printf 'Building the compiler...\n[20/50]\n[40/50]\n' | cmp -s - alone || fail "how far the build is, without arguments"

BREAK=1 ./run.sh a.st >out 2>log && fail "a build that fails counts as one that doesn't"
[ ! -s out ] || fail "a build that fails prints to standard output"
grep -q '^error: broken$' log || fail "a build that fails doesn't show its log"
exit $status
