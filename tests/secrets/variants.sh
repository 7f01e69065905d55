#!/bin/sh
# What calls leave of their secrets in memory, for every way in which the library is built:
#
#     tests/secrets/variants.sh [PATTERN]      only the variants whose names match, as `arm-*`
#
# Each is built in build/secrets/NAME; a line for each at the end, and an exit code of 1 if one failed.
set -eu
cd "$(dirname "$0")/../.."
pattern=${1:-*}
folder=build/secrets
failed=0
mkdir -p "$folder"
: > "$folder/summary"

# variant NAME LEVEL ARGUMENTS...: builds the library with that optimisation and runs the programs.
variant() {
    name=$1
    level=$2
    shift 2
    # shellcheck disable=SC2254 # a pattern it is
    case $name in
    $pattern) ;;
    *) return 0 ;;
    esac
    echo "==> $name"
    log=$folder/$name.log
    if cmake -S . -B "$folder/$name" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        "-DCMAKE_C_FLAGS_RELEASE=$level -DNDEBUG" "-DCMAKE_CXX_FLAGS_RELEASE=$level -DNDEBUG" \
        -DZOKECC_EXAMPLES=OFF -DZOKECC_TOOLS=OFF -DZOKECC_TESTS=ON "$@" > "$log" 2>&1 &&
        cmake --build "$folder/$name" --target secrets_scan secrets_recovery >> "$log" 2>&1 &&
        ctest --test-dir "$folder/$name" -R '^secrets[.]' --verbose >> "$log" 2>&1; then
        status=clean
    else
        status=FAILED
        failed=1
        grep -E 'error|words$|fault|found' "$log" | grep -v -E ' 0 faults| not found$' | head -n 40
    fi
    printf '%-28s %-7s %s\n' "$name" "$status" "$(sed -n 's/.*: \(.* paths, .*\)/\1/p' "$log")" >> "$folder/summary"
}

for hardened in OFF ON; do
    kind=default
    [ "$hardened" = OFF ] || kind=hardened
    for level in -O1 -O2 -O3 -Os; do
        variant "gcc-$kind$level" $level -DCMAKE_C_COMPILER=gcc -DCMAKE_CXX_COMPILER=g++ -DZOKECC_HARDENED=$hardened
        variant "clang-$kind$level" $level -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
            -DZOKECC_HARDENED=$hardened
        variant "arm-$kind$level" $level --toolchain cmake/arm-linux-soft.toolchain.cmake \
            -DZOKECC_HARDENED=$hardened
    done
    variant "gcc-$kind-small" -Os -DCMAKE_C_COMPILER=gcc -DCMAKE_CXX_COMPILER=g++ -DZOKECC_HARDENED=$hardened \
        -DZOKECC_SMALL=ON
    variant "arm-$kind-small" -Os --toolchain cmake/arm-linux-soft.toolchain.cmake -DZOKECC_HARDENED=$hardened \
        -DZOKECC_SMALL=ON
    variant "arm-$kind-plain" -O2 --toolchain cmake/arm-linux-soft.toolchain.cmake -DZOKECC_HARDENED=$hardened \
        -DZOKECC_THUMB=OFF
done

printf '\n==> summary\n'
cat "$folder/summary"
exit $failed
