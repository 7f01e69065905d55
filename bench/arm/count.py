#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Counts the instructions that each operation executes on ARM, under emulation.

    bench/arm/count.py BUILD_FOLDER PROCESSOR RESULT.json [FILTER [--hardened]]

Each operation runs in its own process with an empty environment, so that its count
depends on no other and is the same in every run. PROCESSOR is one of QEMU's, FILTER a regular
expression for names. --hardened leaves out what is the same in the hardened build.
"""
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from operations import HARDENED_OPERATIONS, OPERATIONS  # noqa: E402

EMPTY, SIDES = 1, {"zokecc": 2, "openssl": 3, "libgcrypt": 4, "nettle": 5}  # as in mark.h
LIBRARIES = "/usr/arm-linux-gnueabi"


def emulated(folder, processor, *arguments):
    command = ["qemu-arm", "-cpu", processor, "-L", LIBRARIES, "-plugin", folder / "libinsn_count.so",
               folder / "count_operation", *arguments]
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False,
                          env={"PATH": os.environ["PATH"]})
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(arguments)}: {done.stderr.strip() or done.returncode}")
    return done.stdout


def count(folder, processor, name, repetitions):
    output = emulated(folder, processor, name, str(repetitions))
    marks = {int(what): int(amount) for what, amount in re.findall(r"^mark (\d+) (\d+)$", output, re.M)}
    result = {"repetitions": repetitions}
    for side, what in SIDES.items():
        if what in marks:
            result[side] = (marks[what] - marks[EMPTY]) / repetitions
    return result


def main():
    if len(sys.argv) not in (4, 5, 6) or sys.argv[5:] not in ([], ["--hardened"]):
        sys.exit(__doc__)
    folder, processor, target = pathlib.Path(sys.argv[1]), sys.argv[2], pathlib.Path(sys.argv[3])
    wanted = re.compile(sys.argv[4] if len(sys.argv) > 4 else "")
    names = emulated(folder, processor, "--list").split("\n")[:-1]
    repetitions = {operation.name: operation.repetitions for operation in OPERATIONS}
    chosen = [name for name in names if wanted.search(name)]
    if len(sys.argv) == 6:
        chosen = [name for name in chosen if name in {operation.name for operation in HARDENED_OPERATIONS}]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        counts = list(pool.map(
            lambda name: count(folder, processor, name, repetitions.get(name, 1)), chosen))
    result = {"context": json.loads(emulated(folder, processor, "--about")),
              "operations": dict(zip(chosen, counts))}
    result["context"]["processor"] = processor
    target.parent.mkdir(parents=True, exist_ok=True)
    target.write_text(json.dumps(result, indent=1) + "\n", encoding="ascii")


if __name__ == "__main__":
    main()
