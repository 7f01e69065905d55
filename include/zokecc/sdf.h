/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/**
 * @file sdf.h
 * Devices, sessions, key pairs, signatures, encryption and key agreement: the call shapes of GM/T 0018,
 * entirely in software.
 *
 * The calls of a session, in order:
 *
 *      void *session = NULL;
 *      if (ZOK_OpenSession(&session, &zokecc_sm2p256v1) != ZOK_OK) return 1;          // zokecc/curves.h
 *      if (ZOK_CurveParaCfg(session, zokecc_sm2p256v1.type, &zokecc_sm2p256v1) != ZOK_OK) return 1;
 *      ... SDF_GenerateKeyPair_ECC, ZOK_ExternalSignHash_ECC, ZOK_ExternalVerifyHash_ECC ...
 *      ZOK_CloseSession(session);
 *
 * With a device: SDF_OpenDevice, SDF_OpenSession, ZOK_CurveParaCfg, the work, SDF_CloseSession,
 * SDF_CloseDevice. The second call above is needed for curves from outside only: ZOK_OpenSession does not
 * report what is wrong with one.
 *
 * @par Devices and sessions
 *      A device is a small record in memory, a session a block of some 86,000 bytes with its own curve.
 *      A session comes from a device (SDF_OpenSession, closed by SDF_CloseSession) or stands alone
 *      (ZOK_OpenSession, closed by ZOK_CloseSession); afterwards every call takes either kind.
 * @par Key and signature records
 *      Numbers are big-endian at the start of their 64-byte fields. Writers fill the first L bytes, L being
 *      the byte length of the session's curve, set bits to 8 * L and leave the rest of each field unchanged.
 *      Readers take the first bits / 8 bytes of a key's fields, up to 64, and the first L bytes of r and s.
 *      bits may differ from 8 * L: 0 reads as zero numbers.
 * @par A session without a curve
 *      It arises from SDF_OpenSession, and from ZOK_OpenSession with a record of an unknown type or without
 *      memory for its copy. Key generation, ZOK_GenerateUserInfo, hashing and signing or verifying with SM2,
 *      encryption, decryption, ECDH and key agreement then return ZOK_ERR_ARGUMENT, all other
 *      signing ZOK_ERR_SIGN, and all other verification ZOK_ERR_VERIFY.
 * @par The hardened build
 *      What is computed with a secret is exact and constant-time. A peer's public key, a temporary point or
 *      C1 that is off the curve, or has a coordinate of p and above, is refused: by encryption, decryption
 *      and Diffie-Hellman with ZOK_ERR_ARGUMENT, by key agreement with ZOK_ERR_INTERNAL. A private or
 *      temporary number of 0, for SM2 signatures also n - 1, is answered like one of n and above. Drawn
 *      numbers lie between 1 and n - 2, without bias. A signature is verified before it is returned. p and n
 *      must be odd and have five to nine 32-bit words. A call that draws random numbers fails if the kernel
 *      gives none: signing with ZOK_ERR_SIGN, the others with ZOK_ERR_INTERNAL. What notes on secrets say
 *      under "Kept" to the contrary is about the default build.
 */
#ifndef ZOKECC_SDF_H
#define ZOKECC_SDF_H

#include <zokecc/ecc.h>
#include <zokecc/hash.h>

/** Algorithm identifier: SM2 key pair. */
#define ZOK_ALG_SM2_KEY    0x00020000u
/** Algorithm identifier: SM2 signature. */
#define ZOK_ALG_SM2_SIGN   0x00020100u
/** Algorithm identifier: ECDSA key pair. */
#define ZOK_ALG_ECDSA_KEY  0x00040000u
/** Algorithm identifier: ECDSA signature. */
#define ZOK_ALG_ECDSA_SIGN 0x00040100u
/** Algorithm identifier: SM2 encryption. */
#define ZOK_ALG_SM2_ENCRYPT    0x00020400u
/** Algorithm identifier: encryption by multiplication, without integrity. */
#define ZOK_ALG_MULTIPLICATIVE 0x00040400u

/** The result of SDF_GetDeviceInfo. 100 bytes. The values are constants of the library. */
typedef struct DEVICEINFO {
    uint8_t  issuer_name[40];     /**< "ZOKTECH", filled up with zero bytes */
    uint8_t  device_name[16];     /**< "ZOK-ECC-T200", filled up with zero bytes */
    uint8_t  device_serial[16];   /**< "200905170000042" and a zero byte */
    uint32_t device_version;      /**< 1 */
    uint32_t standard_version;    /**< 1 */
    uint32_t asym_alg_ability[2]; /**< 0, 0: abilities are not announced */
    uint32_t sym_alg_ability;     /**< 0 */
    uint32_t hash_alg_ability;    /**< 0 */
    uint32_t buffer_size;         /**< 0 */
} DEVICEINFO;

/** A public key: a point of the session's curve. 132 bytes. */
typedef struct ECCrefPublicKey {
    uint32_t bits;                /**< size in bits; bits / 8 bytes of each field are read */
    uint8_t  x[64];               /**< x, big-endian from the start of the field */
    uint8_t  y[64];               /**< y, big-endian from the start of the field */
} ECCrefPublicKey;

/** A private key: a number d with 0 < d < n. 68 bytes. */
typedef struct ECCrefPrivateKey {
    uint32_t bits;                /**< size in bits; bits / 8 bytes of K are read */
    uint8_t  K[64];               /**< d, big-endian from the start of the field */
} ECCrefPrivateKey;

/** A signature. Both numbers fill the first L bytes of their fields. 128 bytes. */
typedef struct ECCSignature {
    uint8_t r[64];                /**< r, big-endian from the start of the field */
    uint8_t s[64];                /**< s, big-endian from the start of the field */
} ECCSignature;

/** The ciphertext of a message of L bytes. 256 bytes. */
typedef struct ECCCipher {
    uint8_t x[64];                /**< x of C1, in the first L bytes */
    uint8_t y[64];                /**< y of C1, in the first L bytes */
    uint8_t C[64];                /**< the encrypted message, in the first L bytes */
    uint8_t M[64];                /**< SM2: check value, in the first 32 bytes; multiplicative: all zero */
} ECCCipher;

