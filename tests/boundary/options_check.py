#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""The table of options in docs/porting.md has every build option with its default, every option that the
presets, the scripts and the documents pass exists, and options are declared only in cmake/Options.cmake."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
DECLARATION = re.compile(
    r'^ *(?:option\((ZOKECC_\w+) "[^"]+" (\S+)\)|set\((ZOKECC_\w+) "(.*)" CACHE )', re.MULTILINE)
ROW = re.compile(r"^\| `(ZOKECC_\w+)` \| `?([\w ]+?)`? \| \S.*\|$", re.MULTILINE)
IN_WORDS = {"${zokecc_is_top_level}": "on top", "${zokecc_manual}": "with doxygen", "": "empty"}
PASSED = re.compile(r'-D(ZOKECC_\w+)[=:]|"(ZOKECC_\w+)": ')
# Preprocessor definitions and folders, which look the same.
NO_OPTIONS = {"ZOKECC_ARMEL_DIR", "ZOKECC_MUSL_ROOT", "ZOKECC_HOST_CC", "ZOKECC_NO_ASSEMBLY"}
TEXTS = (".md", ".sh", ".py", ".json", ".txt", ".cmake", ".mk", ".bb", ".inc", ".in", "")
SKIPPED = {".git", ".cache", "build", "__pycache__", "Testing"}


def read(path):
    return path.read_text(encoding="ascii", errors="replace")


def texts():
    for path in sorted(ROOT.rglob("*")):
        relative = path.relative_to(ROOT)
        if path.is_file() and path.suffix in TEXTS and not SKIPPED & set(relative.parts):
            yield relative.as_posix(), read(path)


def declared(text):
    """Each option and its default in words."""
    for name, value, entry, content in DECLARATION.findall(text):
        default = value if name else content
        yield name or entry, IN_WORDS.get(default, default)


def main():
    options = dict(declared(read(ROOT / "cmake" / "Options.cmake")))
    page = read(ROOT / "docs" / "porting.md")
    table = page.partition("<!-- options: begin -->")[2].partition("<!-- options: end -->")[0]
    rows = dict(ROW.findall(table))
    faults = [f"docs/porting.md: {name} has the default {rows.get(name, 'nothing')}, not {default}"
              for name, default in options.items() if rows.get(name) != default]
    faults += [f"docs/porting.md: there is no option {name}" for name in rows if name not in options]
    for name, text in texts():
        if name.endswith((".cmake", "CMakeLists.txt")) and name != "cmake/Options.cmake":
            faults += [f"{name}: declares {option}" for option, _ in declared(text)
                       if option not in NO_OPTIONS]
        for match in PASSED.findall(text):
            option = match[0] or match[1]
            if option not in options and option not in NO_OPTIONS:
                faults.append(f"{name}: passes {option}, which is no option")
    print("\n".join(faults) if faults else f"{len(options)} options, all in the table")
    return 1 if faults or not options else 0


if __name__ == "__main__":
    sys.exit(main())
