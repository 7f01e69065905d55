# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""The public standards in plain Python: hashes, curves, signatures and
the secrets that two parties share."""
import hashlib
import hmac


# Hashes. SHA-256 is Python's own; not every Python has SM3 (GB/T 32905).

def rotate(word, count):
    count %= 32
    return (word << count | word >> (32 - count)) & 0xFFFFFFFF


def sm3_block(state, block):
    w = [int.from_bytes(block[i:i + 4], "big") for i in range(0, 64, 4)]
    for j in range(16, 68):
        x = w[j - 16] ^ w[j - 9] ^ rotate(w[j - 3], 15)
        w.append(x ^ rotate(x, 15) ^ rotate(x, 23) ^ rotate(w[j - 13], 7) ^ w[j - 6])
    a, b, c, d, e, f, g, h = state
    for j in range(64):
        constant = rotate(0x79CC4519 if j < 16 else 0x7A879D8A, j)
        ss1 = rotate((rotate(a, 12) + e + constant) & 0xFFFFFFFF, 7)
        ff = a ^ b ^ c if j < 16 else a & b | a & c | b & c
        gg = e ^ f ^ g if j < 16 else e & f | ~e & g
        tt1 = (ff + d + (ss1 ^ rotate(a, 12)) + (w[j] ^ w[j + 4])) & 0xFFFFFFFF
        tt2 = (gg + h + ss1 + w[j]) & 0xFFFFFFFF
        a, b, c, d = tt1, a, rotate(b, 9), c
        e, f, g, h = tt2 ^ rotate(tt2, 9) ^ rotate(tt2, 17), e, rotate(f, 19), g
    return [x ^ y for x, y in zip(state, (a, b, c, d, e, f, g, h))]


def sm3(message):
    state = [0x7380166F, 0x4914B2B9, 0x172442D7, 0xDA8A0600,
             0xA96F30BC, 0x163138AA, 0xE38DEE4D, 0xB0FB0E4E]
    zeros = (55 - len(message)) % 64
    padded = message + b"\x80" + bytes(zeros) + (8 * len(message)).to_bytes(8, "big")
    for at in range(0, len(padded), 64):
        state = sm3_block(state, padded[at:at + 64])
    return b"".join(word.to_bytes(4, "big") for word in state)


def sha256(message):
    return hashlib.sha256(message).digest()


def hmac_sm3(key, message):
    key = (sm3(key) if len(key) > 64 else key).ljust(64, b"\0")
    inner = sm3(bytes(byte ^ 0x36 for byte in key) + message)
    return sm3(bytes(byte ^ 0x5C for byte in key) + inner)


def hmac_sha256(key, message):
    return hmac.new(key, message, "sha256").digest()


HASHES = {"SHA-256": sha256, "SM3": sm3}
MACS = {"SHA-256": hmac_sha256, "SM3": hmac_sm3}


# Curves. A point is None (infinity) or an (x, y) pair.

class Curve:
    """y^2 = x^3 + a*x + b modulo p, with a base point of order n and a cofactor h."""

    def __init__(self, p, a, b, base, n, h):
        self.p, self.a, self.b, self.base, self.n, self.h = p, a, b, base, n, h
        self.size = (p.bit_length() + 7) // 8
        self.order_size = (self.n.bit_length() + 7) // 8

    def holds(self, point):
        x, y = point
        if not (0 <= x < self.p and 0 <= y < self.p):
            return False
        return (y * y - (x * x + self.a) * x - self.b) % self.p == 0

    def encoded(self, *coordinates):
        return b"".join(value.to_bytes(self.size, "big") for value in coordinates)

    def decoded(self, octets):
        """The point for the octets by SEC 1, section 2.3.4; None if there is none."""
        form, rest = octets[:1], octets[1:]
        if form == b"\4" and len(rest) == 2 * self.size:
            halves = rest[:self.size], rest[self.size:]
            point = tuple(int.from_bytes(half, "big") for half in halves)
        elif form in (b"\2", b"\3") and len(rest) == self.size:
            if self.p % 4 != 3:
                raise ValueError("no square roots for this field")
            x = int.from_bytes(rest, "big")
            y = pow(x ** 3 + self.a * x + self.b, (self.p + 1) // 4, self.p)
            point = x, y if y % 2 == form[0] % 2 else self.p - y
        else:
            return None
        return point if self.holds(point) else None

    def add(self, left, right):
        if left is None or right is None:
            return right if left is None else left
        (x1, y1), (x2, y2) = left, right
        if x1 == x2 and (y1 + y2) % self.p == 0:
            return None
        if left == right:
            slope = (3 * x1 * x1 + self.a) * pow(2 * y1, -1, self.p)
        else:
            slope = (y2 - y1) * pow(x2 - x1, -1, self.p)
        x = (slope * slope - x1 - x2) % self.p
        return x, (slope * (x1 - x) - y1) % self.p

    def multiply(self, scalar, point):
        """scalar * point by doubling and adding, in Jacobian coordinates: (x, y, z) there is the
        point (x / z^2, y / z^3), or infinity where z is 0. So one inverse is enough."""
        if point is None:
            return None
        x, y, z = 1, 1, 0
        for bit in format(scalar, "b"):
            x, y, z = self.doubled(x, y, z)
            if bit == "1":
                x, y, z = self.with_added(x, y, z, point)
        if z == 0:
            return None
        inverse = pow(z, -1, self.p)
        square = inverse * inverse % self.p
        return x * square % self.p, y * square * inverse % self.p

    def doubled(self, x, y, z):
        p, square = self.p, y * y % self.p
        slope = 3 * x * x + (self.a * pow(z, 4, p) if z != 1 else self.a)
        product = 4 * x * square % p
        x3 = (slope * slope - 2 * product) % p
        return x3, (slope * (product - x3) - 8 * square * square) % p, 2 * y * z % p

    def with_added(self, x, y, z, point):
        p, (x2, y2) = self.p, point
        if z == 0:
            return x2, y2, 1
        square = z * z % p
        run, rise = (x2 * square - x) % p, (y2 * square * z - y) % p
        if run == 0:
            return self.doubled(x, y, z) if rise == 0 else (1, 1, 0)
        run_square = run * run % p
        cube, product = run_square * run % p, x * run_square % p
        x3 = (rise * rise - cube - 2 * product) % p
        return x3, (rise * (product - x3) - y * cube) % p, z * run % p


def is_prime(n):
    """Miller-Rabin test. The numbers are published ones, so fixed bases will do."""
    bases = [q for q in range(2, 200) if all(q % r for r in range(2, q))]
    if any(n % q == 0 for q in bases):
        return n in bases
    odd, twos = n - 1, 0
    while odd % 2 == 0:
        odd, twos = odd // 2, twos + 1
    for base in bases:
        x = pow(base, odd, n)
        if x != 1 and all(pow(x, 1 << i, n) != n - 1 for i in range(twos)):
            return False
    return True


def whole_root(n):
    root = 1 << (n.bit_length() + 1) // 2
    while root * root > n:
        root = (root + n // root) // 2
    return root


# Signatures.

def truncated(curve, digest):
    return int.from_bytes(digest, "big") >> max(0, 8 * len(digest) - curve.n.bit_length())


def within(curve, *values):
    return all(0 < value < curve.n for value in values)


def ecdsa_accepts(curve, e, public, r, s):
    if not within(curve, r, s) or not curve.holds(public):
        return False
    inverse = pow(s, -1, curve.n)
    point = curve.add(curve.multiply(e * inverse % curve.n, curve.base),
                      curve.multiply(r * inverse % curve.n, public))
    return point is not None and point[0] % curve.n == r


def deterministic_nonce(curve, name, d, message):
    """RFC 6979, section 3.2."""
    mac, bits = MACS[name], curve.n.bit_length()
    start = truncated(curve, HASHES[name](message)) % curve.n
    secret = b"".join(v.to_bytes(curve.order_size, "big") for v in (d, start))
    key, value = bytes(32), b"\1" * 32
    for step in (b"\0", b"\1"):
        key = mac(key, value + step + secret)
        value = mac(key, value)
    while True:
        drawn = b""
        while 8 * len(drawn) < bits:
            value = mac(key, value)
            drawn += value
        nonce = int.from_bytes(drawn, "big") >> (8 * len(drawn) - bits)
        if within(curve, nonce):
            return nonce
        key = mac(key, value + b"\0")
        value = mac(key, value)


def sm2_accepts(curve, e, public, r, s):
    t = (r + s) % curve.n
    if not within(curve, r, s, t) or not curve.holds(public):
        return False
    point = curve.add(curve.multiply(s, curve.base), curve.multiply(t, public))
    return point is not None and (e + point[0]) % curve.n == r


def sm2_identity(curve, digest, identity, public):
    """Z of GB/T 32918.2, section 5.5."""
    return digest((8 * len(identity)).to_bytes(2, "big") + identity +
                  curve.encoded(curve.a, curve.b, *curve.base, *public))


# Shared secrets.

def derived(digest, secret, length):
    """The key derivation function of GB/T 32918.4, section 5.4.3."""
    key, counter = b"", 1
    while len(key) < length:
        key += digest(secret + counter.to_bytes(4, "big"))
        counter += 1
    return key[:length]


def mixed(left, right):
    return bytes(x ^ y for x, y in zip(left, right))


def sm2_decrypted(curve, digest, d, c1, c2, c3):
    """The message of GB/T 32918.4, section 7.1, or None if decryption must fail."""
    if not curve.holds(c1) or curve.multiply(curve.h, c1) is None:
        return None
    x2, y2 = (curve.encoded(value) for value in curve.multiply(d, c1))
    mask = derived(digest, x2 + y2, len(c2))
    message = mixed(c2, mask)
    return message if any(mask) and digest(x2 + message + y2) == c3 else None


def half_of(curve, x):
    """The low half of x with a bit set above it: x with a bar in GB/T 32918.3, section 6.1."""
    w = (curve.n.bit_length() + 1) // 2 - 1
    return (1 << w) | x & ((1 << w) - 1)
