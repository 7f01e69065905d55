#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# A release of the sources is made, signed, checked as described in docs/releasing.md, and built; none is made
# from a commit without a tag, from changed files, or without a date in CHANGELOG.md.
. "$(dirname "$0")/common.sh"

# refused REASON: a release must be refused for this reason.
refused() {
    if packaging/release.sh --sources "$work/refused" > "$work/quiet.log" 2>&1; then
        fail "made, though $1"
    fi
    told "$1"
    [ ! -e "$work/refused" ] || fail "it left files behind, though $1"
}

commit() { git -c user.name=tests -c user.email=tests@example.org commit -qam "$1"; }

copy_sources "$work/sources"
cd "$work/sources"
version=$(sed -n 's/^project(zokecc VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
git init -q .
git add -A
commit sources
sed -i "s/^## $version (.*/## $version (not released yet)/" CHANGELOG.md
git diff --quiet || commit undated
refused "does not have the tag v$version"
git tag "v$version"
refused 'CHANGELOG.md has no'
sed -i "s/^## $version (.*/## $version (2026-11-22)/" CHANGELOG.md
refused 'not as committed'
commit dated
refused "does not have the tag v$version"
git tag -f "v$version" > /dev/null

GNUPGHOME=$work/keys
export GNUPGHOME
mkdir -m 700 "$GNUPGHOME"
quiet gpg --batch --passphrase '' --quick-generate-key 'zokecc tests <tests@example.org>' ed25519 sign never
(cd "$work" && quiet sources/packaging/release.sh --sources --key tests@example.org one)
quiet packaging/release.sh --sources "$work/two"
told 'to sign: '
cmp "$work/one/SHA256SUMS" "$work/two/SHA256SUMS" || fail 'two releases of a commit differ'

# The commands of docs/releasing.md for those who download the sources.
cd "$work/one"
sed -n '/^    gpg --verify/,/^$/s/^    //p' "$sources/docs/releasing.md" > "$work/check.sh"
grep -q sha256sum "$work/check.sh" || fail 'docs/releasing.md does not say how to check a download'
quiet sh -e "$work/check.sh"
told "zokecc-$version.tar.gz: OK"
printf x >> "zokecc-$version.tar.gz"
! sh -e "$work/check.sh" > "$work/quiet.log" 2>&1 || fail 'a changed archive passes'
gzip -dc "$work/two/zokecc-$version.tar.gz" | tar -x -C "$work"
quiet cmake -S "$work/zokecc-$version" -B "$work/build" -DBUILD_TESTING=OFF
gpgconf --kill all
