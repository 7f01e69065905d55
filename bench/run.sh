#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Runs the benchmarks that `./build.sh bench` and `./build.sh bench-arm` have built, and reports.
#
#     bench/run.sh host [--update | FILTER]    times, compared with OpenSSL's
#     bench/run.sh host --leak [RUNS]          whether times reveal a private key, in either build
#     bench/run.sh arm  [--update | FILTER]    instructions on ARMv5TE and ARMv7-A, compared with OpenSSL's
#     bench/run.sh check                       both, briefly: shows that they work, measures nothing
#
# FILTER is a regular expression for the names in bench/operations.py. --update writes tables and
# plots to docs/. Calls with secrets are measured in the hardened build, too. The test for leaks makes RUNS
# of each operation, by default a million; a tenth in the default build, which never frees some memory.
set -eu
cd "$(dirname "$0")/.."

# run_host BUILD LAYERS OPTION...: the layers' programs, one file of results each.
run_host() {
    build=build/$1
    layers=$2
    shift 2
    rm -rf "$build/results"
    mkdir -p "$build/results"
    for layer in $layers; do
        echo "==> measuring: $build, $layer" >&2
        results="$build/results/$layer"
        if ! "$build/bench/${layer}_bench" --benchmark_out="$results.json" --benchmark_out_format=json \
            --benchmark_filter="${filter:-.}" "$@" > "$results.log" 2>&1; then
            tail -n 20 "$results.log" >&2
            return 1
        fi
    done
}

# run_builds OPTION...: the default build, and the operations that differ in the hardened one.
run_builds() {
    run_host bench 'mint hash ecc session scheme' "$@"
    run_host bench-hardened 'session scheme' "$@"
}

# count_build BUILD PROCESSOR OPTION...: the instructions of each operation in that build.
count_build() {
    echo "==> counting: $1" >&2
    folder=build/$1
    processor=$2
    shift 2
    python3 -B bench/arm/count.py "$folder/bench" "$processor" "$folder/counts.json" "$filter" "$@"
}

# count_machine TARGET BUILD PROCESSOR: both builds; only the default one for a brief check.
count_machine() {
    count_build "$2" "$3"
    if [ "$command" = check ]; then
        report "$1" "build/$2/counts.json"
        return
    fi
    count_build "$2-hardened" "$3" --hardened
    report "$1" "build/$2/counts.json" "build/$2-hardened/counts.json"
}

# count: the instructions on each of the two machines.
count() {
    count_machine arm bench-arm arm926
    count_machine armv7a bench-armv7a cortex-a8
}

# leaks RUNS RUNS: the table of Welch's t, with these numbers of runs of the default and the hardened build.
leaks() {
    echo '| Operation | Build | Runs | t |'
    echo '|---|---|--:|--:|'
    for operation in sign decrypt agree; do
        build/bench/bench/time_leak "$operation" "$1"
        build/bench-hardened/bench/time_leak "$operation" "$2"
    done
}

# report TARGET RESULT...: the table, and the plot next to the results.
report() {
    target=$1
    shift
    # shellcheck disable=SC2086 # an option or nothing
    python3 -B bench/report.py "$target" "$@" "build/bench-$target.svg" $report_option
}

command=${1:-}
filter=
report_option=
case ${2:-} in
--leak)
    runs=${3:-1000000}
    leaks "$(((runs + 9) / 10))" "$runs"
    exit 0
    ;;
--update) report_option=--update ;;
?*)
    filter=$2
    report_option=--partial
    ;;
esac

case $command in
host)
    # Many short rounds in random order: other load on the machine affects both sides alike.
    run_builds --benchmark_min_time=0.02 --benchmark_repetitions=25 \
        --benchmark_enable_random_interleaving=true
    report host build/bench/results/*.json build/bench-hardened/results/*.json
    ;;
arm)
    count
    ;;
check)
    run_builds --benchmark_min_time=0.0001
    report host build/bench/results/*.json build/bench-hardened/results/*.json > build/bench/check.md
    leaks 1 1
    report_option=--partial
    filter='^(mint_mod_mul|sm3_64|sm2_sign_digest)$'
    count
    echo '==> the benchmarks work'
    ;;
*)
    sed -n '3,13s/^# \{0,1\}//p' "$0" >&2
    exit 2
    ;;
esac

if [ "$command" != check ] && [ "$report_option" != --update ]; then
    echo '==> the plots are build/bench-*.svg; --update writes them and the tables to docs/' >&2
fi
