#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Builds the library in the ways that users and packagers do; ./build.sh builds calls it.
#
#     tests/builds/run.sh [NAME...]
#
# NAME is a script of this folder; by default all of them run, even if one fails. The exit status is then
# nonzero.
set -u
cd "$(dirname "$0")" || exit 1
[ $# -gt 0 ] || set -- plain subfolder distribution board embedded manners reproducible release

failed=
for name in "$@"; do
    if "./$name.sh"; then
        echo "$name: as it should be"
    else
        failed="$failed $name"
    fi
done
if [ -n "$failed" ]; then
    echo "FAILED:$failed"
    exit 1
fi
