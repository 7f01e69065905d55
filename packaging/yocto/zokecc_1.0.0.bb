# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
SUMMARY = "Elliptic-curve cryptography for small embedded Linux devices"
DESCRIPTION = "SM2, ECDSA, Diffie-Hellman, SM3, SHA-256 and HMAC over prime curves of up to 256 bits, \
with calls after GM/T 0018."
SECTION = "libs"
LICENSE = "Apache-2.0"
LIC_FILES_CHKSUM = "file://LICENSE;md5=3b83ef96387f14655fc854ddc3c6bd57"

# An archive of the sources in the folder files/ next to this recipe.
SRC_URI = "file://zokecc-${PV}.tar.gz"
S = "${WORKDIR}/zokecc-${PV}"

inherit cmake

# Without "hardened" the program must provide its own rand(), or random numbers can be guessed.
PACKAGECONFIG ??= "hardened tools"
PACKAGECONFIG[hardened] = "-DZOKECC_HARDENED=ON,-DZOKECC_HARDENED=OFF"
PACKAGECONFIG[small] = "-DZOKECC_SMALL=ON,-DZOKECC_SMALL=OFF"
PACKAGECONFIG[tools] = "-DZOKECC_TOOLS=ON,-DZOKECC_TOOLS=OFF"
EXTRA_OECMAKE = "-DCMAKE_BUILD_TYPE=Release -DZOKECC_TESTS=OFF -DZOKECC_EXAMPLES=OFF -DZOKECC_MANUAL=OFF"

PACKAGES =+ "${PN}-tools"
FILES:${PN}-tools = "${bindir}"

BBCLASSEXTEND = "native nativesdk"
