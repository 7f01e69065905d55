#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Prints the linker's version script: the functions that the public headers declare.

    cmake/exports_map.py > cmake/exports.map      (or ./build.sh exports)
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
DECLARATION = re.compile(r"^ZOKECC_API\s+\w+\s*\*?\s*(\w+)\s*\(", re.MULTILINE)


def declared_names(header):
    """The functions of one header, in order."""
    return DECLARATION.findall(header.read_text(encoding="ascii"))


def public_headers():
    return sorted((ROOT / "include" / "zokecc").glob("*.h"))


def all_declared_names():
    """Every function of the public headers, sorted by bytes."""
    return sorted(name for header in public_headers() for name in declared_names(header))


def version_script(names):
    lines = ["# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0",
             "ZOKECC_1 {", "    global:"]
    lines += [f"        {name};" for name in names]
    lines += ["    local:", "        *;", "};"]
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    sys.stdout.write(version_script(all_declared_names()))