/** The result of a key agreement. 132 bytes on 32-bit targets. */
typedef struct KeyAgreementResult {
    uint8_t  check[64];           /**< what the peer must send, in the first 32 bytes; the caller compares */
    uint8_t  send[64];            /**< what is sent to the peer, in the first 32 bytes */
    uint8_t *key;                 /**< in: the caller's buffer for the key, klen_bits / 8 bytes */
} KeyAgreementResult;

/**
 * @defgroup sdf_sessions Devices and sessions
 * @par Timing
 *      Depends on the heap.
 * @{
 */

/**
 * Opens a device.
 *
 * @param[out] device_out  set to the device handle
 * @retval ZOK_OK success
 * @retval ZOK_ERR_ARGUMENT device_out is null
 * @retval ZOK_ERR_OPEN_DEVICE there is no memory for the device
 *
 * @par Standard
 *      The call of that name in GM/T 0018.
 */
ZOKECC_API uint32_t SDF_OpenDevice(void **device_out);

/**
 * Closes a device.
 *
 * Its sessions stay open and usable; the device's memory is then freed with the last of them. Until that
 * happens a further SDF_CloseDevice returns ZOK_OK and does nothing.
 *
 * @param device  device handle
 * @retval ZOK_OK success
 * @retval ZOK_ERR_CLOSE_DEVICE device is null
 *
 * @par Caller checks
 *      A handle is not used again after its device has been closed.
 * @par Standard
 *      The call of that name in GM/T 0018.
 */
ZOKECC_API uint32_t SDF_CloseDevice(void *device);

/**
 * Opens a session on a device. It has no curve until ZOK_CurveParaCfg has installed one.
 *
 * @param      device       device handle
 * @param[out] session_out  set to the session handle
 * @retval ZOK_OK success
 * @retval ZOK_ERR_DEVICE device is null
 * @retval ZOK_ERR_ARGUMENT session_out is null
 * @retval ZOK_ERR_OPEN_SESSION there is no memory for the session
 *
 * @par Standard
 *      The call of that name in GM/T 0018.
 */
ZOKECC_API uint32_t SDF_OpenSession(void *device, void **session_out);

/**
 * Closes a session and lowers the count of its device. A session without a device is closed, too.
 *
 * @param session  session handle
 * @retval ZOK_OK success
 * @retval ZOK_ERR_CLOSE_SESSION session is null
 *
 * @par Standard
 *      The call of that name in GM/T 0018.
 */
ZOKECC_API uint32_t SDF_CloseSession(void *session);

/**
 * Tells the constants that describe the device.
 *
 * @param      session   session handle; only tested for null
 * @param[out] info_out  one record
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT info_out is null
 *
 * @par Timing
 *      Constant.
 * @par Standard
 *      The call of that name in GM/T 0018.
 */
ZOKECC_API uint32_t SDF_GetDeviceInfo(void *session, DEVICEINFO *info_out);

/**
 * Opens a session without a device and installs a curve in it.
 *
 * The curve is installed as by ZOK_CurveParaCfg with the type in the record.
 *
 * @param[out] session_out  set to the session handle
 * @param[in]  record       one record: the curve
 * @retval ZOK_OK success
 * @retval ZOK_ERR_ARGUMENT session_out or record is null
 * @retval ZOK_ERR_OPEN_SESSION there is no memory for the session
 *
 * @note Kept: the status of ZOK_CurveParaCfg is not passed on. A record with an unknown type gives ZOK_OK and
 *       a session without a curve; one whose base point is off the curve gives ZOK_OK and a session that
 *       works with it.
 * @par Caller checks
 *      Parameters from outside: call ZOK_CurveParaCfg with the same record again and check its result.
 * @par Timing
 *      Depends on the values, as ZOK_CurveParaCfg does.
 * @par Example
 *      ZOK_OpenSession(&session, &curve), then ZOK_CurveParaCfg(session, curve.type, &curve) must be ZOK_OK.
 */
ZOKECC_API uint32_t ZOK_OpenSession(void **session_out, const CurvePara *record);

/**
 * Closes a session that ZOK_OpenSession opened.
 *
 * @param session  session handle
 * @retval ZOK_OK success
 * @retval ZOK_ERR_CLOSE_SESSION session is null
 *
 * @par Caller checks
 *      Sessions of a device are closed by SDF_CloseSession. This call leaves the count of an open device as
 *      it is, so the memory of that device is never freed.
 */
ZOKECC_API uint32_t ZOK_CloseSession(void *session);

/** @} */

/**
 * @defgroup sdf_signing Key pairs, signing and verification
 * SM2 signatures are those of GB/T 32918.2 (GM/T 0003.2), ECDSA is that of SEC 1 with the whole digest.
 * @{
 */

/**
 * Generates a key pair on the session's curve.
 *
 * The two algorithms give the same: a random d below n and the point d * G.
 *
 * @param      session    session handle
 * @param      algorithm  ZOK_ALG_SM2_KEY or ZOK_ALG_ECDSA_KEY
 * @param      key_bits   size in bits, exactly 8 * L
 * @param[out] pub_out    one record: x and y in L bytes each, bits set to 8 * L
 * @param[out] priv_out   one record: d in L bytes, bits set to 8 * L
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT pub_out or priv_out is null, key_bits is not 8 * L, or the session has no usable
 *         curve (p or n is zero)
 * @retval ZOK_ERR_INTERNAL for any other algorithm
 *
 * @note Kept: the default build draws d once and does not test it. It can be 0, with a public key of zero
 *       bytes, or 1 or n - 1; and small d are likelier than large ones, the more so the further n is below a
 *       power of two: on brainpoolP256r1 66 % lie below n / 2.
 * @par Caller checks
 *      In the default build that d is neither 0 nor n - 1, and for SM2 that a signature made with it
 *      verifies.
 * @par Threads
 *      Draws random numbers.
 * @par Timing
 *      Depends on the values, d included.
 * @par Standard
 *      SEC 1 version 2, section 3.2.1, without its bound on d.
 */
