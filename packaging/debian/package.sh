#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Makes Debian packages of a build folder that was configured for the prefix /usr:
#
#     packaging/debian/package.sh BUILD_FOLDER ARCHITECTURE TOOL_PREFIX PACKAGE...
#
# leaves PACKAGE_VERSION_ARCHITECTURE.deb in BUILD_FOLDER. TOOL_PREFIX is that of a cross compiler's tools,
# such as arm-linux-gnueabi-, or empty. The fields are in the file control next to this one; which glibc a
# package depends on is read from its programs. With the same input the packages are the same, byte for byte:
# all times in them are SOURCE_DATE_EPOCH, which is that of the last entry of changelog if it is not set.
set -eu
cd "$(dirname "$0")/../.."
debian=packaging/debian
build=$1
architecture=$2
tools=$3
shift 3

version=$(sed -n '1s/.*(\(.*\)).*/\1/p' $debian/changelog)
upstream=${version%-*}
maintainer=$(sed -n '/^ -- /{s/^ -- \(.*>\)  .*/\1/p;q}' $debian/changelog)
dated=$(sed -n '/^ -- /{s/.*>  //p;q}' $debian/changelog)
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(date -d "$dated" +%s)}
export SOURCE_DATE_EPOCH LC_ALL=C
umask 022
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

component() {
    case $1 in
    *-dev) echo development ;;
    *-tools) echo tools ;;
    *) echo library ;;
    esac
}

# strip_all FOLDER: removes what only the linker and the debugger need, in the same way for every build.
strip_all() {
    find "$1" -type f -name '*.so.*' -exec "${tools}strip" --strip-unneeded -R .comment -R .note {} +
    find "$1" -type f -name '*.a' -exec "${tools}strip" --strip-debug -R .comment -R .note -D {} +
    find "$1" -type f -path '*/bin/*' -exec "${tools}strip" -R .comment -R .note {} +
}

# libc FOLDER: the dependency on the oldest glibc that has every required symbol version.
libc() {
    newest=$(find "$1" -type f \( -name '*.so.*' -o -path '*/bin/*' \) -exec \
        "${tools}readelf" --wide --version-info {} + | sed -n 's/.*Name: GLIBC_\([0-9.]*\).*/\1/p' |
        sort --version-sort | tail -n 1)
    echo "libc6 (>= $newest)"
}

# documents PACKAGE FOLDER: in the place, with the names and the compression that Debian requires.
documents() {
    place=$2/usr/share/doc
    if [ -d "$place/zokecc" ]; then mv "$place/zokecc" "$place/$1"; fi
    place=$place/$1
    mkdir -p "$place"
    rm -f "$place/LICENSE" # it is in common-licenses
    cp $debian/copyright "$place/copyright"
    cp CHANGELOG.md "$place/changelog"
    [ "$(component "$1")" != library ] || python3 -B cmake/sbom.py > "$place/zokecc.spdx.json"
    cp $debian/changelog "$place/changelog.Debian"
    rm -f "$place/CHANGELOG.md"
    find "$2/usr/share" \( -name 'changelog*' -o -path '*/man/*.[13]' \) -type f -exec gzip -9n {} +
    mkdir -p "$2/usr/share/lintian/overrides"
    for overrides in $debian/lintian-overrides "$debian/$1.lintian-overrides"; do
        [ ! -e "$overrides" ] || cat "$overrides" >> "$2/usr/share/lintian/overrides/$1"
    done
}

# control PACKAGE FOLDER: the stanza of the package, and the fields that all packages share.
control() {
    mkdir "$2/DEBIAN"
    size=$(find "$2/usr" -type f -printf '%s\n' | awk '{ sum += int(($1 + 1023) / 1024) } END { print sum }')
    awk -v RS= -v package="$1" '$0 ~ "^Package: " package "\n"' $debian/control |
        sed -e "s/\${libc}/$(libc "$2")/" -e "s/\${version}/$version/" -e "s/\${upstream}/$upstream/" \
            -e "1a Version: $version\nSource: zokecc\nArchitecture: $architecture\nMaintainer: $maintainer" \
            -e "1a Installed-Size: $size\nPriority: optional" > "$2/DEBIAN/control"
    [ "$(component "$1")" = library ] || return 0
    echo 'activate-noawait ldconfig' > "$2/DEBIAN/triggers"
    echo "libzokecc ${upstream%%.*} $1 (>= $upstream)" > "$2/DEBIAN/shlibs"
}

for package in "$@"; do
    grep -qx "Package: $package" $debian/control || { echo "no package $package in control" >&2; exit 2; }
    folder=$work/$package
    DESTDIR=$folder cmake --install "$build" --component "$(component "$package")" > /dev/null
    strip_all "$folder"
    documents "$package" "$folder"
    find "$folder" -type d -exec chmod 755 {} +
    find "$folder" -type f ! -path '*/bin/*' -exec chmod 644 {} +
    control "$package" "$folder"
    (cd "$folder" && find usr -type f | sort | xargs md5sum > DEBIAN/md5sums)
    find "$folder" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +
    dpkg-deb --build --root-owner-group -Zxz "$folder" \
        "$build/${package}_${version}_$architecture.deb" > /dev/null
done
