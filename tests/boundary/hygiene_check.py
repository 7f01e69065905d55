#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Checks for what no file of the repository may contain: unfinished work, tests that are disabled or
cannot fail, paths of one machine, odd characters, and too many lines. Every file must contain the line with
its licence, or have an entry in REUSE.toml."""
import os
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
SKIPPED_FOLDERS = {".git", ".cache", "build", "__pycache__", "Testing"}
DATA = ("tests/vectors/", "tests/boundary/abi/", "LICENSE", "docs/footprint.json")
BINARY = ("fuzz/corpus/",)
UNLICENSED = ("CMakePresets.json", "docs/", "packaging/debian/", "tests/")  # REUSE.toml covers these
LICENSED_SUFFIXES = {".cpp", ".h", ".c", ".py", ".sh", ".md", ".cmake", ".1", ".in"}
LICENCE = "Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0"
MAX_LINES = 400  # and those with the licence
MAX_HEADER_LINES = 1000  # a public header is the manual of its family
MAX_COLUMNS = 110
MAX_TABLE_COLUMNS = 160  # a row of a table in a page cannot be wrapped

# Each written so that it does not match itself.
FORBIDDEN = [
    (re.compile(r"\b(TO[D]O|FIX[M]E|X[X]X|HAC[K])\b"), "unfinished work"),
    (re.compile(r"GTEST_SKI[P]|\bDISABLE[D]_|\bif [(]?0[)]?$"), "something switched off"),
    (re.compile(r"(EXPECT|ASSERT)_(TRUE\(tru[e]\)|FALSE\(fals[e]\))|\bSUCCEE[D]\(\)"), "no check"),
    (re.compile(r"/(home|root|work|Users)/[\w.]"), "a path of one machine"),
    (re.compile(r"\b(usleep|sleep_for|nanosleep)\b *[(]"), "waiting"),
]


def files():
    for folder, folders, names in os.walk(ROOT):
        folders[:] = sorted(name for name in folders if name not in SKIPPED_FOLDERS)
        for name in sorted(names):
            if name != ".git":
                yield pathlib.Path(folder, name)


def text_faults(name, lines):
    limit = MAX_HEADER_LINES if name.startswith("include/") else MAX_LINES
    if len(lines) > limit + 2:
        yield f"{len(lines)} lines, more than {limit}"
    exempt = name.startswith(UNLICENSED) and pathlib.Path(name).suffix not in LICENSED_SUFFIXES
    if not exempt and not any(LICENCE in line for line in lines[:2] + lines[-1:]):
        yield "neither the first two lines nor the last names the licence"
    for number, line in enumerate(lines, 1):
        columns = MAX_TABLE_COLUMNS if name.endswith(".md") and line.startswith("|") else MAX_COLUMNS
        if len(line) > columns:
            yield f"line {number}: {len(line)} columns, more than {columns}"
        if line != line.rstrip() or "\t" in line:
            yield f"line {number}: a tab, or white space at its end"
        for pattern, what in FORBIDDEN:
            if pattern.search(line):
                yield f"line {number}: {what}: {line.strip()}"


def file_faults(name, raw):
    try:
        text = raw.decode("ascii")
    except UnicodeDecodeError as error:
        return [f"byte {error.start} is not ASCII"]
    if name.startswith(DATA):
        return []
    if not text.endswith("\n") or "\r" in text:
        return ["does not end with a line feed, or holds a carriage return"]
    return list(text_faults(name, text[:-1].split("\n")))


def main():
    faults, seen = [], 0
    for path in files():
        name = path.relative_to(ROOT).as_posix()
        if name.startswith(BINARY):
            continue
        faults += [f"{name}: {fault}" for fault in file_faults(name, path.read_bytes())]
        seen += 1
    print("\n".join(faults) if faults else f"{seen} files are clean")
    return 1 if faults or seen == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
