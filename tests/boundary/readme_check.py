#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""The C code in README.md and the pages for integrators is a part of an example that the tests build
and run, and the tables of results in docs/integrating.md list every function with its own result codes."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
GUIDE = "docs/integrating.md"
LONGEST = {"README.md": 20, GUIDE: 20, "docs/interoperability.md": 10, "docs/coming-from.md": 10}
SESSION_CALL = re.compile(r"(SDF|ZOK)_")  # these have one table of status codes


def examples():
    """Name and text of each."""
    return {path.name: path.read_text(encoding="ascii") for path in sorted((ROOT / "examples").glob("*.c"))}


def excerpt_faults(page, text, programs):
    excerpts = re.findall(r"^```c\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    if not excerpts:
        yield f"{page} shows no C"
    for excerpt in excerpts:
        first = excerpt.splitlines()[0].strip()
        if len(excerpt.splitlines()) > LONGEST[page]:
            yield f"{page}: the excerpt from '{first}' on has more than {LONGEST[page]} lines"
        if not any(excerpt in program for program in programs.values()):
            yield f"{page}: the excerpt from '{first}' on is in no example"


def result_faults(text):
    names = (ROOT / "tests" / "boundary" / "exports.txt").read_text(encoding="ascii").split()
    told = text.partition("\n## What the calls answer\n")[2].partition("\n## ")[0]
    for name in names:
        if not SESSION_CALL.match(name) and f"`{name}`" not in told:
            yield f"{GUIDE}: the results of {name} are missing"
    header = (ROOT / "include" / "zokecc" / "conventions.h").read_text(encoding="ascii")
    for name, value in re.findall(r"#define (ZOK_\w+)\s+0x(\w{8})u", header):
        if f"| {value} | `{name}` |" not in told:
            yield f"{GUIDE}: the code {value}, {name}, is missing"


def main():
    programs, faults = examples(), []
    for page in LONGEST:
        faults += excerpt_faults(page, (ROOT / page).read_text(encoding="ascii"), programs)
    faults += result_faults((ROOT / GUIDE).read_text(encoding="ascii"))
    print("\n".join(faults) if faults else f"{', '.join(LONGEST)}: as in examples/ and in the headers")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
