#!/usr/bin/env bash
# Pages.sh NORVANE PAGES COMPILER COMPILER_PAGE: the manual pages know every command and every option that --help shows,
# groff takes them without a warning where it is installed, and the completion for bash completes.
set -u
norvane=$1 pages=$2 compiler=$3 compilerPage=$4
failures=0
fail() { echo "$*"; failures=$((failures + 1)); }

# In a page each dash is written \-.
stands_in() { grep -qF -- "$(printf '%s' "$1" | sed 's/-/\\-/g')" "$2"; }

commands=$("$norvane" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z-]*\) .*/\1/p')
[ "$(echo $commands | wc -w)" -ge 9 ] || fail "norvane --help lists: $commands"
[ "$("$norvane" --version)" = "norvane $(sed -n '1s/.*"norvane \([^"]*\)".*/\1/p' "$pages/norvane.1")" ] ||
    fail "--version and the page differ"
for command in $commands; do
    page=$pages/norvane-$command.1
    [ -f "$page" ] || { fail "no page for $command"; continue; }
    grep -q "^\\\\fB$(echo "$command" | sed 's/-/\\\\-/g;s/\\\\-/-/g')" "$pages/norvane.1" || fail "norvane.1 lacks $command"
    for option in $("$norvane" "$command" --help | sed -n 's/^  \(-[^ ]*\).*/\1/p' | tr ',' ' '); do
        stands_in "$option" "$page" || fail "$page lacks $option"
    done
    "$norvane" "$command" --help | grep -q '^Examples:' || fail "norvane $command --help has no examples"
    grep -q '^\.SH EXAMPLES' "$page" || fail "$page has no examples"
done
for option in $("$compiler" | sed -n 's/^\(-[a-z0-9]*\).*/\1/p'); do
    stands_in "$option" "$compilerPage" || fail "$compilerPage lacks $option"
done
if command -v groff >/dev/null; then
    for page in "$pages"/*.1 "$compilerPage"; do
        warnings=$(groff -man -Tutf8 -ww "$page" 2>&1 >/dev/null)
        [ -z "$warnings" ] || fail "$page: $warnings"
    done
fi

complete_line() {   # WORDS...: what the completion offers for the last one
    bash -c '. "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _norvane; echo "${COMPREPLY[*]}"' "$pages/norvane.bash" "$@"
}
[ "$(complete_line norvane ru)" = run ] || fail "ru is completed to: $(complete_line norvane ru)"
[ "$(complete_line norvane run --wat)" = --watch ] || fail "--wat is completed to: $(complete_line norvane run --wat)"
[ -z "$(complete_line norvane test --wat)" ] || fail "test has no --watch"
if command -v zsh >/dev/null; then
    zsh -n "$pages/_norvane" || fail "zsh doesn't take _norvane"
fi
[ $failures -eq 0 ]
