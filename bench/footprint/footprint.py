#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Code, data, stack and heap of the library on the devices' kind of processor.

    bench/footprint/footprint.py            prints the tables
    bench/footprint/footprint.py --update   also writes them into docs/footprint.md and footprint.json
    bench/footprint/footprint.py --check    fails if a goal is missed, or on growth above 5 %
    bench/footprint/footprint.py --chains   code by source file, and the deepest calls of each family

docs/footprint.md explains what is counted. Needs what `./build.sh footprint` installs.
"""
import json
import sys

import build
import leftout
import limits
import sections
import tables
from callgraph import CallGraph

PAGE = build.ROOT / "docs" / "footprint.md"
RECORD = build.ROOT / "docs" / "footprint.json"
EXPORTS = build.ROOT / "tests" / "boundary" / "exports.txt"


def measure_calls(lines, graph):
    """Stack and heap of each family, and its calls."""
    stack, heap, calls = {}, {}, {}
    for _, family, call, numbers, depth, peak, kept in lines:
        sizes = stack.setdefault(family, {"usual": 0, "measured": 0, "bound": 0, "deepest": call})
        sizes["measured"] = max(sizes["measured"], int(depth))
        if numbers not in limits.UNUSUAL:
            sizes["usual"] = max(sizes["usual"], int(depth))
        if graph.bound(call) > sizes["bound"]:
            sizes.update(bound=graph.bound(call), deepest=call)
        use = heap.setdefault(family, {"peak": 0, "kept": 0})
        use["peak"], use["kept"] = max(use["peak"], int(peak)), max(use["kept"], int(kept))
        calls[call] = family
    return stack, heap, calls


def library_sizes(library):
    text, data, bss = build.run(f"{build.TOOLS}size", library).split("\n")[1].split()[:3]
    stripped = library.with_suffix(".stripped")
    build.run(f"{build.TOOLS}strip", "-o", stripped, library)
    return {"text": int(text), "data": int(data), "bss": int(bss), "file": stripped.stat().st_size}


def exported():
    return set(EXPORTS.read_text(encoding="ascii").split())


def measure(name):
    library = build.library(name)
    graph = CallGraph(name)
    lines = build.probe_lines(name)
    stack, heap, calls = measure_calls([line for line in lines if line[0] == "stack"], graph)
    for call in sorted(exported() ^ set(calls)):
        graph.faults.append(f"{call}: {'not measured' if call in exported() else 'not exported'}")
    parts = sections.by_part(name)
    return graph, {
        "parts": parts, "code": sections.code(parts), "library": library_sizes(library),
        "stack": stack, "heap": heap, "frames": graph.large_frames(tables.FRAMES_ABOVE),
        "stored": {line[1]: [int(size) for size in line[2:]] for line in lines if line[0] == "heap"},
    }


def print_chains(name, graph, measured):
    print(f"\n{build.BUILDS[name]}: code and constants by source file")
    sizes = sections.by_source(name)
    for source in sorted(sizes, key=lambda source: -sizes[source]):
        print(f"{sizes[source]:6} {source}")
    print(f"\n{build.BUILDS[name]}: the deepest calls, with the frame of each function")
    stack = measured["stack"]
    for family in sorted(stack, key=lambda family: -stack[family]["bound"]):
        print(f"{stack[family]['bound']:6} {family}: {graph.chain(stack[family]['deepest'])}")


def update(all_measured):
    text = PAGE.read_text(encoding="ascii")
    for table, make in tables.TABLES.items():
        begin, end = f"<!-- {table}: begin -->\n", f"<!-- {table}: end -->\n"
        before, rest = text.split(begin)
        text = f"{before}{begin}\n{make(all_measured)}\n{end}{rest.split(end)[1]}"
    PAGE.write_text(text, encoding="ascii")
    record = {"compiler": build.compiler(), "builds": {
        name: {"code": measured["code"],
               "stored": {what: sizes[0] for what, sizes in measured["stored"].items()},
               "stack": {family: {what: sizes[what] for what in ("usual", "measured", "bound")}
                         for family, sizes in measured["stack"].items()}}
        for name, measured in all_measured.items()}}
    RECORD.write_text(json.dumps(record, indent=1) + "\n", encoding="ascii")


def check(graphs, all_measured):
    """Prints what violates a limit; true if nothing does."""
    record = json.loads(RECORD.read_text(encoding="ascii")) if RECORD.exists() else {"builds": {}}
    failed = False
    for name, measured in all_measured.items():
        for fault in limits.faults(name, measured, record["builds"].get(name)):
            print(f"{build.BUILDS[name]}: {fault}")
            failed = True
        stack = measured["stack"]
        too_deep = [family for family in stack if stack[family]["bound"] > limits.STACK_GOAL]
        for family in sorted(too_deep if failed else [], key=lambda family: -stack[family]["bound"])[:3]:
            print(f"{build.BUILDS[name]}: {family}: {graphs[name].chain(stack[family]['deepest'])}")
    if failed and record.get("compiler") != build.compiler():
        print(f"recorded with {record.get('compiler')}, measured with {build.compiler()}")
    return not failed


def main():
    option = sys.argv[1] if len(sys.argv) == 2 else ""
    if len(sys.argv) > 2 or option not in ("", "--update", "--check", "--chains"):
        sys.exit(__doc__)
    graphs, all_measured = {}, {}
    for name in build.BUILDS:
        graphs[name], all_measured[name] = measure(name)
    if option != "--check":
        all_measured["os"]["programs"] = leftout.measure(exported())
    for table, make in tables.TABLES.items():
        if table != "leftout" or option != "--check":
            print(f"## {table}\n\n{make(all_measured)}")
    faults = [f"{build.BUILDS[name]}: {fault}" for name, graph in graphs.items()
              for fault in dict.fromkeys(graph.faults)]
    print("\n".join(faults))
    if option == "--chains":
        for name, graph in graphs.items():
            print_chains(name, graph, all_measured[name])
    if option == "--update" and not faults:
        update(all_measured)
    passed = not faults and (option != "--check" or check(graphs, all_measured))
    if option == "--check":
        print("the footprint is kept" if passed else "THE FOOTPRINT IS NOT KEPT")
    sys.exit(not passed)


if __name__ == "__main__":
    main()
