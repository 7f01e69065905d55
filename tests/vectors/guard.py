#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Checks that check.py would detect a wrong value.

Of every vector file the first case of each kind is taken, a kind being a set of keys, a Result
and a Reason. Each value that the public standard determines from the others is changed in one digit, and
check.py must refuse the case; it must also refuse a case with the opposite Result, and a
file with one case more or less.
"""
import sys

sys.dont_write_bytecode = True
import blocks
import check

OPPOSITE = {"valid": "invalid", "invalid": "valid"}
# Changing one of these in an invalid signature or secret leaves a case as invalid as before.
FREE_IF_INVALID = {
    "ecdsa.rsp": {"Qx", "Qy", "r", "s"},
    "sm2_sign.rsp": {"r", "s"},
    "wycheproof_ecdsa": {"Qx", "Qy", "Msg", "Sig"},
    "wycheproof_ecdh": {"Public", "d"},
}


def kinds(cases):
    first = {}
    for block in cases:
        kind = tuple(block.values), block.values.get("Result"), block.values.get("Reason")
        first.setdefault(kind, block)
    return first.values()


def free_keys(name, block):
    if block.values.get("Result") != "invalid":
        return set()
    return next((keys for start, keys in FREE_IF_INVALID.items() if name.startswith(start)), set())


def changes(name, block):
    """The case repeatedly, each time with a different value changed, and that value's key."""
    free = free_keys(name, block)
    for key, value in block.values.items():
        if key == "Result":
            changed = OPPOSITE[value]
        elif key in blocks.TEXT_KEYS or value == "" or key in free:
            continue
        elif key in blocks.DECIMAL_KEYS:
            changed = str(int(value) + 1)
        else:
            changed = value[:-1] + format(int(value[-1], 16) ^ 1, "x")
        copy = blocks.Block(block.line)
        copy.values = dict(block.values, **{key: changed})
        yield key, copy


def main():
    missed, tried = [], 0
    for name, count, one in check.FILES:
        cases = blocks.read_blocks(blocks.HERE / name)
        for block in kinds(cases):
            for key, changed in changes(name, block):
                tried += 1
                if check.fault_of(one, changed) is None:
                    missed.append("%s: line %d: a wrong %s passes" % (name, block.line, key))
        for other in (count - 1, count + 1):
            tried += 1
            if not any(check.faults_of(name, other, lambda block: None)):
                missed.append("%s: %d cases pass" % (name, other))
    print("\n".join(missed) if missed else "%d changes were noticed" % tried)
    return 1 if missed or tried == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
