#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""The shared library needs only a few calls of the C library. They are
bound when it is loaded.

    imports_check.py NM READELF LIBRARY [hardened]
"""
import re
import subprocess
import sys

C_LIBRARY = {
    "calloc", "malloc", "free",
    "memcpy", "memset", "memmove", "memcmp",
    "time",
    "printf", "putchar",
}
CLOCK_SEEDED = {"rand", "srand"}
# The hardened build asks the kernel instead; the last of the first line returns errno's address. The call
# that tells a device from a file has several names, depending on the C library's age and the size of time.
KERNEL = {"getrandom", "open", "read", "close", "__errno_location",
          "fstat", "fstat64", "__fstat64_time64", "__fstat_time64", "__fxstat", "__fxstat64"}
# With 64-bit time on a 32-bit processor, time has a different name; with musl always.
TIME_OF_64_BITS = {"__time64"}
MUSL = "libc.so"
# Weak references of the start-up files that every shared library is linked with.
START_UP = {"__cxa_finalize", "__gmon_start__", "_ITM_deregisterTMCloneTable", "_ITM_registerTMCloneTable"}
# Arithmetic that the compiler calls if the processor has no instruction for it, as on ARM. Its
# division raises a signal if the divisor is zero.
COMPILER_HELPER = re.compile(r"__aeabi_\w+")
ARM_DIVISION = {"raise"}
# What the compiler adds under a distribution's flags: checks of the sizes of buffers and of the stack.
FORTIFIED = re.compile(r"__(\w+)_chk")
STACK_PROTECTOR = {"__stack_chk_fail", "__stack_chk_guard"}
# The second of these, on ARM, is in glibc's dynamic loader, which every program has anyway.
ARM_LOADER = "ld-linux.so.3"


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def stray_symbols(listing, foreseen):
    for line in listing.splitlines():
        letter, name = line.split()[-2:]
        name = name.split("@")[0]
        fortified = FORTIFIED.fullmatch(name)
        if name in foreseen or COMPILER_HELPER.fullmatch(name) or name in STACK_PROTECTOR:
            continue
        if fortified and fortified.group(1) in foreseen:
            continue
        if name in START_UP and letter in "wv":
            continue
        yield f"needs {name} ({letter})"


def stray_libraries(listing, imports):
    needed = re.findall(r"\(NEEDED\).*\[(.*)\]", listing)
    foreseen = {"libc.so.6", MUSL} | ({ARM_LOADER} if "__stack_chk_guard" in imports else set())
    return [f"needs the library {name}" for name in needed if name not in foreseen]


def late_binding(listing):
    """A call that is bound lazily leaves registers on the stack."""
    return [] if re.search(r"\(FLAGS\).*\bBIND_NOW\b", listing) else ["binds its calls late: no BIND_NOW"]


def detours(relocations, exported):
    """Calls to the library's own functions that go through the jump table."""
    targets = re.findall(r"_JUMP_SLOT?\s+\w+\s+(\w+)", relocations)
    return [f"calls its own {name} through the jump table" for name in targets if name in exported]


def main(nm, readelf, library, build="default"):
    foreseen = C_LIBRARY | (KERNEL if build == "hardened" else CLOCK_SEEDED)
    if re.search(r"Machine:\s+ARM", run(readelf, "--file-header", library)):
        foreseen |= ARM_DIVISION | TIME_OF_64_BITS
    imports = run(nm, "-D", "--undefined-only", library)
    exports = run(nm, "-D", "--defined-only", library)
    faults = list(stray_symbols(imports, foreseen))
    dynamic = run(readelf, "--wide", "--dynamic", library)
    faults += stray_libraries(dynamic, imports)
    faults += late_binding(dynamic)
    faults += detours(run(readelf, "--wide", "--relocs", library),
                      {line.split()[-1].split("@")[0] for line in exports.splitlines()})
    print("\n".join(faults) if faults else f"{len(imports.splitlines())} imports, all of them foreseen")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
