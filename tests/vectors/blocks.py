# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""The format of the vector files, and the curves that their cases name."""
import pathlib
import re

import reference

HERE = pathlib.Path(__file__).resolve().parent

DECIMAL_KEYS = {"Len", "Repeat", "MacLen", "KLen", "L", "PBits", "NBits", "h", "w", "tcId"}
TEXT_KEYS = {"Curve", "Hash", "Result", "Reason", "Source", "Comment", "Flags", "Aliases",
             "Default"}


class Wrong(Exception):
    """A wrong value in a vector file."""


def require(condition, what):
    if not condition:
        raise Wrong(what)


class Block:
    """One case: the values by key, and the line it begins on."""

    def __init__(self, line):
        self.line = line
        self.values = {}

    def __contains__(self, key):
        return key in self.values

    def text(self, key):
        require(key in self.values, "no " + key)
        return self.values[key]

    def octets(self, key):
        return bytes.fromhex(self.text(key))

    def number(self, key):
        require(self.text(key) != "", key + " is empty")
        return int(self.text(key), 16)

    def decimal(self, key):
        return int(self.text(key))

    def point(self, name):
        return self.number(name + "x"), self.number(name + "y")

    def has_width(self, size, *keys):
        for key in keys:
            require(len(self.text(key)) == 2 * size, "%s does not have %d bytes" % (key, size))

    def verdict(self):
        require(self.text("Result") in ("valid", "invalid"), "unknown Result")
        return self.text("Result") == "valid"


def well_formed(key, value):
    if key in TEXT_KEYS:
        return value != "" or key == "Comment"
    pattern = "[0-9]+" if key in DECIMAL_KEYS else "(?:[0-9a-f]{2})*"
    return re.fullmatch(pattern, value) is not None


def read_blocks(path):
    raw = path.read_bytes().decode("ascii")
    require("\r" not in raw and raw.endswith("\n"), "line ends")
    blocks, current = [], None
    for number, line in enumerate(raw[:-1].split("\n"), 1):
        if line == "":
            current = None
        elif not line.startswith("#"):
            key, separator, value = line.partition(" =")
            value = value[1:] if value.startswith(" ") else value
            require(separator and well_formed(key, value), "line %d" % number)
            if current is None:
                current = Block(number)
                blocks.append(current)
            require(key not in current, "line %d: %s again" % (number, key))
            current.values[key] = value
    return blocks


CURVES = {}


def curve_in(block):
    numbers = [block.number(key) for key in ("p", "a", "b")]
    return reference.Curve(*numbers, block.point("G"), block.number("n"), block.decimal("h"))


def curve_of(block):
    if not CURVES:
        for one in read_blocks(HERE / "curves.rsp"):
            CURVES[one.text("Curve")] = curve_in(one)
    require(block.text("Curve") in CURVES, "unknown curve")
    return CURVES[block.text("Curve")]
