#!/usr/bin/env bash
# The copy of the motor that is broken on purpose fails where its table, the same as that of the motor, forbids it.
#   Broken.sh PROGRAMS_FOLDER SOURCE_FOLDER SCRATCH_FOLDER
set -u
programs=$1 source=$2 scratch=$3
failed=0
complain() {
    echo "$1"
    failed=1
}

rm -rf "$scratch"
mkdir -p "$scratch"
cd "$source/examples/broken" || exit 1
cmp motor.csv ../motor/motor.csv || complain "the broken motor has another table"
cmp target.xml ../motor/target.xml || complain "the broken motor has another target"

# In scan 20 the button for reverse is pressed while the motor runs forward; the pause ends in scan 26.
cat >"$scratch/expected" <<'END'
motor.csv: FAILED
  motor.csv(18): scan 20: reverse: expected FALSE, found TRUE; written last at motor.st(29)
  motor.csv(19): scan 25: reverse: expected FALSE, found TRUE; written last at motor.st(29)
END
"$programs/norvane" test motor.csv >"$scratch/printed" 2>&1
status=$?
[ $status -eq 1 ] || complain "exit status $status, expected 1"
diff -u "$scratch/expected" "$scratch/printed" || complain "it fails otherwise than it should"

# With the lost half line back it is the motor again.
cp -r "$source/examples" "$source/share" "$scratch"
cd "$scratch/examples/broken" || exit 1
sed -i '29s/ AND NOT forward;$/ AND NOT forward AND forward_open.Q;/' motor.st
"$programs/norvane" test motor.csv || complain "mended, it still fails"
exit $failed
