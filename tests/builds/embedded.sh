#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# The library builds and installs with the options that the Buildroot package and the Yocto recipe pass, and
# those that these systems pass to every CMake project: hardened with the one, default and small with the
# other.
. "$(dirname "$0")/common.sh"

# build NAME OPTION...: through a cross toolchain, into an image of a device.
build() {
    name=$1
    shift
    quiet cmake -G Ninja -S . -B "$work/$name" \
        "-DCMAKE_TOOLCHAIN_FILE=$sources/cmake/armv5te.toolchain.cmake" \
        -DCMAKE_INSTALL_PREFIX=/usr -DBUILD_TESTING=OFF "$@"
    quiet cmake --build "$work/$name"
    DESTDIR=$work/$name.image quiet cmake --install "$work/$name"
    for file in lib/libzokecc.so.1 lib/libzokecc.so lib/pkgconfig/zokecc.pc include/zokecc/zokecc.h \
        share/doc/zokecc/LICENSE; do
        [ -e "$work/$name.image/usr/$file" ] || fail "$name: $file is not installed"
    done
}

# build_is NAME BUILD KIND: checks what the installed library reports, and its imports.
build_is() {
    grep -qx "build=$2" "$work/$1.image/usr/lib/pkgconfig/zokecc.pc" || fail "$1 is not the $2 build"
    grep -qx "kind=$3" "$work/$1.image/usr/lib/pkgconfig/zokecc.pc" || fail "$1 is not $3"
    build=$2
    quiet python3 -B tests/boundary/imports_check.py arm-linux-gnueabi-nm arm-linux-gnueabi-readelf \
        "$work/$1.image/usr/lib/libzokecc.so" "$build"
}

options() { python3 -B tests/boundary/packaging_check.py "$@"; }

# shellcheck disable=SC2046 # a list of options
build buildroot -DCMAKE_BUILD_TYPE=Release -DCMAKE_COLOR_MAKEFILE=OFF -DBUILD_DOC=OFF -DBUILD_DOCS=OFF \
    -DBUILD_EXAMPLE=OFF -DBUILD_EXAMPLES=OFF -DBUILD_TEST=OFF -DBUILD_TESTS=OFF -DBUILD_SHARED_LIBS=ON \
    $(options buildroot HARDENED TOOLS)
build_is buildroot hardened fast
quiet qemu-arm -cpu arm926 -L /usr/arm-linux-gnueabi \
    -E "LD_LIBRARY_PATH=$work/buildroot.image/usr/lib" "$work/buildroot.image/usr/bin/zokecc-selftest"
told ': hardened build, fast'

# shellcheck disable=SC2046
build yocto -DCMAKE_INSTALL_BINDIR:PATH=bin -DCMAKE_INSTALL_LIBDIR:PATH=lib -DCMAKE_INSTALL_SO_NO_EXE=0 \
    -DCMAKE_NO_SYSTEM_FROM_IMPORTED=1 $(options yocto small)
build_is yocto default small
[ ! -e "$work/yocto.image/usr/bin" ] || fail 'yocto: programs are installed that were not chosen'
