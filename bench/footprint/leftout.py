# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""What a program pulls in from the archive: links with just a few calls and reports the sizes."""
import build

# The archive as it is, and built so that the linker can drop single functions.
SECTIONS = "sections"
SECTION_FLAGS = {"CXXFLAGS": "-ffunction-sections -fdata-sections"}
PROGRAMS = {
    "SM3": ["sm3_hash"],
    "SHA-256 and its HMAC": ["mhash_sha256", "mhmac_sha256"],
    "verifying SM2 in a session": ["ZOK_OpenSession", "ZOK_CloseSession", "ZOK_ExternalVerifyHash_ECC"],
    "that, signing, key pairs": ["ZOK_OpenSession", "ZOK_CloseSession", "ZOK_ExternalVerifyHash_ECC",
                                 "ZOK_ExternalSignHash_ECC", "SDF_GenerateKeyPair_ECC"],
    "key agreement in a session": ["ZOK_OpenSession", "ZOK_CloseSession", "SDF_GenerateKeyPair_ECC",
                                   "ZOK_SM2_GenerateAgreementDataWithECC", "ZOK_SM2_GenerateKeyWithECC",
                                   "ZOK_SM2_GenerateAgreementDataAndKeyWithECC"],
    "verifying SM2 over the curve of the process": ["Curve_Init", "sm2_DigitalVeriy"],
}


def section_sizes(path):
    lines = build.run(f"{build.TOOLS}size", "-A", path).split("\n")
    return {words[0]: int(words[1]) for words in map(str.split, lines)
            if len(words) == 3 and words[1].isdigit()}


def linked(archive, calls, *flags):
    """Code and constants, zeroed data of a program with only these calls."""
    program = archive.with_name("linked")
    build.run(f"{build.TOOLS}gcc", "-nostartfiles", "-no-pie", *flags, f"-Wl,-e,{calls[0]}",
              *(f"-Wl,-u,{call}" for call in calls), "-o", program, archive)
    sizes = section_sizes(program)
    return sizes[".text"] + sizes.get(".rodata", 0), sizes.get(".bss", 0)


def measure(exported):
    """{what is used: [code and constants, zeroed; the same with sections]}, built with -Os."""
    folder = build.folder(SECTIONS)
    build.configure("os", folder, SECTION_FLAGS)
    build.run("cmake", "--build", folder, "--target", "zokecc_static")
    plain = build.folder("os") / "libzokecc.a"
    programs = {**PROGRAMS, "every call": sorted(exported)}
    return {what: [*linked(plain, calls),
                   *linked(folder / "libzokecc.a", calls, "-Wl,--gc-sections")]
            for what, calls in programs.items()}
