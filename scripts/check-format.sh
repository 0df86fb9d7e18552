#!/usr/bin/env bash
# Do the lines that have changed look as .clang-format says?
#
#   scripts/check-format.sh              what isn't committed yet, or else the last commit
#   scripts/check-format.sh REVISION     what has changed since the revision
#   scripts/check-format.sh --fix [REVISION]     the same lines, put right
#   scripts/check-format.sh --fix-all    every line of every file; aligned tables then need "clang-format off"
#
# Lines, not files: a file may hold a table whose columns say more than any rule, and nobody reformats what he
# didn't change.
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mode=check
case ${1:-} in
    --fix) mode=fix; shift ;;
    --fix-all) git ls-files -z '*.cpp' '*.h' | xargs -0 clang-format -i; exit ;;
    -*) sed -n '2,8s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
esac

revision=${1:-}
if [ -z "$revision" ]; then
    revision=HEAD
    # A clone of one commit has no other to compare with.
    if git diff --quiet HEAD -- '*.cpp' '*.h' && git rev-parse -q --verify HEAD~1 >/dev/null; then revision=HEAD~1; fi
fi
git rev-parse -q --verify "$revision^{commit}" >/dev/null || { echo "no revision $revision" >&2; exit 2; }

# "FILE --lines=FROM:TO ..." for each file with lines that are new or others.
changed() {
    git diff -U0 --no-color --no-ext-diff --diff-filter=d "$revision" -- '*.cpp' '*.h' | awk '
        /^\+\+\+ b\// { file = substr($0, 7); next }
        /^@@ / {
            split(substr($3, 2), range, ",")
            count = range[2] == "" ? 1 : range[2]
            if (count > 0) lines[file] = lines[file] " --lines=" range[1] ":" range[1] + count - 1
        }
        END { for (file in lines) print file lines[file] }' | sort
}

status=0
while read -r file lines; do
    # No quotes: an option for each range.
    if [ "$mode" = fix ]; then
        # shellcheck disable=SC2086
        clang-format -i $lines "$file"
    elif ! clang-format --dry-run --Werror $lines "$file"; then
        status=1
    fi
done < <(changed)
[ "$status" -eq 0 ] || echo "scripts/check-format.sh --fix ${1:-} puts these right." >&2
exit "$status"
