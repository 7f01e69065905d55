#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Every kept result is documented, and every named test exists.

The comments marked KEPT: name the test that holds them, and docs/compatibility*.md does for every
result that differs from the textbook. A test that was renamed or dropped is reported here, and so
is a Kept test that neither a comment nor a page names.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ("base", "mint", "hash", "ecc", "schemes", "sdf")


def named_in_code():
    """Suite.KeptName in comments, where a line may break after the dot."""
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).rglob("*.[ch]*")):
            text = re.sub(r"\n\s*//\s*", " ", path.read_text())
            for name in re.findall(r"\b[A-Z]\w*\.Kept\w+", text):
                yield path.relative_to(ROOT), name


def named_in_documents():
    for path in sorted((ROOT / "docs").glob("compatibility*.md")):
        for name in re.findall(r"`([A-Z]\w*\.[A-Z]\w*)`", path.read_text()):
            yield path.relative_to(ROOT), name


def existing():
    """Suite.Name of every test, with its file."""
    pattern = re.compile(r"\b(?:TYPED_)?TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)")
    return {".".join(found): path.relative_to(ROOT) for path in sorted((ROOT / "tests").rglob("*.cpp"))
            for found in pattern.findall(path.read_text())}


def main():
    tests = existing()
    named = list(named_in_code()) + list(named_in_documents())
    faults = {f"{path}: {name} is no test" for path, name in named if name not in tests}
    kept = {name for name in tests if ".Kept" in name}
    faults |= {f"{tests[name]}: {name} is named neither in a comment nor in docs/compatibility*.md"
               for name in kept - {name for _, name in named}}
    print("\n".join(sorted(faults)) or f"{len(named)} named tests exist, {len(kept)} kept results are named")
    return 1 if faults or not kept else 0


if __name__ == "__main__":
    sys.exit(main())