ZOKECC_API uint32_t SDF_GenerateKeyPair_ECC(void *session, uint32_t algorithm, uint32_t key_bits,
                                            ECCrefPublicKey *pub_out, ECCrefPrivateKey *priv_out);

/**
 * Signs a digest.
 *
 * e is taken as one number. For ECDSA it is reduced modulo n first, and not cut to the size of n.
 *
 * @param      session    session handle
 * @param      algorithm  ZOK_ALG_SM2_SIGN or ZOK_ALG_ECDSA_SIGN
 * @param[in]  priv       one record: the private key
 * @param[in]  e          e_len bytes: the digest, for SM2 that of Z and the message; may be null when
 *                        e_len is 0
 * @param      e_len      length in bytes, at most 76
 * @param[out] sig_out    one record: r and s in L bytes each
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT priv, sig_out or a needed e is null, e_len is above 76, or priv->bits / 8 is above
 *         64
 * @retval ZOK_ERR_SIGN d is zero or not below n, with any algorithm; later, for SM2 if d is n - 1, and if
 *         1,024 nonces in a row gave no signature, which only happens on a curve that allows none
 * @retval ZOK_ERR_INTERNAL for any other algorithm
 *
 * @note Kept: SM2 accepts r = 0, which no verification accepts. SM2 signatures depend on the inverse of
 *       d + 1, which mint_EEA_algo gets wrong for small and structured numbers: with d = 1 or d = n - 2 on
 *       the SM2 curve the call returns ZOK_OK and the signature does not verify. A nonce of 0, which a stuck
 *       generator could deliver, is not refused for SM2.
 * @par Caller checks
 *      Keys that are not random: verify a signature before the key is put to use.
 * @par Aliasing
 *      sig_out must not overlap e.
 * @par Threads
 *      Draws random numbers.
 * @par Timing
 *      Depends on the values, the private key and the nonce included.
 * @par Standard
 *      GB/T 32918.2 section 6 (SM2); SEC 1 version 2, section 4.1.3 (ECDSA).
 */
ZOKECC_API uint32_t SDF_ExternalSign_ECC(void *session, uint32_t algorithm, const ECCrefPrivateKey *priv,
                                         const uint8_t *e, uint32_t e_len, ECCSignature *sig_out);

/**
 * Verifies a signature over a digest.
 *
 * @param     session    session handle
 * @param     algorithm  ZOK_ALG_SM2_SIGN or ZOK_ALG_ECDSA_SIGN
 * @param[in] pub        one record: the public key
 * @param[in] e          e_len bytes: the digest, as for SDF_ExternalSign_ECC; may be null when e_len is 0
 * @param     e_len      length in bytes, at most 76
 * @param[in] sig        one record: r and s in L bytes each
 * @retval ZOK_OK a valid signature
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT pub, sig or a needed e is null, e_len is above 76, or pub->bits / 8 is above 64
 * @retval ZOK_ERR_VERIFY r or s is 0 or not below n, with any algorithm; later, for SM2 if r + s is n; later,
 *         the signature does not fit
 * @retval ZOK_ERR_INTERNAL for any other algorithm; later, the multiplication of the public key finds no
 *         memory
 *
 * @note Kept: the public key is not checked to be on the curve. Inverses and point additions are those of
 *       mint_EEA_algo and ecc_jac_point_add_1, so a valid signature with structured numbers, such as one made
 *       to test verifiers, can be refused.
 * @par Caller checks
 *      That the public key is a point of the curve with x and y below p, once, where it enters the system:
 *      ecc_test_point.
 * @par Timing
 *      Depends on the values, all of which are public.
 * @par Standard
 *      GB/T 32918.2 section 7 (SM2); SEC 1 version 2, section 4.1.4 (ECDSA).
 */
ZOKECC_API uint32_t SDF_ExternalVerify_ECC(void *session, uint32_t algorithm, const ECCrefPublicKey *pub,
                                           const uint8_t *e, uint32_t e_len, const ECCSignature *sig);

/**
 * Computes the value Z that ties an SM2 signature to an identity, a curve and a public key.
 *
 * Z is the hash, by the session's selector, of: the identity's length in bits as two bytes, the identity, a,
 * b, Gx and Gy as they stand in the first L bytes of the session's curve record, and the first L bytes of x
 * and y.
 *
 * @param      session    session handle
 * @param[in]  pub        one record: the public key; bits is not read
 * @param[in]  id         id_len bytes: the identity; may be null when id_len is 0. There is no default
 * @param      id_len     length in bytes
 * @param[out] Z_out      32 bytes
 * @param[out] Z_len_out  set to 32
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT pub, Z_out, Z_len_out or a needed id is null, or the session has no curve record
 * @retval ZOK_ERR_INTERNAL 6 * L + id_len + 3 bytes cannot be allocated or are more than 2^32 - 1, or if the
 *         session's hash selector is unknown
 *
 * @note Kept: only the low 16 bits of the identity's bit length enter the hash, so an identity of 8,192 bytes
 *       counts as one of 0. The record is that of the last ZOK_CurveParaCfg, also of one that failed.
 * @par Caller checks
 *      That id_len is at most 8,191.
 * @par Aliasing
 *      Z_out may overlap id and *pub, which are read first.
 * @par Timing
 *      Depends on the lengths.
 * @par Standard
 *      GB/T 32918.2 section 5.5.
 */
ZOKECC_API uint32_t ZOK_GenerateUserInfo(void *session, const ECCrefPublicKey *pub, const uint8_t *id,
                                         uint32_t id_len, uint8_t *Z_out, uint32_t *Z_len_out);

