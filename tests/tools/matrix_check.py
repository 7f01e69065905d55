#!/usr/bin/env python3
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""zokecc reads what openssl writes, and vice versa.

    matrix_check.py [--curves NAME,NAME] ZOKECC...

ZOKECC is the command that runs the tool, after an emulator if one is needed. For each of the nine curves
keys in every form, as PEM and as DER, signatures and, on the SM2 curve, ciphertexts are passed both ways.
Each direction is one cell of the matrix, and the number of cells is printed. Changed data must be refused.
"""
import concurrent.futures
import os
import pathlib
import subprocess
import sys
import tempfile

OPENSSL_NAMES = {
    "sm2p256v1": "SM2", "secp192r1": "prime192v1", "secp224r1": "secp224r1", "secp256r1": "prime256v1",
    "secp256k1": "secp256k1", "brainpoolP160r1": "brainpoolP160r1", "brainpoolP192r1": "brainpoolP192r1",
    "brainpoolP224r1": "brainpoolP224r1", "brainpoolP256r1": "brainpoolP256r1",
}
CIPHER_FORMS = ("der", "c1c3c2", "c1c2c3", "c1c3c2-no04", "c1c2c3-no04")
USUAL_ID, OTHER_ID = "1234567812345678", "alice@example.org"
MESSAGE = bytes(range(256)) * 5
POINT_FORMS = {"": [], "compressed ": ["-conv_form", "compressed"], "hybrid ": ["-conv_form", "hybrid"],
               "explicit ": ["-param_enc", "explicit"]}


class Curve:
    """All cells of one curve."""

    def __init__(self, zokecc, name, folder):
        self.zokecc, self.name, self.folder = zokecc, name, folder
        self.sm2 = name == "sm2p256v1"
        self.size = int(name[-5:-2] if name[-5:-2].isdigit() else 256) // 8
        self.cells, self.faults = 0, []
        self.message = self.file("message", MESSAGE)
        self.changed = self.file("changed", MESSAGE[:-1] + b"!")

    def file(self, name, content=None):
        path = self.folder / name
        if content is not None:
            path.write_bytes(content)
        return str(path)

    @staticmethod
    def run(*command, status=0):
        done = subprocess.run([str(part) for part in command], capture_output=True, check=False)
        if done.returncode != status:
            message = (done.stdout[-200:] + done.stderr[-300:]).decode(errors="replace").strip()
            raise RuntimeError(f"status {done.returncode}: {' '.join(map(str, command))}: {message}")
        return done.stdout

    def tool(self, *arguments, status=0):
        return self.run(*self.zokecc, *arguments, status=status)

    def openssl(self, *arguments, status=0):
        return self.run("openssl", *arguments, status=status)

    def cell(self, what, function, *arguments):
        self.cells += 1
        for old in ("signature", "signature.der", "cipher", "cipher.der", "key", "again"):
            (self.folder / old).unlink(missing_ok=True)
        try:
            function(*arguments)
        except (RuntimeError, AssertionError, OSError) as error:
            self.faults.append(f"{self.name}: {what}: {error}")

    # ---- keys --------------------------------------------------------------------------------------------

    def point_by_openssl(self, path, form="PEM", public=False):
        spki = self.openssl("ec", "-in", path, "-inform", form, *(["-pubin"] if public else []), "-pubout",
                            "-outform", "DER", "-conv_form", "uncompressed", "-param_enc", "named_curve")
        return spki[-1 - 2 * self.size:]

    def check_point(self, path, expected):
        words = self.tool("check", path).decode().split()
        point = "04" + words[words.index("x") + 1] + words[words.index("y") + 1]
        assert point == expected.hex(), f"another point: {point}"

    def read_key(self, make, form, public):
        path, again = self.file("key"), self.file("again")
        self.openssl(*make, "-outform", form, "-out", path)
        os.chmod(path, 0o600)
        self.check_point(path, self.point)
        if not public:
            self.tool("convert", "-f", "d", path, "-o", again)
            assert (self.folder / "again").read_bytes() == self.secret, "a different private key"

    def read_key_after_parameters(self):
        path = self.file("key")
        self.openssl("ecparam", "-name", OPENSSL_NAMES[self.name], "-genkey", "-out", path)
        text = (self.folder / "key").read_text()
        if "PRIVATE" not in text:  # for SM2 some releases write only the parameters
            self.file("key", (text + pathlib.Path(self.theirs).read_text()).encode())
        os.chmod(path, 0o600)
        self.check_point(path, self.point_by_openssl(path))

    def write_key(self, form, der):
        path, public = self.file("key"), form.startswith("spki")
        self.tool("convert", "-f", form, *(["-D"] if der else []), self.ours, "-o", path)
        assert self.point_by_openssl(path, "DER" if der else "PEM", public) == self.our_point, "other point"
        if not public:
            number = self.number_by_openssl(path, "DER" if der else "PEM")
            assert number == int.from_bytes(self.our_secret, "big"), "a different private key"

    def number_by_openssl(self, path, form="PEM"):
        text = self.openssl("ec", "-in", path, "-inform", form, "-noout", "-text").decode()
        digits = text.partition("priv:")[2].partition("pub:")[0]
        return int("".join(digits.replace(":", "").split()), 16)

    def make_keys(self):
        self.ours, self.our_public = self.file("ours"), self.file("ours.pub")
        self.theirs, self.their_public = self.file("theirs"), self.file("theirs.pub")
        self.tool("keygen", "-c", self.name, "-o", self.ours, "-P", self.our_public)
        self.our_point = bytes.fromhex(self.tool("convert", "-f", "point", "-x", self.our_public).decode())
        self.tool("convert", "-f", "d", self.ours, "-o", self.file("our number"))
        self.our_secret = (self.folder / "our number").read_bytes()
        curve = f"ec_paramgen_curve:{OPENSSL_NAMES[self.name]}"
        algorithm = ["SM2"] if self.sm2 else ["EC", "-pkeyopt", curve]
        self.openssl("genpkey", "-algorithm", *algorithm, "-out", self.theirs)
        self.openssl("pkey", "-in", self.theirs, "-pubout", "-out", self.their_public)
        os.chmod(self.theirs, 0o600)
        self.point = self.point_by_openssl(self.theirs)
        self.secret = self.number_by_openssl(self.theirs).to_bytes(self.size, "big")

    def keys(self):
        ec, topk8 = ["ec", "-in", self.theirs], ["pkcs8", "-topk8", "-nocrypt", "-in"]
        explicit = self.file("explicit")
        self.openssl(*ec, "-param_enc", "explicit", "-conv_form", "compressed", "-out", explicit)
        makers = [(name + "sec1", ec + options, False) for name, options in POINT_FORMS.items()]
        makers += [(name + "spki", ec + ["-pubout"] + options, True) for name, options in POINT_FORMS.items()]
        makers += [("pkcs8", topk8 + [self.theirs], False), ("explicit pkcs8", topk8 + [explicit], False)]
        for name, make, public in makers:
            for form in ("PEM", "DER"):
                self.cell(f"openssl's {name}, {form}", self.read_key, make, form, public)
        self.cell("openssl's ecparam", self.read_key_after_parameters)
        for form in ("sec1", "pkcs8", "spki", "spki-compressed"):
            for der in (False, True):
                self.cell(f"our {form}, {'DER' if der else 'PEM'}", self.write_key, form, der)

    # ---- signatures --------------------------------------------------------------------------------------

    def openssl_sign(self, key, out, digest, identity):
        if self.sm2:
            self.openssl("pkeyutl", "-sign", "-inkey", key, "-rawin", "-in", self.message, "-digest", digest,
                         "-pkeyopt", f"distid:{identity}", "-out", out)
        else:
            self.openssl("dgst", f"-{digest}", "-sign", key, "-out", out, self.message)

    def openssl_verify(self, message, signature, digest, identity, status=0):
        if self.sm2:
            self.openssl("pkeyutl", "-verify", "-pubin", "-inkey", self.our_public, "-rawin", "-in", message,
                         "-digest", digest, "-pkeyopt", f"distid:{identity}", "-sigfile", signature,
                         status=status)
        else:
            self.openssl("dgst", f"-{digest}", "-verify", self.our_public, "-signature", signature, message,
                         status=status)

    def convert(self, kind, source, target, *names):
        self.tool("convert", "-t", kind, "-c", self.name, "-F", source, "-f", target, self.file(names[0]),
                  "-o", self.file(names[1]))

    def sign_ours(self, form, digest, identity):
        signature, der = self.file("signature"), self.file("signature.der")
        options = ["-H", digest, "-f", form] + (["-i", identity] if self.sm2 else [])
        self.tool("sign", "-k", self.ours, *options, "-o", signature, self.message)
        self.convert("signature", form, "der", "signature", "signature.der")
        self.openssl_verify(self.message, der, digest, identity)
        self.openssl_verify(self.changed, der, digest, identity, status=1)
        if self.sm2:
            self.openssl_verify(self.message, der, digest, identity + "x", status=1)

    def verify_theirs(self, form, digest, identity):
        self.openssl_sign(self.theirs, self.file("signature.der"), digest, identity)
        self.convert("signature", "der", form, "signature.der", "signature")
        verify = ["verify", "-k", self.their_public, "-s", self.file("signature"), "-H", digest, "-f", form]
        named = ["-i", identity] if self.sm2 else []
        self.tool(*verify, *named, self.message)
        self.tool(*verify, *named, self.changed, status=1)
        if self.sm2:
            self.tool(*verify, "-i", identity + "x", self.message, status=1)

    def hashed_by_openssl(self, digest):
        return self.file("value", self.openssl("dgst", f"-{digest}", "-binary", self.message))

    def sign_digest(self, digest):
        value, signature = self.hashed_by_openssl(digest), self.file("signature")
        self.tool("sign", "-k", self.ours, "-d", "-o", signature, value)
        self.openssl("pkeyutl", "-verify", "-pubin", "-inkey", self.our_public, "-in", value, "-sigfile",
                     signature)

    def verify_digest(self, digest):
        value, signature = self.hashed_by_openssl(digest), self.file("signature")
        self.openssl("pkeyutl", "-sign", "-inkey", self.theirs, "-in", value, "-out", signature)
        self.tool("verify", "-k", self.their_public, "-d", "-s", signature, value)

    def signatures(self):
        for form in ("der", "raw"):
            for digest in ("sm3",) if self.sm2 else ("sm3", "sha256"):  # for SM2 openssl signs only with SM3
                for identity in (USUAL_ID, OTHER_ID) if self.sm2 else (USUAL_ID,):
                    what = f"{form}, {digest}, {identity}"
                    self.cell(f"our signature, {what}", self.sign_ours, form, digest, identity)
                    self.cell(f"openssl's signature, {what}", self.verify_theirs, form, digest, identity)
        # Digests computed elsewhere, some longer than the order; for SM2 the digest is e.
        for digest in ("sm3", "sha256") if self.sm2 else ("sha1", "sha224", "sha256", "sha384", "sha512"):
            self.cell(f"our signature of a {digest} digest", self.sign_digest, digest)
            self.cell(f"openssl's signature of a {digest} digest", self.verify_digest, digest)

    # ---- encryption --------------------------------------------------------------------------------------

    def encrypt_ours(self, form, digest, size):
        plain = self.file("plain", MESSAGE[:size])
        self.tool("encrypt", "-k", self.our_public, "-f", form, "-H", digest, plain, "-o",
                  self.file("cipher"))
        self.convert("cipher", form, "der", "cipher", "cipher.der")
        got = self.openssl("pkeyutl", "-decrypt", "-inkey", self.ours, "-in", self.file("cipher.der"),
                           "-pkeyopt", f"digest:{digest}")
        assert got == MESSAGE[:size], "a different message"

    def decrypt_theirs(self, form, digest, size):
        plain = self.file("plain", MESSAGE[:size])
        self.openssl("pkeyutl", "-encrypt", "-pubin", "-inkey", self.their_public, "-in", plain, "-out",
                     self.file("cipher.der"), "-pkeyopt", f"digest:{digest}")
        self.convert("cipher", "der", form, "cipher.der", "cipher")
        decrypt = ["decrypt", "-k", self.theirs, "-f", form, "-H", digest, self.file("cipher")]
        assert self.tool(*decrypt) == MESSAGE[:size], "a different message"
        damaged = bytearray((self.folder / "cipher").read_bytes())
        damaged[-1] ^= 1
        self.file("cipher", damaged)
        assert self.tool(*decrypt, status=1) == b"", "output of a damaged ciphertext"

    def own_round_trip(self, form):
        self.tool("encrypt", "-k", self.our_public, "-f", form, self.message, "-o", self.file("cipher"))
        got = self.tool("decrypt", "-k", self.ours, "-f", form, self.file("cipher"))
        assert got == MESSAGE, "a different message"

    def encryption(self):
        for form in CIPHER_FORMS:
            if not self.sm2:  # openssl encrypts only on the SM2 curve
                self.cell(f"encryption, {form}", self.own_round_trip, form)
                continue
            for digest, size in (("sm3", 1), ("sm3", 32), ("sm3", 1000), ("sha256", 33)):
                what = f"{form}, {digest}, {size} bytes"
                self.cell(f"our ciphertext, {what}", self.encrypt_ours, form, digest, size)
                self.cell(f"openssl's ciphertext, {what}", self.decrypt_theirs, form, digest, size)

    def same_hash(self, digest, ours, *options):
        got = self.tool(*ours, "-H", digest, self.message).split()[0].decode()
        assert got == self.openssl("dgst", f"-{digest}", *options, "-binary", self.message).hex()

    def hashes(self):
        key = self.file("mac key", b"a key of some bytes")
        for digest in ("sm3", "sha256"):
            self.cell(f"digest {digest}", self.same_hash, digest, ["digest"])
            self.cell(f"mac {digest}", self.same_hash, digest, ["mac", "-k", key], "-hmac",
                      "a key of some bytes")


def all_of(zokecc, name):
    with tempfile.TemporaryDirectory() as folder:
        curve = Curve(zokecc, name, pathlib.Path(folder))
        curve.make_keys()
        curve.keys()
        curve.signatures()
        curve.encryption()
        if curve.sm2:
            curve.hashes()
        return curve


def main(arguments):
    names = list(OPENSSL_NAMES)
    if arguments[0] == "--curves":
        names, arguments = arguments[1].split(","), arguments[2:]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        curves = list(pool.map(lambda name: all_of(arguments, name), names))
    faults = [fault for curve in curves for fault in curve.faults]
    for curve in curves:
        print(f"{curve.name}: {curve.cells} cells, {len(curve.faults)} failed")
    print("\n".join(faults) if faults else f"{sum(curve.cells for curve in curves)} cells agree")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
