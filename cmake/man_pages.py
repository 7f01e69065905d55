#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Man pages of the public calls, one for each, from the comments of the headers.

    cmake/man_pages.py FOLDER

Each page is named after its call and begins with the #include. Text that applies to a group of calls
follows the call's own description.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
HEADERS = ROOT / "include" / "zokecc"
DECLARATION = re.compile(r"/\*\*((?:(?!\*/).)*)\*/\s*ZOKECC_API\s+([^;]+;)", re.DOTALL)
GROUP = re.compile(r"/\*\*((?:(?!\*/).)*?@defgroup.*?)\*/", re.DOTALL)
TAG = re.compile(r"^@(param|return|retval|par|note)\b(?:\[([\w,]+)\])?[ \t]*", re.MULTILINE)
HEADINGS = {"param": "ARGUMENTS", "return": "RETURN VALUE", "retval": "RETURN VALUE", "note": "NOTES"}


def clean(comment):
    return re.sub(r"^[ \t]*\* ?", "", comment, flags=re.MULTILINE).strip()


def parts(comment):
    """(tag, direction, text) of each part; the description comes first and has the tag ''."""
    found = list(TAG.finditer(comment))
    yield "", None, comment[:found[0].start() if found else len(comment)].strip()
    for tag, after in zip(found, found[1:] + [None]):
        yield tag.group(1), tag.group(2), comment[tag.end():after.start() if after else len(comment)].strip()


def roff(text):
    escaped = text.replace("\\", r"\e").replace("-", r"\-")
    return re.sub(r"^([.'])", r"\\&\1", " ".join(escaped.split()))


def items(text):
    """A paragraph, with a list where lines begin with a dash."""
    first, *rest = re.split(r"^\s*- ", text, flags=re.MULTILINE)
    start = [".PP\n" + roff(first)] if first.strip() else []
    return "\n".join(start + [".IP \\(bu 2\n" + roff(item) for item in rest])


def paragraphs(text):
    """Paragraphs of a description; tables and code keep their line breaks."""
    for paragraph in re.split(r"\n\s*\n", text):
        lines = [line.rstrip() for line in paragraph.split("\n") if not line.startswith("@")]
        if any(line.lstrip().startswith("|") or line.startswith("     ") for line in lines):
            rows = (line for line in lines if not re.match(r"\s*\|[-:| ]+\|$", line))
            yield ".PP\n.nf\n" + "\n".join(r"\&" + line.replace("\\", r"\e") for line in rows) + "\n.fi"
        elif lines:
            yield items("\n".join(lines))


def sections(comment):
    """Heading and body of each section, in the order in which they first appear."""
    out = {}
    for tag, direction, text in parts(comment):
        if tag == "par":
            title, _, body = text.partition("\n")
            out.setdefault(title.strip().upper(), []).extend(paragraphs(re.sub(r"(?m)^ {1,6}", "", body)))
        elif tag in ("param", "retval"):
            name, _, body = text.partition(" ")
            label = rf"\fI{name}\fR" if tag == "param" else rf"\fB{name}\fR"
            label += f" ({direction})" if direction else ""
            out.setdefault(HEADINGS[tag], []).append(f".TP\n{label}\n{roff(body)}")
        elif tag:
            out.setdefault(HEADINGS[tag], []).append(items(text))
        else:
            out["DESCRIPTION"] = list(paragraphs(text))
    return out


def group_of(text, at):
    last = list(GROUP.finditer(text, 0, at))
    return re.sub(r"@defgroup \w+ .*\n|@\{", "", clean(last[-1].group(1))) if last else ""


def page(header, name, prototype, comment, group, version):
    description = next(parts(comment))[2]
    brief = re.match(r"(.*?[.:])(?:\s|$)", " ".join(description.split())).group(1).rstrip(".:")
    lines = [f'.TH "{name}" 3 "" "zokecc {version}" "zokecc manual"', ".SH NAME",
             rf"{name} \- {roff(brief[0].lower() + brief[1:])}", ".SH SYNOPSIS", ".nf",
             f".B #include <zokecc/{header}>", ".PP", prototype, ".fi"]
    own, shared = sections(comment), sections(group)
    general = shared.pop("DESCRIPTION", [])
    for heading, body in shared.items():
        own.setdefault(heading, []).extend(body)
    own["DESCRIPTION"] += general
    first = ["DESCRIPTION", "ARGUMENTS", "RETURN VALUE"]
    for heading in first + [heading for heading in own if heading not in first]:
        if own.get(heading):
            lines += [f'.SH "{heading}"', *own[heading]]
    return "\n".join(lines + [".SH SEE ALSO", "The rules that all calls share: <zokecc/conventions.h>.", ""])


def main(folder):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    version_header = (HEADERS / "version.h").read_text(encoding="ascii")
    version = re.search(r'VERSION_STRING "(.*)"', version_header).group(1)
    for path in sorted(HEADERS.glob("*.h")):
        text = path.read_text(encoding="ascii")
        for found in DECLARATION.finditer(text):
            prototype = re.sub(r"[ \t]+(?=\w+\()", " ", found.group(2))
            name = re.search(r"(\w+)\(", prototype).group(1)
            indent = " " * (prototype.index("(") + 1)
            prototype = re.sub(r"\n\s*", "\n" + indent, prototype)
            content = page(path.name, name, prototype, clean(found.group(1)),
                           group_of(text, found.start()), version)
            (folder / f"{name}.3").write_text(content, encoding="ascii")
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
