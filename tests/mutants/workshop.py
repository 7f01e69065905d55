# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""The copy of the sources in build/mutants, its objects and test programs, and trying a change in it."""
import json
import os
import pathlib
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
# ct/ is part of the hardened build only, which has its own folder and programs.
HARDENED = "ct" in sys.argv[1:]
FOLDER = ROOT / "build" / ("mutants-hardened" if HARDENED else "mutants")
TREE = FOLDER / "tree"
OBJECTS = FOLDER / "objects"
TRIAL = FOLDER / "trial"
# The test folders of each program, cheap and closely related ones first. Most changes are caught by the
# first program, so the others are not even linked.
PROGRAMS = ((("ct",), ("schemes",), ("robustness",), ("sdf",)) if HARDENED else
            (("mint", "ecc", "exhaustive"), ("schemes",), ("robustness",), ("sdf",), ("hash",)))
TEST_FOLDERS = tuple(folder for program in PROGRAMS for folder in program)
OPTIMISED = PROGRAMS[0]
# The source that contains the code of a header, if it is not the one of the same name. A changed header is
# tried in this one object first, which is linked before the others; most changes are caught there.
NEAREST = {
    "mint/limbs/borrow_rule.h": "mint/limbs/inverse.cpp", "mint/limbs/limb.h": "mint/limbs/division.cpp",
    "mint/limbs/limb_x86_64.h": "ecc/wnaf.cpp", "mint/limbs/modulus_64.h": "ecc/wnaf.cpp",
    "mint/limbs/barrett.h": "mint/limbs/modulus_29.cpp",
    "mint/limbs/any_width.h": "mint/limbs/modulus_29.cpp",
    "mint/limbs/column_sum.h": "mint/limbs/modulus_29_columns.cpp",
    "mint/limbs/modular_sums.h": "ecc/wnaf.cpp", "mint/limbs/modulus.h": "ecc/wnaf.cpp",
    "mint/limbs/residues.h": "mint/power.cpp", "mint/limbs/inverse_steps.h": "mint/limbs/inverse.cpp",
    "mint/limbs/modulus_29.h": "mint/limbs/modulus_29_columns.cpp",
    "ecc/recode.h": "ecc/wnaf.cpp", "mint/value.h": "mint/divide.cpp", "mint/words.h": "mint/kernels.cpp",
    "base/work_buffer.h": "mint/divide.cpp", "ecc/reference_field.h": "ecc/points.cpp",
    "ecc/fast_field.h": "ecc/wnaf.cpp", "ecc/jacobian_formulas.h": "ecc/wnaf.cpp",
    "ecc/affine_formulas.h": "ecc/points.cpp",
    "ecc/table_builder.h": "ecc/table.cpp", "ecc/curve_numbers.h": "ecc/global_curve.cpp",
    "ecc/point_bytes.h": "ecc/encode.cpp", "ecc/curve.h": "ecc/table.cpp",
    "ecc/fields.h": "ecc/fast_field.cpp", "ecc/secret_rounds.h": "schemes/ecdsa.cpp",
    "hash/digest.h": "hash/sm2_kdf.cpp",
    "hash/bytes.h": "hash/sha256.cpp", "hash/key_sink.h": "hash/sm2_kdf.cpp",
    "hash/hmac.h": "hash/hmac_sm3.cpp", "schemes/peer_image.h": "schemes/sm2_exchange.cpp",
    "ct/choice.h": "ct/points.cpp", "ct/look_up.h": "ct/field.cpp", "ct/mask.h": "ct/points.cpp",
    "ct/multiples.h": "ct/points.cpp", "ct/point.h": "ct/points.cpp", "ct/running_sum.h": "ct/points.cpp",
    "ct/sums.h": "ct/points.cpp",
}
MEMORY = 4 << 30


def run(command, seconds=3600, cwd=None):
    """Runs the command with a limit on processor time, independent of the machine's load."""
    def limits():
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds))
    return subprocess.run([str(word) for word in command], cwd=cwd, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, errors="replace", check=False,
                          preexec_fn=limits)


