#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Makes the files of a release from the checked-out commit:
#
#     packaging/release.sh [--sources] [--key KEY] FOLDER
#
# FOLDER gets the archive of the sources, the bill of materials, the Debian packages (not with --sources) and
# SHA256SUMS. With --key, gpg signs SHA256SUMS with that key; otherwise the command to do so is printed. The
# tag vVERSION must be at the commit, every file must be as committed, and CHANGELOG.md must have a date.
# The same commit always gives the same bytes.
set -eu
caller_folder=$(pwd)
cd "$(dirname "$0")/.."
trap 'exit 130' INT
trap 'exit 143' TERM

fail() {
    echo "release.sh: $1" >&2
    exit 1
}

packages=yes
key=
while [ $# -gt 1 ]; do
    case $1 in
    --sources) packages=no ;;
    --key) key=$2 && shift ;;
    *) break ;;
    esac
    shift
done
case ${1:-} in
'' | -*) fail 'which FOLDER?' ;;
/*) folder=$1 ;;
*) folder=$caller_folder/$1 ;;
esac
[ $# -eq 1 ] || fail "unknown: $1"
[ ! -e "$folder" ] || fail "$folder exists"

version=$(sed -n 's/^project(zokecc VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
[ -z "$(git status --porcelain)" ] || fail 'some files are not as committed'
[ "$(git rev-parse -q --verify "v$version^{commit}")" = "$(git rev-parse HEAD)" ] ||
    fail "this commit does not have the tag v$version"
grep -qE "^## $version \([0-9]{4}-[0-9]{2}-[0-9]{2}\)\$" CHANGELOG.md ||
    fail "CHANGELOG.md has no '## $version (YEAR-MONTH-DAY)'"
grep -q "^zokecc ($version-" packaging/debian/changelog || fail "packaging/debian/changelog lacks $version"
python3 -B tests/boundary/packaging_check.py > /dev/null || fail 'packaging_check.py finds faults'

mkdir -p "$folder"
git archive --format=tar --prefix="zokecc-$version/" HEAD | gzip -9n > "$folder/zokecc-$version.tar.gz"
python3 -B cmake/sbom.py > "$folder/zokecc-$version.spdx.json"
if [ $packages = yes ]; then
    ./build.sh packages
    cp build/package/*.deb build/package-armel/*.deb "$folder/"
fi

cd "$folder"
sha256sum -- * > SHA256SUMS.new
mv SHA256SUMS.new SHA256SUMS
if [ -n "$key" ]; then
    gpg --batch --yes --local-user "$key" --armor --detach-sign SHA256SUMS
else
    echo "to sign: cd $folder && gpg --armor --detach-sign SHA256SUMS"
fi
ls -l
