#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Static analysis of the sources; called by ./build.sh lint.
#
#     cmake/lint.sh SOURCE...
#
# The arguments are the sources whose format is checked; the other tools check the library, the examples
# and the programs of tools/. All of them run even if one finds something; the exit status is nonzero then.
set -u
cd "$(dirname "$0")/.." || exit 1
folder=build/lint
hardened=build/lint-hardened
failed=

# step NAME COMMAND...: quiet unless something is found.
step() {
    name=$1
    shift
    echo "==> $name"
    if ! "$@" > "$folder/$name.log" 2>&1; then
        grep -vE '^[0-9]+ warnings? generated|^Suppressed |^Use -header-filter' "$folder/$name.log"
        failed="$failed $name"
    fi
}

# ARM assembly cannot be compiled for the host.
library() { find base mint hash ecc schemes sdf -name '*.cpp' ! -name '*_arm.cpp' -print0; }
secrets() { find ct hash/kernel_random.cpp -name '*.cpp' ! -name '*_arm.cpp' -print0; }  # hardened build only
programs() { find examples tools -name '*.c' -print0; }
cpp='-std=c++20 -fno-exceptions -fno-rtti -I. -Iinclude'
c='-std=c99 -D_GNU_SOURCE -Iinclude -Itools'

# clang-tidy reads .clang-tidy, which gives the reason for every disabled check.
tidy() {
    { library; programs; } | xargs -0 -P"$(nproc)" -n4 clang-tidy -p "$folder" --quiet &&
        secrets | xargs -0 -P"$(nproc)" -n1 clang-tidy -p "$hardened" --quiet
}

# shellcheck disable=SC2086 # words
check_cpp() {
    cppcheck -j"$(nproc)" $checks $taken_for_comparison $other_findings --std=c++20 -I. -Iinclude \
        -I"$folder/generated" base mint hash ecc schemes sdf &&
        cppcheck -j"$(nproc)" $checks $taken_for_comparison $other_findings --std=c++20 -I. -Iinclude \
            -I"$hardened/generated" ct hash/kernel_random.cpp
}
# shellcheck disable=SC2086
check_c() { cppcheck -j"$(nproc)" $checks --std=c99 -D_GNU_SOURCE -Iinclude -Itools examples tools; }
# It mistakes the angle brackets of a variable template, such as kLimbBits<Limb> - 1, for comparisons.
taken_for_comparison='--suppress=compareBoolExpressionWithInt
    --suppress=zerodiv:mint/limbs/inverse.h --suppress=shiftTooManyBits:mint/limbs/inverse.h'
# Limbs, whose type is a template parameter, are no larger than a reference, and C++20 defines this shift.
other_findings='--suppress=passedByValue:ecc/fast_field.h --suppress=passedByValue:ct/field.h
    --suppress=shiftTooManyBitsSigned:ct/inverse.cpp'
checks='--quiet --inline-suppr --error-exitcode=1 --enable=warning,performance,portability'

# GCC 12 loses track of arrays filled in a loop, and then reports them as uninitialised.
# shellcheck disable=SC2086
analyze() {
    library | xargs -0 -P"$(nproc)" -n1 g++ $cpp "-I$folder/generated" -O2 -fanalyzer -Werror \
        -Wno-analyzer-use-of-uninitialized-value -o /dev/null -c &&
        secrets | xargs -0 -P"$(nproc)" -n1 g++ $cpp "-I$hardened/generated" -O2 -fanalyzer -Werror \
            -Wno-analyzer-use-of-uninitialized-value -o /dev/null -c &&
        programs | xargs -0 -P"$(nproc)" -n1 gcc $c -O2 -fanalyzer -Werror -o /dev/null -c
}

# configure PRESET FOLDER
configure() {
    mkdir -p "$2"
    if ! cmake --preset "$1" -B "$2" -DZOKECC_TESTS=OFF -DCMAKE_EXPORT_COMPILE_COMMANDS=ON \
        > "$2/configure.log" 2>&1; then
        cat "$2/configure.log"
        exit 1
    fi
    # An option only g++ knows; clang-tidy would stop at it.
    sed -i 's/-mmemset-strategy=[^ "]*//' "$2/compile_commands.json"
}

configure release "$folder"
configure hardened "$hardened"
step format clang-format --dry-run --Werror "$@"
step cppcheck-library check_cpp
step cppcheck-programs check_c
step analyzer analyze
step clang-tidy tidy

if [ -n "$failed" ]; then
    echo "found something:$failed"
    exit 1
fi
echo 'nothing found'
