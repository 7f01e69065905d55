#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# With the flags that Debian uses for every package, and those that other distributions add, the library
# builds without warnings, and its imports are the expected ones. In both builds, and for armel.
. "$(dirname "$0")/common.sh"

# build NAME ARCHITECTURE TOOL_PREFIX OPTION...
build() {
    folder=$work/$1
    architecture=$2
    tools=$3
    shift 3
    (
        eval "$(DEB_BUILD_MAINT_OPTIONS=hardening=+all dpkg-buildflags --export=sh)"
        if [ "$architecture" = amd64 ]; then CXXFLAGS="$CXXFLAGS -fcf-protection -D_FORTIFY_SOURCE=2"; fi
        export CXXFLAGS
        quiet cmake -G Ninja -S . -B "$folder" -DCMAKE_BUILD_TYPE=None -DZOKECC_WERROR=ON \
            -DZOKECC_TESTS=OFF "$@"
        quiet cmake --build "$folder"
    )
    imports=$("${tools}nm" -D --undefined-only "$folder/libzokecc.so")
    echo "$imports" | grep -q __stack_chk_fail || fail "$1: the flags did not reach the compiler"
}

check=tests/boundary/imports_check.py
build host amd64 ''
quiet python3 -B "$check" nm readelf "$work/host/libzokecc.so"
build hardened amd64 '' -DZOKECC_HARDENED=ON
quiet python3 -B "$check" nm readelf "$work/hardened/libzokecc.so" hardened
quiet "$work/hardened/tools/zokecc-selftest"
told ': hardened build, fast'
arm=arm-linux-gnueabi-
build armel armel "$arm" "-DCMAKE_TOOLCHAIN_FILE=$sources/cmake/armv5te.toolchain.cmake" -DZOKECC_SMALL=ON
quiet python3 -B "$check" "${arm}nm" "${arm}readelf" "$work/armel/libzokecc.so"
quiet qemu-arm -cpu arm926 -L /usr/arm-linux-gnueabi "$work/armel/tools/zokecc-selftest"
told ': default build, small'
