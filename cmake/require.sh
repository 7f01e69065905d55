# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# shellcheck shell=sh
# Checks and installs what the commands of build.sh need; build.sh sources this file.

missing=

# require PROBE PACKAGE ...: PROBE is a command, or a file that belongs to the package.
require() {
    while [ $# -gt 0 ]; do
        case $1 in
        /*) [ -e "$1" ] || missing="$missing $2" ;;
        *) command -v "$1" >/dev/null 2>&1 || missing="$missing $2" ;;
        esac
        shift 2
    done
}

# by_hand: prints the command to type if this program cannot install the packages itself.
by_hand() { echo "as root: apt-get update && apt-get install --no-install-recommends$missing" >&2; }

# as_root COMMAND...: its output goes to a file, because it matters only if the command fails.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi >> "$apt_log" 2>&1 && return 0
    echo "build.sh: this failed: $*" >&2
    grep -E '^(E:|Err:|sudo:)' "$apt_log" | head -n 3 >&2
    echo 'Is there a network, and are these the packages of Debian 12? To install them yourself,' >&2
    by_hand
    return 1
}

# shellcheck disable=SC2086 # a list of words
install_packages() {
    : > "$apt_log"
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $missing
}

install_missing() {
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null 2>&1; then
        echo 'build.sh: some packages are missing, and there is no sudo. Please run,' >&2
        by_hand
        return 1
    fi
    apt_log=$(mktemp)
    echo "==> installing$missing"
    if command -v flock >/dev/null 2>&1; then  # another command of build.sh may be installing
        exec 9< cmake/require.sh
        flock 9
    fi
    status=0
    # The lists of packages are only fetched if there are none or they are too old.
    install_packages 2>/dev/null || { as_root apt-get update -q && install_packages; } || status=1
    exec 9<&-  # open or not
    rm -f "$apt_log"
    missing=
    return $status
}

require_build() { require cmake cmake ninja ninja-build g++ g++; }
require_clang() { require clang++ clang; }
# The tests are compiled by clang++.
require_suite() {
    require_build
    require_clang
    require python3 python3 openssl openssl /usr/include/openssl/evp.h libssl-dev \
        /usr/include/gtest/gtest.h libgtest-dev pkg-config pkgconf make make
}
# The sanitizers' run-time libraries, which clang only recommends, and the symbolizer, with whose names
# tests/lsan.supp identifies memory that is never freed on purpose.
require_clang_runtime() {
    require_clang
    require /usr/lib/clang/14/lib/linux/libclang_rt.fuzzer-x86_64.a libclang-rt-14-dev llvm-symbolizer llvm
}
require_cross() {
    require arm-linux-gnueabi-g++ g++-arm-linux-gnueabi qemu-arm qemu-user \
        /usr/arm-linux-gnueabi/include/stdio.h libc6-dev-armel-cross
}
require_arm() {
    require_cross
    require /usr/src/googletest/CMakeLists.txt googletest
}

require_bench() {
    require_build
    require python3 python3 /usr/include/openssl/evp.h libssl-dev \
        /usr/include/benchmark/benchmark.h libbenchmark-dev
}
