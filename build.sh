#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Builds, tests and shows zokecc; `./build.sh help` lists the commands.
#
# On Debian 12 every command first installs missing packages, as root or through sudo.
# If nothing is missing, nothing is installed and no network is needed.
set -eu
caller_folder=$(pwd)
cd "$(dirname "$(readlink -f "$0")")"
trap 'exit 130' INT
trap 'exit 143' TERM
# By default as many compilers and tests at a time as the machine has processors.
CTEST_PARALLEL_LEVEL=${CTEST_PARALLEL_LEVEL:-$(nproc)}
export CTEST_PARALLEL_LEVEL
started=$(date +%s)

usage() {
    cat <<'END'
./build.sh COMMAND

  demo [FILE]     sign FILE (README.md) and encrypt with zokecc, openssl checks, and back
  test            test-host, test-hardened, test-sanitize and test-arm, with a summary
  build           the library and all programs, g++, optimised
  test-host       build and test with g++, optimised
  test-hardened   build and test with clang++, optimised, the hardened build
  test-clang      build and test with clang++, optimised, the default build
  test-sanitize   build and test with address, leak and undefined behaviour checks
  test-arm        build for 32-bit soft-float ARM, as the package does, and test under QEMU
  test-small      the size build, for this machine and for ARM
  test-armv7a     integers, hashes and points for ARMv7-A under QEMU
  one NAME [PRESET]  the tests whose name has NAME in it, of the preset release unless told otherwise
  cross           build for ARMv5TE, ARMv6 and ARMv7-A, for size and for speed, and run the examples
  musl            the same for ARMv5TE with musl as the C library, which is fetched into build/
  builds [NAME]   the library as users and packagers build it: plainly, in a folder, for a board
  abi [--update]  the binary interface against the recorded one, on amd64 and armel
  packages        the Debian packages for this machine and for armel, and a program built from each
  soak [ROUNDS SESSIONS]  a million signatures and 100,000 sessions in both builds: memory that is never freed
  scan-secrets [PATTERN]  secrets that calls leave in memory, in every variant of the build
  test-secrets-time [PATTERN | trace [SECRETS]]  no jump or address of the hardened build depends on a secret
  test-threads    calls that may run in parallel, on eight threads, under ThreadSanitizer
  fuzz [SECONDS]  every fuzz target for that long, 60 unless told otherwise; fails on a finding
  bench [FILTER | --update | --leak [RUNS]]  times beside OpenSSL's; --leak: whether they tell a private key
  bench-arm [FILTER | --update]  instructions on ARMv5TE and ARMv7-A, likewise; --update writes into docs/
  bench-check     every benchmark, briefly, to see that it works
  footprint [--check | --update | --chains]  code, data, stack and heap on ARM; --check holds the limits
  variants [--update]   size and speed of the builds that a device can choose from, on ARM
  coverage        lines and branches that the tests execute, per folder; fails below the floor
  mutants [--sample N | --all | --help]  small changes to the sources, and those that no test notices
  sbom            the bill of materials, SPDX, in build/zokecc.spdx.json
  exports         write cmake/exports.map from the public headers
  format          bring the C and C++ sources into the project's format
  format-check    name the sources that are not in it
  lint            format-check, clang-tidy, cppcheck and g++'s analyzer
  manual          pages in build/manual and man pages in build/manual/man, from the public headers
  clean           remove build/
  help            this list
END
}

. cmake/require.sh

# ---- Building and testing ---------------------------------------------------------------------

