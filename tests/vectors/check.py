#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Checks the vector files of this folder on their own, without the library.

Every value is recomputed with Python's integers and compared with the file:
digests and MACs, curve parameters, multiples of points, signatures with the verdict that the
public standard gives, shared secrets, ciphertexts and key exchanges. A file that is missing,
that has a different number of cases than expected, or for which there is no check, counts as a
failure.

    python3 check.py               all files
    python3 check.py ecdsa sm3     the files whose names begin with one of the words
"""
import hashlib
import sys

sys.dont_write_bytecode = True
import exchange
import reference
from blocks import HERE, Wrong, curve_in, curve_of, read_blocks, require
from reference import HASHES, MACS


# Hashes.

def check_digest(name):
    def check(block):
        message = block.octets("Msg") * (block.decimal("Repeat") if "Repeat" in block else 1)
        require(len(message) == block.decimal("Len"), "Len")
        require(HASHES[name](message) == block.octets("MD"), "MD")
    return check


def check_mac(name):
    def check(block):
        length = block.decimal("MacLen")
        require(0 < length <= 32, "MacLen")
        mac = MACS[name](block.octets("Key"), block.octets("Msg"))
        require(mac[:length] == block.octets("Mac"), "Mac")
    return check


# Curves.

def check_seed(curve, seed):
    """ANSI X9.62: b is derived from the seed, r * b^2 = a^3."""
    bits = curve.p.bit_length()
    blocks, rest = (bits - 1) // 160, (bits - 1) % 160
    value = int.from_bytes(hashlib.sha1(seed).digest(), "big") % (1 << rest)
    for i in range(1, blocks + 1):
        counted = (int.from_bytes(seed, "big") + i) % (1 << 8 * len(seed))
        digest = hashlib.sha1(counted.to_bytes(len(seed), "big")).digest()
        value = value << 160 | int.from_bytes(digest, "big")
    require((value * curve.b ** 2 - curve.a ** 3) % curve.p == 0, "Seed")


def check_curve(block):
    curve = curve_in(block)
    block.has_width(curve.size, "p", "a", "b", "Gx", "Gy")
    block.has_width(curve.order_size, "n")
    bits = curve.n.bit_length()
    require(curve.p.bit_length() == block.decimal("PBits"), "PBits")
    require(bits == block.decimal("NBits"), "NBits")
    require(curve.size == block.decimal("L"), "L")
    require(block.decimal("w") == (bits + 1) // 2 - 1, "w")
    require(reference.is_prime(curve.p) and reference.is_prime(curve.n) and curve.p != curve.n, "p or n")
    require((4 * curve.a ** 3 + 27 * curve.b ** 2) % curve.p != 0, "singular")
    require(curve.holds(curve.base), "G")
    require(curve.multiply(curve.n, curve.base) is None, "order of G")
    # The number of points is a multiple of n, within twice the root of p of p + 1.
    spread = reference.whole_root(4 * curve.p) + 1
    least = -(-(curve.p + 1 - spread) // curve.n)
    most = (curve.p + 1 + spread) // curve.n
    require(least == most == block.decimal("h"), "h")
    if "Seed" in block:
        check_seed(curve, block.octets("Seed"))


def check_multiple(block):
    curve = curve_of(block)
    block.has_width(curve.size, "x", "y")
    block.has_width(curve.order_size, "k")
    start = block.point("P") if "Px" in block else curve.base
    require(curve.holds(start), "P")
    result = curve.multiply(block.number("k"), start)
    require(result == (block.number("x"), block.number("y")), "x, y")


# Signatures.

def check_ecdsa(block):
    curve, name = curve_of(block), block.text("Hash")
    block.has_width(curve.size, "Qx", "Qy")
    block.has_width(curve.order_size, "e", "r", "s")
    public, r, s = block.point("Q"), block.number("r"), block.number("s")
    e = reference.truncated(curve, HASHES[name](block.octets("Msg")))
    require(e == block.number("e"), "e")
    require(reference.ecdsa_accepts(curve, e, public, r, s) == block.verdict(), "Result")
    if "d" in block:
        d, k = block.number("d"), block.number("k")
        require(curve.multiply(d, curve.base) == public, "Q")
        require(curve.multiply(k, curve.base)[0] % curve.n == r, "r")
        require(s * k % curve.n == (e + r * d) % curve.n, "s")
        if "Source" in block and block.text("Source").startswith("RFC 6979"):
            require(reference.deterministic_nonce(curve, name, d, block.octets("Msg")) == k, "k")


def check_wycheproof(block):
    curve, size = curve_of(block), curve_of(block).order_size
    require(block.decimal("tcId") % 2 == 1, "only the odd cases belong here")
    block.has_width(curve.size, "Qx", "Qy")
    signature = block.octets("Sig")
    r, s = (int.from_bytes(half, "big") for half in (signature[:size], signature[size:]))
    e = reference.truncated(curve, HASHES[block.text("Hash")](block.octets("Msg")))
    accepted = len(signature) == 2 * size and reference.ecdsa_accepts(curve, e, block.point("Q"), r, s)
    require(accepted == block.verdict(), "Result")


def check_sm2(block):
    curve, digest = curve_of(block), HASHES[block.text("Hash")]
    block.has_width(curve.size, "Px", "Py")
    block.has_width(curve.order_size, "r", "s")
    public, r, s = block.point("P"), block.number("r"), block.number("s")
    z = reference.sm2_identity(curve, digest, block.octets("ID"), public)
    require(z == block.octets("Z"), "Z")
    require(digest(z + block.octets("M")) == block.octets("e"), "e")
    e = block.number("e")
    require(reference.sm2_accepts(curve, e, public, r, s) == block.verdict(), "Result")
    if "d" in block:
        d = block.number("d")
        require(curve.multiply(d, curve.base) == public, "P")
    if "k" in block:
        k, d = block.number("k"), block.number("d")
        x1, y1 = curve.multiply(k, curve.base)
        require("x1" not in block or (x1, y1) == (block.number("x1"), block.number("y1")), "x1, y1")
        require((e + x1) % curve.n == r, "r")
        require(s * (1 + d) % curve.n == (k - r * d) % curve.n, "s")


# Name, number of cases, check.
FILES = [
    ("sha256.rsp", 137, check_digest("SHA-256")),
    ("sm3.rsp", 107, check_digest("SM3")),
    ("hmac_sha256.rsp", 65, check_mac("SHA-256")),
    ("hmac_sm3.rsp", 40, check_mac("SM3")),
    ("curves.rsp", 12, check_curve),
    ("point_mul.rsp", 594, check_multiple),
    ("point_mul_var.rsp", 96, check_multiple),
    ("ecdsa.rsp", 172, check_ecdsa),
    ("sm2_sign.rsp", 81, check_sm2),
    ("wycheproof_ecdsa_secp224r1_sha256_p1363.rsp", 129, check_wycheproof),
    ("wycheproof_ecdsa_secp256k1_sha256_p1363.rsp", 126, check_wycheproof),
    ("wycheproof_ecdsa_secp256r1_sha256_p1363.rsp", 131, check_wycheproof),
    ("ecdh.rsp", 99, exchange.check_ecdh),
    ("sm2_encrypt.rsp", 85, exchange.check_sm2_encrypt),
    ("sm2_borrow_rule.rsp", 2, exchange.check_sm2_encrypt),
    ("sm2_kex.rsp", 35, exchange.check_sm2_exchange),
    ("wycheproof_ecdh_secp224r1_ecpoint.rsp", 229, exchange.check_wycheproof),
    ("wycheproof_ecdh_secp256r1_ecpoint.rsp", 178, exchange.check_wycheproof),
]


def fault_of(check, block):
    try:
        check(block)
    except (Wrong, ValueError, ArithmeticError, LookupError, TypeError) as error:
        return "%s: %s" % (type(error).__name__, error)
    return None


def faults_of(name, count, check):
    try:
        blocks = read_blocks(HERE / name)
    except (OSError, UnicodeDecodeError, Wrong) as error:
        yield "%s: cannot be read: %s" % (name, error)
        return
    if len(blocks) != count:
        yield "%s: %d cases instead of %d" % (name, len(blocks), count)
    for block in blocks:
        fault = fault_of(check, block)
        if fault is not None:
            yield "%s: line %d: %s" % (name, block.line, fault)


def main(prefixes):
    known = {name for name, _, _ in FILES}
    faults = ["%s: no check for this file" % path.name
              for path in sorted(HERE.glob("*.rsp")) if path.name not in known]
    cases = 0
    for name, count, check in FILES:
        if prefixes and not name.startswith(tuple(prefixes)):
            continue
        faults += faults_of(name, count, check)
        cases += count
    print("\n".join(faults) if faults else "%d cases are right" % cases)
    return 1 if faults or cases == 0 else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
