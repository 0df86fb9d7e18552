#!/usr/bin/env bash
# Breaks the sources in small ways and counts which of the breaks a test notices: 300 of them unless told otherwise.
#   scripts/mutate.sh [--seed N] [--count N] [--first N] [--jobs N] [--mark PERCENT]
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/packages.sh

need_build_tools
need_test_libraries
need_norvane_libraries
need python3 python3 --version
install_missing

exec nice -n 5 python3 scripts/mutate.py "$@"
