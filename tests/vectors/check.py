#!/usr/bin/env python3
"""Checks the vector files of this folder on their own, without the library.

Every value is worked out again with Python's integers and compared with what the file says:
digests and MACs, curve parameters, multiples of points, and signatures with the verdict that
the public standard gives. A file that is missing, that has another number of cases than
expected, or for which there is no check, counts as a failure.

    python3 check.py               all files
    python3 check.py ecdsa sm3     the files whose names begin with one of the words
"""
import hashlib
import pathlib
import re
import sys

sys.dont_write_bytecode = True
import reference
from reference import HASHES, MACS

HERE = pathlib.Path(__file__).resolve().parent

DECIMAL_KEYS = {"Len", "Repeat", "MacLen", "L", "PBits", "NBits", "h", "w", "tcId"}
TEXT_KEYS = {"Curve", "Hash", "Result", "Reason", "Source", "Comment", "Flags", "Aliases"}


class Wrong(Exception):
    """A value of a vector file that does not stand up."""


def require(condition, what):
    if not condition:
        raise Wrong(what)


# The file format.

class Block:
    """One case: the values by key, and the line it begins on."""

    def __init__(self, line):
        self.line = line
        self.values = {}

    def __contains__(self, key):
        return key in self.values

    def text(self, key):
        require(key in self.values, "no " + key)
        return self.values[key]

    def octets(self, key):
        return bytes.fromhex(self.text(key))

    def number(self, key):
        require(self.text(key) != "", key + " is empty")
        return int(self.text(key), 16)

    def decimal(self, key):
        return int(self.text(key))

    def point(self, name):
        return self.number(name + "x"), self.number(name + "y")

    def has_width(self, size, *keys):
        for key in keys:
            require(len(self.text(key)) == 2 * size, "%s does not have %d bytes" % (key, size))

    def verdict(self):
        require(self.text("Result") in ("valid", "invalid"), "unknown Result")
        return self.text("Result") == "valid"


def well_formed(key, value):
    if key in TEXT_KEYS:
        return value != ""
    pattern = "[0-9]+" if key in DECIMAL_KEYS else "(?:[0-9a-f]{2})*"
    return re.fullmatch(pattern, value) is not None


def read_blocks(path):
    raw = path.read_bytes().decode("ascii")
    require("\r" not in raw and raw.endswith("\n"), "line ends")
    blocks, current = [], None
    for number, line in enumerate(raw[:-1].split("\n"), 1):
        if line == "":
            current = None
        elif not line.startswith("#"):
            key, separator, value = line.partition(" =")
            value = value[1:] if value.startswith(" ") else value
            require(separator and well_formed(key, value), "line %d" % number)
            if current is None:
                current = Block(number)
                blocks.append(current)
            require(key not in current, "line %d: %s again" % (number, key))
            current.values[key] = value
    return blocks


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

CURVES = {}


def curve_in(block):
    numbers = [block.number(key) for key in ("p", "a", "b")]
    return reference.Curve(*numbers, block.point("G"), block.number("n"))


def curve_of(block):
    if not CURVES:
        for one in read_blocks(HERE / "curves.rsp"):
            CURVES[one.text("Curve")] = curve_in(one)
    require(block.text("Curve") in CURVES, "unknown curve")
    return CURVES[block.text("Curve")]


def check_seed(curve, seed):
    """ANSI X9.62: b is made from the seed, r * b^2 = a^3."""
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
    numbers = (curve.a, curve.b, *curve.base, *public)
    identity = block.octets("ID")
    z = digest((8 * len(identity)).to_bytes(2, "big") + identity +
               b"".join(v.to_bytes(curve.size, "big") for v in numbers))
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
]


def faults_of(name, count, check):
    try:
        blocks = read_blocks(HERE / name)
    except (OSError, UnicodeDecodeError, Wrong) as error:
        yield "%s: cannot be read: %s" % (name, error)
        return
    if len(blocks) != count:
        yield "%s: %d cases instead of %d" % (name, len(blocks), count)
    for block in blocks:
        try:
            check(block)
        except (Wrong, ValueError, ArithmeticError, LookupError, TypeError) as error:
            yield "%s: line %d: %s" % (name, block.line, error)


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
