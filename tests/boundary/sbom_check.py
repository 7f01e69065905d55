#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""The bill of materials from cmake/sbom.py is a complete SPDX 2.3 document, lists every source that
CMakeLists.txt compiles and every header in those folders, and its checksums are those of the files.

    sbom_check.py [SOURCE...]    the compiled sources, relative to the root
"""
import hashlib
import json
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
# Required by SPDX 2.3.
DOCUMENT = ["spdxVersion", "dataLicense", "SPDXID", "name", "documentNamespace", "creationInfo", "packages"]
PACKAGE = ["SPDXID", "name", "downloadLocation", "licenseConcluded", "licenseDeclared", "copyrightText"]
FILE = ["SPDXID", "fileName", "checksums", "licenseConcluded", "licenseInfoInFiles", "copyrightText"]
IDENTIFIER = re.compile(r"SPDXRef-[A-Za-z0-9.-]+")
TIME = re.compile(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ")


def written():
    command = [sys.executable, "-B", str(ROOT / "cmake" / "sbom.py")]
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, cwd="/").stdout


def form_faults(document):
    yield from (f"no {name}" for name in DOCUMENT if not document.get(name))
    for kind, wanted in (("packages", PACKAGE), ("files", FILE)):
        for entry in document[kind]:
            yield from (f"{entry.get('SPDXID')}: no {name}" for name in wanted if not entry.get(name))
    if (document["spdxVersion"], document["dataLicense"]) != ("SPDX-2.3", "CC0-1.0"):
        yield "not SPDX 2.3, or under another licence"
    if not TIME.fullmatch(document["creationInfo"]["created"]):
        yield f"created {document['creationInfo']['created']}"
    identifiers = [entry["SPDXID"] for entry in [document, *document["packages"], *document["files"]]]
    yield from (f"{name}: not an identifier" for name in identifiers if not IDENTIFIER.fullmatch(name))
    if len(set(identifiers)) != len(identifiers):
        yield "an identifier stands for two things"
    for relation in document["relationships"]:
        for end in ("spdxElementId", "relatedSpdxElement"):
            if relation[end] not in identifiers:
                yield f"a relation names {relation[end]}"


def sum_faults(document):
    ordered = []
    for entry in document["files"]:
        content = (ROOT / entry["fileName"]).read_bytes()
        told = {item["algorithm"]: item["checksumValue"] for item in entry["checksums"]}
        ordered.append(hashlib.sha1(content).hexdigest())
        if told != {"SHA1": ordered[-1], "SHA256": hashlib.sha256(content).hexdigest()}:
            yield f"{entry['fileName']}: wrong sums"
    code = hashlib.sha1("".join(sorted(ordered)).encode()).hexdigest()
    if document["packages"][0]["packageVerificationCode"]["packageVerificationCodeValue"] != code:
        yield "wrong verification code"


def content_faults(document, compiled):
    listed = {entry["fileName"][2:] for entry in document["files"]}
    folders = {name.split("/")[0] for name in compiled} | {"include"}
    headers = {path.relative_to(ROOT).as_posix() for folder in folders
               for path in (ROOT / folder).rglob("*.h")}
    yield from (f"{name} is not in it" for name in sorted(({*compiled, "LICENSE"} | headers) - listed))
    contained = {relation["relatedSpdxElement"] for relation in document["relationships"]
                 if relation["relationshipType"] == "CONTAINS"}
    if contained != {entry["SPDXID"] for entry in document["files"]}:
        yield "the package does not contain just its files"
    if document["name"] != "zokecc-" + document["packages"][0]["versionInfo"]:
        yield "the version is not that of the document"
    project = (ROOT / "CMakeLists.txt").read_text(encoding="ascii")
    if f"project(zokecc VERSION {document['packages'][0]['versionInfo']} " not in project:
        yield "the version is not the project's"


def main(*compiled):
    text = written()
    document = json.loads(text)
    faults = list(form_faults(document))
    if not faults:
        faults = [*sum_faults(document), *content_faults(document, compiled)]
    if text != written():
        faults.append("differs from run to run")
    print("\n".join(faults) if faults else f"{len(document['files'])} files, all of them with their sums")
    return 1 if faults or not compiled else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
