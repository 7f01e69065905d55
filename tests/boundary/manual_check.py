#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""The comment of every public function is complete and has the same form everywhere.

Each declaration is preceded by a comment with a sentence on the purpose, one @param for each argument in
their order, with a direction for pointers and the size of byte strings, @return or a @retval for each
result if there is one, and the paragraph Timing, of the call or of its group. The paragraph Aliasing
is in conventions.h for all calls; if an output can be the same memory as an input, because
both are records of one type or both are bytes, the call or its group has its own.
"""
import pathlib
import re
import sys

HEADERS = pathlib.Path(__file__).resolve().parents[2] / "include" / "zokecc"
DECLARATION = re.compile(r"^ZOKECC_API\s+(\w+)\s+(\w+)\(([^;]*)\);", re.MULTILINE)
GROUP = re.compile(r"/\*\*((?:(?!\*/).)*?@defgroup.*?)\*/|@\}", re.DOTALL)
ARGUMENT = re.compile(r"(const )?(\w+) (\**)(\w+)$")
TAG = re.compile(r"@(param|return|retval|par|note)\b")
STATUS_CALL = re.compile(r"(SDF|ZOK)_")


def clean(comment):
    return "\n".join(re.sub(r"^\s*\* ?", "", line) for line in comment.split("\n")).strip()


def comment_before(text, at):
    """The documentation comment that ends right before a position, or nothing."""
    before = text[:at].rstrip()
    if not before.endswith("*/"):
        return ""
    start = before.rfind("/*")
    return clean(before[start + 3:-2]) if before[start:start + 3] == "/**" else ""


def sections(comment):
    """(tag, text) of each part; the description has the tag ''."""
    parts = re.split(r"^(?=@(?:param|return|retval|par|note)\b)", comment, flags=re.MULTILINE)
    for part in parts:
        found = TAG.match(part)
        yield (found.group(1), part[found.end():].strip()) if found else ("", part.strip())


def paragraphs(comment):
    """Title and text of each @par."""
    titled = [text.partition("\n") for tag, text in sections(comment) if tag == "par"]
    return {title.strip(): text.strip() for title, _, text in titled}


def arguments(text):
    """(const, type, stars, name) of each argument."""
    if text.strip() == "void":
        return []
    found = [ARGUMENT.match(" ".join(one.split())) for one in text.split(",")]
    return [(bool(m.group(1)), m.group(2), m.group(3), m.group(4)) for m in found]


def is_handle(argument):
    return argument[1] == "void" and argument[2] == "*"


def parameter_faults(args, comment):
    told = []
    for tag, text in sections(comment):
        if tag == "param":
            found = re.match(r"(?:\[([\w,]+)\])?\s*(\w+)\s*(.*)", text, re.DOTALL)
            told.append((found.group(2), found.group(1), found.group(3)))
    if [name for name, _, _ in told] != [arg[3] for arg in args]:
        yield "@param: not the arguments in their order"
        return
    for arg, (name, direction, text) in zip(args, told):
        if not text:
            yield f"@param {name}: empty"
        wanted = (None,)
        if arg[2] and not is_handle(arg):
            wanted = ("in",) if arg[0] else ("out", "in,out")
            if text.startswith("not read"):
                continue
        if direction not in wanted:
            yield f"@param {name}: direction {direction}"
        if arg[1] == "uint8_t" and arg[2] and not re.search(r"\bbytes?\b", text):
            yield f"@param {name}: no size in bytes"


def may_be_one(args):
    """True if an output can be the same memory as an input."""
    pointers = [arg for arg in args if arg[2] and not is_handle(arg)]
    inputs = {arg[1] for arg in pointers if arg[0]}
    return any(arg[1] in inputs for arg in pointers if not arg[0])


def faults(result, name, args, comment, group):
    if not comment:
        yield "no comment"
        return
    description = next(sections(comment))[1]
    if not re.match(r"[A-Z].*\.", description, re.DOTALL):
        yield "no sentence on the purpose"
    yield from parameter_faults(args, comment)
    returns = [text for tag, text in sections(comment) if tag == "return"]
    values = [text for tag, text in sections(comment) if tag == "retval"]
    told = len(returns) <= 1 and all(returns) and all(" " in text for text in values)
    if not told or bool(returns or values) != (result != "void"):
        yield "@return, @retval: not exactly where there is a result, or empty"
    if STATUS_CALL.match(name) and not re.match(r"ZOK_OK\b", (returns + values)[0]):
        yield "@retval: does not start with ZOK_OK"
    if not (paragraphs(comment).get("Timing") or paragraphs(group).get("Timing")):
        yield "no paragraph Timing"
    if may_be_one(args) and not (paragraphs(comment).get("Aliasing") or paragraphs(group).get("Aliasing")):
        yield "no paragraph Aliasing, though an output can be an input"


def group_of(text, at):
    """The comment of the group that a position is in."""
    group = ""
    for found in GROUP.finditer(text, 0, at):
        group = clean(found.group(1)) if found.group(1) else ""
    return group


def main():
    found, seen = [], 0
    opening = re.search(r"/\*\*(.*?)\*/", (HEADERS / "conventions.h").read_text(encoding="ascii"), re.DOTALL)
    shared = paragraphs(clean(opening[1]))
    found += [f"conventions.h: no paragraph {title}"
              for title in ("Aliasing", "Timing") if not shared.get(title)]
    for path in sorted(HEADERS.glob("*.h")):
        text = path.read_text(encoding="ascii")
        for declaration in DECLARATION.finditer(text):
            result, name, args = declaration.groups()
            comment = comment_before(text, declaration.start())
            group = group_of(text, declaration.start())
            found += [f"{path.name}: {name}: {fault}"
                      for fault in faults(result, name, arguments(args), comment, group)]
            seen += 1
        if len(re.findall(r"^ZOKECC_API\b", text, re.MULTILINE)) != len(DECLARATION.findall(text)):
            found.append(f"{path.name}: a declaration in a form that is not known here")
    print("\n".join(found) if found else f"{seen} functions are documented")
    return 1 if found or seen == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