def must(command, cwd=None):
    done = run(command, cwd=cwd)
    if done.returncode != 0:
        raise SystemExit(f"{done.stdout[-4000:]}\n{shlex.join(map(str, command))}: {done.returncode}")
    return done.stdout


def copy_tree():
    """Writes only files that differ, so that objects stay up to date."""
    names = must(["find", ".", "-name", "build", "-prune", "-o", "-name", ".git", "-prune",
                  "-o", "-type", "f", "-print"], cwd=ROOT).split("\n")
    wanted = {name[2:] for name in names if name and not name.startswith("./tests/mutants/")}
    for name in wanted:
        source, target = ROOT / name, TREE / name
        if not target.exists() or target.read_bytes() != source.read_bytes():
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, target)
    for target in TREE.rglob("*"):
        if target.is_file() and target.relative_to(TREE).as_posix() not in wanted:
            target.unlink()


class Unit:
    """A source file, the command that compiles it, and its object."""

    def __init__(self, entry):
        self.name = pathlib.Path(entry["file"]).relative_to(TREE).as_posix()
        self.folder = pathlib.Path(self.name).parts[1] if self.name.startswith("tests/") else None
        words = [word for word in shlex.split(entry["command"]) if not re.match(r"-W|-O|-g|-DNDEBUG", word)]
        words = words[:words.index("-o")]
        level = "-O1" if self.folder is None or self.folder in OPTIMISED else "-O0"
        self.command = words + [level, "-w"]
        if self.folder is not None:
            self.command += ["-include", FOLDER / level[1:] / "gtest_first.h"]
        self.object = OBJECTS / (self.name + ".o")
        self.depends = OBJECTS / (self.name + ".d")

    def compile(self, target=None):
        """Compiles the current tree; returns None on success, otherwise the compiler's messages."""
        target = target or self.object
        target.parent.mkdir(parents=True, exist_ok=True)
        extra = ["-MMD", "-MF", self.depends] if target == self.object else []
        done = run([*self.command, *extra, "-o", target, "-c", TREE / self.name], 120)
        return None if done.returncode == 0 else done.stdout

    def headers(self):
        """The names of the tree's files that the object depends on."""
        words = self.depends.read_text(encoding="utf-8").replace("\\\n", " ").split()[1:]
        prefix = f"{TREE}/"
        return {word[len(prefix):] for word in words if word.startswith(prefix)}

    def is_stale(self):
        if not self.object.exists() or not self.depends.exists():
            return True
        made = self.object.stat().st_mtime
        files = [TREE / name for name in self.headers()]
        return any(not file.exists() or file.stat().st_mtime > made for file in files)


def configure():
    cmake = FOLDER / "cmake"
    must(["cmake", "-S", TREE, "-B", cmake, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
          f"-DZOKECC_HARDENED={'ON' if HARDENED else 'OFF'}",
          "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
          "-DCMAKE_CXX_COMPILER=g++", "-DZOKECC_EXAMPLES=OFF", "-DZOKECC_TOOLS=OFF"])
    entries = json.loads((cmake / "compile_commands.json").read_text(encoding="utf-8"))
    tests = "|".join(TEST_FOLDERS)
    library, programs = [], []
    for entry in entries:
        if re.search(r"/(zokecc_objects|other_moduli)[.]dir/", entry["command"]):
            library.append(Unit(entry))
        elif re.search(rf"/(test_support|({tests})_tests)[.]dir/", entry["command"]):
            programs.append(Unit(entry))
    # The tests of the hardened build have their own ct/, which supports tiny curves as well.
    own = [unit for unit in programs if unit.folder is None]
    names = {unit.name for unit in own}
    library = [unit for unit in library if unit.name not in names] + own
    programs = [unit for unit in programs if unit.folder is not None]
    order = ("support", *TEST_FOLDERS)
    programs.sort(key=lambda unit: (order.index(unit.folder), unit.name))
    wraps = sorted(set(re.findall(r"-Wl,--wrap=\w+", (cmake / "build.ninja").read_text(encoding="utf-8"))))
    return library, programs, wraps


