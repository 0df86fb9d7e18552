#!/bin/sh
# Draws what a command prints on a terminal as an SVG, in its colours: text as it really is printed.
#   terminal-picture.sh 'norvane check ... --color always' >picture.svg
# The command is shown in the first line, without its switch for colours.
shown=$(printf '%s' "$1" | sed 's/ --color always//')
printed=$(mktemp) || exit 1
trap 'rm -f "$printed"' EXIT
{ printf '\033[1m$ %s\033[m\n' "$shown"; sh -c "$1" 2>&1; } >"$printed"
awk '
function escape(text) {
    gsub(/&/, "\\&amp;", text); gsub(/</, "\\&lt;", text); gsub(/>/, "\\&gt;", text)
    return text
}
# One stretch of text between two changes of colour.
function stretch(text, code) {
    if (text == "") return ""
    if (!(code in style)) return escape(text)
    return "<tspan style=\"" style[code] "\">" escape(text) "</tspan>"
}
BEGIN {
    bold = "font-weight:bold;fill:"
    style["1"] = bold "#ffffff"; style["1;31"] = bold "#ff6b68"; style["1;32"] = bold "#6bd968"
    style["1;34"] = bold "#6ca6ff"; style["1;35"] = bold "#e08cff"; style["1;36"] = bold "#5fd7d7"
}
{
    line = $0; out = ""; code = ""; plain = $0
    gsub(/\033\[[0-9;]*m/, "", plain)
    if (length(plain) > width) width = length(plain)
    while (match(line, /\033\[[0-9;]*m/)) {
        out = out stretch(substr(line, 1, RSTART - 1), code)
        code = substr(line, RSTART + 2, RLENGTH - 3)
        line = substr(line, RSTART + RLENGTH)
    }
    lines[NR] = out stretch(line, code)
}
END {
    print "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" width * 8.43 + 32 "\" height=\"" NR * 19 + 32 "\">"
    print "<rect width=\"100%\" height=\"100%\" rx=\"8\" fill=\"#1e1f26\"/>"
    print "<g font-family=\"DejaVu Sans Mono, Menlo, Consolas, monospace\" font-size=\"14\" fill=\"#d4d4d4\" style=\"white-space:pre\">"
    for (i = 1; i <= NR; i++) print "<text xml:space=\"preserve\" x=\"16\" y=\"" i * 19 + 11 "\">" lines[i] "</text>"
    print "</g>"
    print "</svg>"
}' "$printed"
