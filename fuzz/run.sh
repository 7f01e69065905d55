#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# fuzz/run.sh SECONDS: runs every target of the preset `fuzz` for that long, one per processor, and
# prints statistics. New inputs go to build/fuzz/corpus/TARGET, findings to build/fuzz/findings
# under names that begin with the target's. The exit status is nonzero if there are any.
set -eu
cd "$(dirname "$0")/.."
work=build/fuzz

# fuzz_one SECONDS TARGET
fuzz_one() {
    mkdir -p "$work/corpus/$2" "$work/findings" "$work/logs"
    # alloc_ledger.h checks for leaks, input by input.
    status=0
    timeout -k 10 "$(($1 + 300))" "$work/fuzz/$2_fuzz" -max_total_time="$1" -max_len=1024 \
        -timeout=25 -report_slow_units=25 -rss_limit_mb=3000 -detect_leaks=0 -print_final_stats=1 \
        -artifact_prefix="$work/findings/$2-" "$work/corpus/$2" "fuzz/corpus/$2" \
        > "$work/logs/$2.log" 2>&1 || status=$?
    echo "$status" > "$work/logs/$2.status"
}

# table TARGET...
table() {
    printf '%-10s %12s %8s %11s %9s\n' target executions per_s new_inputs findings
    all=0
    for target in "$@"; do
        log=$work/logs/$target.log
        value() { awk -v key="stat::$1:" '$1 == key { number = $2 } END { print number + 0 }' "$log"; }
        findings=$(find "$work/findings" -name "$target-*" | wc -l)
        # A target that could not start, or was stopped, has left no input.
        if [ "$findings" -eq 0 ] && [ "$(cat "$work/logs/$target.status")" -ne 0 ]; then findings=1; fi
        all=$((all + findings))
        printf '%-10s %12d %8d %11d %9d\n' "$target" "$(value number_of_executed_units)" \
            "$(value average_exec_per_sec)" "$(value new_units_added)" "$findings"
        if [ "$findings" -ne 0 ]; then
            grep -E '^line [0-9]+:|ERROR:|SUMMARY:' "$log" || tail -n 5 "$log"
        fi
    done
    [ "$all" -eq 0 ] && echo 'no findings'
}

if [ "$1" = one ]; then
    fuzz_one "$2" "$3"
    exit 0
fi
case $1 in
'' | *[!0-9]*)
    echo 'usage: fuzz/run.sh SECONDS' >&2
    exit 2
    ;;
esac
targets=$(cd fuzz && for source in *_fuzz.cpp; do echo "${source%_fuzz.cpp}"; done)
rm -rf "$work/findings" "$work/logs"
echo "$targets" | xargs -P "$(nproc)" -n 1 fuzz/run.sh one "$1"
# shellcheck disable=SC2086 # a list of words
table $targets
