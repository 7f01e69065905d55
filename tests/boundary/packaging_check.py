#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Checks packaging/ as far as possible without Buildroot and bitbake: the Makefile fragment is read by make,
the recipe is complete, versions and checksums match the sources, and the options that both pass exist.

    packaging_check.py                      the checks
    packaging_check.py buildroot [CHOICE..] the options that Buildroot would pass with these choices
    packaging_check.py yocto [CHOICE...]    those of the recipe
"""
import hashlib
import itertools
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
BUILDROOT = ROOT / "packaging" / "buildroot" / "zokecc"
RECIPES = sorted((ROOT / "packaging" / "yocto").glob("*.bb"))
CHOICES = ["HARDENED", "SMALL", "TOOLS"]
# Substitutes for what Buildroot defines.
WRAPPER = """
qstrip = $(subst ",,$(1))
define cmake-package
EVALUATED := yes
endef
include {fragment}
all: ; @echo '$(EVALUATED)|$(ZOKECC_VERSION)|$(ZOKECC_SITE)|$(ZOKECC_LICENSE)|$(ZOKECC_CONF_OPTS)'
"""
NEEDED = ["SUMMARY", "DESCRIPTION", "SECTION", "LICENSE", "LIC_FILES_CHKSUM", "SRC_URI", "S", "EXTRA_OECMAKE"]


def read(path):
    return path.read_text(encoding="ascii")


def digest(algorithm):
    return hashlib.new(algorithm, (ROOT / "LICENSE").read_bytes()).hexdigest()


def project_version():
    return re.search(r"project\(zokecc VERSION (\S+)", read(ROOT / "CMakeLists.txt"))[1]


def options():
    return set(re.findall(r"(?:option|set)\((ZOKECC_\w+) \"", read(ROOT / "cmake" / "Options.cmake")))


def fragment(chosen):
    """Version, folder, licence and options, as evaluated by make."""
    settings = [f"BR2_PACKAGE_ZOKECC_{choice}=y" for choice in chosen]
    command = ["make", "-s", "--warn-undefined-variables", "-f", "-", 'BR2_PACKAGE_ZOKECC_SOURCE="/sources"',
               *settings]
    done = subprocess.run(command, input=WRAPPER.replace("{fragment}", str(BUILDROOT / "zokecc.mk")),
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)
    evaluated, *rest = done.stdout.strip().split("|") if done.returncode == 0 else [done.stderr]
    return rest if evaluated == "yes" else []


def buildroot_faults():
    declared = re.findall(r"^config BR2_PACKAGE_ZOKECC_(\w+)$", read(BUILDROOT / "Config.in"), re.MULTILINE)
    if sorted(declared) != sorted([*CHOICES, "SOURCE"]):
        yield f"Config.in declares {' '.join(declared)}"
    for length in range(len(CHOICES) + 1):
        for chosen in itertools.combinations(CHOICES, length):
            seen = fragment(chosen)
            if seen[:3] != [project_version(), "/sources", "Apache-2.0"]:
                yield f"zokecc.mk: make gives {seen}"
                continue
            passed = dict(re.findall(r"-D(\w+)=(\w+)", seen[3]))
            for choice in CHOICES:
                if passed.get(f"ZOKECC_{choice}") != ("ON" if choice in chosen else "OFF"):
                    yield f"zokecc.mk: with {chosen} it passes {seen[3]}"
            yield from (f"zokecc.mk: {name} is no option" for name in set(passed) - options())
    if f"sha256  {digest('sha256')}  LICENSE" not in read(BUILDROOT / "zokecc.hash").split("\n"):
        yield "zokecc.hash: not the sum of LICENSE"


def recipe(text):
    """Assignments and the features of PACKAGECONFIG."""
    text = text.replace("\\\n", "")
    variables = dict(re.findall(r'^([A-Z_]+)(?: [?+:.=]*=| =\+) "(.*)"$', text, re.MULTILINE))
    features = dict(re.findall(r'^PACKAGECONFIG\[(\w+)\] = "(.*)"$', text, re.MULTILINE))
    return variables, features


def recipe_faults(path):
    variables, features = recipe(read(path))
    yield from (f"{path.name}: no {name}" for name in NEEDED if not variables.get(name))
    if path.name != f"zokecc_{project_version()}.bb":
        yield f"{path.name}: the version is {project_version()}"
    if variables.get("LIC_FILES_CHKSUM") != f"file://LICENSE;md5={digest('md5')}":
        yield f"{path.name}: LIC_FILES_CHKSUM is not the sum of LICENSE"
    if not re.search(r"^inherit cmake$", read(path), re.MULTILINE):
        yield f"{path.name}: does not inherit cmake"
    for feature, value in features.items():
        if not re.fullmatch(r"-D(ZOKECC_\w+)=ON,-D\1=OFF", value):
            yield f"{path.name}: {feature} is {value}"
    yield from (f"{path.name}: {word} is no feature" for word in variables.get("PACKAGECONFIG", "").split()
                if word not in features)
    yield from (f"{path.name}: {name} is no option" for name in re.findall(r"-D(ZOKECC_\w+)", read(path))
                if name not in options())


def recipe_options(chosen):
    variables, features = recipe(read(RECIPES[-1]))
    for feature, value in features.items():
        yield value.split(",")[0 if feature in chosen else 1]
    yield variables["EXTRA_OECMAKE"]


def main():
    faults = list(buildroot_faults()) + ([] if RECIPES else ["no recipe"])
    for path in RECIPES:
        faults += recipe_faults(path)
    print("\n".join(faults) if faults else "the fragment and the recipe are as they should be")
    return 1 if faults else 0


if __name__ == "__main__":
    if sys.argv[1:2] == ["buildroot"]:
        print(fragment(sys.argv[2:])[3])
    elif sys.argv[1:2] == ["yocto"]:
        print(*recipe_options(sys.argv[2:]))
    else:
        sys.exit(main())
