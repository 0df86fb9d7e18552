#!/bin/sh
# Each fixed word of the scanner stands in the fuzzer's dictionary.
#   DictionaryTest.sh SCANNER DICTIONARY
words=$(sed -n '/<INITIAL>/,/{/p' "$1" | grep -o '"[A-Z_]\{2,\}"' | sort -u)
count=$(printf '%s\n' "$words" | wc -l)
if [ "$count" -lt 80 ]; then
    echo "only $count words are found in the scanner"
    exit 1
fi
failed=0
for word in $words; do
    grep -qxF "$word" "$2" || { echo "not in the dictionary: $word"; failed=1; }
done
exit $failed
