#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# run.sh [ROUNDS SESSIONS]: the soak in the default and in the hardened build, and a short one of each
# under valgrind. Called by `./build.sh soak`, which installs what it needs.
set -eu
cd "$(dirname "$0")/../.."
rounds=${1:-1000000}
sessions=${2:-100000}

for preset in release hardened; do
    echo "==> building: soak, $preset"
    mkdir -p "build/$preset"
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" --target soak; } \
        > "build/$preset/soak.log" 2>&1; then
        tail -n 100 "build/$preset/soak.log"
        exit 1
    fi
    "build/$preset/tests/soak" "$rounds" "$sessions"
    echo '==> under valgrind'
    valgrind -q --error-exitcode=9 --leak-check=no "build/$preset/tests/soak" 1000 100
done
