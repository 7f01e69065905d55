#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Reports what the benchmarks measured: a table as markdown on standard output, and a plot.

    bench/report.py host RESULT.json... PLOT.svg [--partial | --update]
    bench/report.py arm RESULT.json... PLOT.svg [--partial | --update]   and likewise armv7a

A RESULT in a folder whose name ends in -hardened belongs to the hardened build, which has its own columns. It
fails if an operation is missing, unknown or was not measured on both sides; --partial allows for
missing ones. --update also writes the tables into docs/performance.md, that of the calls into
docs/benchmarks.md, and the plot next to them. Peers besides OpenSSL have their own table, and marks
in the plot.
"""
import json
import pathlib
import statistics
import sys

import plot
from operations import GROUPS, HARDENED_OPERATIONS, OPERATIONS

DOCS = pathlib.Path(__file__).resolve().parent.parent / "docs"
ALONE = {"session_open", "curve_init"}  # OpenSSL has nothing comparable
OTHERS = ("libgcrypt", "nettle")  # if installed
PLOTS = {"host": DOCS / "performance.svg", "arm": DOCS / "performance-arm.svg",
         "armv7a": DOCS / "performance-armv7a.svg"}
TITLES = {"host": "Times as fast as OpenSSL (mark: goal)",
          "arm": "ARMv5TE: OpenSSL's instructions for each of ours (mark: goal)",
          "armv7a": "ARMv7-A: OpenSSL's instructions for each of ours (mark: goal)"}


def read_host(paths):
    """Google Benchmark's files: {name: {side: seconds of each repetition}}."""
    context, samples, faults = {}, {}, []
    for path in paths:
        text = pathlib.Path(path).read_text(encoding="utf-8")
        result = json.loads(text) if text.strip() else {"benchmarks": []}  # empty if all was filtered out
        context.update(result.get("context", {}))
        for run in result["benchmarks"]:
            name, side = run["run_name"].split("/")[:2]
            if run.get("error_occurred"):
                faults.append(f"{run['run_name']}: {run['error_message']}")
            elif run["run_type"] == "iteration":
                unit = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1}[run["time_unit"]]
                samples.setdefault(name, {}).setdefault(side, []).append(run["cpu_time"] * unit)
    return context, samples, faults


def read_arm(paths):
    result = json.loads(pathlib.Path(paths[0]).read_text(encoding="ascii"))
    samples = {name: {side: [counts[side]] for side in ("zokecc", "openssl", *OTHERS) if side in counts}
               for name, counts in result["operations"].items()}
    return result["context"], samples, []


def completeness(samples, operations, partial):
    known = {operation.name for operation in operations}
    for name in sorted(set(samples) - known):
        yield f"{name}: not in bench/operations.py"
    for name in sorted(set() if partial else known - set(samples)):
        yield f"{name}: not measured"
    for name, sides in samples.items():
        if set(sides) - set(OTHERS) != ({"zokecc"} if name in ALONE else {"zokecc", "openssl"}):
            yield f"{name}: measured only for {', '.join(sides)}"


def scaled(value, units):
    """Three digits with the largest unit that leaves a digit before the point."""
    factor, unit = next(((f, u) for f, u in units if value >= f), units[-1])
    value /= factor
    digits = 0 if value >= 99.95 else 1 if value >= 9.995 else 2
    return f"{value:.{digits}f}{unit}"


def seconds(value, _operation):
    return scaled(value, ((1, " s"), (1e-3, " ms"), (1e-6, " us"), (1e-9, " ns")))


def instructions(value, operation):
    if operation.bytes:
        return f"{value / operation.bytes:.1f} per byte"
    return f"{value:.0f}" if value < 1000 else scaled(value, ((1e6, " M"), (1e3, " k")))


def times(ratio):
    return f"{ratio:.2f}" if ratio >= 0.1 else f"{ratio:.1g}"


def arm_goal(target, operation, goals):
    goal = getattr(goals, target)
    return goal * (operation.bytes or 1) if goal else None


class Measured:
    """Both sides of an operation in one build."""

    def __init__(self, operation, sides, goals):
        self.operation, self.goals = operation, goals
        self.ours = statistics.mean(sides["zokecc"])
        self.peer = statistics.mean(sides["openssl"]) if "openssl" in sides else None
        self.ratio = self.peer / self.ours if self.peer else None
        self.spread = max(statistics.stdev(side) / statistics.mean(side) if len(side) > 1 else 0
                          for name, side in sides.items() if name not in OTHERS)

    def figures(self, target):
        """Ours and the ratio."""
        show = seconds if target == "host" else instructions
        return [show(self.ours, self.operation), times(self.ratio) if self.ratio else ""]

    def met(self, target):
        """The goal and whether it is met."""
        if self.goals is None:
            return ["", ""]
        if target == "host":
            goal, met = self.goals.host, (self.ratio or 0) >= (self.goals.host or 0)
            return [f">= {goal:g}", "yes" if met else "no"] if goal else ["", ""]
        goal = arm_goal(target, self.operation, self.goals)
        if not goal:
            return ["", ""]
        return [f"<= {instructions(goal, self.operation)}", "yes" if self.ours <= goal else "no"]

    def plotted_goal(self, target):
        """The goal as a ratio: on ARM it is a number of instructions."""
        if target == "host":
            return self.goals.host
        goal = arm_goal(target, self.operation, self.goals)
        return self.peer / goal if goal else None


