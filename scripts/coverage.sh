#!/usr/bin/env bash
# Counts which lines and branches of src/ the unit tests, the whole compiles and the fault loops run, prints the figures
# of each folder and of all, and fails where they are below the marks. What is missed stands in build/coverage/missed.txt.
#   scripts/coverage.sh [--again]      with --again the figures are made of the counters that an earlier run has left
# Left out: branches that only an exception takes and those of lines without code (gcovr --exclude-throw-branches
# --exclude-unreachable-branches), and lines that only guard against a fault of ours (InternalFault, assert).
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/packages.sh

need_build_tools
need_test_libraries
need gcovr gcovr --version
install_missing

build=build/coverage
folders="files target frontend model semantics codegen driver"
if [ "${1:-}" != --again ]; then
    cmake --preset coverage -DNORVANE_TESTS=ON
    targets=(compiler compiler_dynamic case_runner fault_shim fault_loop)
    for folder in $folders; do targets+=("test_$folder"); done
    cmake --build --preset coverage --target "${targets[@]}"
    # Counters of runs before, and of the programs that the build asks for the names of their tests.
    find $build -name '*.gcda' -delete
    # A file that may not grow can't take the counters of the process either, and without memory there is no dump.
    limited=$(grep -l 'ulimit' tests/cases/*/*/cmd | sed 's,^tests/,,; s,/cmd$,,' | paste -sd'|')
    ctest --preset coverage -j "${CTEST_PARALLEL_LEVEL:-$(nproc)}" -R "^((${folders// /|})\.|cases/|faults/)" \
          -E "EveryNodeKindIsNamed|^faults/memory$|^($limited)$"
fi

gcovr --root . --filter 'src/' --object-directory $build --exclude-throw-branches --exclude-unreachable-branches \
      --exclude-lines-by-pattern '.*\b(InternalFault|assert)\(.*' --gcov-ignore-parse-errors \
      --exclude-directories '.*/CompilerIdCXX' \
      --csv $build/coverage.csv --txt $build/missed.txt --branches $build

# Columns: name, lines, lines run, share, branches, branches taken.
awk -F, -v complete='^src/(semantics|codegen|model|target)$' -v branchMark="${BRANCH_MARK:-97}" '
    function share(part, whole) { return whole ? 100 * part / whole : 100 }
    function report(name, l, lr, b, bt) {
        printf "%-16s %6d of %6d lines %7.2f %%   %6d of %6d branches %7.2f %%\n",
               name, lr, l, share(lr, l), bt, b, share(bt, b)
    }
    NR == 1 { next }
    {
        split($1, part, "/")
        folder = part[1] "/" part[2]
        if (!(folder in lines)) order[++count] = folder
        lines[folder] += $2; linesRun[folder] += $3; branches[folder] += $5; taken[folder] += $6
        allLines += $2; allRun += $3; allBranches += $5; allTaken += $6
    }
    END {
        for (i = 1; i <= count; ++i) {
            folder = order[i]
            report(folder, lines[folder], linesRun[folder], branches[folder], taken[folder])
            if (folder ~ complete) {
                ++found
                if (linesRun[folder] < lines[folder])
                    low = low "below the mark: every line of " folder "\n"
            }
        }
        report("all", allLines, allRun, allBranches, allTaken)
        if (found != 4) low = low "not all folders were counted\n"
        if (share(allTaken, allBranches) < branchMark) low = low "below the mark: " branchMark " % of all branches\n"
        printf "%s", low
        exit low != ""
    }' $build/coverage.csv
