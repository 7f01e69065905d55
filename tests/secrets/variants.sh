#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Tests what calls leave of their secrets in memory, for every way of building the library:
#
#     tests/secrets/variants.sh [PATTERN]      only the variants whose names match, as `arm-*`
#
# Each is built in build/secrets/NAME; at the end a line for each, and an exit code of 1 if one failed.
set -eu
cd "$(dirname "$0")/../.."
pattern=${1:-*}
folder=build/secrets
failed=0
mkdir -p "$folder"
: > "$folder/summary"

# variant NAME LEVEL ARGUMENTS...: builds the library with that optimisation and runs the programs.
variant() {
    name=$1
    level=$2
    shift 2
    # shellcheck disable=SC2254 # it is a pattern
    case $name in
    $pattern) ;;
    *) return 0 ;;
    esac
    echo "==> $name"
    log=$folder/$name.log
    if cmake -S . -B "$folder/$name" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        "-DCMAKE_C_FLAGS_RELEASE=$level -DNDEBUG" "-DCMAKE_CXX_FLAGS_RELEASE=$level -DNDEBUG" \
        -DZOKECC_EXAMPLES=OFF -DZOKECC_TOOLS=OFF -DZOKECC_TESTS=ON "$@" > "$log" 2>&1 &&
        cmake --build "$folder/$name" --target secrets_scan secrets_recovery >> "$log" 2>&1 &&
        ctest --test-dir "$folder/$name" -R '^secrets[.]' --verbose >> "$log" 2>&1; then
        status=clean
    else
        status=FAILED
        failed=1
        grep -E 'error|words$|fault|found' "$log" | grep -v -E ' 0 faults| not found$' | head -n 40
    fi
    closing=$(sed -n 's/.*: \(.* paths, .*\)/\1/p' "$log")
    printf '%-26s %-7s %s\n' "$name" "$status" "$closing" >> "$folder/summary"
}

gcc='-DCMAKE_C_COMPILER=gcc -DCMAKE_CXX_COMPILER=g++'
clang='-DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++'
arm=-DCMAKE_TOOLCHAIN_FILE=cmake/arm-linux-soft.toolchain.cmake

# shellcheck disable=SC2086 # lists of arguments
for kind in default hardened; do
    build=-DZOKECC_HARDENED=OFF
    [ $kind = default ] || build=-DZOKECC_HARDENED=ON
    for level in -O1 -O2 -O3 -Os; do
        variant gcc-$kind$level $level $gcc $build
        variant clang-$kind$level $level $clang $build
        variant arm-$kind$level $level $arm $build
    done
    variant gcc-$kind-small -Os $gcc $build -DZOKECC_SMALL=ON
    variant arm-$kind-small -Os $arm $build -DZOKECC_SMALL=ON
    variant arm-$kind-no-thumb -O2 $arm $build -DZOKECC_THUMB=OFF
done

printf '\n==> summary\n'
cat "$folder/summary"
exit $failed