/**
 * Hashes a message and signs the digest.
 *
 * SM2: the public key d * G is computed from the private one, Z from it and the identity, and e is the hash
 * of Z and the message. ECDSA: e is the hash of the message alone. The hash is that of the session's
 * selector; the signature is that of SDF_ExternalSign_ECC.
 *
 * @param      session      session handle
 * @param      algorithm    ZOK_ALG_SM2_SIGN or ZOK_ALG_ECDSA_SIGN
 * @param[in]  priv         one record: the private key
 * @param[in]  message      message_len bytes; may be null when message_len is 0
 * @param      message_len  length in bytes
 * @param[in]  id           id_len bytes: the identity; may be null when id_len is 0; not read for ECDSA
 * @param      id_len       length in bytes; not read for ECDSA
 * @param[out] sig_out      one record: r and s in L bytes each
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_INTERNAL for any other algorithm, whose other arguments are ignored; later, for SM2
 *         if 33 + message_len bytes cannot be allocated or are more than 2^32 - 1, for ECDSA if the session's
 *         hash selector is unknown
 * @retval ZOK_ERR_ARGUMENT priv, sig_out, or a needed message or id is null, if priv->bits / 8 is above 64,
 *         or, for SM2, if ZOK_GenerateUserInfo fails for any reason
 * @retval ZOK_ERR_SIGN d is zero or not below n, for SM2 n - 1, or no signature was found
 *
 * @note Kept: what SDF_ExternalSign_ECC and ZOK_GenerateUserInfo say. For SM2 the range of d is tested last,
 *       so a bad key costs the whole call up to there.
 * @par Caller checks
 *      As for SDF_ExternalSign_ECC and ZOK_GenerateUserInfo.
 * @par Aliasing
 *      sig_out must not overlap message or id.
 * @par Threads
 *      Draws random numbers.
 * @par Timing
 *      Depends on the lengths and on the values, the private key and the nonce included.
 * @par Standard
 *      GB/T 32918.2 section 6 (SM2); SEC 1 version 2, section 4.1.3 (ECDSA).
 */
ZOKECC_API uint32_t ZOK_ExternalSignHash_ECC(void *session, uint32_t algorithm, const ECCrefPrivateKey *priv,
                                             const uint8_t *message, uint32_t message_len,
                                             const uint8_t *id, uint32_t id_len, ECCSignature *sig_out);

/**
 * Hashes a message and verifies a signature over the digest.
 *
 * The digest is that of ZOK_ExternalSignHash_ECC, with Z computed from the given public key.
 *
 * @param     session      session handle
 * @param     algorithm    ZOK_ALG_SM2_SIGN or ZOK_ALG_ECDSA_SIGN
 * @param[in] pub          one record: the public key; for Z its first L bytes are read, independent of bits
 * @param[in] message      message_len bytes; may be null when message_len is 0
 * @param     message_len  length in bytes
 * @param[in] id           id_len bytes: the identity; may be null when id_len is 0; not read for ECDSA
 * @param     id_len       length in bytes; not read for ECDSA
 * @param[in] sig          one record: r and s in L bytes each
 * @retval ZOK_OK a valid signature
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_INTERNAL for any other algorithm, whose other arguments are ignored; later, for SM2
 *         if 33 + message_len bytes cannot be allocated or are more than 2^32 - 1, for ECDSA if the session's
 *         hash selector is unknown, and for both if the multiplication of the public key finds no memory
 * @retval ZOK_ERR_ARGUMENT pub, sig, or a needed message or id is null, if pub->bits / 8 is above 64, or, for
 *         SM2, if ZOK_GenerateUserInfo fails for any reason
 * @retval ZOK_ERR_VERIFY the signature is not valid
 *
 * @note Kept: what SDF_ExternalVerify_ECC and ZOK_GenerateUserInfo say.
 * @par Caller checks
 *      As for SDF_ExternalVerify_ECC and ZOK_GenerateUserInfo.
 * @par Timing
 *      Depends on the lengths and on the values, all of which are public.
 * @par Standard
 *      GB/T 32918.2 section 7 (SM2); SEC 1 version 2, section 4.1.4 (ECDSA).
 */
ZOKECC_API uint32_t ZOK_ExternalVerifyHash_ECC(void *session, uint32_t algorithm, const ECCrefPublicKey *pub,
                                               const uint8_t *message, uint32_t message_len,
                                               const uint8_t *id, uint32_t id_len, const ECCSignature *sig);

/** @} */

/**
 * @defgroup sdf_encryption Encryption
 * C1 is k * G for a nonce k, Q the recipient's public key and (x2, y2) = k * Q. SM2: C2 is the message xor a
 * key stream derived from x2 and y2, and C3 the hash of x2, the message and y2, both by the session's
 * selector.
 * @{
 */

/**
 * Encrypts a message of exactly L bytes into a record.
 *
 * SM2 puts C2 into C and C3 into M. The multiplicative scheme puts message * x2 mod p into C and zeros into
 * M.
 *
 * @param      session      session handle
 * @param      algorithm    ZOK_ALG_SM2_ENCRYPT or ZOK_ALG_MULTIPLICATIVE
 * @param[in]  pub          one record: the recipient's public key
 * @param[in]  message      message_len bytes
 * @param      message_len  length in bytes, exactly L
 * @param[out] cipher_out   one record: x, y and C in L bytes each; M in 32 for SM2, in all 64 otherwise
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT pub is null, pub->bits / 8 is above 64, or a coordinate of pub is 0; later,
 *         message_len is not L, message or cipher_out is null, the session has no usable curve (p or n is
 *         zero) or, for SM2, its hash selector is unknown; later, for SM2, with x and y written, if h is 0 or
 *         a coordinate of h * Q is 0
 * @retval ZOK_ERR_INTERNAL for any other algorithm, whose other arguments are ignored; later, with x
 *         and y written for SM2, if a multiplication finds no memory or 1,024 nonces in a row were in vain
 *
 * @note Kept: the public key is only tested for zero coordinates, not to be on the curve. SM2 does not
 *       refuse a nonce of 0, which a stuck generator could deliver, and anyone can then read the message. The
 *       multiplicative scheme silently reduces a message of p and above modulo p.
 * @par Caller checks
 *      The public key, as for SDF_ExternalVerify_ECC; for the multiplicative scheme that the message is below
 *      p.
 * @par Aliasing
 *      message must not overlap *cipher_out.
 * @par Threads
 *      Draws random numbers.
 * @par Timing
 *      Depends on the values, the nonce included, and for the multiplicative scheme the message.
 * @par Standard
 *      The call of that name in GM/T 0018; GB/T 32918.4, section 6 (SM2).
 */
