#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Changes the library's sources, one change at a time, and checks whether a test notices.

    tests/mutants/mutants.py [--sample N | --all] [--seed S] [--file F]... [FOLDER]...

    --sample N   N changes that count, spread over the files by their number of changes; default 300
    --all        every change; takes hours
    --seed S     seed of the sample; default 1
    --file F     changes of this file only, for example mint/divide.cpp
    --list       print the changes without trying them
    --survivors  retry the survivors of the last run, from build/mutants/list.json
    --resume     keep the results in that list, for example after an interruption

FOLDER is mint, hash, ecc, schemes or sdf, by default all five; or ct alone, which is changed and
tested in the hardened build. A change does not count when it does not compile or leaves the objects as they
were. The exit status is 1 if less than 95 % of a folder's changes are caught. See docs/testing.md.
"""
import argparse
import json
import pathlib
import random
import signal
import sys
import time

import changes
import workshop

FOLDERS = ("ct",) if workshop.HARDENED else ("mint", "hash", "ecc", "schemes", "sdf")
FLOOR = 95.0
# The first two are only compiled for ARM; the other two are tested by tests/secrets.
LEFT_OUT = {"mint/limbs/limb_arm.h", "ct/sums_arm.cpp", "base/burn.h", "base/wipe.h"}
RECORD = workshop.FOLDER / "list.json"
# Changes whose effect no test can observe, each with the reason; they do not count.
WITHOUT_EFFECT = pathlib.Path(__file__).parent / "without_effect.txt"


def say(text):
    print(text, flush=True)


def recorded():
    return json.loads(RECORD.read_text(encoding="ascii")) if RECORD.exists() else []


def key(record):
    return record["file"], record["line"], record["column"], record["what"]


def candidates(folders, files):
    """File names with their changes, in sampling order."""
    out = {}
    for folder in folders:
        for path in sorted((workshop.ROOT / folder).rglob("*")):
            name = path.relative_to(workshop.ROOT).as_posix()
            if path.suffix in (".cpp", ".h") and name not in LEFT_OUT and (not files or name in files):
                found = changes.changes(name, path.read_text(encoding="ascii"))
                if found:
                    out[name] = found
    return out


def quotas(found, sample):
    """Proportional shares of the sample, rounded by the largest-remainder method."""
    total = sum(map(len, found.values()))
    exact = {name: sample * len(list_) / total for name, list_ in found.items()}
    out = {name: int(share) for name, share in exact.items()}
    for name in sorted(exact, key=lambda name: out[name] - exact[name])[:sample - sum(out.values())]:
        out[name] += 1
    return out


def shuffled(name, found, seed):
    order = list(found)
    random.Random(f"{seed} {name}").shuffle(order)
    return order


def chosen(found, arguments):
    """For each file, how many changes must count, and the candidates."""
    if arguments.survivors:
        left = {key(record) for record in recorded() if record["result"] == "survived"}
        picked = {name: [c for c in list_ if (c.file, c.line, c.column, c.what) in left]
                  for name, list_ in found.items()}
        return {name: (len(list_), list_) for name, list_ in picked.items() if list_}
    if arguments.all:
        return {name: (len(list_), list_) for name, list_ in found.items()}
    share = quotas(found, arguments.sample)
    return {name: (share[name], shuffled(name, list_, arguments.seed)) for name, list_ in found.items()}


def without_effect():
    """The triples of file, source line and change listed in without_effect.txt."""
    lines = WITHOUT_EFFECT.read_text(encoding="ascii").splitlines()
    entries = [line.strip() for line in lines if not line.startswith("#")]
    changes_of = (entry.rpartition(" -- ")[0] for entry in entries[2::3])
    out = set(zip(entries[0::3], entries[1::3], changes_of))
    for name, line, _ in out:
        if line not in map(str.strip, (workshop.ROOT / name).read_text(encoding="ascii").splitlines()):
            sys.exit(f"{WITHOUT_EFFECT.name}: {name} has no line {line}")
    return out


def attempt(shop, change, no_effect):
    started = time.monotonic()
    line = (workshop.ROOT / change.file).read_text(encoding="ascii").splitlines()[change.line - 1].strip()
    known = (change.file, line, change.what) in no_effect
    result = "same" if known else shop.attempt(change)
    record = {"file": change.file, "line": change.line, "column": change.column, "what": change.what,
              "result": result, "counts": result not in ("invalid", "same"),
              "seconds": round(time.monotonic() - started, 1)}
    if record["counts"]:
        shown = "SURVIVED" if result == "survived" else result
        say(f"{change.file}:{change.line}:{change.column}: {change.what}: {shown}")
    return record


def try_all(shop, plan, known, again, no_effect):
    """Results of the plan's changes, including the known ones. Takes one of each file in turn, so that the
    results up to an interruption are a sample as well."""
    results = dict(known)
    left = {name: (quota, iter(list_)) for name, (quota, list_) in plan.items() if quota > 0}
    while left:
        for name, (quota, list_) in list(left.items()):
            for change in list_:
                place = change.file, change.line, change.column, change.what
                if again or place not in known:
                    results[place] = attempt(shop, change, no_effect)
                    RECORD.write_text(json.dumps(list(results.values()), indent=1) + "\n", encoding="ascii")
                if results[place]["counts"]:
                    left[name] = quota - 1, list_
                    break
            else:
                left[name] = 0, list_
            if left[name][0] == 0:
                del left[name]
    return list(results.values())


def summary(records):
    """Prints the table; returns True if every folder reaches the floor."""
    counted = [record for record in records if record["counts"]]
    others = len(records) - len(counted)
    say(f"\n==> {len(counted)} changes; {others} more did not compile or changed nothing")
    enough = True
    for folder in FOLDERS:
        mine = [record for record in counted if record["file"].startswith(folder + "/")]
        for name in sorted({record["file"] for record in mine}) + ([folder] if mine else []):
            of_name = [record for record in mine if name in (folder, record["file"])]
            caught = sum(record["result"] != "survived" for record in of_name)
            share = 100 * caught / len(of_name)
            say(f"{name:32} {caught:5} of {len(of_name):5} caught  {share:6.1f} %")
            enough = enough and (name != folder or share >= FLOOR)
    return enough


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folders", nargs="*", metavar="FOLDER")
    parser.add_argument("--sample", type=int, default=300)
    parser.add_argument("--all", action="store_true")
    parser.add_argument("--seed", default="1")
    parser.add_argument("--file", action="append", dest="files")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--survivors", action="store_true")
    parser.add_argument("--resume", action="store_true")
    arguments = parser.parse_args()
    unknown = set(arguments.folders) - set(FOLDERS)
    if unknown:
        beside = " beside ct" if workshop.HARDENED else ""
        parser.error(f"no such folder{beside}: {', '.join(sorted(unknown))}")
    found = candidates(arguments.folders or FOLDERS, arguments.files)
    if not found:
        parser.error("nothing to change there")
    plan = chosen(found, arguments)
    if arguments.list:
        for _, list_ in plan.values():
            for change in list_:
                say(f"{change.file}:{change.line}:{change.column}: {change.what}")
        return 0
    known = {key(record): record for record in recorded()} if arguments.survivors or arguments.resume else {}
    no_effect = without_effect()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # restores the source
    records = try_all(workshop.Workshop(say), plan, known, arguments.survivors, no_effect)
    return 0 if summary(records) else 1


if __name__ == "__main__":
    sys.exit(main())
