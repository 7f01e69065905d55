/**
 * @file sdf.h
 * Devices, sessions, key pairs and signatures: the call shapes of GM/T 0018, entirely in software.
 *
 * @par Devices and sessions
 *      A device is a small record in memory, a session a block of some 86,000 bytes with a curve of its own.
 *      A session comes from a device (SDF_OpenSession, closed by SDF_CloseSession) or stands alone
 *      (ZOK_OpenSession, closed by ZOK_CloseSession); afterwards every call takes either kind.
 * @par Key and signature records
 *      Numbers are big-endian at the start of their 64-byte fields. Writers fill the first L bytes, L being
 *      the byte length of the session's curve, set bits to 8 * L and leave the rest of each field as it was.
 *      Readers take the first bits / 8 bytes of a key's fields, up to 64, and the first L bytes of r and s.
 *      bits may differ from 8 * L: 0 reads as zero numbers.
 * @par A session without a curve
 *      It arises from SDF_OpenSession, and from ZOK_OpenSession with a record of an unknown type or without
 *      memory for its copy. Key generation, ZOK_GenerateUserInfo and hashing and signing or verifying with
 *      SM2 then answer ZOK_ERR_ARGUMENT, all other signing ZOK_ERR_SIGN, and all other verification
 *      ZOK_ERR_VERIFY.
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

/** What SDF_GetDeviceInfo tells. 100 bytes. The values are constants of the library. */
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

/**
 * @defgroup sdf_sessions Devices and sessions
 * @{
 */

/**
 * Opens a device.
 *
 * @param[out] device_out  set to the device handle
 * @return ZOK_OK;
 *         ZOK_ERR_ARGUMENT if device_out is null;
 *         ZOK_ERR_OPEN_DEVICE if there is no memory for the device
 *
 * @par Timing
 *      Depends on the heap.
 * @par Standard
 *      The call of that name in GM/T 0018.
 */
ZOKECC_API uint32_t SDF_OpenDevice(void **device_out);

/**
 * Closes a device.
 *
 * Its sessions stay open and usable; the device's memory is then given back with the last of them. Until that
 * happens a further SDF_CloseDevice answers ZOK_OK and does nothing.
 *
 * @param device  device handle
 * @return ZOK_OK;
 *         ZOK_ERR_CLOSE_DEVICE if device is null
 *
 * @par Caller checks
 *      A handle is not used again after its device has been closed.
 * @par Timing
 *      Depends on the heap.
 * @par Standard
 *      The call of that name in GM/T 0018.
 */
ZOKECC_API uint32_t SDF_CloseDevice(void *device);

/**
 * Opens a session on a device. It has no curve until ZOK_CurveParaCfg has installed one.
 *
 * @param      device       device handle
 * @param[out] session_out  set to the session handle
 * @return ZOK_OK;
 *         ZOK_ERR_DEVICE if device is null;
 *         ZOK_ERR_ARGUMENT if session_out is null;
 *         ZOK_ERR_OPEN_SESSION if there is no memory for the session
 *
 * @par Timing
 *      Depends on the heap.
 * @par Standard
 *      The call of that name in GM/T 0018.
 */
ZOKECC_API uint32_t SDF_OpenSession(void *device, void **session_out);

/**
 * Closes a session and lowers the count of its device. A session without a device is closed all the same.
 *
 * @param session  session handle
 * @return ZOK_OK;
 *         ZOK_ERR_CLOSE_SESSION if session is null
 *
 * @par Timing
 *      Depends on the heap.
 * @par Standard
 *      The call of that name in GM/T 0018.
 */
ZOKECC_API uint32_t SDF_CloseSession(void *session);