ZOKECC_API uint32_t SDF_ExternalEncrytp_ECC(void *session, uint32_t algorithm, const ECCrefPublicKey *pub,
                                            const uint8_t *message, uint32_t message_len,
                                            ECCCipher *cipher_out);

/**
 * Decrypts a record of SDF_ExternalEncrytp_ECC.
 *
 * @param      session        session handle
 * @param      algorithm      ZOK_ALG_SM2_ENCRYPT or ZOK_ALG_MULTIPLICATIVE
 * @param[in]  priv           one record: the private key
 * @param[in]  cipher         one record
 * @param[out] plain_out      L bytes for SM2; up to L, the message without leading zero bytes, otherwise
 * @param[out] plain_len_out  set to the length of the message
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT priv is null, priv->bits / 8 is above 64, or d is not below n; later, cipher,
 *         plain_out or plain_len_out is null, and for SM2 if h is 0, h * C1 is infinite, or the key stream is
 *         zero, as it is for an unknown hash selector
 * @retval ZOK_ERR_INTERNAL for any other algorithm, whose other arguments are ignored; later, a
 *         multiplication finds no memory; later, for SM2, with the plaintext and its length written, if the
 *         check value differs
 *
 * @note Kept: the plaintext stays written when the check value differs. The multiplicative scheme loses
 *       leading zero bytes, and does not detect a wrong key or a changed record. d = 0 is accepted,
 *       and C1 is not checked to be on the curve.
 * @par Caller checks
 *      The result, and plain_out is thrown away after any other than ZOK_OK.
 * @par Aliasing
 *      plain_out must not overlap *cipher.
 * @par Timing
 *      Depends on the values, the private key included.
 * @par Standard
 *      The call of that name in GM/T 0018; GB/T 32918.4, section 7 (SM2).
 */
ZOKECC_API uint32_t SDF_ExternalDecrypt_ECC(void *session, uint32_t algorithm, const ECCrefPrivateKey *priv,
                                            const ECCCipher *cipher, uint8_t *plain_out,
                                            uint32_t *plain_len_out);

/**
 * Encrypts a message of any length with SM2 into one byte string: 04, C1 in 2 * L bytes, C2, C3.
 *
 * @param      session         session handle
 * @param[in]  pub             one record: the recipient's public key
 * @param[in]  message         message_len bytes
 * @param      message_len     length in bytes, at least 1
 * @param[out] cipher_out      1 + 2 * L + message_len + 32 bytes
 * @param[out] cipher_len_out  set to that number
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT another pointer is null, pub->bits / 8 is above 64, or message_len is below 1;
 *         later, a coordinate of pub is 0, or the session has no usable curve (p or n is zero) or an unknown
 *         hash selector; later, with 04 and C1 written, if h is 0 or a coordinate of h * Q is 0
 * @retval ZOK_ERR_INTERNAL there is no memory for the key stream and the input of C3; later, with 04 and C1
 *         written, if a multiplication finds no memory or 1,024 nonces in a row were in vain
 *
 * @note Kept: the public key is only tested for zero coordinates, not to be on the curve. A nonce 0 is not
 *       refused, as with SDF_ExternalEncrytp_ECC.
 * @par Caller checks
 *      The public key, as for SDF_ExternalVerify_ECC, and the size of the buffer at cipher_out.
 * @par Aliasing
 *      message must not overlap cipher_out.
 * @par Threads
 *      Draws random numbers.
 * @par Timing
 *      Depends on the length and on the values, the nonce included.
 * @par Standard
 *      GB/T 32918.4, section 6, in the order C1, C2, C3.
 */
ZOKECC_API uint32_t ZOK_ExternalEncrytp_ECC(void *session, const ECCrefPublicKey *pub,
                                            const uint8_t *message, int32_t message_len,
                                            uint8_t *cipher_out, uint32_t *cipher_len_out);

/**
 * Decrypts a byte string of ZOK_ExternalEncrytp_ECC or sm2_Encry.
 *
 * @param      session        session handle
 * @param[in]  priv           one record: the private key
 * @param[in]  cipher         cipher_len bytes
 * @param      cipher_len     length in bytes, at least 2 * L + 34
 * @param[out] plain_out      cipher_len - 2 * L - 33 bytes
 * @param[out] plain_len_out  set to that number
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT another pointer is null, priv->bits / 8 is above 64, cipher_len is too small or
 *         is for a message of 2^31 bytes or more, d is not below n, or the first byte is not 04; later,
 *         h is 0, h * C1 is infinite, or the key stream is zero, as it is for an unknown hash selector
 * @retval ZOK_ERR_INTERNAL there is no memory for the key stream and the input of C3; later, a multiplication
 *         finds no memory; later, with the plaintext and its length written, if C3 differs
 *
 * @note Kept: the plaintext remains written if C3 differs. d = 0 is accepted, and C1 is not checked to lie on
 *       the curve.
 * @par Caller checks
 *      The result, and plain_out is thrown away after any other than ZOK_OK.
 * @par Aliasing
 *      plain_out must not overlap cipher.
 * @par Timing
 *      Depends on the length and on the values, the private key included.
 * @par Standard
 *      GB/T 32918.4, section 7.
 */
ZOKECC_API uint32_t ZOK_ExternalDecrypt_ECC(void *session, const ECCrefPrivateKey *priv,
                                            const uint8_t *cipher, uint32_t cipher_len,
                                            uint8_t *plain_out, uint32_t *plain_len_out);

/** @} */

