# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Checks of the cases in which two parties come to share something: ECDH secrets,
SM2 ciphertexts and SM2 key exchanges."""
import reference
from blocks import HERE, curve_of, read_blocks, require
from reference import HASHES


def check_pair(curve, d, public):
    require(reference.within(curve, d), "the private key is out of range")
    require(curve.holds(public), "a public key is not on the curve")
    require(curve.multiply(d, curve.base) == public, "the keys do not belong together")


# Diffie and Hellman.

def check_ecdh(block):
    curve = curve_of(block)
    block.has_width(curve.size, "Qx", "Qy", "Px", "Py", "Z")
    block.has_width(curve.order_size, "d")
    d, peer = block.number("d"), block.point("P")
    check_pair(curve, d, block.point("Q"))
    require(curve.holds(peer), "P")
    require(curve.multiply(curve.h * d, peer)[0] == block.number("Z"), "Z")


def check_wycheproof(block):
    curve, encoded = curve_of(block), block.octets("Public")
    require(block.decimal("tcId") % 2 == 1, "only the odd cases belong here")
    d, peer = block.number("d"), curve.decoded(encoded)
    require(reference.within(curve, d), "d")
    require((peer is not None) == block.verdict(), "Result")
    secret = b"" if peer is None else curve.encoded(curve.multiply(curve.h * d, peer)[0])
    require(secret == block.octets("Shared"), "Shared")
    flags = block.text("Flags").split(",")
    compressed, whole = encoded[:1] in (b"\2", b"\3"), len(encoded) == 1 + 2 * curve.size
    require(("CompressedPoint" in flags) == compressed, "CompressedPoint")
    require(("InvalidCurveAttack" in flags) == (whole and peer is None), "InvalidCurveAttack")


# SM2 encryption.

ORIGINALS = {}
COMMON = ("Curve", "Hash", "d", "Px", "Py", "M")


def original_of(block):
    """The valid case from which an invalid one was made: same keys and same message."""
    if not ORIGINALS:
        for one in read_blocks(HERE / "sm2_encrypt.rsp"):
            if one.text("Result") == "valid":
                ORIGINALS.setdefault(tuple(one.text(key) for key in COMMON), one)
    wanted = tuple(block.text(key) for key in COMMON)
    require(wanted in ORIGINALS, "no valid case with these keys and this message")
    return ORIGINALS[wanted]


def check_reason(curve, block):
    """An invalid case differs from its original in one part, as stated by its Reason."""
    original, part = original_of(block), block.text("Reason")[:2]
    values = ("C1x", "C1y") if part == "C1" else (part,)
    same = [key for key in ("C1x", "C1y", "C2", "C3") if key not in values]
    require(all(block.text(key) == original.text(key) for key in same), "another part changed")
    x, y = original.point("C1")
    replaced = {"C1 negated": (x, curve.p - y), "C1 replaced by G": curve.base, "C1 = (0, 0)": (0, 0)}
    kept = {"first byte changed": slice(1, None), "last byte changed": slice(0, -1)}
    if block.text("Reason") in replaced:
        require(block.point("C1") == replaced[block.text("Reason")], "C1")
    elif block.text("Reason") == "C1 not on the curve":
        require(not curve.holds(block.point("C1")), "C1")
    else:
        rest = kept[block.text("Reason")[3:]]
        require(len(block.octets(part)) == len(original.octets(part)), part)
        require(block.octets(part)[rest] == original.octets(part)[rest], part)


def check_way(curve, digest, block):
    """The intermediate values of a valid ciphertext, for the receiver and, if k is given, for
    the sender."""
    block.has_width(curve.size, "x2", "y2")
    shared = block.number("x2"), block.number("y2")
    message, mask = block.octets("M"), block.octets("t")
    require(curve.multiply(block.number("d"), block.point("C1")) == shared, "x2, y2")
    x2, y2 = (curve.encoded(value) for value in shared)
    require(mask == reference.derived(digest, x2 + y2, len(message)), "t")
    require(reference.mixed(message, mask) == block.octets("C2"), "C2")
    require(digest(x2 + message + y2) == block.octets("C3"), "C3")
    if "k" in block:
        block.has_width(curve.order_size, "k")
        k = block.number("k")
        require(reference.within(curve, k), "k")
        require(curve.multiply(k, curve.base) == block.point("C1"), "C1")
        require(curve.multiply(k, block.point("P")) == shared, "k, x2, y2")


def check_sm2_encrypt(block):
    curve, digest = curve_of(block), HASHES[block.text("Hash")]
    block.has_width(curve.size, "Px", "Py", "C1x", "C1y")
    block.has_width(curve.order_size, "d")
    block.has_width(32, "C3")
    block.has_width(len(block.octets("M")), "C2")
    c1, c2, c3 = block.point("C1"), block.octets("C2"), block.octets("C3")
    require(block.octets("C") == b"\4" + curve.encoded(*c1) + c2 + c3, "C")
    check_pair(curve, block.number("d"), block.point("P"))
    message = reference.sm2_decrypted(curve, digest, block.number("d"), c1, c2, c3)
    require((message is not None) == block.verdict(), "Result")
    if block.verdict():
        require(message == block.octets("M"), "M")
        check_way(curve, digest, block)
    else:
        check_reason(curve, block)


# SM2 key exchange.

def check_party(curve, digest, block, party, half):
    """The values that one party computes from its own keys alone; returns t and the point that
    the other party multiplies."""
    own, drawn, t = "d" + party, "r" + party, "t" + party
    block.has_width(curve.size, *(kind + party + axis for kind in "PR" for axis in "xy"), half)
    block.has_width(curve.order_size, own, drawn, t)
    public, passed = block.point("P" + party), block.point("R" + party)
    check_pair(curve, block.number(own), public)
    check_pair(curve, block.number(drawn), passed)
    identity = reference.sm2_identity(curve, digest, block.octets("ID" + party), public)
    require(identity == block.octets("Z" + party), "Z" + party)
    require(reference.half_of(curve, passed[0]) == block.number(half), half)
    factor = (block.number(own) + block.number(half) * block.number(drawn)) % curve.n
    require(factor == block.number(t), t)
    return factor, curve.add(public, curve.multiply(block.number(half), passed))


def check_sm2_exchange(block):
    curve, digest = curve_of(block), HASHES[block.text("Hash")]
    t_a, of_a = check_party(curve, digest, block, "A", "x1bar")
    t_b, of_b = check_party(curve, digest, block, "B", "x2bar")
    block.has_width(curve.size, "Ux", "Uy")
    shared = block.point("U")
    require(curve.multiply(curve.h * t_a, of_b) == shared, "U")
    require(curve.multiply(curve.h * t_b, of_a) == shared, "V")
    x, y = (curve.encoded(value) for value in shared)
    identities = block.octets("ZA") + block.octets("ZB")
    require(len(block.octets("K")) == block.decimal("KLen") > 0, "KLen")
    require(reference.derived(digest, x + y + identities, block.decimal("KLen")) == block.octets("K"), "K")
    inner = digest(x + identities + curve.encoded(*block.point("RA"), *block.point("RB")))
    require(digest(b"\2" + y + inner) == block.octets("S1"), "S1")
    require(digest(b"\3" + y + inner) == block.octets("S2"), "S2")