# build_folder FOLDER: creates it. One that was configured elsewhere, before the sources moved, is removed.
build_folder() {
    if ! mkdir -p "$1" 2>/dev/null || ! [ -w "$1" ] || ! [ -w build ]; then
        echo "build.sh: cannot write in $(pwd)/$1, which may belong to another user: $(stat -c %U build)" >&2
        return 1
    fi
    cache=$1/CMakeCache.txt
    if [ -e "$cache" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$(pwd)" "$cache"; then
        echo "==> $1 was configured elsewhere; starting over"
        rm -rf "$1"
        mkdir "$1"
    fi
}

# build_preset PRESET [TARGET...]: configures and builds; quiet unless something fails.
build_preset() {
    built=$1
    shift
    echo "==> building: $built"
    build_folder "build/$built" || return 1
    if ! { cmake --preset "$built" && cmake --build --preset "$built" ${1:+--target "$@"}; } \
        > "build/$built/build.log" 2>&1; then
        tail -n 100 "build/$built/build.log"
        return 1
    fi
}

# build_bench_arm PRESET...: headers and libraries of the peers for ARM are unpacked into build/.
build_bench_arm() {
    cmake/fetch_armel.sh libssl3 libssl-dev libgcrypt20 libgcrypt20-dev libgpg-error0 libgpg-error-dev \
        libnettle8 libhogweed6 nettle-dev libgmp10 libgmp-dev build/armel
    for preset in "$@"; do build_preset "$preset"; done
}

# suite PRESET: builds, tests, and writes a line for the summary, with the number of tests.
suite() {
    suite_started=$(date +%s)
    log="build/$1/Testing/Temporary/LastTest.log"
    rm -f "build/$1.closing" "$log"
    status=FAILED
    if build_preset "$1"; then
        echo "==> testing: $1"
        if ctest --preset "$1" --parallel "$(nproc)" --output-log "build/$1/ctest.log"; then status=passed; fi
        grep -E 'tests passed|Total Test time' "build/$1/ctest.log" > "build/$1.closing" || status=FAILED
    fi
    tests=0
    [ ! -f "$log" ] || tests=$(awk '
        / Testing: / { ++programs }
        /^\[==========\] .* ran\./ { --programs; cases += $2 }
        END { print programs + cases }' "$log")
    seconds=$(($(date +%s) - suite_started))
    printf '%-14s %-8s %5d tests %5d s\n' "$1" "$status" "$tests" "$seconds" >> "$summary"
    [ "$status" = passed ]
}

# suites PRESET...: all of them, even if one fails, and the summary.
suites() {
    mkdir -p build
    summary=build/$1.summary failed=0
    : > "$summary"
    for preset in "$@"; do suite "$preset" || failed=1; done
    for preset in "$@"; do
        if [ -f "build/$preset.closing" ]; then
            printf '\n%s:\n' "$preset"
            cat "build/$preset.closing"
        fi
    done
    printf '\n==> summary\n'
    cat "$summary"
    printf 'total %d s\n' "$(($(date +%s) - started))"
    if [ "$failed" -ne 0 ]; then
        echo 'SOME TESTS FAILED'
        return 1
    fi
    echo 'all tests passed'
}

# cross PRESET...: builds the library and its programs for other processors, checks what the library
# imports, and runs the examples under emulation.
cross() {
    for preset in "$@"; do
        build_preset "$preset" zokecc zokecc_static zokecc_selftest zokecc_speed zokecc_cli
        library=build/$preset/libzokecc.so
        python3 -B tests/boundary/imports_check.py arm-linux-gnueabi-nm arm-linux-gnueabi-readelf "$library"
        if ! cmake --build --preset "$preset" --target run_examples > "build/$preset/examples.log" 2>&1; then
            tail -n 100 "build/$preset/examples.log"
            return 1
        fi
        arm-linux-gnueabi-size "$library" |
            awk 'NR == 2 { printf "%d bytes of code, %d of data; the examples run\n", $1, $2 + $3 }'
    done
}

# demo_file [FILE]: sets file; refuses what is not a file before anything is installed or built.
demo_file() {
    case ${1:-} in
    '') file=README.md ;;
    /*) file=$1 ;;
    *) file=$caller_folder/$1 ;;
    esac
    if [ -f "$file" ] && [ -r "$file" ]; then return 0; fi
    if [ -d "$file" ]; then
        reason='is a folder; a file is needed'
    elif [ -e "$file" ]; then
        reason='cannot be read'
    else
        reason='does not exist'
    fi
    echo "build.sh: $file $reason" >&2
    return 1
}

demo() {
    echo '==> building the library and the tool in build/demo: a minute the first time, on one processor'
    build_folder build/demo
    if ! { cmake --preset release -B build/demo -DZOKECC_TESTS=OFF &&
        cmake --build build/demo --target zokecc_cli; } > build/demo/build.log 2>&1; then
        tail -n 100 build/demo/build.log
        return 1
    fi
    tools/demo.sh "$file" "$PWD/build/demo/tools/zokecc"
}

# The public headers are laid out by hand: tables of declarations and their manual.
sources() {
    find base mint hash ecc ct schemes sdf tests fuzz bench examples tools \
        -name '*.cpp' -o -name '*.h' -o -name '*.c' | sort
}

# The public headers as pages; fails on a warning.
manual() {
    python3 -B tests/boundary/manual_check.py
    cmake/manual.sh build/manual
    pages=$(find build/manual/man/man3 -name '*.3' | wc -l)
    echo "==> build/manual/index.html, and $pages man pages: man -M build/manual/man mint_sub"
}

command=${1:-help}
[ $# -eq 0 ] || shift
case $command in
demo)
    demo_file "$@" || exit 2
    require_build
    require openssl openssl
    install_missing
    demo
    ;;
build)
    require_suite
    install_missing
    build_preset release
    ;;
test)
    require_suite
    require_clang_runtime
    require_arm
    install_missing
    suites release clang-hardened sanitize arm
    ;;
test-host)
    require_suite
    install_missing
    suites release
    ;;
soak)
    require_suite
    require valgrind valgrind
    install_missing
    tests/soak/run.sh "$@"
    ;;
test-clang | test-hardened | test-sanitize)
    require_suite
    require_clang_runtime
    install_missing
    case $command in test-hardened) suites clang-hardened ;; *) suites "${command#test-}" ;; esac
    ;;
test-arm | test-small | test-armv7a)
    require_suite
    require_arm
    install_missing
    case $command in
    test-arm) suites arm ;;
    test-small) suites small arm-small ;;
    *) suites armv7a ;;
    esac
    ;;
one)
    [ $# -gt 0 ] || { usage >&2; exit 2; }
    require_suite
    case ${2:-} in arm*) require_arm ;; *clang* | sanitize) require_clang_runtime ;; esac
    install_missing
    tests/one.sh "$1" "${2:-release}"
    ;;
cross | musl)
    require_suite
    require_arm
    install_missing
    if [ "$command" = musl ]; then
        cmake/fetch_armel.sh musl musl-dev build/musl-root
        cross musl
    else
        cross arm-small arm armv6-os armv6-o2 armv7a-os armv7a
    fi
    ;;
builds)
    require_suite
    require_cross
    require dpkg-buildflags dpkg-dev git git gpg gnupg gpg-agent gpg-agent
    install_missing
    tests/builds/run.sh "$@"
    ;;
abi)
    require_build
    require_cross
    require abidiff abigail-tools
    install_missing
    tests/boundary/abi_check.sh "$@"
    ;;
packages)
    require_build
    require_cross
    require pkg-config pkgconf dpkg-buildflags dpkg-dev doxygen doxygen lintian lintian
    install_missing
    packaging/debian/all.sh
    ;;
scan-secrets)
    require_suite
    require_clang
    require_arm
    install_missing
    tests/secrets/variants.sh "$@"
    ;;
test-secrets-time)
    require_suite; require_clang_runtime; require_arm; require valgrind valgrind; install_missing
    tests/secrets/time.sh "$@" ;;
test-threads)
    require_suite
    install_missing
    suites threads
    ;;
fuzz)
    require_suite
    require_clang_runtime
    install_missing
    build_preset fuzz
    fuzz/run.sh "${1:-60}"
    ;;
bench)
    require_bench
    install_missing
    build_preset bench; build_preset bench-hardened
    bench/run.sh host "$@"
    ;;
bench-arm)
    require_build
    require_cross
    require python3 python3
    install_missing
    build_bench_arm bench-arm bench-armv7a bench-arm-hardened bench-armv7a-hardened
    bench/run.sh arm "$@"
    ;;
bench-check)
    require_bench
    require_cross
    install_missing
    build_preset bench; build_preset bench-hardened
    build_bench_arm bench-arm bench-armv7a
    bench/run.sh check
    ;;
footprint)
    require_build
    require_cross
    require python3 python3
    install_missing
    python3 -B bench/footprint/footprint.py "$@"
    ;;
variants)
    require_build
    require_cross
    require python3 python3
    install_missing
    cmake/fetch_armel.sh libssl3 libssl-dev build/armel
    python3 -B bench/footprint/variants.py "$@"
    ;;
coverage)
    require_suite
    require gcovr gcovr
    install_missing
    build_preset coverage
    cmake/coverage.sh
    ;;
mutants)
    require_suite
    install_missing
    python3 -B tests/mutants/mutants.py "$@"
    ;;
sbom)
    require python3 python3
    install_missing
    mkdir -p build
    python3 -B cmake/sbom.py > build/zokecc.spdx.json
    echo '==> build/zokecc.spdx.json'
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
lint)
    require_build; require clang-format clang-format clang-tidy clang-tidy cppcheck cppcheck
    require /usr/include/openssl/evp.h libssl-dev
    install_missing
    # shellcheck disable=SC2046 # names without blanks
    cmake/lint.sh $(sources)
    ;;
manual)
    require python3 python3 doxygen doxygen
    install_missing
    manual
    ;;
clean) rm -rf build ;;
help | -h | --help) usage ;;
*)
    usage >&2
    exit 2
    ;;
esac
