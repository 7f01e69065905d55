#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Calls go strictly downward: base < mint < hash < ecc < ct < schemes and sdf, which do not know each other.

    layers_check.py NM OBJECT...

Checked twice: by the includes of the sources and by the calls in the object files. Two edges go upward, and
are listed here: the modular square root asks the hash layer for a random number, and in the hardened build
the installation of a curve asks for the exact table. No headers of a folder include each other, directly or
indirectly; there are few preprocessor conditionals, because build choices are in base/config.h; and no header
is too small. The picture in docs/architecture.md shows these layers in this order.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
RANK = {"base": 0, "mint": 1, "hash": 2, "ecc": 3, "ct": 4, "schemes": 5, "sdf": 5}

GENERATED = "base/config.h"

UPWARD_INCLUDE = ("mint/sqrt.cpp", "zokecc/hash.h")
UPWARD_CALLS = {("mint/sqrt.cpp", "gen_random_number"), ("ecc/session_curve.cpp", "fill_exact_table"),
                ("ecc/global_curve.cpp", "fill_exact_table")}

# The small part of the C++ library that is allowed everywhere, and what only one file may use.
ANYWHERE = {"array", "bit", "cstddef", "cstdint", "cstdlib", "cstring", "limits", "span", "type_traits"}
ONE_FILE_HEADERS = {
    "cstdio": "mint/dump.cpp", "ctime": "hash/clock.cpp",
    "cpuid.h": "base/cpu_x86_64.cpp", "valgrind/memcheck.h": "base/declassify.h",
    "sanitizer/msan_interface.h": "base/declassify.h",
    "immintrin.h": "hash/sha256_x86_64.cpp",
    "cerrno": "hash/kernel_random.cpp", "sys/random.h": "hash/kernel_random.cpp",
    "fcntl.h": "hash/kernel_random.cpp", "unistd.h": "hash/kernel_random.cpp",
    "sys/stat.h": "hash/kernel_random.cpp",
}
ONE_FILE_CALLS = {
    "printf": "mint/dump.cpp", "putchar": "mint/dump.cpp",
    "rand": "hash/entropy.cpp", "srand": "hash/entropy.cpp", "time": "hash/clock.cpp",
    "getrandom": "hash/kernel_random.cpp", "open": "hash/kernel_random.cpp",
    "read": "hash/kernel_random.cpp", "close": "hash/kernel_random.cpp",
}
MAX_CONDITIONALS = 8
# Smaller headers must be merged into others, unless they are the interface of one source or listed here.
SHORTEST_HEADER = 25
SHORT_HEADERS = {"hash/digest.h",  # used by both hashes
                 "mint/by_definition.h",  # bodies in two sources
                 "mint/limbs/trace.h"}  # replaced by tests
CONDITIONAL = re.compile(r"^ *# *(?:if|ifdef|ifndef|elif) .*", re.MULTILINE)
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def includes(path):
    return INCLUDE.findall(path.read_text(encoding="ascii"))


def may_use(user, used):
    return user == used or RANK[used] < RANK[user]


def public_header_faults():
    headers = {f"zokecc/{path.name}": path for path in (ROOT / "include" / "zokecc").glob("*.h")}
    faults = [] if headers else ["include/zokecc: no headers found"]
    for name, path in sorted(headers.items()):
        for bracket, target in includes(path):
            known = target in headers or target in ("stddef.h", "stdint.h")
            if bracket != "<" or not known:
                faults.append(f"include/{name}: includes {target}")
            family, used = pathlib.PurePath(name).stem, pathlib.PurePath(target).stem
            if family in RANK and used in RANK and not may_use(family, used):
                faults.append(f"include/{name}: includes {target}, which is not below it")
    every = {target for _, target in includes(headers["zokecc/zokecc.h"])}
    parts = {name for name in headers if name not in ("zokecc/zokecc.h", "zokecc/conventions.h")}
    return faults + [f"include/zokecc/zokecc.h: lacks {name}" for name in sorted(parts - every)]


def include_fault(source, folder, bracket, target):
    """Why a source of a folder may not include a target, or None."""
    if bracket == '"':
        layer = target.split("/")[0]
        if target == GENERATED:
            return None
        if layer not in RANK or not (ROOT / target).is_file():
            return "which is no header of a layer, named from the root"
        return None if may_use(folder, layer) else f"which lies in {layer}, not below {folder}"
    if target.startswith("zokecc/"):
        layer = pathlib.PurePosixPath(target).stem
        if layer == "conventions" or (source, target) == UPWARD_INCLUDE:
            return None
        return None if layer in RANK and may_use(folder, layer) else f"which is not below {folder}"
    if target in ANYWHERE or ONE_FILE_HEADERS.get(target) == source:
        return None
    return "a standard header that is not used there"