/**
 * @defgroup sdf_agreement Key agreement
 * SM2 key agreement is between an initiator A and a responder B with key pairs (d, P), temporary pairs (r, R)
 * and values Z. A's data comes before B's on both sides. With x-bar = 2^w + (x of R mod 2^w),
 * both sides compute t = (d + x-bar * r) mod n from what is their own, T = P + x-bar * R from the peer's, and
 * the shared point U = (h * t mod p) * T. The key comes from xU, yU, ZA and ZB. With H = hash(xU, ZA, ZB, RA,
 * RB), B sends SB = hash(02, yU, H) and A sends SA = hash(03, yU, H). The SM2 calls make Z
 * from identities, as ZOK_GenerateUserInfo does. See GB/T 32918.3, section 6.
 *
 * | Call | Side | Z | Temporary key | check, send |
 * |---|---|---|---|---|
 * | ZOK_SM2_GenerateKeyWithECC | initiator | from identities | rA, RA | SB, SA |
 * | ZOK_SM2_GenerateResponseWithECC | responder | from identities | rB, RB | SA, SB |
 * | ZOK_SM2_GenerateAgreementDataAndKeyWithECC | responder | from identities | drawn | SA, SB |
 * | ZOK_GenerateKeyWithECC | initiator | given | rA; RA is computed | SB, SA |
 * | ZOK_GenerateResponseWithECC | responder | given | rB, RB | SA, SB |
 * | ZOK_GenerateAgreementDataAndKeyWithECC | responder | given | drawn | SA, SB |
 *
 * @par Results of the six agreement calls
 *      After ZOK_ERR_SESSION for a null session, ZOK_ERR_ARGUMENT if another pointer or a needed byte string
 *      is null, bits / 8 of a record that is read is above 64, or a call's own comment says so. Then, in this
 *      order: ZOK_ERR_INTERNAL if the received R is not on the curve; ZOK_ERR_INTERNAL if there is no memory;
 *      ZOK_ERR_INTERNAL if h * t mod p is 0 or T or U is infinite; ZOK_ERR_ARGUMENT if result->key is null
 *      and a key would be written. In all these cases nothing of the result is written.
 * @par What is read of a record
 *      Scalars and points are taken from bits / 8 bytes; x-bar, Z and H take the first L bytes of a field,
 *      independent of bits. Exactly klen_bits / 8 bytes of key are written, rounded down.
 * @par Caller checks
 *      That the peer's P is a point of the curve, as for SDF_ExternalVerify_ECC: only the received R is
 *      tested. That result->check is what the peer sends as its send, before the key is used: no call
 *      compares. That a temporary key is used for one agreement only.
 * @par Aliasing
 *      The result and its key must not overlap another argument.
 * @note Kept: h is p / n, so that no agreement succeeds on a curve with n above p, and h * t is reduced
 *       modulo p and not modulo n. The status of the key derivation is ignored: see
 *       ZOK_GenerateKeyWithECC.
 * @par Timing
 *      Depends on the lengths and on the values, the private keys included.
 * @{
 */

/**
 * Computes the x of d * P, the secret of a Diffie-Hellman exchange.
 *
 * @param      session  session handle
 * @param[in]  priv     one record: the private key
 * @param[in]  pub      one record: the peer's public key P
 * @param[out] out      L bytes
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT priv, pub or out is null, priv->bits / 8 or pub->bits / 8 is above 64, or d is not
 *         below n
 * @retval ZOK_ERR_INTERNAL the multiplication finds no memory
 *
 * @note Kept: P is not checked and d = 0 is accepted. An infinite product, as with d = 0, gives L zero bytes,
 *       and so do the multiples that ecc_unknown_point_mul loses.
 * @par Caller checks
 *      The public key, as for SDF_ExternalVerify_ECC; that the secret is not all zero bytes; and that it goes
 *      through a key derivation before it is used.
 * @par Aliasing
 *      out may overlap *priv and *pub, which are read first.
 * @par Timing
 *      Depends on the values, d included.
 * @par Standard
 *      SEC 1 version 2, section 3.3.1, without its checks.
 */
ZOKECC_API uint32_t ZOK_ExternalEcdhKeyAgreement(void *session, const ECCrefPrivateKey *priv,
                                                 const ECCrefPublicKey *pub, uint8_t *out);

/**
 * Makes a temporary key pair: a random r below n and R = r * G.
 *
 * @param      session       session handle
 * @param[out] tmp_priv_out  one record: r in L bytes, bits set to 8 * L; it stays with the caller
 * @param[out] tmp_pub_out   one record: x and y in L bytes each, bits set to 8 * L; for the peer
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT another pointer is null or the session has no usable curve (p or n is zero)
 *
 * @note Kept: r is drawn once and not checked; it can be 0.
 * @par Threads
 *      Draws random numbers.
 * @par Timing
 *      Depends on the values, r included.
 */
ZOKECC_API uint32_t ZOK_SM2_GenerateResponseTmpKeyWithECC(void *session, ECCrefPrivateKey *tmp_priv_out,
                                                          ECCrefPublicKey *tmp_pub_out);

/**
 * The same as ZOK_SM2_GenerateResponseTmpKeyWithECC, under the initiator's name.
 *
 * @param      session       session handle
 * @param[out] tmp_priv_out  one record
 * @param[out] tmp_pub_out   one record
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT another pointer is null or the session has no usable curve (p or n is zero)
 *
 * @par Threads
 *      Draws random numbers.
 * @par Timing
 *      Depends on the values, r included.
 */
ZOKECC_API uint32_t ZOK_SM2_GenerateAgreementDataWithECC(void *session, ECCrefPrivateKey *tmp_priv_out,
                                                         ECCrefPublicKey *tmp_pub_out);