def precompile(command, level):
    header = FOLDER / level / "gtest_first.h"
    if not header.with_suffix(".h.gch").exists():
        header.parent.mkdir(parents=True, exist_ok=True)
        header.write_text("#include <gtest/gtest.h>\n", encoding="ascii")
        flags = [word for word in command if word not in ("-include", header)]
        must([*flags, "-x", "c++-header", "-o", f"{header}.gch", "-c", header])


def departures():
    """The tests that the hardened build fails by design; its own tests replace them."""
    lists = (ROOT / "tests" / "hardened").glob("*.txt") if HARDENED else ()
    lines = [line for path in lists for line in path.read_text(encoding="ascii").splitlines()]
    return ":".join(line for line in lines if line and not line.startswith("#"))


def suites_in(report):
    return json.loads(report.read_text(encoding="utf-8"))["testsuites"]


class Workshop:
    def __init__(self, log):
        copy_tree()
        self.library, self.programs, self.wraps = configure()
        for unit in self.programs:
            precompile(unit.command, "O1" if "-O1" in unit.command else "O0")
        stale = [unit for unit in self.library + self.programs if unit.is_stale()]
        if stale:
            log(f"==> compiling {len(stale)} files")
        for unit in stale:
            fault = unit.compile()
            if fault is not None:
                unit.object.unlink(missing_ok=True)
                raise SystemExit(fault)
        shutil.rmtree(TRIAL, ignore_errors=True)
        self.plan = {}
        started = time.monotonic()
        for program in PROGRAMS:
            self.measure(program)
        log(f"==> without a change the tests take {time.monotonic() - started:.0f} s")

    def link(self, program, replaced):
        """Links the replaced objects first, then the library's, so that the replaced code is used."""
        units = self.library + [unit for unit in self.programs if unit.folder in ("support", *program)]
        units.sort(key=lambda unit: (unit not in replaced, unit.folder is not None))
        objects = [replaced.get(unit, unit.object) for unit in units]
        # Only the tests of ct/ replace functions of the library itself.
        wraps = [wrap for wrap in self.wraps if "ct" in program or "=_Z" not in wrap]
        done = run(["g++", "-fuse-ld=gold", "-o", path_of(program), *objects, *wraps, "-lgtest_main",
                    "-lgtest", "-lpthread"])
        return None if done.returncode == 0 else done.stdout

    def measure(self, program):
        """Records the suites with their file and time, for the order of tests and their time limits."""
        report = FOLDER / "suites.json"
        fault = self.link(program, {})
        if fault is not None:
            raise SystemExit(fault)
        done = run([path_of(program), f"--gtest_output=json:{report}", f"--gtest_filter=-{departures()}"])
        if done.returncode != 0:
            raise SystemExit(f"{done.stdout[-4000:]}\nthe tests fail without a change")
        times = {suite["name"]: float(suite["time"].rstrip("s")) for suite in suites_in(report)}
        must([path_of(program), "--gtest_list_tests", f"--gtest_output=json:{report}"])
        files = {suite["name"]: pathlib.Path(suite["testsuite"][0]["file"]) for suite in suites_in(report)}
        self.plan[program] = {name: (files[name].relative_to(TREE / "tests"), times[name]) for name in times}

    def rounds(self, program, name):
        """Lists of suites for the file called name: its own tests, other fast ones, all others."""
        folder, stem = pathlib.Path(name).parts[0], re.sub(r"_unrolled$", "", pathlib.Path(name).stem)
        parts = [[], [], []]
        for suite, (file, seconds) in self.plan[program].items():
            mine = file.parts[0] == folder
            if mine and file.stem.startswith(stem) and seconds < 2:
                parts[0].append(suite)
            else:
                parts[1 if mine and seconds < 1 else 2].append(suite)
        return [part for part in parts if part]

    def verdict(self, program, rounds):
        """Returns what caught the change, or None."""
        for suites in rounds:
            usual = sum(self.plan[program][suite][1] for suite in suites)
            names = ":".join(f"{suite}.*" for suite in suites) + f"-{departures()}"
            done = run([path_of(program), "--gtest_fail_fast", f"--gtest_filter={names}"], 3 + int(5 * usual))
            if done.returncode < 0:
                end = "timeout" if -done.returncode in (signal.SIGXCPU, signal.SIGKILL) else "crash"
                return f"{end} in {last_started(done.stdout)}"
            if done.returncode > 0:
                failed = re.search(r"^\[  FAILED  \] ([\w/]+[.][\w/]+)", done.stdout, re.MULTILINE)
                return failed.group(1) if failed else f"exit in {last_started(done.stdout)}"
        return None

    def users(self, units, name):
        return [unit for unit in units if name in unit.headers()]

    def compiled(self, units):
        """Returns the objects that differ from the unchanged ones; None if one does not compile."""
        out = {}
        for unit in units:
            target = TRIAL / (unit.name + ".o")
            if unit.compile(target) is not None:
                return None
            if target.read_bytes() != unit.object.read_bytes():
                out[unit] = target
        return out

    def attempt(self, change):
        """Returns the outcome: invalid, same (the same binary), survived, or what caught the change."""
        file = TREE / change.file
        usual = file.read_text(encoding="ascii")
        times = file.stat()
        file.write_text(change.apply(usual), encoding="ascii")
        try:
            return self.attempt_in_tree(change)
        finally:
            file.write_text(usual, encoding="ascii")
            # The objects stay up to date.
            os.utime(file, ns=(times.st_atime_ns, times.st_mtime_ns))
            shutil.rmtree(TRIAL, ignore_errors=True)

    def attempt_in_tree(self, change):
        programs = programs_for(change.file)
        users = self.users(self.library, change.file)
        if change.file.endswith(".h"):
            first = self.compiled([unit for unit in users if unit.name == nearest(change.file)])
            if first is None:
                return "invalid"
            caught = first and self.attempt_with(change, programs[:1], first, 2)
            if caught:
                return caught
        objects = self.compiled(users)
        if objects is None:
            return "invalid"
        caught = objects and self.attempt_with(change, programs, objects, 3)
        if caught:
            return caught
        result = "survived" if objects else "same"
        return self.attempt_in_tests(change, objects, result) if change.file.endswith(".h") else result

    def attempt_with(self, change, programs, objects, rounds):
        for program in programs:
            if self.link(program, objects) is not None:
                return "invalid"
            caught = self.verdict(program, self.rounds(program, change.file)[:rounds])
            if caught is not None:
                return caught
        return None

    def attempt_in_tests(self, change, objects, result):
        """Runs the tests of the header and its nearest source, with code that the library does not have."""
        program = programs_for(change.file)[0]
        names = [pathlib.Path(name) for name in (change.file, nearest(change.file))]
        own = tuple(f"tests/{name.parts[0]}/{limb}{name.stem}" for name in names for limb in ("", "limb_"))
        units = [unit for unit in self.programs if unit.name.startswith(own) and unit.folder in program]
        of_tests = self.compiled(self.users(units, change.file))
        if of_tests is None:
            return "invalid"
        if not of_tests:
            return result
        if self.link(program, {**objects, **of_tests}) is not None:
            return "invalid"
        files = {pathlib.Path(unit.name).relative_to("tests") for unit in of_tests}
        mine = [suite for suite, (file, _) in self.plan[program].items() if file in files]
        return self.verdict(program, [mine]) or "survived"


def programs_for(name):
    """The programs, the one with the tests of the file's own folder first."""
    folder = pathlib.Path(name).parts[0]
    return sorted(PROGRAMS, key=lambda program: folder not in program)


def nearest(header):
    return NEAREST.get(header, header[:-2] + ".cpp")


def path_of(program):
    return FOLDER / f"{program[0]}_tests"


def last_started(output):
    found = re.findall(r"^\[ RUN      \] (\S+)", output, re.MULTILINE)
    return found[-1] if found else "no test"
