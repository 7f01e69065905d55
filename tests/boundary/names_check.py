#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Every constant, function, file and folder named in a page exists.

A name in backquotes in a page is a word of the code or of the build, or begins like those of another
project; a path is a file or folder of this repository, or of its installation.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
SKIPPED = {".git", ".cache", "build", "__pycache__", "Testing"}
DATA = (".md", ".rsp", ".svg", ".json")
# Names of other projects' calls and settings.
SYSTEM_HEADERS = {"time.h"}
FOREIGN = re.compile(
    r"(mbedtls|MBEDTLS|wc|EVP|EC|ECC|ECDSA|PEM|RAND|OPENSSL|BN|CKA|CKM|CMAKE|BUILD)_|__|ForceZero$|dlopen$")
INSTALLED = re.compile(r"(lib|share|include|zokecc|bin|build|etc|usr|package|files)/")
PLACEHOLDER = re.compile(r"[A-Z]{4,}")
NAME = re.compile(r"[A-Za-z_]\w*(::\w+)*(\(\))?")
FILE = re.compile(r"[\w.-]*\w\.(cpp|h|c|py|sh|md|cmake|txt)")
PATH = re.compile(r"[\w.-]+(/[\w.-]+)+/?")


def files():
    for path in sorted(ROOT.rglob("*")):
        relative = path.relative_to(ROOT)
        if path.is_file() and not SKIPPED & set(relative.parts):
            yield relative.as_posix()


def words(names):
    found = set()
    for name in names:
        if not name.endswith(DATA) and not name.startswith("fuzz/corpus/"):
            found |= set(re.findall(r"\w+", (ROOT / name).read_text(encoding="ascii")))
    return found


def fault(term, page, known, paths):
    """The fault of a term in a page, or nothing."""
    if NAME.fullmatch(term):
        # zokecc_test_program(NAME) makes NAME_tests.
        if term.endswith("_tests") and term.removesuffix("_tests") in known:
            return None
        missing = [word for word in re.findall(r"\w+", term) if word not in known and not FOREIGN.match(word)]
        return "no such name" if missing else None
    if FILE.fullmatch(term):
        if term in SYSTEM_HEADERS:
            return None
        return None if any(path.endswith("/" + term) or path == term for path in paths) else "no such file"
    if PATH.fullmatch(term) and not INSTALLED.match(term) and not PLACEHOLDER.search(term):
        places = (term.rstrip("/"), (pathlib.PurePosixPath(page).parent / term).as_posix())
        return None if any(place in paths for place in places) else "no such path"
    return None


def main():
    names = list(files())
    paths = set(names)
    for name in names:
        paths |= {parent.as_posix() for parent in pathlib.PurePosixPath(name).parents}
    known = words(names)
    faults, seen = [], 0
    for page in [name for name in names if name.endswith(".md") and not name.startswith("tests/vectors/")]:
        text = (ROOT / page).read_text(encoding="ascii")
        text = re.sub(r"^```.*?^```", "", text, flags=re.MULTILINE | re.DOTALL)
        for term in sorted(set(re.findall(r"`([^`\n]+)`", text))):
            seen += 1
            reason = fault(term, page, known, paths)
            if reason:
                faults.append(f"{page}: `{term}`: {reason}")
    print("\n".join(faults) if faults else f"{seen} terms of the pages exist")
    return 1 if faults or seen == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
