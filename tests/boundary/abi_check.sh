#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Compares the library's binary interface with the recorded one, on amd64 and armel: names, arguments, sizes
# and offsets of the records. Fails on any difference.
#
#     tests/boundary/abi_check.sh [--update]
#
# --update records the interface again in tests/boundary/abi; only an addition may need this.
set -eu
cd "$(dirname "$0")/../.."
recorded=tests/boundary/abi
folder=build/abi
mkdir -p "$folder"

# interface ARCHITECTURE OPTION...: builds the library with debug information, each function separately, and
# records what belongs to the interface, with paths relative to the root of the sources.
interface() {
    architecture=$1
    shift
    if ! { cmake -G Ninja -S . -B "$folder/$architecture" -DCMAKE_BUILD_TYPE=Debug \
        -DZOKECC_TESTS=OFF -DZOKECC_EXAMPLES=OFF -DZOKECC_TOOLS=OFF "$@" &&
        cmake --build "$folder/$architecture" --target zokecc; } > "$folder/$architecture.log" 2>&1; then
        tail -n 50 "$folder/$architecture.log"
        return 1
    fi
    abidw --headers-dir include --exported-interfaces-only --no-comp-dir-path --no-corpus-path \
        --no-show-locs --type-id-style hash "$folder/$architecture/libzokecc.so" > "$folder/$architecture.raw"
    sed "s|path='[./]*$(pwd | cut -c2-)/|path='|" "$folder/$architecture.raw" > "$folder/$architecture.abi"
    if grep -E "path='[./]*(home|root|work|tmp|usr)/" "$folder/$architecture.abi"; then
        echo 'a path of this machine is in it'
        return 1
    fi
}

failed=
for architecture in amd64 armel; do
    case $architecture in
    amd64) interface amd64 ;;
    armel) interface armel "-DCMAKE_TOOLCHAIN_FILE=$(pwd)/cmake/armv5te.toolchain.cmake" ;;
    esac
    if [ "${1:-}" = --update ]; then
        mkdir -p "$recorded"
        cp "$folder/$architecture.abi" "$recorded/$architecture.abi"
    fi
    if abidiff --headers-dir1 include --headers-dir2 include "$recorded/$architecture.abi" \
        "$folder/$architecture.abi"; then
        functions=$(grep -c '<function-decl' "$recorded/$architecture.abi")
        [ "$functions" -eq "$(wc -l < tests/boundary/exports.txt)" ] || failed="$failed $architecture"
        echo "$architecture: the interface of $functions functions is the recorded one"
    else
        failed="$failed $architecture"
    fi
done
[ -z "$failed" ] || { echo "the interface differs:$failed"; exit 1; }
