#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Runs the benchmarks that `./build.sh bench` and `./build.sh bench-arm` have built, and reports.
#
#     bench/run.sh host [--update | FILTER]    times, beside OpenSSL's
#     bench/run.sh arm  [--update | FILTER]    executed instructions on ARMv5TE and ARMv7-A, beside OpenSSL's
#     bench/run.sh check                       both for a moment: proves that they work, measures nothing
#
# FILTER is a regular expression for names, which bench/operations.py lists. --update puts tables and
# plots into docs/.
set -eu
cd "$(dirname "$0")/.."

host=build/bench

# run_host OPTION...: all programs, one file of results each.
run_host() {
    rm -rf "$host/results"
    mkdir -p "$host/results"
    for layer in mint hash ecc session scheme; do
        echo "==> measuring: $layer" >&2
        results="$host/results/$layer"
        if ! "$host/bench/${layer}_bench" --benchmark_out="$results.json" --benchmark_out_format=json \
            --benchmark_filter="${filter:-.}" "$@" > "$results.log" 2>&1; then
            tail -n 20 "$results.log" >&2
            return 1
        fi
    done
}

# count FILTER: the instructions on each of the two machines.
count() {
    for machine in 'arm bench-arm arm926' 'armv7a bench-armv7a cortex-a8'; do
        # shellcheck disable=SC2086 # three words: the report's name, the build's and the processor
        set -- "$1" $machine
        echo "==> counting: $4" >&2
        python3 -B bench/arm/count.py "build/$3/bench" "$4" "build/$3/counts.json" "$1"
        report "$2" "build/$3/counts.json"
    done
}

# report TARGET RESULT...: the table, and the plot beside the results.
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
--update) report_option=--update ;;
?*)
    filter=$2
    report_option=--partial
    ;;
esac

case $command in
host)
    # Many short rounds in a random order: whatever else the machine does meets both sides alike.
    run_host --benchmark_min_time=0.02 --benchmark_repetitions=25 \
        --benchmark_enable_random_interleaving=true
    report host "$host"/results/*.json
    ;;
arm)
    count "$filter"
    ;;
check)
    run_host --benchmark_min_time=0.0001
    report host "$host"/results/*.json > "$host/check.md"
    report_option=--partial
    count '^(mint_mod_mul|sm3_64|sm2_sign_digest)$'
    echo '==> the benchmarks work'
    ;;
*)
    sed -n '3,10s/^# \{0,1\}//p' "$0" >&2
    exit 2
    ;;
esac

if [ "$command" != check ] && [ "$report_option" != --update ]; then
    echo '==> the plots are build/bench-*.svg; --update puts them and the tables into docs/' >&2
fi
