# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""The measured operations, in the order of the reports: names as in the programs, and goals.

`host` is how many times as fast as OpenSSL an operation must be at least. `arm` and `armv7a` are how
many instructions it may take at most on either machine, per byte if the operation has a number of
`bytes`. `hardened` has the same three for the hardened build. Long operations that never vary are counted
with fewer `repetitions`.
"""
from typing import NamedTuple, Optional


class Goals(NamedTuple):
    host: float
    arm: float
    armv7a: float


class Operation(NamedTuple):
    name: str
    what: str
    call: str
    host: Optional[float] = None
    arm: Optional[float] = None
    armv7a: Optional[float] = None
    hardened: Optional[Goals] = None
    bytes: Optional[int] = None
    repetitions: int = 8


GROUPS = {
    "Integers of 256 bits": [
        Operation("mint_add", "add", "mint_add", arm=260),
        Operation("mint_mul", "multiply", "mint_mul", arm=900, armv7a=700),
        Operation("mint_div", "divide 512 bits by 256", "mint_div"),
        Operation("mint_mod_add", "add modulo p", "mint_mod_add", arm=520),
        Operation("mint_mod_sub", "subtract modulo p", "mint_mod_sub", arm=510),
        Operation("mint_mod_mul", "multiply modulo p", "mint_mod_mul", host=2, arm=1_500, armv7a=1_100),
        Operation("mint_EEA_algo", "invert modulo p", "mint_EEA_algo", host=4, arm=23_000, armv7a=21_000),
        Operation("mint_exp", "raise to a power modulo p", "mint_exp", arm=260_000, armv7a=200_000),
        Operation("mint_sqrt", "square root modulo p of SM2", "mint_sqrt", arm=260_000, armv7a=200_000),
        Operation("mint_sqrt_P224", "square root modulo p of P-224",
                  "mint_sqrt", arm=12_000_000, armv7a=9_000_000, repetitions=1),
    ],
    "Hashes": [
        Operation("sm3_64", "SM3, 64 bytes", "sm3_hash", host=1.7, arm=85, bytes=64),
        Operation("sm3_16384", "SM3, 16 KiB", "sm3_hash", host=1.3, arm=33.9, bytes=16384),
        Operation("sha256_64", "SHA-256, 64 bytes", "mhash_sha256", host=1.7, arm=82, bytes=64),
        Operation("sha256_16384", "SHA-256, 16 KiB", "mhash_sha256", host=1.0, arm=32.0, bytes=16384),
        Operation("hmac_sm3_64", "HMAC-SM3, 64 bytes", "ZOK_HMAC_SM3", bytes=64),
        Operation("hmac_sm3_16384", "HMAC-SM3, 16 KiB", "ZOK_HMAC_SM3", bytes=16384),
        Operation("hmac_sha256_64", "HMAC-SHA256, 64 bytes", "ZOK_HmacSha256", bytes=64),
        Operation("hmac_sha256_16384", "HMAC-SHA256, 16 KiB", "ZOK_HmacSha256", bytes=16384),
    ],
    "Points": [
        Operation("fixed_point_mul_sm2", "multiply the base point, SM2", "ecc_fix_point_mul_1"),
        Operation("fixed_point_mul_p256", "multiply the base point, P-256", "ecc_fix_point_mul_1"),
        Operation("point_mul_sm2", "multiply a point, SM2", "ecc_unknown_point_mul"),
        Operation("point_mul_p256", "multiply a point, P-256", "ecc_unknown_point_mul"),
        Operation("point_add_sm2", "add points, SM2", "ecc_point_add"),
        Operation("point_decode_sm2", "decode a compressed point, SM2",
                  "ecc_ByteToPoint", arm=300_000, armv7a=220_000),
    ],
    "Sessions": [
        Operation("session_open", "open and close, 256 bits",
                  "ZOK_OpenSession", arm=23_000_000, armv7a=21_000_000, repetitions=1),
        Operation("sm2_make_key", "SM2 make a key pair",
                  "SDF_GenerateKeyPair_ECC", host=15, arm=410_000, armv7a=320_000,
                  hardened=Goals(6, 1_050_000, 750_000)),
        Operation("sm2_sign_digest", "SM2 sign a digest",
                  "SDF_ExternalSign_ECC", host=15, arm=440_000, armv7a=340_000,
                  hardened=Goals(5, 1_250_000, 900_000)),
        Operation("sm2_verify_digest", "SM2 verify a digest", "SDF_ExternalVerify_ECC"),
        Operation("sm2_sign_message", "SM2 sign a message",
                  "ZOK_ExternalSignHash_ECC", host=9, arm=850_000, armv7a=650_000),
        Operation("sm2_verify_message", "SM2 verify a message",
                  "ZOK_ExternalVerifyHash_ECC", host=2.6, arm=2_650_000, armv7a=1_900_000),
        Operation("sm2_encrypt_32", "SM2 encrypt 32 bytes",
                  "ZOK_ExternalEncrytp_ECC", host=4, arm=2_750_000, armv7a=2_000_000),
        Operation("sm2_decrypt_32", "SM2 decrypt 32 bytes",
                  "ZOK_ExternalDecrypt_ECC", host=2.2, arm=2_400_000, armv7a=1_750_000,
                  hardened=Goals(1.2, 3_600_000, 2_500_000)),
        Operation("sm2_encrypt_record", "SM2 encrypt 32 bytes to a record", "SDF_ExternalEncrytp_ECC"),
        Operation("sm2_decrypt_record", "SM2 decrypt a record", "SDF_ExternalDecrypt_ECC"),
        Operation("session_ecdsa_sign_p256", "ECDSA sign a digest, P-256", "SDF_ExternalSign_ECC"),
        Operation("session_ecdsa_verify_p256", "ECDSA verify a digest, P-256", "SDF_ExternalVerify_ECC"),
        Operation("session_ecdh_sm2", "Diffie-Hellman, SM2", "ZOK_ExternalEcdhKeyAgreement"),
        Operation("multiply_encrypt_record", "encrypt by multiplication", "SDF_ExternalEncrytp_ECC"),
        Operation("multiply_decrypt_record", "decrypt by multiplication", "SDF_ExternalDecrypt_ECC"),
        Operation("agreement_respond", "SM2 agreement, responder",
                  "ZOK_SM2_GenerateAgreementDataAndKeyWithECC"),
        Operation("agreement_complete", "SM2 agreement, initiator", "ZOK_SM2_GenerateKeyWithECC"),
    ],
    "The curve of the process": [
        Operation("curve_init", "install a curve, 256 bits", "Curve_Init", repetitions=1),
        Operation("legacy_make_key_sm2", "make a key pair, SM2", "Ecc_KeyPair_Gen"),
        Operation("legacy_sm2_sign", "SM2 sign a message with given Z", "sm2_DigitalSign"),
        Operation("legacy_sm2_verify", "SM2 verify a message with given Z", "sm2_DigitalVeriy"),
        Operation("legacy_sm2_encrypt_32", "SM2 encrypt 32 bytes", "sm2_Encry"),
        Operation("legacy_sm2_decrypt_32", "SM2 decrypt 32 bytes", "sm2_Decry"),
        Operation("eces_encrypt", "encrypt by multiplication", "Eces_Encry"),
        Operation("eces_decrypt", "decrypt by multiplication", "Eces_Decry"),
        Operation("exchange_begin", "SM2 exchange, begin", "sm2_KeyExChg_A1_3"),
        Operation("exchange_respond", "SM2 exchange, responder", "sm2_KeyExChg_B1_10"),
        Operation("exchange_complete", "SM2 exchange, initiator", "sm2_KeyExChg_A4_10"),
        Operation("exchange_whole", "SM2 exchange, either side", "sm2_KeyExChg"),
        Operation("ecdsa_sign_p256", "ECDSA sign, P-256", "Ecdsa_DigitalSign", host=1.0, arm=700_000),
        Operation("ecdsa_verify_p256", "ECDSA verify, P-256",
                  "Ecdsa_DigitalVeriy", host=0.5, arm=2_700_000, armv7a=1_950_000),
        Operation("ecdh_p256", "Diffie-Hellman, P-256", "Ecdh_KeyExChg"),
        Operation("ecdsa_sign_p192", "ECDSA sign, P-192", "Ecdsa_DigitalSign", host=4, arm=450_000),
        Operation("ecdsa_verify_p192", "ECDSA verify, P-192",
                  "Ecdsa_DigitalVeriy", arm=1_900_000, armv7a=1_200_000),
        Operation("ecdsa_sign_p224", "ECDSA sign, P-224", "Ecdsa_DigitalSign", host=2, arm=550_000),
        Operation("ecdsa_verify_p224", "ECDSA verify, P-224",
                  "Ecdsa_DigitalVeriy", arm=2_400_000, armv7a=1_600_000),
        Operation("ecdsa_sign_brainpool", "ECDSA sign, brainpoolP256r1",
                  "Ecdsa_DigitalSign", host=4, arm=650_000),
        Operation("ecdsa_verify_brainpool", "ECDSA verify, brainpoolP256r1", "Ecdsa_DigitalVeriy"),
    ],
}

# Calls that take or make secrets are measured in the hardened build, too: those of these groups.
HARDENED_GROUPS = ("Sessions", "The curve of the process")

OPERATIONS = [operation for group in GROUPS.values() for operation in group]
HARDENED_OPERATIONS = [operation for heading in HARDENED_GROUPS for operation in GROUPS[heading]]
