#!/usr/bin/env python3
"""Counts the instructions that each operation executes on ARM, under emulation.

    bench/arm/count.py BUILD_FOLDER RESULT.json [FILTER]

Each operation runs in a process of its own with nothing from the environment, so that its count
depends on no other and is the same in every run. FILTER is a regular expression for names.
"""
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from operations import OPERATIONS  # noqa: E402

EMPTY, OURS, PEER = 1, 2, 3  # as in mark.h
PROCESSOR = "arm926"
LIBRARIES = "/usr/arm-linux-gnueabi"


def emulated(folder, *arguments):
    command = ["qemu-arm", "-cpu", PROCESSOR, "-L", LIBRARIES, "-plugin", folder / "libinsn_count.so",
               folder / "count_operation", *arguments]
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False,
                          env={"PATH": os.environ["PATH"]})
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(arguments)}: {done.stderr.strip() or done.returncode}")
    return done.stdout


def count(folder, name, repetitions):
    output = emulated(folder, name, str(repetitions))
    marks = {int(what): int(amount) for what, amount in re.findall(r"^mark (\d+) (\d+)$", output, re.M)}
    result = {"repetitions": repetitions}
    for side, what in (("zokecc", OURS), ("openssl", PEER)):
        if what in marks:
            result[side] = (marks[what] - marks[EMPTY]) / repetitions
    return result


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    folder, target = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    wanted = re.compile(sys.argv[3] if len(sys.argv) == 4 else "")
    names = emulated(folder, "--list").split("\n")[:-1]
    repetitions = {operation.name: operation.repetitions for operation in OPERATIONS}
    chosen = [name for name in names if wanted.search(name)]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        counts = list(pool.map(lambda name: count(folder, name, repetitions.get(name, 1)), chosen))
    result = {"context": json.loads(emulated(folder, "--about")), "operations": dict(zip(chosen, counts))}
    result["context"]["processor"] = PROCESSOR
    target.parent.mkdir(parents=True, exist_ok=True)
    target.write_text(json.dumps(result, indent=1) + "\n", encoding="ascii")


if __name__ == "__main__":
    main()