def source_faults():
    faults, seen = [], 0
    for folder in RANK:
        for path in sorted((ROOT / folder).glob("**/*")):
            if path.suffix not in (".cpp", ".h"):
                continue
            seen += 1
            source = path.relative_to(ROOT).as_posix()
            for bracket, target in includes(path):
                reason = include_fault(source, folder, bracket, target)
                if reason:
                    faults.append(f"{source}: includes {target}, {reason}")
    return faults if seen else ["no sources found"]


def circles():
    """A fault for each cycle of #includes."""
    below = {}
    for folder in RANK:
        for path in sorted((ROOT / folder).glob("**/*.h")):
            name = path.relative_to(ROOT).as_posix()
            below[name] = [target for bracket, target in includes(path) if bracket == '"']
    done, faults = set(), []

    def visit(name, way):
        if name in way:
            faults.append("a circle: " + " > ".join(way[way.index(name):] + [name]))
        elif name not in done:
            for target in below.get(name, []):
                visit(target, way + [name])
            done.add(name)

    for name in below:
        visit(name, [])
    return faults


def conditional_faults():
    """Too many preprocessor conditionals outside base/, not counting include guards."""
    found = []
    for folder in RANK:
        for path in sorted((ROOT / folder).glob("**/*")):
            if folder != "base" and path.suffix in (".cpp", ".h"):
                lines = CONDITIONAL.findall(path.read_text(encoding="ascii"))
                found += [path.relative_to(ROOT).as_posix()] * sum("_H" != line[-2:] for line in lines)
    if len(found) <= MAX_CONDITIONALS:
        return []
    return [f"{len(found)} preprocessor conditionals, more than {MAX_CONDITIONALS}: {' '.join(found)}"]


def short_headers():
    faults = []
    for folder in RANK:
        for path in sorted((ROOT / folder).glob("**/*.h")):
            name = path.relative_to(ROOT).as_posix()
            lines = len(path.read_text(encoding="ascii").splitlines())
            has_reason = name in SHORT_HEADERS or path.with_suffix(".cpp").exists()
            if lines < SHORTEST_HEADER and not has_reason:
                faults.append(f"{name}: {lines} lines are few for a header")
    return faults


def picture_faults():
    """Layers missing from the picture of the architecture, or in a different order."""
    page = (ROOT / "docs" / "architecture.md").read_text(encoding="ascii")
    picture = page.partition("\n```\n")[2].partition("\n```\n")[0]
    last, faults = -1, [] if picture else ["docs/architecture.md: no picture"]
    for folder in sorted(RANK, key=RANK.get, reverse=True):
        at = picture.find(f" {folder}/ ")
        if at < 0:
            faults.append(f"docs/architecture.md: the picture lacks {folder}/")
        elif at < last and folder not in ("schemes", "sdf"):
            faults.append(f"docs/architecture.md: the picture shows {folder}/ above what calls it")
        last = max(last, at)
    return faults


def symbols(nm, path):
    """The names that an object file defines, and those that it imports."""
    output = subprocess.run([nm, path], check=True, capture_output=True, text=True)
    letters = [line.split()[-2:] for line in output.stdout.splitlines()]
    needed = [name for letter, name in letters if letter in "Uwv"]
    return [name for letter, name in letters if letter not in "Uwv"], needed


def source_of(path):
    """mint/sqrt.cpp for .../zokecc_objects.dir/mint/sqrt.cpp.o"""
    parts = pathlib.PurePosixPath(path).with_suffix("").parts
    return "/".join(parts[parts.index("zokecc_objects.dir") + 1:])


def call_faults(nm, objects):
    table = {path: symbols(nm, path) for path in objects}
    home = {name: source_of(path) for path, (defined, _) in table.items() for name in defined}
    faults = [] if home else ["no symbols found"]
    for path, (_, needed) in table.items():
        source = source_of(path)
        folder = source.split("/")[0]
        for name in needed:
            if ONE_FILE_CALLS.get(name, source) != source:
                faults.append(f"{source}: calls {name}, which only {ONE_FILE_CALLS[name]} does")
            if name not in home or (source, name) in UPWARD_CALLS:
                continue
            if not may_use(folder, home[name].split("/")[0]):
                faults.append(f"{source}: uses {name} of {home[name]}, which is not below {folder}")
    return faults


def main(nm, *objects):
    faults = public_header_faults() + source_faults() + call_faults(nm, objects)
    faults += circles() + conditional_faults() + short_headers() + picture_faults()
    print("\n".join(faults) if faults else f"{len(objects)} object files and their sources look downward")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
