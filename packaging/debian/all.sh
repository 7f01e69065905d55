#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# All Debian packages, for this machine and for armel, and their check; ./build.sh packages calls it. The
# results are in build/package and build/package-armel.
set -eu
cd "$(dirname "$0")/../.."

# preset PRESET ARCHITECTURE: rebuilds it with the flags that Debian uses for all its packages.
preset() (
    echo "==> building: $1"
    rm -rf "build/$1"
    mkdir -p "build/$1"
    eval "$(DEB_BUILD_MAINT_OPTIONS=hardening=+all DEB_HOST_ARCH=$2 dpkg-buildflags --export=sh 2>/dev/null)"
    { cmake --preset "$1" && cmake --build --preset "$1"; } > "build/$1/build.log" 2>&1 ||
        { tail -n 100 "build/$1/build.log"; return 1; }
)

# packages_for ARCHITECTURE TOOL_PREFIX PRESET: all packages for one processor, in the preset's folder.
packages_for() {
    preset "$3" "$1"
    preset "$3-hardened" "$1"
    packaging/debian/package.sh "build/$3" "$1" "$2" libzokecc1 libzokecc-dev zokecc-tools
    packaging/debian/package.sh "build/$3-hardened" "$1" "$2" libzokecc1-hardened libzokecc-hardened-dev
    mv "build/$3-hardened/"*.deb "build/$3/"
}

native=$(dpkg --print-architecture)
packages_for "$native" '' package
packages_for armel arm-linux-gnueabi- package-armel
check=tests/boundary/packages_check.sh
"$check" cmake build/package "$native" readelf gcc ''
"$check" cmake build/package-armel armel arm-linux-gnueabi-readelf arm-linux-gnueabi-gcc \
    "$(pwd)/cmake/armv5te.toolchain.cmake" qemu-arm -cpu arm926 -L /usr/arm-linux-gnueabi
ls -s --block-size=1 build/package/*.deb build/package-armel/*.deb
