#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# The Debian packages on a fresh minimal Debian 12, which mmdebstrap fetches; as root, with a network, and
# after ./build.sh packages. Not part of `run.sh` without arguments.
#
# Each pair is installed, an example is built against it with the shared and with the static library and run,
# the tools run, an ordinary user exchanges signatures and messages with openssl through `zokecc`, one library
# is replaced by the other under the tools, and after removal the system is as before.
. "$(dirname "$0")/common.sh"

root=$work/root
packages=build/package
quiet mmdebstrap --variant=minbase --include=gcc,libc6-dev,pkgconf,openssl bookworm "$root"
mkdir "$root/packages"
cp "$packages"/*.deb tools/demo.sh "$root/packages/"

inside() {
    chroot "$root" env LC_ALL=C DEBIAN_FRONTEND=noninteractive PATH=/usr/sbin:/usr/bin:/sbin:/bin "$@"
}

# state: lists every file and package, without the records of apt and dpkg.
state() {
    inside dpkg-query --show --showformat '${Package} ${Version} ${Status}\n'
    (cd "$root" && find . -path ./proc -prune -o -path ./packages -prune -o -path './var/lib/*' -prune \
        -o -path './var/log/*' -prune -o -path './var/cache/*' -prune -o -path './tmp/*' -prune \
        -o ! -type d -print | sort)
}

# install PACKAGE...: from the folder, offline, because nothing else is needed.
install() {
    files=
    for package in "$@"; do files="$files $(cd "$root" && echo packages/"$package"_*.deb)"; done
    # shellcheck disable=SC2086 # a list of files
    quiet inside dpkg --install $files
}

# pair LIBRARY DEVELOPMENT BUILD
pair() {
    state > "$work/before"
    install "$1" "$2" zokecc-tools
    [ "$(inside pkg-config --variable=build zokecc)" = "$3" ] || fail "pkg-config does not say $3"
    inside zokecc-selftest > "$work/selftest" || fail "$1: zokecc-selftest fails"
    grep -q "^zokecc: $3 build" "$work/selftest" || fail "$1: zokecc-selftest says another build"
    source=/usr/share/doc/$2/examples/sign_with_identity.c
    quiet inside sh -c "gcc -o /tmp/shared $source \$(pkg-config --cflags --libs zokecc)"
    quiet inside sh -c "gcc -o /tmp/static $source -l:libzokecc.a"
    for kind in shared static; do
        quiet inside /tmp/$kind "$source" alice
        told verified
    done
    quiet chroot --userspec=1000:1000 "$root" env LC_ALL=C HOME=/tmp PATH=/usr/bin:/bin \
        /packages/demo.sh "$source" zokecc
    told 'the demo succeeded'
    cp "$work/quiet.log" "$work/demo.log"
    quiet inside dpkg --purge "$2" zokecc-tools "$1"
    rm -f "$root/tmp/shared" "$root/tmp/static"
    state > "$work/after"
    cmp "$work/before" "$work/after" || { diff "$work/before" "$work/after"; fail "$1 leaves something"; }
    echo "$1, $2, zokecc-tools: installed, used in two ways, removed without a trace"
}

pair libzokecc1 libzokecc-dev default
pair libzokecc1-hardened libzokecc-hardened-dev hardened
cat "$work/demo.log"

# A program keeps working when its library is replaced.
state > "$work/before"
install libzokecc1 zokecc-tools
install libzokecc1-hardened
inside zokecc-selftest > "$work/selftest"
grep -q '^zokecc: hardened build' "$work/selftest" || fail 'the library was not replaced'
found=$(inside dpkg-query --show --showformat '${db:Status-Status}' libzokecc1 2>/dev/null) || found=absent
[ "$found" != installed ] || fail 'both libraries are installed'
quiet inside dpkg --purge zokecc-tools libzokecc1-hardened libzokecc1
state > "$work/after"
cmp "$work/before" "$work/after" || fail 'the replacement leaves something'
echo 'libzokecc1-hardened takes the place of libzokecc1 under zokecc-tools'
