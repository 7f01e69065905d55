# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Stack bounds from the compiler's data: the frame of each function, and its calls.

A bound is the greatest sum of frames along a chain of calls. It assumes that every call in the code
can happen, and leaves out the frames of the C library and the compiler's helpers.
"""
import re

import build

NODE = re.compile(r'^node: \{ title: "([^"]+)" label: "([^"]+)"', re.M)
EDGE = re.compile(r'^edge: \{ sourcename: "([^"]+)" targetname: "([^"]+)"', re.M)
FRAME = re.compile(r"\\n(\d+) bytes \(([^)]*)\)")
INDIRECT = "__indirect_call"
OUTSIDE = re.compile(r"__aeabi_\w+|__c[lt]zsi2|mem(cpy|move|set|cmp)|malloc|calloc|free|printf|s?rand|time|"
                     r"raise|abort")


def plain(title):
    """Without the file of a local function, and with one name where a compiler may have two."""
    name = title.rsplit(":", 1)[-1].replace(".localalias", "")
    return name.replace("C1E", "C2E").replace("D1Ev", "D2Ev")


def shown(label):
    """zokecc::comb_multiple<ReferenceField>, from a label with return type, arguments and more."""
    field = re.search(r"Field = (?:zokecc::)?(\w+)", label)
    name = re.sub(r"\(.*", "", label.split("\\n")[0].replace("{anonymous}::", ""))
    while re.search(r"<[^<>]*>", name):
        name = re.sub(r"<[^<>]*>", "", name)
    name = name.split(" ")[-1].lstrip("*&")
    return f"{name}<{field[1]}>" if field else name


class CallGraph:
    def __init__(self, name):
        self.frames, self.names, self.calls, self.faults = {}, {}, {}, []
        edges = []
        for path in build.objects(name):
            text = path.with_suffix(".ci").read_text(encoding="utf-8")
            for title, label in NODE.findall(text):
                self._add(title, label)
            edges += EDGE.findall(text)
        self._connect(edges)
        self._deepest = {}

    def _add(self, title, label):
        frame = FRAME.search(label)
        if not frame:
            return
        if frame[2] != "static":
            self.faults.append(f"{shown(label)}: a frame of unknown size")
        self.frames[title] = max(int(frame[1]), self.frames.get(title, 0))
        self.names[title] = shown(label)

    def _connect(self, edges):
        """Resolves a call of a function in another file."""
        known = {}
        for title in self.frames:
            known.setdefault(plain(title), []).append(title)
        for caller, callee in edges:
            if callee == INDIRECT:
                self.faults.append(f"{self.names[caller]}: a call through a pointer")
            found = [callee] if callee in self.frames else known.get(plain(callee), [])
            if not found and callee != INDIRECT and not OUTSIDE.fullmatch(callee):
                self.faults.append(f"{self.names[caller]}: calls {callee}, whose frame is unknown")
            here = [title for title in found if title.rpartition(":")[0] == callee.rpartition(":")[0]]
            self.calls.setdefault(caller, set()).update(here or found)

    def deepest(self, title, above=()):
        """(bytes, [title, ...]) of the deepest chain of calls from a function."""
        if title in above:
            self.faults.append(f"{self.names[title]}: recursion")
            return 0, []
        if title not in self._deepest:
            ways = [self.deepest(callee, (*above, title)) for callee in sorted(self.calls.get(title, ()))]
            size, way = max(ways, key=lambda found: found[0], default=(0, []))
            self._deepest[title] = (self.frames[title] + size, [title, *way])
        return self._deepest[title]

    def bound(self, call):
        return self.deepest(call)[0]

    def chain(self, call):
        """The deepest chain as text: name and frame of each function."""
        return " > ".join(f"{self.names[title]} {self.frames[title]}" for title in self.deepest(call)[1])

    def large_frames(self, least):
        """{name: bytes}; the larger one of functions with the same name."""
        frames = {}
        for title, size in self.frames.items():
            if size > least:
                frames[self.names[title]] = max(size, frames.get(self.names[title], 0))
        return frames
