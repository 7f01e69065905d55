#!/usr/bin/env python3
"""The C that README.md shows is a piece of the example that the tests build and run."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
EXAMPLE = ROOT / "examples" / "sign_with_identity.c"
LONGEST = 20


def main():
    readme = (ROOT / "README.md").read_text(encoding="ascii")
    excerpts = re.findall(r"^```c\n(.*?)^```$", readme, re.MULTILINE | re.DOTALL)
    faults = [] if excerpts else ["README.md shows no C"]
    for excerpt in excerpts:
        first = excerpt.splitlines()[0].strip()
        if len(excerpt.splitlines()) > LONGEST:
            faults.append(f"the excerpt from '{first}' on has more than {LONGEST} lines")
        if excerpt not in EXAMPLE.read_text(encoding="ascii"):
            faults.append(f"the excerpt from '{first}' on is not in examples/{EXAMPLE.name}")
    print("\n".join(faults) if faults else f"{len(excerpts)} excerpt, as in examples/{EXAMPLE.name}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
