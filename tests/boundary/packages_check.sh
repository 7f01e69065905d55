#!/bin/sh
# The pair of Debian packages says the right things about itself, and is enough, unpacked into an
# empty folder, to build the example and run it.
#
#     packages_check.sh CMAKE PACKAGE_FOLDER ARCHITECTURE READELF COMPILER TOOLCHAIN_FILE [EMULATOR...]
set -eu

cmake=$1
packages=$2
architecture=$3
readelf=$4
shift 4

tests=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "packages_check.sh: $architecture: $1" >&2
    exit 1
}

# field PACKAGE NAME: a field of its control file.
field() { dpkg-deb --field "$1" "$2"; }

# expect PACKAGE NAME VALUE
expect() {
    [ "$(field "$1" "$2")" = "$3" ] || fail "$(basename "$1") has $2: $(field "$1" "$2")"
}

set_of() { echo "$packages/$1"_*_"$architecture.deb"; }
runtime=$(set_of libzokecc1)
development=$(set_of libzokecc-dev)
version=$(field "$runtime" Version)
for package in "$runtime" "$development"; do
    expect "$package" Version "$version"
    expect "$package" Architecture "$architecture"
    expect "$package" Multi-Arch same
done
expect "$runtime" Package libzokecc1
expect "$runtime" Section libs
expect "$development" Package libzokecc-dev
expect "$development" Section libdevel
expect "$development" Depends "libzokecc1 (= $version), libc6-dev"

# ---- The runtime package alone: the library under its versioned names, and its needs -------------

dpkg-deb -x "$runtime" "$work/device"
library=$(find "$work/device/usr/lib" -name libzokecc.so.1)
[ -e "$library" ] || fail 'no libzokecc.so.1'
found=$(find "$work/device/usr" -name '*.so' -o -name '*.a' -o -name '*.h')
[ -z "$found" ] || fail "the runtime package has $found"

declared=$(field "$runtime" Depends | sed -n 's/^libc6 (>= \([0-9.]*\))$/\1/p')
[ -n "$declared" ] || fail "depends on $(field "$runtime" Depends)"
needed=$("$readelf" --wide --version-info "$library" | sed -n 's/.*Name: GLIBC_\([0-9.]*\).*/\1/p')
[ -n "$needed" ] || fail 'no version of glibc found in the library'
for glibc in $needed; do
    dpkg --compare-versions "$glibc" le "$declared" || fail "needs glibc $glibc, declares $declared"
done
dpkg-deb --ctrl-tarfile "$runtime" | tar -xO ./shlibs | grep -qx "libzokecc 1 libzokecc1 (>= .*)" ||
    fail 'no shlibs'

# ---- Both together -------------------------------------------------------------------------------

for package in "$runtime" "$development"; do dpkg-deb -x "$package" "$work/both"; done
# Compiled from the package's own copies.
examples=$work/both/usr/share/doc/libzokecc-dev/examples
"$tests/consumer_check.sh" "$cmake" "$examples" "$work/both" "$@"
echo "$architecture: libzokecc1 and libzokecc-dev $version, all well"
