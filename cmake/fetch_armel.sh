#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Unpacks Debian packages for 32-bit soft-float ARM into a folder, for programs that run under QEMU:
#
#     cmake/fetch_armel.sh PACKAGE... FOLDER
#
# Package lists, archives and the list of installed packages are private to FOLDER/.apt: the machine's
# own packages and architectures are not changed, and no privileges are needed. Dependencies are not
# followed. Packages already unpacked are not fetched again.
set -eu

packages=
while [ $# -gt 1 ]; do
    packages="$packages $1"
    shift
done
if [ -z "$packages" ]; then
    echo 'fetch_armel.sh PACKAGE... FOLDER' >&2
    exit 2
fi
mkdir -p "$1"
folder=$(cd "$1" && pwd)
state=$folder/.apt

wanted=
for package in $packages; do
    [ -e "$state/unpacked/$package" ] || wanted="$wanted $package"
done
[ -n "$wanted" ] || exit 0

mkdir -p "$state/lists/partial" "$state/archives/partial" "$state/unpacked"
: > "$state/status"
# Uses the machine's own sources and keys, without translations, indexes for completion and hooks.
cat > "$state/apt.conf" <<END_OF_CONFIGURATION
APT::Architecture "armel";
APT::Architectures { "armel"; };
APT::Sandbox::User "";
APT::Update::Post-Invoke "";
APT::Update::Post-Invoke-Success "";
Acquire::Languages "none";
Dir::State "$state";
Dir::State::status "$state/status";
Dir::Cache "$state";
END_OF_CONFIGURATION

echo "==> fetching for armel:$wanted"
APT_CONFIG=$state/apt.conf apt-get update -q
for package in $wanted; do
    rm -rf "$state/fetched"
    mkdir "$state/fetched"
    (cd "$state/fetched" && APT_CONFIG=$state/apt.conf apt-get download -q "$package")
    dpkg-deb -x "$state/fetched/"*.deb "$folder"
    : > "$state/unpacked/$package"
done
rm -rf "$state/fetched"
