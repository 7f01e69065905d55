#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Checks whether a branch or an address depends on a secret in the hardened build, for each code
# generation variant:
#
#     tests/secrets/time.sh [PATTERN]            only the variants whose names match, e.g. `clang-*`
#     tests/secrets/time.sh trace [SECRETS]      on ARM instead, from instruction traces (trace.py)
#
# The program is built once, in build/time/gcc-O2 with the library of that variant. For each variant it runs
# under valgrind, with its secrets marked as undefined, with the shared library in build/time/NAME. For that
# library only the folders that secrets reach are recompiled: in this build mint/ and ecc/ compute with public
# numbers, which the first variant proves. The last variant uses clang's memory sanitizer instead, with
# everything compiled for it. As many variants as there are processors run at a time. Prints a line for each,
# then the places where a value stops being secret; the exit code is 1 if a variant failed.
set -eu
cd "$(dirname "$0")/../.."
folder=build/time
program=$folder/gcc-O2/tests/secrets_undefined

# configure NAME LEVEL COMPILER TESTS [OPTION...]
configure() {
    name=$1
    level=$2
    compiler=$3
    tests=$4
    shift 4
    cmake -S . -B "$folder/$name" -G Ninja -DCMAKE_BUILD_TYPE=Release -DZOKECC_HARDENED=ON \
        -DZOKECC_MEMCHECK=ON "-DCMAKE_CXX_FLAGS_RELEASE=$level -g1 -gdwarf-4 -DNDEBUG" \
        "-DCMAKE_CXX_COMPILER=$compiler" -DZOKECC_EXAMPLES=OFF -DZOKECC_TOOLS=OFF "-DZOKECC_TESTS=$tests" "$@"
}

# objects NAME FOLDERS: the library's objects from FOLDERS, a regular expression.
objects() {
    ninja -C "$folder/$1" -t targets all |
        sed -nE "s,^(CMakeFiles/zokecc_objects.dir/($2)/[^:]*\.o):.*,\1,p"
}

build_first() {
    configure gcc-O2 -O2 g++ ON && cmake --build "$folder/gcc-O2" --target secrets_undefined
}

# build_library NAME LEVEL COMPILER
build_library() {
    configure "$@" OFF || return 1
    new=$(objects "$1" 'base|ct|hash|schemes|sdf')
    # shellcheck disable=SC2046,SC2086 # lists of names
    ninja -C "$folder/$1" -j1 $new && (
        cd "$folder/$1"
        "$3" -shared -Wl,-soname,libzokecc.so.1 -Wl,--version-script=../../../cmake/exports.map \
            -o libzokecc.so.1 $new $(cd ../../.. && objects gcc-O2 'mint|ecc' | sed 's,^,../gcc-O2/,')
    )
}

check() {
    case $1 in
    gcc-O2) valgrind --quiet --num-callers=8 "$program" ;;
    clang-msan)
        # The sanitizer does not support assembly or most of the processor's intrinsics.
        configure "$1" -O2 clang++ ON -DZOKECC_SHA_INSTRUCTIONS=OFF \
            '-DCMAKE_CXX_FLAGS=-fsanitize=memory -fsanitize-recover=memory -DZOKECC_NO_ASSEMBLY' &&
            cmake --build "$folder/$1" --target secrets_undefined -j1 &&
            MSAN_OPTIONS=exitcode=0 "$folder/$1/tests/secrets_undefined"
        ;;
    *)
        compiler=clang++
        case $1 in gcc-*) compiler=g++ ;; esac
        build_library "$1" "-${1#*-}" $compiler &&
            LD_LIBRARY_PATH=$folder/$1 valgrind --quiet --num-callers=8 "$program"
        ;;
    esac
}

# variant NAME: runs it and writes its line of the summary.
variant() {
    log=$folder/$1.log
    status=clean
    check "$1" > "$log" 2>&1 || status=FAILED
    echo "==> $1"
    [ $status = clean ] || tail -n 60 "$log"
    printf '%-12s %-7s %s\n' "$1" "$status" "$(tail -n 1 "$log")" > "$folder/$1.line"
    [ $status = clean ]
}

case ${1:-} in
trace)
    shift
    exec tests/secrets/trace.py "$@"
    ;;
variant) variant "$2" && exit 0 || exit 1 ;;
esac

mkdir -p "$folder"
rm -f "$folder"/*.line
names=
for name in clang-msan gcc-O2 clang-O2 gcc-O3 clang-O3 gcc-Os clang-Os; do
    # shellcheck disable=SC2254 # meant as a pattern
    case $name in ${1:-*}) names="$names $name" ;; esac
done
failed=0
if [ "$names" != ' clang-msan' ] && ! build_first > "$folder/first.log" 2>&1; then
    tail -n 60 "$folder/first.log"
    exit 1
fi
# shellcheck disable=SC2086 # a list of names
printf '%s\n' $names | xargs -r -P "$(nproc)" -n 1 tests/secrets/time.sh variant || failed=1

cat "$folder"/*.line
echo
echo 'Declassified:'
grep -nE '\b(declassify|declassified|publish|publish_point)\(' ct/*.cpp hash/*.cpp schemes/*.cpp sdf/*.cpp \
    ecc/*.cpp | tee "$folder/declassified"
printf '%s places\n' "$(grep -c . "$folder/declassified")"
exit "$failed"
