#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""The library's object files run nothing at load time and contain no exception tables.

    sections_check.py READELF OBJECT...

This cannot be checked in the linked library: the C start-up files add an .init_array to every one.
"""
import re
import subprocess
import sys

FORBIDDEN = re.compile(
    r"\.(init|fini|preinit)_array.*|\.[cd]tors.*|\.init|\.fini"  # code before or after main
    r"|\.gcc_except_table.*|\.eh_frame.*|\.ARM\.ex(idx|tab).*"   # exceptions and unwinding
    r"|\.t(data|bss).*"                                          # storage per thread
)
SECTION = re.compile(r"^\s*\[\s*\d+\]\s+(\.\S+)", re.MULTILINE)


def sections(readelf, path):
    command = [readelf, "--wide", "--sections", path]
    return SECTION.findall(subprocess.run(command, check=True, capture_output=True, text=True).stdout)


def main(readelf, *objects):
    faults = []
    for path in objects:
        names = sections(readelf, path)
        if not any(name.startswith(".text") for name in names):
            faults.append(f"{path}: no code found in it")
        faults += [f"{path}: has {name}" for name in names if FORBIDDEN.fullmatch(name)]
    if not objects:
        faults.append("no object files given")
    print("\n".join(faults) if faults else f"{len(objects)} object files, none with a forbidden section")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
