# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""What the footprint must not exceed: fixed goals, and what docs/footprint.json has recorded."""
import sections

GROWTH = 1.05
CODE_GOAL = {"os": 42 * 1024, "o2": 70 * 1024, "v7": 64 * 1024}  # code and constants of the whole library
STACK_GOAL = 4 * 1024  # of any call
# Computed by definition in all builds; the tables have the others by themselves as well.
UNUSUAL = {"secp128r1", "even p"}
# The curve of the process, and the exponents of the square root: 200 records.
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
            yield f"{part}: {size} bytes of code and constants, recorded are {before}"
    for what, (size, _) in measured["stored"].items():
        before = recorded["stored"].get(what, 0)
        if size > GROWTH * before:
            yield f"{what}: {size} bytes of heap, recorded are {before}"
    for family, sizes in measured["stack"].items():
        for what in ("usual", "measured", "bound"):
            before = recorded["stack"].get(family, {}).get(what, 0)
            if sizes[what] > GROWTH * before:
                yield f"{family}: {sizes[what]} bytes of stack ({what}), recorded are {before}"


def faults(name, measured, recorded):
    yield from goal_faults(name, measured)
    if recorded is None:
        yield "nothing is recorded; --update does it"
    else:
        yield from growth_faults(measured, recorded)
