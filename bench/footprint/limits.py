# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Limits of the footprint: fixed goals, and the values recorded in docs/footprint.json."""
import sections

GROWTH = 1.05
CODE_GOAL = {"os": 42 * 1024, "o2": 70 * 1024, "v7": 64 * 1024}  # code and constants of the whole library
STACK_GOAL = 4 * 1024  # of any call
# Computed by the reference in all builds; the tables list the others separately, too.
UNUSUAL = {"secp128r1", "even p"}
# The process-wide curve, and the exponents of the square root: 200 records.
ZEROED = {"global_curve": 88644, "(anonymous namespace)::exponents": 200 * 80}


def goal_faults(name, measured):
    total = measured["code"]["all"]
    if total > CODE_GOAL[name]:
        yield f"{total} bytes of code and constants, the goal is {CODE_GOAL[name]}"
    for family, sizes in measured["stack"].items():
        if sizes["measured"] > STACK_GOAL:
            yield f"{family}: {sizes['measured']} bytes of stack, the goal is {STACK_GOAL}"
    for size, symbol in sections.zeroed_objects(name):
        if ZEROED.get(symbol) != size:
            yield f"{symbol}: {size} bytes of zeroed data"


def growth_faults(measured, recorded):
    for part, size in measured["code"].items():
        before = recorded["code"].get(part, 0)
        if size > GROWTH * before:
            yield f"{part}: {size} bytes of code and constants, recorded: {before}"
    for what, (size, _) in measured["stored"].items():
        before = recorded["stored"].get(what, 0)
        if size > GROWTH * before:
            yield f"{what}: {size} bytes of heap, recorded: {before}"
    for family, sizes in measured["stack"].items():
        for what in ("usual", "measured", "bound"):
            before = recorded["stack"].get(family, {}).get(what, 0)
            if sizes[what] > GROWTH * before:
                yield f"{family}: {sizes[what]} bytes of stack ({what}), recorded: {before}"


def faults(name, measured, recorded):
    yield from goal_faults(name, measured)
    if recorded is None:
        yield "nothing is recorded yet; use --update"
    else:
        yield from growth_faults(measured, recorded)
