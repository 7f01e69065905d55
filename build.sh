#!/bin/sh
# Builds, tests and shows zokecc; `./build.sh help` lists the commands.
#
# On Debian 12 every command first installs the packages that it misses, as root or through sudo.
# Where nothing is missing, nothing is installed and no network is needed.
set -eu
caller_folder=$(pwd)
cd "$(dirname "$0")"
started=$(date +%s)

# The line coverage that the library must not fall below, in percent.
coverage_floor=98

usage() {
    cat <<'END'
./build.sh COMMAND

  demo [FILE]     sign FILE (README.md) with the example program, let openssl check the signature
  test            test-host, test-clang, test-sanitize and test-arm, with a summary
  build           the library and all programs, g++, optimised
  test-host       build and test with g++, optimised
  test-clang      build and test with clang++, optimised
  test-sanitize   build and test with address, leak and undefined behaviour checks
  test-arm        build for 32-bit soft-float ARM and test under QEMU
  coverage        lines that the tests execute, per folder; fails below the floor
  exports         write cmake/exports.map from the public headers
  format          bring the C and C++ sources into the project's format
  format-check    name the sources that are not in it
  clean           remove build/
  help            this list
END
}

# ---- Packages ---------------------------------------------------------------------------------

missing=

# require PROBE PACKAGE ...: PROBE is a command, or a file that the package brings.
require() {
    while [ $# -gt 0 ]; do
        case $1 in
        /*) [ -e "$1" ] || missing="$missing $2" ;;
        *) command -v "$1" >/dev/null 2>&1 || missing="$missing $2" ;;
        esac
        shift 2
    done
}

install_missing() {
    [ -n "$missing" ] || return 0
    as_root=
    if [ "$(id -u)" -ne 0 ]; then
        as_root=sudo
        if ! command -v sudo >/dev/null 2>&1; then
            echo "build.sh: please install, as root:$missing" >&2
            return 1
        fi
    fi
    echo "==> installing$missing"
    $as_root apt-get update -q
    # shellcheck disable=SC2086 # a list of words
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $missing
    missing=
}

require_build() { require cmake cmake ninja ninja-build g++ g++; }
require_suite() {
    require_build
    require python3 python3 openssl openssl /usr/include/openssl/evp.h libssl-dev \
        /usr/include/gtest/gtest.h libgtest-dev
}
require_clang() { require clang++ clang; }
require_arm() {
    require arm-linux-gnueabi-g++ g++-arm-linux-gnueabi qemu-arm qemu-user \
        /usr/arm-linux-gnueabi/include/stdio.h libc6-dev-armel-cross \
        /usr/src/googletest/CMakeLists.txt googletest
}

# ---- Building and testing ---------------------------------------------------------------------

# build_preset PRESET: configures and builds; quiet unless something fails.
build_preset() {
    echo "==> building: $1"
    mkdir -p "build/$1"
    if ! { cmake --preset "$1" && cmake --build --preset "$1"; } > "build/$1/build.log" 2>&1; then
        tail -n 100 "build/$1/build.log"
        return 1
    fi
}

# suite PRESET: builds, tests, and leaves a line for the summary. The number of tests counts those
# inside the programs too, where a preset runs whole programs.
suite() {
    suite_started=$(date +%s)
    log="build/$1/Testing/Temporary/LastTest.log"
    rm -f "build/$1.closing" "$log"
    status=FAILED
    if build_preset "$1"; then
        echo "==> testing: $1"
        if ctest --preset "$1" --output-log "build/$1/ctest.log"; then status=passed; fi
        grep -E 'tests passed|Total Test time' "build/$1/ctest.log" > "build/$1.closing" || status=FAILED
    fi
    tests=0
    [ ! -f "$log" ] || tests=$(awk '
        / Testing: / { ++programs }
        /^\[==========\] .* ran\./ { --programs; cases += $2 }
        END { print programs + cases }' "$log")
    seconds=$(($(date +%s) - suite_started))
    printf '%-10s %-8s %5d tests %5d s\n' "$1" "$status" "$tests" "$seconds" >> build/summary
    [ "$status" = passed ]
}

# suites PRESET...: all of them, whatever fails, and the summary.
suites() {
    mkdir -p build
    : > build/summary
    failed=0
    for preset in "$@"; do suite "$preset" || failed=1; done
    for preset in "$@"; do
        if [ -f "build/$preset.closing" ]; then
            printf '\n%s:\n' "$preset"
            cat "build/$preset.closing"
        fi
    done
    printf '\n==> summary\n'
    cat build/summary
    printf 'total %d s\n' "$(($(date +%s) - started))"
    if [ "$failed" -ne 0 ]; then
        echo 'SOME TESTS FAILED'
        return 1
    fi
    echo 'all tests passed'
}

demo() {
    case ${1:-} in
    '') file=README.md ;;
    /*) file=$1 ;;
    *) file=$caller_folder/$1 ;;
    esac
    identity=1234567812345678
    mkdir -p build/demo
    if ! { cmake --preset release -B build/demo -DZOKECC_TESTS=OFF &&
        cmake --build build/demo --target sign_with_identity; } > build/demo/build.log 2>&1; then
        tail -n 100 build/demo/build.log
        return 1
    fi
    echo "==> signing $file for the identity $identity with SM2 and SM3"
    examples/verify_with_openssl.sh "$file" "$identity" build/demo/examples/sign_with_identity
    echo '==> the demo succeeded'
}

# Sums gcovr's table (file, lines, covered lines) per folder.
coverage() {
    build_preset coverage
    find build/coverage -name '*.gcda' -delete
    ctest --preset coverage
    gcovr --root . --object-directory build/coverage --csv build/coverage/lines.csv \
        --filter 'mint/' --filter 'hash/' --filter 'ecc/' --filter 'schemes/' --filter 'sdf/' --txt
    awk -F, -v floor="$coverage_floor" '
        function percent(part, whole) { return whole > 0 ? 100 * part / whole : 0 }
        NR > 1 { split($1, path, "/"); lines[path[1]] += $2; covered[path[1]] += $3; all += $2; hit += $3 }
        END {
            for (folder in lines)
                printf "%-8s %5d of %5d lines  %6.2f %%\n", folder, covered[folder], lines[folder],
                    percent(covered[folder], lines[folder]) | "sort"
            close("sort")
            printf "%-8s %5d of %5d lines  %6.2f %%, floor %s %%\n", "all", hit, all, percent(hit, all), floor
            exit percent(hit, all) < floor
        }' build/coverage/lines.csv
}

# The public headers are laid out by hand: tables of declarations and their manual.
sources() {
    find mint hash ecc schemes sdf tests examples -name '*.cpp' -o -name '*.h' -o -name '*.c' | sort
}

command=${1:-help}
[ $# -eq 0 ] || shift
case $command in
demo)
    require_build
    require openssl openssl
    install_missing
    demo "$@"
    ;;
build)
    require_suite
    install_missing
    build_preset release
    ;;
test)
    require_suite
    require_clang
    require_arm
    install_missing
    suites release clang sanitize arm
    ;;
test-host | test-sanitize)
    require_suite
    install_missing
    if [ "$command" = test-host ]; then suites release; else suites sanitize; fi
    ;;
test-clang)
    require_suite
    require_clang
    install_missing
    suites clang
    ;;
test-arm)
    require_suite
    require_arm
    install_missing
    suites arm
    ;;
coverage)
    require_suite
    require gcovr gcovr
    install_missing
    coverage
    ;;
exports)
    require python3 python3
    install_missing
    mkdir -p build
    python3 -B cmake/exports_map.py > build/exports.map
    mv build/exports.map cmake/exports.map
    ;;
format | format-check)
    require clang-format clang-format
    install_missing
    # shellcheck disable=SC2046 # names without blanks
    if [ "$command" = format ]; then
        clang-format -i $(sources)
    else
        clang-format --dry-run --Werror $(sources)
    fi
    ;;
clean) rm -rf build ;;
help | -h | --help) usage ;;
*)
    usage >&2
    exit 2
    ;;
esac
