#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Compares four lists of what the shared library exports.

    exports_check.py NM LIBRARY

exports.txt next to this script is the contract, written by hand. The public headers, the
linker's version script and the dynamic symbols of the built library must name exactly the
same functions, and only functions.
"""
import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "cmake"))
import exports_map  # noqa: E402

VERSION_NODE = "ZOKECC_1"


def differences(what, names, contract):
    found = [f"{what}: {name} is missing" for name in sorted(set(contract) - set(names))]
    found += [f"{what}: {name} is not in exports.txt" for name in sorted(set(names) - set(contract))]
    if len(names) != len(set(names)):
        found.append(f"{what}: a name occurs twice")
    return found


def built_symbols(nm, library):
    """(name, type letter) of every defined dynamic symbol, without the version node itself."""
    output = subprocess.run([nm, "-D", "--defined-only", library], check=True, capture_output=True, text=True)
    fields = [line.split() for line in output.stdout.splitlines()]
    symbols = [(name.split("@")[0], letter) for _, letter, name in fields]
    return [symbol for symbol in symbols if symbol != (VERSION_NODE, "A")]


def main(nm, library):
    contract = (HERE / "exports.txt").read_text(encoding="ascii").splitlines()
    faults = [] if contract == sorted(set(contract)) else ["exports.txt: not sorted, or a name occurs twice"]

    declared = exports_map.all_declared_names()
    faults += differences("public headers", declared, contract)

    script = (ROOT / "cmake" / "exports.map").read_text(encoding="ascii")
    if script != exports_map.version_script(declared):
        faults.append("cmake/exports.map: not what the headers give; run ./build.sh exports")

    built = built_symbols(nm, library)
    faults += differences(library, [name for name, _ in built], contract)
    faults += [f"{library}: {name} is not a function but {letter}" for name, letter in built if letter != "T"]

    print("\n".join(faults) if faults else f"{len(contract)} functions, everywhere the same")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