/**
 * Completes an agreement for the initiator, with identities.
 *
 * ZA is computed from idA and dA * G, ZB from idB and PB.
 *
 * @param         session    session handle
 * @param         klen_bits  key length in bits
 * @param[in]     idA        idA_len bytes: the initiator's identity; may be null when idA_len is 0
 * @param         idA_len    length in bytes
 * @param[in]     idB        idB_len bytes: the responder's identity; may be null when idB_len is 0
 * @param         idB_len    length in bytes
 * @param[in]     dA         one record: the initiator's private key
 * @param[in]     rA         one record: the initiator's temporary private key
 * @param[in]     RA         one record: the initiator's temporary public key; it is not checked
 * @param[in]     PB         one record: the responder's public key
 * @param[in]     RB         one record: the responder's temporary public key
 * @param[in,out] result     one record
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT as for all six agreement calls, and if dA or rA is not below n, or if
 *         ZOK_GenerateUserInfo fails for either side
 * @retval ZOK_ERR_INTERNAL as for all six agreement calls
 *
 * @note Kept: what is said above, and what ZOK_GenerateUserInfo says.
 * @par Caller checks
 *      As above, and that an identity has at most 8,191 bytes.
 */
ZOKECC_API uint32_t ZOK_SM2_GenerateKeyWithECC(void *session, uint32_t klen_bits,
                                               const uint8_t *idA, uint32_t idA_len,
                                               const uint8_t *idB, uint32_t idB_len,
                                               const ECCrefPrivateKey *dA, const ECCrefPrivateKey *rA,
                                               const ECCrefPublicKey *RA, const ECCrefPublicKey *PB,
                                               const ECCrefPublicKey *RB, KeyAgreementResult *result);

/**
 * Completes an agreement for the responder, with identities and a temporary key made before.
 *
 * ZB is computed from idB and dB * G, then ZA from idA and PA.
 *
 * @param         session    session handle
 * @param         klen_bits  key length in bits
 * @param[in]     idA        idA_len bytes: the initiator's identity; may be null when idA_len is 0
 * @param         idA_len    length in bytes
 * @param[in]     idB        idB_len bytes: the responder's identity; may be null when idB_len is 0
 * @param         idB_len    length in bytes
 * @param[in]     dB         one record: the responder's private key
 * @param[in]     PA         one record: the initiator's public key
 * @param[in]     RA         one record: the initiator's temporary public key
 * @param[in]     rB         one record: the responder's temporary private key; it is not checked
 * @param[in,out] RB         one record: the responder's temporary public key; bits is not read but set to 8 *
 *                           L
 * @param[in,out] result     one record
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT as for all six agreement calls, and if dB is not below n, or if
 *         ZOK_GenerateUserInfo fails for either side
 * @retval ZOK_ERR_INTERNAL as for all six agreement calls; RB->bits is set before h * t mod p, T and U are
 *         tested
 *
 * @note Kept: what is said above, and what ZOK_GenerateUserInfo says. RB is not checked, nor that it is rB *
 *       G.
 * @par Caller checks
 *      As above, that an identity has at most 8,191 bytes, and that rB is below n.
 */
ZOKECC_API uint32_t ZOK_SM2_GenerateResponseWithECC(void *session, uint32_t klen_bits,
                                                    const uint8_t *idA, uint32_t idA_len,
                                                    const uint8_t *idB, uint32_t idB_len,
                                                    const ECCrefPrivateKey *dB, const ECCrefPublicKey *PA,
                                                    const ECCrefPublicKey *RA, const ECCrefPrivateKey *rB,
                                                    ECCrefPublicKey *RB, KeyAgreementResult *result);

/**
 * Does the responder's part in one call, with identities. The temporary key is drawn and not returned.
 *
 * @param         session    session handle
 * @param         klen_bits  key length in bits
 * @param[in]     idA        idA_len bytes: the initiator's identity; may be null when idA_len is 0
 * @param         idA_len    length in bytes
 * @param[in]     idB        idB_len bytes: the responder's identity; may be null when idB_len is 0
 * @param         idB_len    length in bytes
 * @param[in]     dB         one record: the responder's private key
 * @param[in]     PA         one record: the initiator's public key
 * @param[in]     RA         one record: the initiator's temporary public key
 * @param[out]    RB_out     one record: x and y in L bytes each, bits set to 8 * L; for the peer
 * @param[in,out] result     one record
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT as ZOK_SM2_GenerateResponseWithECC
 * @retval ZOK_ERR_INTERNAL as ZOK_SM2_GenerateResponseWithECC; RB_out is written before h * t mod p, T and U
 *         are tested
 *
 * @note Kept: what is said above, and what ZOK_GenerateUserInfo says.
 * @par Caller checks
 *      As above, and that an identity has at most 8,191 bytes.
 * @par Aliasing
 *      RB_out must not be RA.
 * @par Threads
 *      Draws random numbers.
 */
ZOKECC_API uint32_t ZOK_SM2_GenerateAgreementDataAndKeyWithECC(void *session, uint32_t klen_bits,
                                                               const uint8_t *idA, uint32_t idA_len,
                                                               const uint8_t *idB, uint32_t idB_len,
                                                               const ECCrefPrivateKey *dB,
                                                               const ECCrefPublicKey *PA,
                                                               const ECCrefPublicKey *RA,
                                                               ECCrefPublicKey *RB_out,
                                                               KeyAgreementResult *result);

/**
 * Completes an agreement for the initiator, with given values Z. RA is not passed but computed as rA * G.
 *
 * @param         session    session handle
 * @param         klen_bits  key length in bits
 * @param[in]     ZA         ZA_len bytes: Z of the initiator; may be null when ZA_len is 0
 * @param         ZA_len     length in bytes
 * @param[in]     ZB         ZB_len bytes: Z of the responder; may be null when ZB_len is 0
 * @param         ZB_len     length in bytes
 * @param[in]     dA         one record: the initiator's private key
 * @param[in]     rA         one record: the initiator's temporary private key
 * @param[in]     PB         one record: the responder's public key
 * @param[in]     RB         one record: the responder's temporary public key
 * @param[in,out] result     one record
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT as for all six agreement calls, and if 5 * L + ZA_len + ZB_len is above 448, or dA
 *         or rA is not below n
 * @retval ZOK_ERR_INTERNAL as for all six agreement calls
 *
 * @note Kept, here and in the other two calls with given Z: the key derivation refuses 2 * L + ZA_len +
 *       ZB_len above 300 bytes, and yet the result is ZOK_OK, with confirmation values that match
 *       and an unchanged key buffer. With an unknown hash selector the result is ZOK_OK, too: check
 *       and send are unchanged, and the key is zero bytes, or untouched if klen_bits / 8 is a multiple
 *       of L.
 * @par Caller checks
 *      As above, that 2 * L + ZA_len + ZB_len is at most 300, and the session's hash selector.
 * @par Example
 *      With L = 32, two Z of 32 bytes are the standard's; 236 bytes together still give a key, 237 to 288
 *      none.
 */
