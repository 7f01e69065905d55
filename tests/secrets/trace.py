#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Tests whether the hardened build on ARM executes the same instructions and addresses for all secrets.

    tests/secrets/trace.py [SECRETS] [NAME...]

Builds the library for each of the named architectures, by default armv5te and armv7a, as shipped to
devices, and runs every call that takes or makes a secret, on two curves, under QEMU with SECRETS
different secrets (by default 12: private and temporary keys, messages, and the kernel's bytes).
A plugin of the emulator follows the guest: for all runs the number of instructions, the sequence of code
blocks, and the sequence of all addresses read and written must be the same.

That covers what is executed. It does not cover how long a processor takes for an instruction, which for a
multiplication may depend on the factors, nor calls, lengths or refusals that are not in the list;
memcheck (time.sh) finds branches that could depend on a secret with other values. A planted branch and a
planted lookup at a secret address must be reported.
"""
import concurrent.futures
import os
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ROOT / "build" / "trace"
LIBRARIES = "/usr/arm-linux-gnueabi"
PROCESSORS = {"armv5te": "arm926", "armv7a": "cortex-a8"}
MIN_CALLS = 100


class Traces:
    """All runs of a call: (instructions, path, accesses, addresses) each."""

    def __init__(self, kind, name):
        self.kind, self.name, self.runs = kind, name, []

    def differences(self):
        columns = zip(("instructions", "path", "accesses", "addresses"), zip(*self.runs))
        return [title for title, values in columns if len(set(values)) > 1]


def build(name):
    folder = FOLDERS / name
    commands = (["cmake", "--preset", f"{name}-o2", "-B", folder, "-DZOKECC_HARDENED=ON",
                 "-DZOKECC_TESTS=ON", "-DZOKECC_TOOLS=OFF", "-DZOKECC_EXAMPLES=OFF"],
                ["cmake", "--build", folder, "--target", "secrets_trace", "trace_plugin"])
    for command in commands:
        done = subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              check=False)
        if done.returncode != 0:
            sys.exit(f"{name}: it does not build\n{done.stdout[-4000:]}")


def run(name, secrets):
    folder = FOLDERS / name / "tests"
    command = ["qemu-arm", "-cpu", PROCESSORS[name], "-L", LIBRARIES, "-plugin",
               folder / "libtrace_plugin.so", folder / "secrets_trace", str(secrets)]
    done = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=False,
                          env={"PATH": os.environ["PATH"]})
    out = []
    for line in done.stdout.splitlines():
        kind, rest = line.split(" ", 1)
        if kind == "trace":
            out[-1].runs.append(tuple(rest.split()))
        elif kind == "fault":
            print(f"{name}: {rest}")
        else:
            out.append(Traces(kind, rest))
    return out, done.returncode


def judge(name, secrets):
    """Prints faults and a line of counts. True if there are no faults."""
    traces, status = run(name, secrets)
    calls = [one for one in traces if one.kind == "call"]
    different = [one for one in calls if one.differences()]
    for one in different:
        print(f"{name}: {one.name}: {', '.join(one.differences())}")
    planted = [set(one.differences()) for one in traces if one.kind == "planted"]
    seen = len(planted) == 2 and "path" in planted[0] and planted[1] == {"addresses"}
    complete = status == 0 and len(calls) >= MIN_CALLS and all(len(one.runs) == secrets for one in traces)
    instructions = sum(int(one.runs[0][0]) for one in calls)
    print(f"{name}: {len(calls)} calls, {secrets} secrets each, {instructions / 1e6:.0f} million "
          f"instructions a secret: {len(different)} differ; the planted jump and look-up were "
          f"{'seen' if seen else 'NOT SEEN'}{'' if complete else '; INCOMPLETE'}")
    return seen and complete and not different


def main():
    arguments = sys.argv[1:]
    secrets = int(arguments.pop(0)) if arguments and arguments[0].isdigit() else 12
    names = arguments or list(PROCESSORS)
    if secrets < 2 or any(name not in PROCESSORS for name in names):
        sys.exit(__doc__)
    for name in names:
        build(name)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda name: judge(name, secrets), names))
    sys.exit(0 if all(results) else 1)


if __name__ == "__main__":
    main()
