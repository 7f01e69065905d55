#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Runs a test program of the contract on the hardened build: exactly the listed tests must fail.

    departures_check.py PROGRAM LIST [COMMAND...]

LIST names them, a line each, under the reasons why that build departs; COMMAND, an emulator for
example, runs the program. An unlisted test that fails, or a listed one that passes, is a fault.
With GTEST_FILTER in the environment only the selected tests run, and are shown.
"""
import os
import pathlib
import re
import subprocess
import sys

FAILED = re.compile(r"^\[  FAILED  \] ([\w/]+\.[\w/]+)", re.M)
STARTED = re.compile(r"^\[ RUN      \] ([\w/]+\.[\w/]+)$", re.M)
RAN = re.compile(r"^\[==========\] (\d+) tests? from .* ran\.", re.M)


def listed(path):
    lines = path.read_text(encoding="ascii").splitlines()
    return {line for line in lines if line and not line.startswith("#")}


def failing(program, command):
    done = subprocess.run([*command, program], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          check=False, errors="replace")
    ran = RAN.search(done.stdout)
    if ran is None:
        sys.exit(f"{program} ended with {done.returncode}\n{done.stdout[-4000:]}")
    return int(ran.group(1)), set(FAILED.findall(done.stdout)), done.stdout


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    wanted = listed(pathlib.Path(sys.argv[2]))
    if not wanted:
        sys.exit(f"{sys.argv[2]} lists nothing")
    count, failed, output = failing(sys.argv[1], sys.argv[3:])
    if "GTEST_FILTER" in os.environ:
        wanted &= set(STARTED.findall(output))
        print(output)
    for name in sorted(failed - wanted):
        at = output.find(f"[ RUN      ] {name}\n")
        print(output[at:at + 2000] if at >= 0 else name)
        print(f"FAULT: {name} fails and is not listed")
    for name in sorted(wanted - failed):
        print(f"FAULT: {name} is listed and passes")
    print(f"{count} tests, of which {len(failed)} depart; {len(wanted)} are listed")
    return 1 if failed != wanted else 0


if __name__ == "__main__":
    sys.exit(main())
