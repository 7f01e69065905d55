#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Tests whether a branch or an address depends on a secret in the hardened build, with every way in which a
# compiler may generate it:
#
#     tests/secrets/time.sh [PATTERN]            only the variants whose names match, as `clang-*`
#     tests/secrets/time.sh trace [SECRETS]      on ARM instead, by what is executed (trace.py)
#
# Each is built in build/time/NAME and runs under valgrind with secrets marked as undefined, one of them
# with clang's memory sanitizer instead; at the end a line for each, then the places where something stops
# being secret. An exit code of 1 if one failed.
set -eu
cd "$(dirname "$0")/../.."
if [ "${1:-}" = trace ]; then
    shift
    exec tests/secrets/trace.py "$@"
fi
pattern=${1:-*}
folder=build/time
failed=0
mkdir -p "$folder"
: > "$folder/summary"

# variant NAME LEVEL COMPILER [OPTION...]
variant() {
    name=$1
    optimisation=$2
    compiler=$3
    shift 3
    watcher='valgrind --quiet --num-callers=8'
    case $name in *-msan) watcher='env MSAN_OPTIONS=exitcode=0' ;; esac
    # shellcheck disable=SC2254 # it is a pattern
    case $name in
    $pattern) ;;
    *) return 0 ;;
    esac
    echo "==> $name"
    log=$folder/$name.log
    # shellcheck disable=SC2086 # a command and its arguments
    if cmake -S . -B "$folder/$name" -G Ninja -DCMAKE_BUILD_TYPE=Release -DZOKECC_HARDENED=ON \
        -DZOKECC_MEMCHECK=ON "-DCMAKE_CXX_FLAGS_RELEASE=$optimisation -gdwarf-4 -DNDEBUG" \
        "-DCMAKE_CXX_COMPILER=$compiler" -DZOKECC_EXAMPLES=OFF -DZOKECC_TOOLS=OFF -DZOKECC_TESTS=ON "$@" \
        > "$log" 2>&1 &&
        cmake --build "$folder/$name" --target secrets_undefined >> "$log" 2>&1 &&
        $watcher "$folder/$name/tests/secrets_undefined" >> "$log" 2>&1; then
        status=clean
    else
        status=FAILED
        failed=1
        tail -n 60 "$log"
    fi
    printf '%-12s %-7s %s\n' "$name" "$status" "$(tail -n 1 "$log")" >> "$folder/summary"
}

for level in O2 O3 Os; do
    variant "gcc-$level" "-$level" g++
    variant "clang-$level" "-$level" clang++
done
# It cannot track assembly and most processor intrinsics.
variant clang-msan -O2 clang++ -DZOKECC_SHA_INSTRUCTIONS=OFF \
    '-DCMAKE_CXX_FLAGS=-fsanitize=memory -fsanitize-recover=memory -DZOKECC_NO_ASSEMBLY'

cat "$folder/summary"
echo
echo 'Declassified:'
grep -nE '\b(declassify|declassified|publish|publish_point)\(' ct/*.cpp hash/*.cpp schemes/*.cpp sdf/*.cpp \
    ecc/*.cpp | tee "$folder/declassified"
printf '%s places\n' "$(grep -c . "$folder/declassified")"
exit "$failed"
