#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# The same sources produce the same Debian packages, byte for byte, in another folder and at another time; and
# their time is SOURCE_DATE_EPOCH.
. "$(dirname "$0")/common.sh"

# build FOLDER: builds packages from the sources there.
build() (
    cd "$1"
    unset SOURCE_DATE_EPOCH
    eval "$(dpkg-buildflags --export=sh)"
    quiet cmake --preset package
    quiet cmake --build --preset package
    quiet packaging/debian/package.sh build/package amd64 '' libzokecc1 libzokecc-dev zokecc-tools
)

copy_sources "$work/one"
mkdir -p "$work/a/much/longer/way/to"
cp -r "$work/one" "$work/a/much/longer/way/to/two"
build "$work/one"
build "$work/a/much/longer/way/to/two"
for package in "$work"/one/build/package/*.deb; do
    cmp "$package" "$work/a/much/longer/way/to/two/build/package/$(basename "$package")" ||
        fail "$(basename "$package") differs"
done

cd "$work/one"
SOURCE_DATE_EPOCH=86400 quiet packaging/debian/package.sh build/package amd64 '' libzokecc1
found=$(dpkg-deb --fsys-tarfile build/package/libzokecc1_*.deb | TZ=UTC tar -tv |
    awk '{ print $4 }' | sort -u)
[ "$found" = 1970-01-02 ] || fail "the times in a package are $found"
