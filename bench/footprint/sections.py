# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Sizes of the linked library's parts, from the linker map: {part: {kind: bytes}}.

A part is a folder of the sources, or REST: the compiler's helpers, start-up code and gaps.
"""
import re

import build

PARTS = ["base", "mint", "hash", "ecc", "schemes", "sdf"]
REST = "helpers of the compiler, start-up"
KINDS = {".text": "code", ".rodata": "constants", ".data": "data", ".bss": "zeroed"}
# If a name is too long for its column, the line continues on the next one.
PLACED = re.compile(r"^ (\.\w[\w.$]*)\s+0x[0-9a-f]+\s+0x([0-9a-f]+) (\S+)$", re.M)
OUTPUT = re.compile(r"^(\.\w+)\s+0x[0-9a-f]+\s+0x([0-9a-f]+)", re.M)
OBJECT = re.compile(r"CMakeFiles/zokecc_objects\.dir/((\w+)/\S+)\.o$")


def kind_of(section):
    return KINDS.get("." + section.split(".")[1])


def placed(text):
    """(kind, bytes, source) of everything the linker kept from the library's objects."""
    for section, size, path in PLACED.findall(text):
        source = OBJECT.search(path)
        if source and kind_of(section):
            yield kind_of(section), int(size, 16), source[1]


def read(name):
    text = (build.folder(name) / build.MAP).read_text(encoding="utf-8")
    return text.split("Linker script and memory map", 1)[1]


def by_part(name):
    text = read(name)
    sizes = {part: dict.fromkeys(KINDS.values(), 0) for part in [*PARTS, REST]}
    for kind, size, source in placed(text):
        sizes[source.split("/")[0]][kind] += size
    for section, size in OUTPUT.findall(text):
        if section in KINDS:
            kind = KINDS[section]
            sizes[REST][kind] = int(size, 16) - sum(sizes[part][kind] for part in PARTS)
    return sizes


def by_source(name):
    """{source: bytes of code and constants}"""
    sizes = {}
    for kind, size, source in placed(read(name)):
        if kind in ("code", "constants"):
            sizes[source] = sizes.get(source, 0) + size
    return sizes


def code(sizes):
    """Code and constants of each part, and in total."""
    result = {part: kinds["code"] + kinds["constants"] for part, kinds in sizes.items()}
    return {**result, "all": sum(result.values())}


def zeroed_objects(name):
    """[(bytes, name)] of zeroed data above 16 bytes."""
    lines = build.run(f"{build.TOOLS}nm", "-S", "-C", build.folder(name) / "libzokecc.so").split("\n")
    rows = [line.split(None, 3) for line in lines]
    return sorted((int(row[1], 16), row[3]) for row in rows
                  if len(row) == 4 and row[2] in "bB" and int(row[1], 16) > 16)
