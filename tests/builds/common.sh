# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Shared by the scripts of this folder, which run from the root of the sources. Sets $sources and $work, a
# temporary folder.
set -eu
cd "$(dirname "$0")/../.."
sources=$(pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

fail() {
    echo "$(basename "$0"): $1" >&2
    exit 1
}

# quiet COMMAND...: its output only if it fails.
quiet() {
    if ! "$@" > "$work/quiet.log" 2>&1; then
        cat "$work/quiet.log"
        fail "failed: $*"
    fi
}

# told TEXT: the last quiet command printed TEXT.
told() { grep -qF -e "$1" "$work/quiet.log" || { cat "$work/quiet.log"; fail "it did not say: $1"; } }

# needed PROGRAM: the names of the shared libraries that it needs, on one line.
needed() { readelf -d "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | xargs; }

# copy_sources FOLDER: the sources without builds and history, as from an archive.
copy_sources() {
    mkdir -p "$1"
    tar -c --exclude=./build --exclude=./.git --exclude=./.cache . | tar -x -C "$1"
}