class Row:
    """An operation in both builds; `hardened` has its samples there, or is empty."""

    def __init__(self, operation, sides, hardened):
        self.operation = operation
        self.default = Measured(operation, sides, operation)
        self.hardened = Measured(operation, hardened, operation.hardened) if hardened else None
        self.others = {name: statistics.mean(sides[name]) for name in OTHERS if name in sides}

    def cells(self, target):
        show = seconds if target == "host" else instructions
        peer = self.default.peer
        ours, ratio = self.default.figures(target)
        cells = [self.operation.what, ours, show(peer, self.operation) if peer else "", ratio]
        if target == "host":
            cells.append(f"{100 * self.default.spread:.0f} %")
        cells += self.default.met(target)
        return cells + (self.hardened.figures(target) + self.hardened.met(target) if self.hardened
                        else [""] * 4)

    def plotted(self, target):
        """Name, ratio, goal, and the ratios to the other peers."""
        others = [self.others[name] / self.default.ours if name in self.others else None for name in OTHERS]
        return (self.operation.what, self.default.ratio, self.default.plotted_goal(target), others)

    def beside_others(self, target):
        """Cells of the table of all peers, with the ratio to the fastest of them."""
        show = seconds if target == "host" else instructions
        peers = [self.default.peer, *(self.others.get(name) for name in OTHERS)]
        fastest = min(value for value in peers if value)
        return [self.operation.what, show(self.default.ours, self.operation),
                *(show(value, self.operation) if value else "" for value in peers),
                times(fastest / self.default.ours)]


def grouped(samples, hardened):
    """(heading, rows) of the measured operations."""
    for heading, group in GROUPS.items():
        rows = [Row(operation, samples[operation.name], hardened.get(operation.name)) for operation in group
                if operation.name in samples]
        if rows:
            yield heading, rows


def table(target, context, samples, hardened):
    titles = ["Operation", "zokecc", "OpenSSL", "Ratio"]
    titles += ["Spread", "Goal", "Met"] if target == "host" else ["Goal", "Met"]
    titles += ["Hardened", "Ratio", "Goal", "Met"]
    lines = [f"{context['processor']}; {context['compiler']}; {context['openssl']}.", "",
             f"| {' | '.join(titles)} |", "|---" + "|--:" * (len(titles) - 1) + "|"]
    for heading, rows in grouped(samples, hardened):
        lines.append(f"| **{heading}** |" + " |" * (len(titles) - 1))
        lines += [f"| {' | '.join(row.cells(target))} |" for row in rows]
    return "\n".join(lines) + "\n"


def others_table(target, context, samples):
    rows = [row for _, group in grouped(samples, {}) for row in group if row.others]
    if not rows:
        return "Nothing was compared with other peers.\n"
    titles = ["Operation", "zokecc", "OpenSSL", *OTHERS, "Ratio to the fastest"]
    lines = [f"{context['openssl']}; {context['others']}.", "",
             f"| {' | '.join(titles)} |", "|---" + "|--:" * (len(titles) - 1) + "|"]
    return "\n".join(lines + [f"| {' | '.join(row.beside_others(target))} |" for row in rows]) + "\n"


def plot_rows(target, samples):
    for heading, rows in grouped(samples, {}):
        yield (heading, None, None, ())
        yield from (row.plotted(target) for row in rows if row.default.ratio)


def calls():
    lines = ["| Operation | Call |", "|---|---|"]
    for heading, group in GROUPS.items():
        lines.append(f"| **{heading}** | |")
        lines += [f"| {operation.what} | `{operation.call}` |" for operation in group]
    return "\n".join(lines) + "\n"


def update(target, text, name="performance.md"):
    """Replaces the text between the target's markers in a page."""
    page = DOCS / name
    begin, end = f"<!-- {target}: begin -->\n", f"<!-- {target}: end -->\n"
    before, rest = page.read_text(encoding="ascii").split(begin)
    after = rest.split(end)[1]
    page.write_text(f"{before}{begin}\n{text}\n{end}{after}", encoding="ascii")


def main():
    options = {word for word in sys.argv[1:] if word.startswith("--")}
    target, *paths = [word for word in sys.argv[1:] if word not in options] or [""]
    if target not in PLOTS or len(paths) < 2 or options - {"--partial", "--update"} or len(options) > 1:
        sys.exit(__doc__)
    read, partial = read_host if target == "host" else read_arm, "--partial" in options
    context, samples, faults = read([path for path in paths[:-1] if "-hardened/" not in path])
    faults += completeness(samples, OPERATIONS, partial)
    hardened, results = {}, [path for path in paths[:-1] if "-hardened/" in path]
    if results:
        _, hardened, more_faults = read(results)
        faults += more_faults + list(completeness(hardened, HARDENED_OPERATIONS, partial))
    if faults or not samples:
        sys.exit("\n".join(faults) or "nothing was measured")
    text, others = table(target, context, samples, hardened), others_table(target, context, samples)
    drawing = plot.svg(TITLES[target], OTHERS, list(plot_rows(target, samples)))
    print(text, others, sep="\n", end="")
    pathlib.Path(paths[-1]).write_text(drawing, encoding="ascii")
    if "--update" in options:
        update(target, text)
        update(f"{target}-others", others)
        update("calls", calls(), "benchmarks.md")
        PLOTS[target].write_text(drawing, encoding="ascii")


if __name__ == "__main__":
    main()
