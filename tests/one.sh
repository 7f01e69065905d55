#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# tests/one.sh NAME PRESET: builds and runs the tests with NAME in their name, whichever programs and
# shares they are in; `./build.sh one` calls it. With a capital, NAME is GoogleTest's SUITE.TEST or a
# part of it, in which * stands for anything; otherwise it is one of the names that ctest lists, such as
# boundary.kept. In the hardened presets tests of departures must fail.
set -eu
cd "$(dirname "$0")/.."
name=$1
preset=$2
log=build/$preset/one.log

# quiet COMMAND...: shows the command's output only if it fails.
quiet() { "$@" > "$log" 2>&1 || { tail -n 100 "$log"; exit 1; }; }

mkdir -p "build/$preset"
quiet cmake --preset "$preset"
case $name in
[A-Z*]*) ;;
*)
    quiet cmake --build --preset "$preset"
    exec ctest --preset "$preset" --parallel "$(nproc)" -R "$name"
    ;;
esac

# The folders whose sources contain the last part of the name, and the preset's names of their programs.
last=${name##*.}
programs=$(grep -lr --include='*_test.cpp' -e "${last%%[*/]*}" tests | cut -d/ -f2 | sort -u)
listed=$(ctest --preset "$preset" -N -R .)
targets=
patterns=
for program in $programs; do
    if echo "$listed" | grep -qE ": $program[.](share_|departures)"; then
        targets="$targets ${program}_tests"
        patterns="$patterns|$program"
    fi
done
if [ -z "$targets" ]; then
    echo "no test of the preset $preset is called $name" >&2
    exit 1
fi
# shellcheck disable=SC2086 # a list of words
quiet cmake --build --preset "$preset" --target $targets

status=0
# A suite for several types or values has their names after its own.
filter=$(echo "$name" | sed 's/[.]/*./')
GTEST_FILTER="*$filter*" ctest --preset "$preset" --parallel "$(nproc)" -V \
    -R "^(${patterns#|})[.](share_|departures)" > "$log" 2>&1 || status=$?
# The number of a share precedes each of its lines, which mix with those of the others.
awk '
    !/^[0-9]+: / { next }
    { share = $1; sub(/^[0-9]+: /, "") }
    /^\[ RUN / { running[share] = 1; next }
    running[share] { print }
    running[share] && /^\[ +(OK|FAILED) +\]/ { ++ran; running[share] = 0 }
    END { print ran + 0, "tests"; exit !ran }' "$log" || status=1
exit "$status"
