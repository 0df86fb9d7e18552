#!/bin/sh
# Each remark "Kept" or "Wanted" in the sources says who would notice, by a word that docs/architecture.md explains.
# KeptRemarks.sh ROOT
set -u
root=$1
status=0

words=$(sed -n '/^## "Kept" and "Wanted"/,/^## What/s/^| `\([a-z]*\)` .*/\1/p' "$root/docs/architecture.md")
[ -n "$words" ] || { echo "docs/architecture.md explains no words" >&2; exit 1; }
pattern=$(echo "$words" | tr '\n' '|' | sed 's/|$//')

remarks=$(grep -rnE '(// |[.;] )([Kk]ept|[Ww]anted)( \(|:| as it)' "$root/src")
[ -n "$remarks" ] || { echo "no remark found" >&2; exit 1; }
bad=$(echo "$remarks" | grep -vE "\b(Kept|Wanted) \(($pattern)\)")
[ -z "$bad" ] || { echo "without a word of docs/architecture.md:" >&2; echo "$bad" >&2; status=1; }

for word in $words; do
    echo "$remarks" | grep -q "($word)" || { echo "no remark says ($word)" >&2; status=1; }
done
exit $status
