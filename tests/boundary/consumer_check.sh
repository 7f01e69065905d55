#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# An example builds against an installed library and runs: found by the CMake package and by
# pkg-config, with the shared library and with the static one.
#
#     consumer_check.sh CMAKE EXAMPLES ROOT COMPILER TOOLCHAIN_FILE [EMULATOR...]
#
# ROOT contains the library, directly or in usr/. For a cross build it is the device's file
# system; otherwise TOOLCHAIN_FILE is empty.
set -eu

cmake=$1
examples=$2
root=$3
compiler=$4
toolchain=$5
shift 5

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# program COMMAND...: runs a program and shows its output only if it fails.
program() {
    if ! "$@" "$examples/sign_with_identity.c" > "$work/output"; then
        cat "$work/output"
        return 1
    fi
}

# ---- The CMake package --------------------------------------------------------------------------

if [ -n "$toolchain" ]; then
    where="-DCMAKE_TOOLCHAIN_FILE=$toolchain -DCMAKE_FIND_ROOT_PATH=$root"
else
    where="-DCMAKE_C_COMPILER=$compiler"
fi
# shellcheck disable=SC2086 # one or two arguments
"$cmake" -G Ninja -S "$(dirname "$0")/consumer" -B "$work/build" $where -DEXAMPLES="$examples" \
    "-DCMAKE_PREFIX_PATH=$root;$root/usr" > "$work/configured" || { cat "$work/configured"; exit 1; }
"$cmake" --build "$work/build" > "$work/log" || { cat "$work/log"; exit 1; }
# It is this library, not one that happens to be installed on the machine.
grep -q "^zokecc_DIR:PATH=$root/" "$work/build/CMakeCache.txt"
for kind in shared static; do
    if readelf -d "$work/build/with_$kind" | grep 'NEEDED.*c++'; then
        echo "find_package, $kind: the program was linked as C++"
        exit 1
    fi
    program "$@" "$work/build/with_$kind"
    echo "find_package, $kind: runs"
done

grep '^-- zokecc: ' "$work/configured" > "$work/told"

# ---- pkg-config ---------------------------------------------------------------------------------

PKG_CONFIG_LIBDIR=$(dirname "$(find "$root" -name zokecc.pc)")
export PKG_CONFIG_LIBDIR
if [ -n "$toolchain" ]; then export PKG_CONFIG_SYSROOT_DIR="$root"; fi
pkg-config --atleast-version=1.0 zokecc
# Both report the build, and the same one.
build="$(pkg-config --variable=build zokecc) build, $(pkg-config --variable=kind zokecc)"
grep -qxE -e '-- zokecc: (default|hardened) build, (fast|small)' "$work/told"
grep -qx -e "-- zokecc: $build" "$work/told"
flags=$(pkg-config --cflags zokecc)
libraries=$(pkg-config --libs zokecc)
folder=$(pkg-config --variable=libdir zokecc)
source=$examples/sign_with_identity.c
# shellcheck disable=SC2086 # lists of options
"$compiler" -std=c99 $flags "$source" -o "$work/with_shared" $libraries "-Wl,-rpath,$folder"
# shellcheck disable=SC2086
"$compiler" -std=c99 $flags "$source" -o "$work/with_static" "$folder/libzokecc.a"
for kind in shared static; do
    program "$@" "$work/with_$kind"
    echo "pkg-config, $kind: runs"
done
