#!/usr/bin/env python3
"""Every test that the code or the documents name exists.

The comments marked KEPT: say which test holds them, and docs/compatibility*.md does for every
result that differs from the textbook. A test that was renamed or dropped is missed here.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ("base", "mint", "hash", "ecc", "schemes", "sdf")


def named_in_code():
    """Suite.KeptName in comments, which may be broken over lines behind the dot."""
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).glob("*.[ch]*")):
            text = re.sub(r"\n\s*//\s*", " ", path.read_text())
            for name in re.findall(r"\b[A-Z]\w*\.Kept\w+", text):
                yield path.relative_to(ROOT), name


def named_in_documents():
    for path in sorted((ROOT / "docs").glob("compatibility*.md")):
        for name in re.findall(r"`([A-Z]\w*\.[A-Z]\w*)`", path.read_text()):
            yield path.relative_to(ROOT), name


def existing():
    pattern = re.compile(r"\bTEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)")
    paths = (ROOT / "tests").rglob("*.cpp")
    return {".".join(found) for path in paths for found in pattern.findall(path.read_text())}


def main():
    tests = existing()
    named = list(named_in_code()) + list(named_in_documents())
    missing = sorted({f"{path}: {name} is no test" for path, name in named if name not in tests})
    print("\n".join(missing) or f"{len(named)} named tests exist")
    return 1 if missing or not named else 0


if __name__ == "__main__":
    sys.exit(main())
