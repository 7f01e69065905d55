#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Writes the library's bill of materials, an SPDX 2.3 document in JSON.

    cmake/sbom.py > zokecc.spdx.json      (or ./build.sh sbom)

The library consists only of its own files and needs a C library at run time; the document lists both, each
file with its checksums. It is the same in every run: its time is SOURCE_DATE_EPOCH, or that of the last
entry of packaging/debian/changelog.
"""
import datetime
import email.utils
import hashlib
import json
import os
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ["base", "mint", "hash", "ecc", "ct", "schemes", "sdf", "include"]
SUFFIXES = {".cpp", ".h"}
COPYRIGHT = "Copyright 2026 the zokecc developers"


def version():
    text = (ROOT / "CMakeLists.txt").read_text(encoding="ascii")
    return re.search(r"project\(zokecc VERSION (\S+)", text)[1]


def created():
    changelog = (ROOT / "packaging" / "debian" / "changelog").read_text(encoding="ascii")
    dated = email.utils.parsedate_to_datetime(re.search(r"^ -- .*>  (.*)$", changelog, re.MULTILINE)[1])
    seconds = int(os.environ.get("SOURCE_DATE_EPOCH") or dated.timestamp())
    return datetime.datetime.fromtimestamp(seconds, datetime.timezone.utc).strftime("%Y-%m-%dT%H:%M:%SZ")


def sources():
    """The files that the library is compiled from, and those that control its build."""
    found = [path for folder in FOLDERS for path in (ROOT / folder).rglob("*") if path.suffix in SUFFIXES]
    found += [ROOT / "LICENSE", ROOT / "CMakeLists.txt", ROOT / "cmake" / "exports.map",
              ROOT / "cmake" / "Kernels.cmake", ROOT / "cmake" / "Options.cmake"]
    return sorted(path.relative_to(ROOT).as_posix() for path in found)


def sums(name):
    content = (ROOT / name).read_bytes()
    return {kind: hashlib.new(kind.lower(), content).hexdigest() for kind in ("SHA1", "SHA256")}


def file_entry(name):
    return {
        "SPDXID": "SPDXRef-File-" + re.sub(r"[^A-Za-z0-9.]", "-", name),
        "fileName": "./" + name,
        "fileTypes": ["SOURCE" if pathlib.PurePath(name).suffix in SUFFIXES else "TEXT"],
        "checksums": [{"algorithm": kind, "checksumValue": value} for kind, value in sums(name).items()],
        "licenseConcluded": "Apache-2.0",
        "licenseInfoInFiles": ["NOASSERTION"],
        "copyrightText": COPYRIGHT,
    }


def verification_code(files):
    """SHA-1 over the sorted SHA-1 sums of all files, SPDX 2.3, 7.9."""
    ordered = sorted(entry["checksums"][0]["checksumValue"] for entry in files)
    return hashlib.sha1("".join(ordered).encode("ascii")).hexdigest()


def package(identifier, name, **fields):
    return {"SPDXID": identifier, "name": name, "downloadLocation": "NOASSERTION", "filesAnalyzed": False,
            "licenseConcluded": "NOASSERTION", "licenseDeclared": "NOASSERTION",
            "copyrightText": "NOASSERTION", **fields}


def document():
    files = [file_entry(name) for name in sources()]
    code = verification_code(files)
    library, c_library = "SPDXRef-Package-zokecc", "SPDXRef-Package-libc"
    relations = [("SPDXRef-DOCUMENT", "DESCRIBES", library), (library, "DYNAMIC_LINK", c_library)]
    relations += [(library, "CONTAINS", entry["SPDXID"]) for entry in files]
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"zokecc-{version()}",
        "documentNamespace": f"https://zokecc.example.org/spdx/zokecc-{version()}-{code}",
        "creationInfo": {"created": created(),
                         "creators": ["Organization: zokecc developers", "Tool: sbom.py"]},
        "packages": [
            package(library, "zokecc", versionInfo=version(), supplier="Organization: zokecc developers",
                    primaryPackagePurpose="LIBRARY", filesAnalyzed=True,
                    packageVerificationCode={"packageVerificationCodeValue": code},
                    licenseConcluded="Apache-2.0", licenseDeclared="Apache-2.0", copyrightText=COPYRIGHT,
                    licenseInfoFromFiles=["Apache-2.0"]),
            package(c_library, "C library of the system", primaryPackagePurpose="LIBRARY"),
        ],
        "files": files,
        "relationships": [{"spdxElementId": first, "relationshipType": kind, "relatedSpdxElement": second}
                          for first, kind, second in relations],
    }


if __name__ == "__main__":
    json.dump(document(), sys.stdout, indent=1)
    sys.stdout.write("\n")
