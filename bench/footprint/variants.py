#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Compares the builds that a device can choose from: size and speed.

    bench/footprint/variants.py            prints the table
    bench/footprint/variants.py --update   also writes it into docs/footprint.md

Needs what `./build.sh variants` installs. Instructions are counted as for docs/performance.md.
"""
import json
import pathlib
import re
import sys

import build
import leftout
import tables

PAGE = build.ROOT / "docs" / "footprint.md"
COUNT = build.ROOT / "bench" / "arm" / "count.py"
SMALL = ("-DCMAKE_BUILD_TYPE=MinSizeRel", "-DZOKECC_SMALL=ON")
HARDENED = "-DZOKECC_HARDENED=ON"
BUILDS = {
    "`MinSizeRel` with `ZOKECC_SMALL`: the presets `-os`": SMALL,
    "`MinSizeRel`": SMALL[:1],
    "`-O2`: the presets `-o2`": (),
    "`MinSizeRel` with `ZOKECC_SMALL`, hardened": (*SMALL, HARDENED),
    "`-O2`, hardened": (HARDENED,),
}
OPERATIONS = {
    "session_open": "open and close a session",
    "sm2_sign_digest": "SM2, sign",
    "sm2_verify_digest": "SM2, verify",
}


def counted(folder):
    wanted = "^(" + "|".join(OPERATIONS) + ")$"
    build.run(sys.executable, "-B", COUNT, folder / "bench", "arm926", folder / "counts.json", wanted)
    operations = json.loads((folder / "counts.json").read_text(encoding="ascii"))["operations"]
    return [f"{operations[name]['zokecc'] / 1e6:.2f}" for name in OPERATIONS]


def measure(number, name, options):
    folder = build.FOLDERS / f"variant-{number}"
    toolchain = build.ROOT / "cmake" / "armv5te.toolchain.cmake"
    build.run("cmake", "--preset", "bench-arm", "-B", folder, f"-DCMAKE_TOOLCHAIN_FILE={toolchain}", *options)
    build.run("cmake", "--build", folder, "--target", "count_operation", "insn_count")
    sizes = leftout.section_sizes(folder / "libzokecc.so")
    return [name, sizes[".text"] + sizes[".rodata"], *counted(folder)]


def main():
    titles = ["Build", "Code and constants", *(f"{what}, million" for what in OPERATIONS.values())]
    table = tables.rows(titles, [measure(number, *entry) for number, entry in enumerate(BUILDS.items())])
    print(table)
    if sys.argv[1:] == ["--update"]:
        page = pathlib.Path(PAGE).read_text(encoding="ascii")
        page = re.sub(r"(<!-- variants: begin -->\n\n).*?(\n<!-- variants: end -->)",
                      lambda match: match[1] + table + match[2], page, flags=re.DOTALL)
        PAGE.write_text(page, encoding="ascii")


if __name__ == "__main__":
    main()
