# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""The tables of docs/footprint.md, as markdown."""
import build
import limits
import sections

FRAMES_ABOVE = 512


def rows(titles, lines):
    text = [f"| {' | '.join(titles)} |", "|---" + "|--:" * (len(titles) - 1) + "|"]
    return "\n".join(text + [f"| {' | '.join(map(str, line))} |" for line in lines]) + "\n"


def code(all_measured):
    titles = ["Part"]
    for flag in build.BUILDS.values():
        titles += [f"`{flag}`: code", "constants", "data", "zeroed"]
    kinds = list(sections.KINDS.values())
    parts = [*sections.PARTS, sections.REST]
    lines = [[f"`{part}/`" if part in sections.PARTS else part] for part in parts] + [["**all**"]]
    for measured in all_measured.values():
        for line, part in zip(lines, parts):
            line += [measured["parts"][part][kind] for kind in kinds]
        lines[-1] += [f"**{sum(sizes[kind] for sizes in measured['parts'].values())}**" for kind in kinds]
    return rows(titles, lines)


def library(all_measured):
    lines = []
    for name, measured in all_measured.items():
        total, goal = measured["code"]["all"], limits.CODE_GOAL[name]
        lines.append([f"`{build.BUILDS[name]}`", total, goal, "yes" if total <= goal else "no",
                      *measured["library"].values()])
    return rows(["Built with", "Code and constants", "Goal", "Met", "`size`: text", "data", "bss",
                 "File, stripped"], lines)


def mark(size):
    return size if size <= limits.STACK_GOAL else f"**{size}**"


def stack(all_measured):
    titles = ["Calls", *(title for flag in build.BUILDS.values()
                         for title in (f"`{flag}`: usual", "any", "bound"))]
    families = next(iter(all_measured.values()))["stack"]
    lines = []
    for family in families:
        line = [family]
        for measured in all_measured.values():
            line += [mark(measured["stack"][family][what]) for what in ("usual", "measured", "bound")]
        lines.append(line)
    return rows(titles, lines)


def heap(all_measured):
    measured = all_measured["os"]
    lines = [[what, *sizes] for what, sizes in measured["stored"].items()]
    text = rows(["What stays", "Bytes", "Blocks"], lines)
    lines = [[family, sizes["peak"], max(sizes["kept"], 0)] for family, sizes in measured["heap"].items()
             if sizes["peak"] and family != "session: open, close"]
    return text + "\n" + rows(["Calls", "Heap at most, in bytes", "Not given back"], lines)


def leftout(all_measured):
    titles = ["The program uses", "Code and constants", "Zeroed", "With sections", "Zeroed"]
    return rows(titles, [[what, *sizes] for what, sizes in all_measured["os"]["programs"].items()])


def frames(all_measured):
    large = {}
    for name, measured in all_measured.items():
        for function, size in measured["frames"].items():
            large.setdefault(function, {})[name] = size
    order = sorted(large, key=lambda function: (-max(large[function].values()), function))
    return rows(["Function", *(f"`{flag}`" for flag in build.BUILDS.values())],
                [[f"`{function}`", *(large[function].get(name, "") for name in build.BUILDS)]
                 for function in order])


TABLES = {"code": code, "library": library, "stack": stack, "heap": heap, "leftout": leftout,
          "frames": frames}
