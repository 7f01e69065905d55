#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# The Debian packages have the right metadata, and are enough, unpacked into an empty folder,
# to build the example and run it: the default pair and the hardened one. lintian finds nothing.
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
trap 'exit 130' INT
trap 'exit 143' TERM

fail() {
    echo "packages_check.sh: $architecture: $1" >&2
    exit 1
}

file_of() { echo "$packages/$1"_*_"$architecture.deb"; }

# field PACKAGE NAME: a field of its control file.
field() { dpkg-deb --field "$(file_of "$1")" "$2"; }

# expect PACKAGE NAME VALUE
expect() { [ "$(field "$1" "$2")" = "$3" ] || fail "$1 has $2: $(field "$1" "$2")"; }

version=$(field libzokecc1 Version)
for package in libzokecc1 libzokecc1-hardened libzokecc-dev libzokecc-hardened-dev zokecc-tools; do
    expect $package Package $package
    expect $package Version "$version"
    expect $package Architecture "$architecture"
    dpkg-deb -x "$(file_of $package)" "$work/$package"
    folder=$work/$package/usr/share/doc/$package
    for name in copyright changelog.gz changelog.Debian.gz; do
        [ -f "$folder/$name" ] || fail "$package has no $name"
    done
done

# ---- The two libraries: one is in the place of the other, and what each needs --------------------

for field in Provides Conflicts Replaces; do expect libzokecc1 $field ''; done
expect libzokecc1-hardened Provides "libzokecc1 (= $version)"
expect libzokecc1-hardened Conflicts libzokecc1
expect libzokecc1-hardened Replaces libzokecc1
for package in libzokecc1 libzokecc1-hardened; do
    expect $package Multi-Arch same
    expect $package Section libs
    grep -q '"spdxVersion": "SPDX-2.3"' "$work/$package/usr/share/doc/$package/zokecc.spdx.json" ||
        fail "$package has no bill of materials"
    library=$(find "$work/$package/usr/lib" -name libzokecc.so.1)
    [ -e "$library" ] || fail "$package has no libzokecc.so.1"
    "$readelf" --wide --dynamic "$library" > "$work/dynamic"
    grep -q 'SONAME.*\[libzokecc.so.1\]' "$work/dynamic" || fail "$package has another soname"
    grep -q BIND_NOW "$work/dynamic" || fail "$package binds its calls late"
    found=$(find "$work/$package/usr" -name '*.so' -o -name '*.a' -o -name '*.h')
    [ -z "$found" ] || fail "$package has $found"
    newest=$("$readelf" --wide --version-info "$library" | sed -n 's/.*Name: GLIBC_\([0-9.]*\).*/\1/p' |
        sort --version-sort | tail -n 1)
    [ -n "$newest" ] || fail "no version of glibc found in $package"
    expect $package Depends "libc6 (>= $newest)"
    dpkg-deb --ctrl-tarfile "$(file_of $package)" | tar -xO ./shlibs |
        grep -qx "libzokecc 1 $package (>= ${version%-*})" || fail "$package has wrong shlibs"
done
imports=$("$readelf" --wide --dyn-syms "$(find "$work/libzokecc1-hardened" -name libzokecc.so.1)")
echo "$imports" | grep -q ' getrandom@' || fail 'libzokecc1-hardened does not ask the kernel'
if echo "$imports" | grep -q ' rand@'; then fail 'libzokecc1-hardened asks rand'; fi

# ---- Each pair is enough to build programs --------------------------------------------------------

# pair LIBRARY DEVELOPMENT BUILD COMPILER TOOLCHAIN_FILE [EMULATOR...]
pair() {
    library=$1
    development=$2
    build=$3
    shift 3
    expect "$development" Section libdevel
    expect "$development" Multi-Arch same
    expect "$development" Depends "$library (= $version), libc6-dev"
    folder=$work/$development
    cp -a "$work/$library/usr" "$folder/"
    grep -qx "build=$build" "$(find "$folder" -name zokecc.pc)" || fail "zokecc.pc is not for $build"
    [ -f "$folder/usr/share/man/man3/mint_sub.3.gz" ] || fail "$development has no man pages"
    # Compiled from the copies in the package.
    "$tests/consumer_check.sh" "$cmake" "$folder/usr/share/doc/$development/examples" "$folder" "$@"
}

pair libzokecc1 libzokecc-dev default "$@"
pair libzokecc1-hardened libzokecc-hardened-dev hardened "$@"
expect libzokecc-hardened-dev Provides "libzokecc-dev (= $version)"
expect libzokecc-hardened-dev Conflicts libzokecc-dev

# ---- The programs run with either library ---------------------------------------------------------

shift 2
tool=$work/zokecc-tools/usr/bin/zokecc-selftest
case $(field zokecc-tools Depends) in
"libzokecc1 (>= ${version%-*}), libc6 (>= "*) ;;
*) fail "zokecc-tools has Depends: $(field zokecc-tools Depends)" ;;
esac
for package in libzokecc1 libzokecc1-hardened; do
    folder=$(dirname "$(find "$work/$package" -name libzokecc.so.1)")
    if [ $# -gt 0 ]; then
        "$@" -E "LD_LIBRARY_PATH=$folder" "$tool" > "$work/selftest"
    else
        LD_LIBRARY_PATH=$folder "$tool" > "$work/selftest"
    fi
    case $package in
    *-hardened) build=hardened ;;
    *) build=default ;;
    esac
    grep -q "^zokecc: $build build" "$work/selftest" ||
        fail "zokecc-selftest takes $package for another build"
done

lintian --fail-on error,warning --tag-display-limit 0 --allow-root "$packages/"*"_$architecture.deb" ||
    fail 'lintian found something'
echo "$architecture: five packages of $version, all well"