ZOKECC_API uint32_t ZOK_GenerateKeyWithECC(void *session, uint32_t klen_bits,
                                           const uint8_t *ZA, uint32_t ZA_len,
                                           const uint8_t *ZB, uint32_t ZB_len,
                                           const ECCrefPrivateKey *dA, const ECCrefPrivateKey *rA,
                                           const ECCrefPublicKey *PB, const ECCrefPublicKey *RB,
                                           KeyAgreementResult *result);

/**
 * The same as ZOK_SM2_GenerateResponseTmpKeyWithECC, for the responder of the calls with given Z.
 *
 * @param      session       session handle
 * @param[out] tmp_priv_out  one record
 * @param[out] tmp_pub_out   one record
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT another pointer is null or the session has no usable curve (p or n is zero)
 *
 * @par Threads
 *      Draws random numbers.
 * @par Timing
 *      Depends on the values, r included.
 */
ZOKECC_API uint32_t ZOK_GenerateResponseTmpKeyWithECC(void *session, ECCrefPrivateKey *tmp_priv_out,
                                                      ECCrefPublicKey *tmp_pub_out);

/**
 * The same as ZOK_SM2_GenerateResponseTmpKeyWithECC, for the initiator of the calls with given Z.
 *
 * @param      session       session handle
 * @param[out] tmp_priv_out  one record
 * @param[out] tmp_pub_out   one record
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT another pointer is null or the session has no usable curve (p or n is zero)
 *
 * @par Threads
 *      Draws random numbers.
 * @par Timing
 *      Depends on the values, r included.
 */
ZOKECC_API uint32_t ZOK_GenerateAgreementDataWithECC(void *session, ECCrefPrivateKey *tmp_priv_out,
                                                     ECCrefPublicKey *tmp_pub_out);

/**
 * Completes an agreement for the responder, with given values Z and a temporary key made before.
 *
 * @param         session    session handle
 * @param         klen_bits  key length in bits
 * @param[in]     ZA         ZA_len bytes: Z of the initiator; may be null when ZA_len is 0
 * @param         ZA_len     length in bytes
 * @param[in]     ZB         ZB_len bytes: Z of the responder; may be null when ZB_len is 0
 * @param         ZB_len     length in bytes
 * @param[in]     dB         one record: the responder's private key
 * @param[in]     PA         one record: the initiator's public key
 * @param[in]     RA         one record: the initiator's temporary public key
 * @param[in]     rB         one record: the responder's temporary private key; it is not checked
 * @param[in,out] RB         one record: the responder's temporary public key; bits is not read but set to 8 *
 *                           L
 * @param[in,out] result     one record
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT as for all six agreement calls, and if 5 * L + ZA_len + ZB_len is above 448, or dB
 *         is not below n
 * @retval ZOK_ERR_INTERNAL as for all six agreement calls; RB->bits is set before h * t mod p, T and U are
 *         tested
 *
 * @note Kept: what ZOK_GenerateKeyWithECC says. RB is not checked, nor that it is rB * G.
 * @par Caller checks
 *      As for ZOK_GenerateKeyWithECC, and that rB is below n.
 */
ZOKECC_API uint32_t ZOK_GenerateResponseWithECC(void *session, uint32_t klen_bits,
                                                const uint8_t *ZA, uint32_t ZA_len,
                                                const uint8_t *ZB, uint32_t ZB_len,
                                                const ECCrefPrivateKey *dB, const ECCrefPublicKey *PA,
                                                const ECCrefPublicKey *RA, const ECCrefPrivateKey *rB,
                                                ECCrefPublicKey *RB, KeyAgreementResult *result);

/**
 * Does the responder's part in one call, with given values Z. The temporary key is drawn and not returned.
 *
 * @param         session    session handle
 * @param         klen_bits  key length in bits
 * @param[in]     ZA         ZA_len bytes: Z of the initiator; may be null when ZA_len is 0
 * @param         ZA_len     length in bytes
 * @param[in]     ZB         ZB_len bytes: Z of the responder; may be null when ZB_len is 0
 * @param         ZB_len     length in bytes
 * @param[in]     dB         one record: the responder's private key
 * @param[in]     PA         one record: the initiator's public key
 * @param[in]     RA         one record: the initiator's temporary public key
 * @param[out]    RB_out     one record: x and y in L bytes each, bits set to 8 * L; for the peer
 * @param[in,out] result     one record
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT as ZOK_GenerateResponseWithECC
 * @retval ZOK_ERR_INTERNAL as ZOK_GenerateResponseWithECC; RB_out is written before h * t mod p, T and U are
 *         tested
 *
 * @note Kept: what ZOK_GenerateKeyWithECC says.
 * @par Caller checks
 *      As for ZOK_GenerateKeyWithECC.
 * @par Aliasing
 *      RB_out must not be RA.
 * @par Threads
 *      Draws random numbers.
 */
ZOKECC_API uint32_t ZOK_GenerateAgreementDataAndKeyWithECC(void *session, uint32_t klen_bits,
                                                           const uint8_t *ZA, uint32_t ZA_len,
                                                           const uint8_t *ZB, uint32_t ZB_len,
                                                           const ECCrefPrivateKey *dB,
                                                           const ECCrefPublicKey *PA,
                                                           const ECCrefPublicKey *RA,
                                                           ECCrefPublicKey *RB_out,
                                                           KeyAgreementResult *result);

/** @} */

#endif