/**
 * Tells the constants that describe the device.
 *
 * @param      session   session handle; only tested for null
 * @param[out] info_out  one record
 * @return ZOK_OK;
 *         ZOK_ERR_SESSION if session is null;
 *         ZOK_ERR_ARGUMENT if info_out is null
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
 * The curve is installed as by ZOK_CurveParaCfg with the type that stands in the record.
 *
 * @param[out] session_out  set to the session handle
 * @param[in]  record       one record: the curve
 * @return ZOK_OK;
 *         ZOK_ERR_ARGUMENT if session_out or record is null;
 *         ZOK_ERR_OPEN_SESSION if there is no memory for the session
 *
 * @note Kept: what ZOK_CurveParaCfg reports is not passed on. A record with an unknown type gives ZOK_OK and
 *       a session without a curve; one whose base point is off the curve gives ZOK_OK and a session that
 *       works with it.
 * @par Caller checks
 *      Parameters from outside: call ZOK_CurveParaCfg with the same record once more and look at its result.
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
 * @return ZOK_OK;
 *         ZOK_ERR_CLOSE_SESSION if session is null
 *
 * @par Caller checks
 *      Sessions of a device are closed by SDF_CloseSession. This call leaves the count of an open device as
 *      it is, so the memory of that device is never given back.
 * @par Timing
 *      Depends on the heap.
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
 * @return ZOK_OK;
 *         ZOK_ERR_SESSION if session is null;
 *         ZOK_ERR_ARGUMENT if pub_out or priv_out is null, key_bits is not 8 * L, or the session has no
 *         usable curve (p or n is zero);
 *         ZOK_ERR_INTERNAL for any other algorithm
 *
 * @note Kept: d is drawn once and not tested. It can be 0, with a public key of zero bytes, or 1 or n - 1,
 *       and small d are a little likelier than large ones.
 * @par Caller checks
 *      That d is neither 0 nor n - 1, and for SM2 that a signature made with it verifies.
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
 * @return ZOK_OK;
 *         ZOK_ERR_SESSION if session is null;
 *         ZOK_ERR_ARGUMENT if priv, sig_out or a needed e is null, e_len is above 76, or priv->bits / 8 is
 *         above 64;
 *         ZOK_ERR_SIGN if d is zero or not below n, with any algorithm;
 *         ZOK_ERR_INTERNAL for any other algorithm;
 *         ZOK_ERR_SIGN for SM2 if d is n - 1, and if 1,024 nonces in a row gave no signature, which only
 *         happens on a curve that allows none
 *
 * @note Kept: SM2 accepts r = 0, which no verification accepts. SM2 signatures rest on the inverse of d + 1,
 *       which mint_EEA_algo gets wrong for small and structured numbers: with d = 1 or d = n - 2 on the SM2
 *       curve the call answers ZOK_OK and the signature does not verify. A nonce 0, as a generator that is
 *       stuck could give it, is not refused for SM2.
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
 * @return ZOK_OK for a valid signature;
 *         ZOK_ERR_SESSION if session is null;
 *         ZOK_ERR_ARGUMENT if pub, sig or a needed e is null, e_len is above 76, or pub->bits / 8 is above
 *         64;
 *         ZOK_ERR_VERIFY if r or s is 0 or not below n, with any algorithm;
 *         ZOK_ERR_INTERNAL for any other algorithm;
 *         ZOK_ERR_VERIFY for SM2 if r + s is n;
 *         ZOK_ERR_INTERNAL if the multiplication of the public key finds no memory;
 *         ZOK_ERR_VERIFY if the signature does not fit
 *
 * @note Kept: the public key is not tested to lie on the curve. Inverses and point additions are those of
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
 * @return ZOK_OK;
 *         ZOK_ERR_SESSION if session is null;
 *         ZOK_ERR_ARGUMENT if pub, Z_out, Z_len_out or a needed id is null, or the session has no curve
 *         record;
 *         ZOK_ERR_INTERNAL if 6 * L + id_len + 3 bytes cannot be allocated or are more than 2^32 - 1, or if
 *         the session's hash selector is unknown
 *
 * @note Kept: only the low 16 bits of the identity's bit length enter the hash, so an identity of 8,192 bytes
 *       counts as one of 0. The record is that of the last ZOK_CurveParaCfg, also of one that failed.
 * @par Caller checks
 *      That id_len is at most 8,191.
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
 * @return ZOK_OK;
 *         ZOK_ERR_SESSION if session is null;
 *         ZOK_ERR_INTERNAL for any other algorithm, whose other arguments are not looked at;
 *         ZOK_ERR_ARGUMENT if priv, sig_out, or a needed message or id is null, if priv->bits / 8 is above
 *         64, or, for SM2, if ZOK_GenerateUserInfo fails for whatever reason;
 *         ZOK_ERR_INTERNAL for SM2 if 33 + message_len bytes cannot be allocated or are more than 2^32 - 1,
 *         for ECDSA if the session's hash selector is unknown;
 *         ZOK_ERR_SIGN if d is zero or not below n, for SM2 n - 1, or no signature came out
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
 * @param[in] pub          one record: the public key; for Z its first L bytes are read whatever bits says
 * @param[in] message      message_len bytes; may be null when message_len is 0
 * @param     message_len  length in bytes
 * @param[in] id           id_len bytes: the identity; may be null when id_len is 0; not read for ECDSA
 * @param     id_len       length in bytes; not read for ECDSA
 * @param[in] sig          one record: r and s in L bytes each
 * @return ZOK_OK for a valid signature;
 *         ZOK_ERR_SESSION if session is null;
 *         ZOK_ERR_INTERNAL for any other algorithm, whose other arguments are not looked at;
 *         ZOK_ERR_ARGUMENT if pub, sig, or a needed message or id is null, if pub->bits / 8 is above 64, or,
 *         for SM2, if ZOK_GenerateUserInfo fails for whatever reason;
 *         ZOK_ERR_INTERNAL for SM2 if 33 + message_len bytes cannot be allocated or are more than 2^32 - 1,
 *         for ECDSA if the session's hash selector is unknown, and for both if the multiplication of the
 *         public key finds no memory;
 *         ZOK_ERR_VERIFY if the signature is not valid
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

#endif
