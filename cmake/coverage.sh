#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Runs the tests of the preset `coverage`, which must be built, and prints the lines and branches of
# the library that they execute, per folder. Fails below the floor of lines or of branches.
set -eu
cd "$(dirname "$0")/.."
lines_floor=99.5  # percent
branches_floor=93

find build/coverage -name '*.gcda' -delete
ctest --preset coverage --parallel "$(nproc)"
gcovr --root . --object-directory build/coverage --csv build/coverage/lines.csv \
    --exclude-unreachable-branches \
    --filter 'base/' --filter 'mint/' --filter 'hash/' --filter 'ecc/' --filter 'schemes/' --filter 'sdf/' \
    --exclude '.*_x86_64[.]cpp' --txt  # which of these run depends on the processor
awk -F, -v lines_floor="$lines_floor" -v branches_floor="$branches_floor" '
    function percent(part, whole) { return whole > 0 ? 100 * part / whole : 0 }
    function count(name) {
        lines[name] += $2; line_hits[name] += $3
        branches[name] += $5; branch_hits[name] += $6
    }
    NR > 1 { split($1, path, "/"); count(path[1]); count("total") }
    END {
        for (name in lines)
            printf "%-8s %5d of %5d lines  %6.2f %%  %5d of %5d branches  %6.2f %%\n", name,
                line_hits[name], lines[name], percent(line_hits[name], lines[name]),
                branch_hits[name], branches[name], percent(branch_hits[name], branches[name]) | "sort"
        close("sort")
        exit percent(line_hits["total"], lines["total"]) < lines_floor ||
            percent(branch_hits["total"], branches["total"]) < branches_floor
    }' build/coverage/lines.csv
