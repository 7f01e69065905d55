# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Builds the library for the devices in each configuration, and runs the program that measures it."""
import os
import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
HERE = ROOT / "bench" / "footprint"
FOLDERS = ROOT / "build" / "footprint"
BUILDS = {"os": "-Os", "o2": "-O2", "v7": "ARMv7-A -O2"}
PRESETS = {"os": "armv5te-os", "o2": "armv5te-o2", "v7": "armv7a-o2"}
PROCESSORS = {"os": "arm926", "o2": "arm926", "v7": "cortex-a8"}
TOOLS = "arm-linux-gnueabi-"
# A compiler cache does not store the list of calls.
LAUNCHERS = ("CMAKE_C_COMPILER_LAUNCHER", "CMAKE_CXX_COMPILER_LAUNCHER")
MAP = "libzokecc.map"
# The linker's map, and the compiler's list of which function calls which.
EXTRA = {"CXXFLAGS": "-fcallgraph-info=su", "LDFLAGS": f"-Wl,-Map={MAP}"}
PROBE_FLAGS = ["-std=c99", "-O1", "-march=armv5te", "-mfloat-abi=soft", "-Wall", "-Wextra", "-Werror",
               "-static", "-Wl,--wrap=malloc,--wrap=calloc,--wrap=free"]


def run(*command, environment=None):
    kept = {name: value for name, value in os.environ.items() if name not in LAUNCHERS}
    done = subprocess.run([str(word) for word in command], cwd=ROOT, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False,
                          env={**kept, **(environment or {})})
    if done.returncode != 0:
        raise SystemExit(f"{done.stdout}\n{' '.join(map(str, command))}: {done.returncode}")
    return done.stdout


def folder(build):
    return FOLDERS / build


def configure(build, target, environment):
    run("cmake", "--preset", PRESETS[build], "-B", target, "-DZOKECC_EXAMPLES=OFF", "-DZOKECC_TOOLS=OFF",
        environment=environment)


def library(build):
    """Builds it. Returns the shared library."""
    configure(build, folder(build), EXTRA)
    run("cmake", "--build", folder(build), "--target", "zokecc", "zokecc_static")
    return folder(build) / "libzokecc.so"


def objects(build):
    """The library's object files, in the linker's order."""
    prefix = "LOAD CMakeFiles/zokecc_objects.dir/"
    for line in (folder(build) / MAP).read_text(encoding="utf-8").split("\n"):
        if line.startswith(prefix):
            yield folder(build) / line.split(" ", 1)[1]


def probe_lines(build):
    """What painted.c prints, split at its tabs."""
    program = folder(build) / "painted"
    run(f"{TOOLS}gcc", *PROBE_FLAGS, "-I", ROOT / "include", "-o", program, *sorted(HERE.glob("*.c")),
        folder(build) / "libzokecc.a")
    output = run("qemu-arm", "-cpu", PROCESSORS[build], program)
    return [line.split("\t") for line in output.split("\n") if line.startswith(("stack\t", "heap\t"))]


def compiler():
    return run(f"{TOOLS}gcc", "--version").split("\n")[0]
