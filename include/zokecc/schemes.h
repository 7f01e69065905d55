/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/**
 * @file schemes.h
 * ECDSA, ECDH, ECES, key pairs, and SM2 signatures, encryption and key exchange over the curve of the
 * process.
 *
 * | Call | Success | Failure |
 * |---|---|---|
 * | Ecc_GenPubKey, Ecc_KeyPair_Gen | 0 | -1 |
 * | Ecdsa_DigitalSign | 0 | -1 |
 * | **Ecdsa_DigitalVeriy** | **1** | 0 |
 * | sm2_DigitalSign | 0 | -1, or 1 |
 * | sm2_DigitalVeriy | 0 | -1, or 1 |
 * | sm2_Encry | 0 | -1 |
 * | **sm2_Decry** | **-1**, with plain->len_low set | -1, with plain->len_low unchanged |
 * | Eces_Encry | 3 * W | -1 |
 * | Eces_Decry | length of the message | -1 |
 * | eces_format, eces_deformat | 0 | 1 |
 * | Ecdh_KeyExChg | L | -1 |
 * | sm2_KeyExChg_A1_3, _A4_10, _B1_10, sm2_KeyExChg | 0 | -1 |
 * | sm2_RPoint | 0 | 1 |
 *
 * @par Names
 *      Ecdsa_DigitalVeriy and sm2_DigitalVeriy are spelled so on purpose: deployed programs link them by
 *      these names.
 * @par The curve
 *      Every call works on the curve that Curve_Init installed last, even if that returned -1. L is its
 *      byte length, p its prime, G its base point, n the order, and h the integer p / n, which is 0 on a
 *      curve with n above p. Sessions and their curves have no part in it.
 * @par Points and signatures
 *      Both are ecc_point_bytes records; a signature has r in x and s in y. A record is read at its own
 *      length and written at L: L bytes at the start of both fields, and length set to L. Infinity is written
 *      as zero bytes. A point is read as a finite one, and its coordinates need not be below p.
 * @par Messages
 *      Of an sm3_msg the calls read data and len_low. Data may be null when len_low is 0, unless said
 *      otherwise.
 * @par Hash selectors
 *      HASH_ALG_SM3 or HASH_ALG_SHA256. Only encryption and decryption refuse another one. The other calls
 *      accept it, with e = 0 or a key of zeros: check a selector that comes from outside.
 * @par Results
 *      Small integers that differ from call to call: look at each. "An argument is unusable" means: a pointer
 *      that the call needs is null, the length of a record is above 65 or that of a scalar above 76, or no
 *      curve is installed (n or p is zero). Unless said otherwise nothing is written when a call fails.
 * @par The hardened build
 *      What is computed with a secret is exact and constant-time. A peer's public key, a temporary point or
 *      C1 that is off the curve, or has a coordinate of p and above, is refused with -1. A private or
 *      temporary number of 0, for SM2 signatures also n - 1, is answered like one of n and above. Drawn
 *      numbers lie between 1 and n - 2, without bias. A signature is verified before it is returned. p and n
 *      must be odd and have five to nine 32-bit words. A call that draws random numbers returns -1
 *      (eces_format 1) if the kernel delivers none, and Ecdh_KeyExChg returns -1 without memory. What notes
 *      on secrets say under "Kept" to the contrary is about the default build.
 * @par Threads
 *      No call of this header may run while another thread installs a curve.
 */
#ifndef ZOKECC_SCHEMES_H
#define ZOKECC_SCHEMES_H

#include <zokecc/ecc.h>
#include <zokecc/hash.h>

/** Mode of Ecc_KeyPair_Gen: draw a private key. */
#define ECC_KEY_PAIR_NEW   0u
/** Mode of Ecc_KeyPair_Gen: use the given private key. */
#define ECC_KEY_PAIR_GIVEN 1u

/** Role in sm2_KeyExChg: the side that starts. */
#define SM2_ROLE_INITIATOR 1u
/** Role in sm2_KeyExChg: the side that responds. */
#define SM2_ROLE_RESPONDER 0u

/** A scalar: a private key or the secret of one exchange. 8 bytes on 32-bit targets. */
typedef struct ecc_scalar {
    uint8_t *bytes;               /**< the number, big-endian; may be null when length is 0 */
    uint32_t length;              /**< bytes, at most 76; for a key to be generated, the capacity */
} ecc_scalar;

/**
 * @defgroup schemes_keys Key pairs
 * @par Timing
 *      Depends on the values, d included.
 * @{
 */

/**
 * Computes the public key of a private key.
 *
 * @param[in]  d      one record: the private key
 * @param[out] Q_out  one record: the point d * G
 * @retval 0 success
 * @retval -1 an argument is unusable or d is not below n
 *
 * @note Kept: d = 0 is accepted and gives coordinates of zero bytes.
 * @par Aliasing
 *      Q_out may overlap the bytes of d, which are read first.
 * @par Standard
 *      SEC 1 version 2, section 3.2.1, step 2.
 */
ZOKECC_API int32_t Ecc_GenPubKey(const ecc_scalar *d, ecc_point_bytes *Q_out);

/**
 * Makes a key pair, or the public key of a given private key.
 *
 * Mode 0 draws d below n, writes it to the key's bytes in L bytes and sets the key's length to L; the length
 * that comes in is the room there is. Mode 1 reads d, and is Ecc_GenPubKey.
 *
 * @param[in,out] key    one record: the private key; not read in other modes, and may then be null
 * @param[out]    Q_out  one record: the point d * G
 * @param         mode   ECC_KEY_PAIR_NEW or ECC_KEY_PAIR_GIVEN
 * @retval 0 success
 * @retval -1 an argument is unusable (in mode 0 the key's length may be any), or in mode 1 if d is not below
 *         n
 *
 * @note Kept: in mode 0 with room for fewer than L bytes the result is 0, the length becomes 0, the public
 *       key is written and the private one is lost. d is drawn once and not checked; it can be 0, 1 or n - 1.
 *       Any other mode returns 0, even without a curve, with the public key of d = 0: L zero bytes in both
 *       fields.
 * @par Caller checks
 *      In mode 0 that the length is L afterwards, and that d is neither 0 nor n - 1; for SM2 that a signature
 *      made with it verifies.
 * @par Threads
 *      Mode 0 draws random numbers.
 * @par Standard
 *      SEC 1 version 2, section 3.2.1, without its bound on d.
 */
ZOKECC_API int32_t Ecc_KeyPair_Gen(ecc_scalar *key, ecc_point_bytes *Q_out, uint32_t mode);

/** @} */

/**
 * @defgroup schemes_signing Signatures
 * @par Timing
 *      Depends on the length and on the values, the private key and the nonce included.
 * @{
 */

/**
 * Signs a message with ECDSA.
 *
 * e is the hash of the message as one number, reduced modulo n and not cut to the size of n.
 *
 * @param[in]  d         one record: the private key
 * @param[in]  msg       one record: the message; with SHA-256 null data count as the empty message, whatever
 *                       len_low says, and with an unknown selector data are not read
 * @param[out] sig_out   one record: the signature
 * @param      hash_sel  hash selector
 * @retval 0 success
 * @retval -1 an argument is unusable, d is 0 or not below n, or 1,024 nonces in a row gave no signature,
 *         which only happens on a curve that allows none
 *
 * @note Kept: an unknown selector leaves e at 0, and the signature says nothing about the message. The
 *       inverse is that of mint_EEA_algo: a small or structured nonce gives a signature that does not verify.
 * @par Aliasing
 *      sig_out may overlap the message and d, which are read first.
 * @par Threads
 *      Draws random numbers.
 * @par Standard
 *      SEC 1 version 2, section 4.1.3, with the whole digest.
 */
ZOKECC_API int32_t Ecdsa_DigitalSign(const ecc_scalar *d, const sm3_msg *msg, ecc_point_bytes *sig_out,
                                     uint32_t hash_sel);

/**
 * Verifies an ECDSA signature. Here 1 means valid.
 *
 * @param[in] Q         one record: the public key
 * @param[in] msg       one record: the message, as for Ecdsa_DigitalSign
 * @param[in] sig       one record: the signature
 * @param     hash_sel  hash selector
 * @retval 1 a valid signature
 * @retval 0 it is not, and also if an argument is unusable, s is a multiple of n, or there is no memory
 *
 * @note Kept: r and s are not compared with n, so s + n is as valid as s if it fits the field; the
 *       public key is not checked to be on the curve; an infinite sum counts as x = 0. With an unknown
 *       selector r = 0 and s = 1 are valid for every key and message. Inverses and point additions are those
 *       of mint_EEA_algo and ecc_jac_point_add_1, so a valid signature with structured numbers can be
 *       refused.
 * @par Caller checks
 *      The selector, and that the public key is a point of the curve with x and y below p, once, where it
 *      enters the system: ecc_ByteToPoint.
 * @par Timing
 *      Depends on the length and on the values, all of which are public.
 * @par Standard
 *      SEC 1 version 2, section 4.1.4, without its checks and with the whole digest.
 */
ZOKECC_API int32_t Ecdsa_DigitalVeriy(const ecc_point_bytes *Q, const sm3_msg *msg,
                                      const ecc_point_bytes *sig, uint32_t hash_sel);

/**
 * Signs a message with SM2, for a Z computed by the caller.
 *
 * e is the hash of Z and the message. ZOK_GenerateUserInfo describes Z.
 *
 * @param[in]  d         one record: the private key
 * @param[in]  msg       one record: the message
 * @param[in]  Z         32 bytes
 * @param[out] sig_out   one record: the signature
 * @param      hash_sel  hash selector
 * @retval 0 success
 * @retval -1 an argument is unusable, or d is n - 1 or not below n; later, 1,024 nonces in a row gave no
 *         signature
 * @retval 1 message and 33 bytes cannot be allocated or are more than 2^32 - 1
 *
 * @note Kept: d = 0 is accepted, and so are r = 0, which no verification accepts, and the nonce 0, which
 *       reveals the key. An unknown selector leaves e at 0. Signatures depend on the inverse of d + 1: see
 *       SDF_ExternalSign_ECC for the small and structured keys with which they do not verify.
 * @par Caller checks
 *      That d is not 0, and the selector.
 * @par Aliasing
 *      sig_out may overlap the message, Z and d, which are read first.
 * @par Threads
 *      Draws random numbers.
 * @par Standard
 *      GB/T 32918.2, section 6.
 */
ZOKECC_API int32_t sm2_DigitalSign(const ecc_scalar *d, const sm3_msg *msg, const uint8_t *Z,
                                   ecc_point_bytes *sig_out, uint32_t hash_sel);

/**
 * Verifies an SM2 signature, for a Z computed by the caller. Here 0 means valid.
 *
 * @param[in] Q         one record: the public key
 * @param[in] msg       one record: the message
 * @param[in] sig       one record: the signature
 * @param[in] Z         32 bytes
 * @param     hash_sel  hash selector
 * @retval 0 a valid signature
 * @retval -1 an argument is unusable, r is 0 or not below p, or s is 0; later, message and 33 bytes cannot be
 *         allocated or are more than 2^32 - 1; later, the multiplication of the public key finds no memory
 * @retval 1 r + s is a multiple of n; later, the signature does not fit
 *
 * @note Kept: r is compared with p and not with n, and s has no upper bound, so s + n is as valid as s. The
 *       public key is not checked to be on the curve. With an unknown selector e is 0.
 * @par Caller checks
 *      As for Ecdsa_DigitalVeriy.
 * @par Timing
 *      Depends on the length and on the values, all of which are public.
 * @par Standard
 *      GB/T 32918.2, section 7, with other bounds on r and s.
 */
ZOKECC_API int32_t sm2_DigitalVeriy(const ecc_point_bytes *Q, const sm3_msg *msg, const ecc_point_bytes *sig,
                                    const uint8_t *Z, uint32_t hash_sel);

/** @} */

/**
 * @defgroup schemes_encryption Encryption
 * @{
 */

/**
 * Encrypts a message with SM2 into one byte string: 04, x1, y1, C2 and C3.
 *
 * (x1, y1) = k * G in L bytes each; C2 = message xor key stream, as long as the message; C3, 32 bytes, is the
 * hash of x2, message and y2, with (x2, y2) = k * Q. The key stream comes from x2 and y2 by the same hash.
 *
 * @param[in]     pub     one record: the recipient's public key Q
 * @param[in]     msg     one record: the message, 1 to 2^31 - 1 bytes; data must not be null
 * @param[in,out] cipher  one record: data points to 1 + 2 * L + message + 32 bytes, which are written;
 *                        len_high is set to 0 and len_low to that number
 * @param         alg     hash selector
 * @retval 0 success
 * @retval -1 an argument is unusable, the message is empty or has 2^31 bytes or more, the selector is
 *         unknown, there is no memory, or a coordinate of Q is 0; nothing is written; later, h is 0, a
 *         coordinate of h * Q is 0, a multiplication finds no memory, or 1,024 key streams in a row were
 *         zero; 04, x1 and y1 are written
 *
 * @note Kept: the public key is only tested for zero coordinates, not to be on the curve. A nonce of 0,
 *       which a stuck generator could deliver, is not refused, and anyone can then read the message.
 * @par Caller checks
 *      The size of the buffer at cipher->data, and the public key, as for Ecdsa_DigitalVeriy.
 * @par Aliasing
 *      The buffers must not overlap, and cipher must not be msg.
 * @par Threads
 *      Draws random numbers.
 * @par Timing
 *      Depends on the length and on the values, the nonce included.
 * @par Standard
 *      GB/T 32918.4, section 6, in the order C1, C2, C3.
 * @par Example
 *      10 bytes on a curve of 32 bytes give 107: 65 of C1, 10 of C2 and 32 of C3.
 */
ZOKECC_API int32_t sm2_Encry(const ecc_point_bytes *pub, const sm3_msg *msg, sm3_msg *cipher, uint32_t alg);

/**
 * Decrypts a ciphertext of sm2_Encry, and yet returns -1: the result does not show whether it succeeded.
 *
 * @param[in]     priv    one record: the private key
 * @param[in]     cipher  one record: the ciphertext, at least 2 * L + 34 bytes
 * @param[in,out] plain   one record: data points to the ciphertext's length less 2 * L + 33 bytes, which are
 *                        written; len_high is set to 0 and len_low to that number
 * @param         alg     hash selector
 * @retval 0 the check value was found where this call expects it
 * @retval -1 with nothing written, if an argument is unusable, data are null, d is not below n, the
 *         ciphertext is too short or is for a message of 2^31 bytes or more, its first byte is not 04,
 *         there is no memory, h is 0, h * C1 is infinite or the key stream is zero, as with an unknown
 *         selector; later, with the plaintext written, if the check value was not found
 *
 * @note Kept: the check value is expected at the start of C2, not after it. A ciphertext of sm2_Encry, or
 *       of any other sender, therefore gives the right plaintext and -1. d = 0 is not refused, and C1 is not
 *       tested to lie on the curve.
 * @par Caller checks
 *      Set plain->len_low to 0 before the call: when it is not 0 afterwards, there is a plaintext. Nothing
 *      says that it is the sender's. ZOK_ExternalDecrypt_ECC reads the same ciphertexts and does compare.
 * @par Aliasing
 *      The buffers must not overlap, and plain must not be cipher.
 * @par Timing
 *      Depends on the length and on the values, the private key included.
 * @par Standard
 *      GB/T 32918.4, section 7, except for the position of the check value.
 */
ZOKECC_API int32_t sm2_Decry(const ecc_scalar *priv, const sm3_msg *cipher, sm3_msg *plain, uint32_t alg);

/**
 * Encrypts a number by multiplication: 04, x and y of k * G, and message * x2 mod p.
 *
 * x2 is the x of k * Q. The three numbers take W bytes each, four times the words of p; W is L unless p is
 * shorter than its type says.
 *
 * @param[in]  recipient     one record: the recipient's public key Q
 * @param[in]  message       message_len bytes, taken as one number; may be null when message_len is 0
 * @param      message_len   length in bytes
 * @param[out] out           1 + 3 * W bytes
 * @param      out_capacity  room after the first byte, 3 * W; a negative one counts as 0
 * @return 3 * W, one less than the bytes written
 * @retval -1 an argument is unusable, or 1,024 nonces in a row gave x2 = 0, as with a Q of zero bytes or
 *         without memory
 *
 * @note Kept: the leading 04 counts neither for the capacity nor in the result. A number that does not fit
 *       into the remaining capacity is not written, nor are those after it, and the result is 2 * W, W
 *       or 0. A message of p and above is silently reduced modulo p, and Q is not checked to be on the
 *       curve.
 * @par Caller checks
 *      That the result is 3 * W, that the message is below p, the public key, as for Ecdsa_DigitalVeriy, and
 *      that the scheme will do: it has no integrity, and anyone who knows one message can change it into any
 *      other.
 * @par Aliasing
 *      out may overlap message, which is read first.
 * @par Threads
 *      Draws random numbers.
 * @par Timing
 *      Depends on the length and on the values, the message and the nonce included.
 */
ZOKECC_API int32_t Eces_Encry(const ecc_point_bytes *recipient, const uint8_t *message, uint32_t message_len,
                              uint8_t *out, int32_t out_capacity);

/**
 * Decrypts a ciphertext of Eces_Encry.
 *
 * @param[in]  d           one record: the private key
 * @param[in]  cipher      1 + cipher_len bytes
 * @param      cipher_len  the result of Eces_Encry, 3 * W; its third part is the width of the numbers
 * @param[out] out         up to L bytes, the message without leading zero bytes, and one zero byte after it
 * @return the length of the message, without the zero byte
 * @retval -1 an argument is unusable, d is not below n, the first byte is not 04, cipher_len / 3 is above 76
 *         or there is no memory
 *
 * @note Kept: leading zero bytes of the message are lost, and a message of zeros has length 0. A wrong key or
 *       a changed ciphertext is not detected, d = 0 is accepted and k * G is not checked to
 *       lie on the curve.
 * @par Caller checks
 *      The size of out: L + 1 bytes always suffice.
 * @par Aliasing
 *      out may overlap cipher, which is read first.
 * @par Timing
 *      Depends on the values, the private key included.
 */
ZOKECC_API int32_t Eces_Decry(const ecc_scalar *d, const uint8_t *cipher, uint32_t cipher_len, uint8_t *out);

/**
 * Builds a block for Eces_Encry: a byte left to the caller, random bytes, a zero byte, the message.
 *
 * @param      block_len    length of the block in bytes, L as a rule
 * @param[in]  message      message_len bytes; may be null when message_len is 0
 * @param      message_len  length in bytes, at most block_len - 2
 * @param[out] out          block_len bytes; the first is not written
 * @param[out] out_len      set to block_len
 * @retval 0 success
 * @retval 1 message_len + 2 is above block_len or a needed pointer is null
 *
 * @note Kept: the random bytes are taken as drawn, and a zero among them ends the padding early for
 *       eces_deformat. With message_len = block_len - 2 one byte is drawn, which the zero byte then replaces.
 * @par Caller checks
 *      Clear the first byte, so that the block as a number is below p.
 * @par Aliasing
 *      out must not overlap message.
 * @par Threads
 *      Draws random numbers.
 * @par Timing
 *      Depends on the lengths.
 */
ZOKECC_API int32_t eces_format(uint32_t block_len, const uint8_t *message, uint32_t message_len,
                               uint8_t *out, uint32_t *out_len);

/**
 * Takes the message out of a block that Eces_Decry gave back.
 *
 * A block of L - 1 bytes has lost its leading zero byte: the message is what follows the first zero. A
 * shorter block was no formatted one, and is put right-aligned into a field of L - 2 bytes.
 *
 * @param[in]  block      block_len bytes
 * @param      block_len  length in bytes, at most L - 1
 * @param[out] out        up to L - 2 bytes
 * @param[out] out_len    set to the length of the message, or to L - 2 for a shorter block
 * @retval 0 success
 * @retval 1 block_len is L or above, if there is no zero in a block of L - 1 bytes, if L is below 2, as
 *         without a curve, or if a needed pointer is null
 *
 * @note Kept: before a right-aligned block out is unchanged, and *out_len counts those bytes, too.
 * @par Caller checks
 *      Clear out before the call.
 * @par Aliasing
 *      out may overlap block.
 * @par Timing
 *      Depends on the values: on the place of the zero.
 */
ZOKECC_API int32_t eces_deformat(const uint8_t *block, uint32_t block_len, uint8_t *out, uint32_t *out_len);

/** @} */

/**
 * @defgroup schemes_exchange Key exchange
 * The SM2 exchange is between an initiator A and a responder B with key pairs (d, P), temporary pairs (r, R)
 * and values Z of 32 bytes. With x-bar = 2^w + (x of R mod 2^w), both sides compute
 * t = (d + x-bar * r) mod n from what is their own, T = P + x-bar * R from the peer's, and the shared point
 * U = (h * t mod p) * T. The key is derived from xU, yU, ZA and ZB. With H = hash(xU, ZA, ZB, RA, RB), there
 * are two confirmation values: hash(02, yU, H), which B sends as SB and A has as S1, and hash(03, yU, H),
 * which A sends as SA and B has as S2.
 *
 * No call compares confirmation values; the application does, before the key is used. ZA comes before ZB and
 * RA before RB on both sides. x-bar and H take the first L bytes of a record's fields, independent of its
 * length.
 *
 * @par The key and the selector
 *      klen is the key's length in bytes; 0 and below give no key, and K_out may then be null. All klen bytes
 *      are the standard's key, and no others are written.
 * @note Kept: h is p / n, so that no exchange succeeds on a curve with n above p, and h * t is reduced modulo
 *       p and not modulo n. An unknown selector returns 0, leaves both confirmation values unchanged, and
 *       gives a key of zero bytes, or none where klen is a multiple of L; the pointers that are then not
 *       written may be null.
 * @par Timing
 *      Depends on the values, the private keys included.
 * @{
 */

/**
 * Computes the x of d * P, the secret of a Diffie-Hellman exchange.
 *
 * @param[in]  d             one record: the private key
 * @param[in]  peer          one record: the peer's public key P
 * @param[out] out           L bytes
 * @param      out_capacity  room in bytes, L at least
 * @return L
 * @retval -1 an argument is unusable, out_capacity is below L or d is not below n
 *
 * @note Kept: the peer's point is not checked, d = 0 is accepted, and running out of memory is not reported.
 *       An infinite product, as with d = 0, and a failed allocation both give L zero bytes and the result L.
 *       Multiples that ecc_unknown_point_mul loses become zero bytes, too.
 * @par Caller checks
 *      That P lies on the curve with x and y below p: ecc_ByteToPoint; that the secret is not all zero bytes;
 *      and that it goes through a key derivation before it is used.
 * @par Aliasing
 *      out may overlap d and peer, which are read first.
 * @par Timing
 *      Depends on the values, d included.
 * @par Standard
 *      SEC 1 version 2, section 3.3.1, without its checks.
 */
ZOKECC_API int32_t Ecdh_KeyExChg(const ecc_scalar *d, const ecc_point_bytes *peer, uint8_t *out,
                                 uint32_t out_capacity);

/**
 * Begins an SM2 exchange: computes the initiator's RA = rA * G. The caller has drawn rA.
 *
 * @param[in]  rA      one record: the temporary private key
 * @param[out] RA_out  one record: the temporary public key, for the peer
 * @retval 0 success
 * @retval -1 an argument is unusable or rA is not below n
 *
 * @note Kept: rA = 0 is accepted.
 * @par Caller checks
 *      That rA is random, not 0, and used for one exchange only: Ecc_KeyPair_Gen makes both in one call.
 * @par Aliasing
 *      RA_out may overlap the bytes of rA, which are read first.
 * @par Timing
 *      Depends on the values, rA included.
 * @par Standard
 *      GB/T 32918.3, section 6, steps A1 to A3.
 */
ZOKECC_API int32_t sm2_KeyExChg_A1_3(const ecc_scalar *rA, ecc_point_bytes *RA_out);

/**
 * Completes an SM2 exchange for the initiator.
 *
 * @param[in]  rA        one record: the initiator's temporary private key; it is not checked
 * @param[in]  RA        one record: the initiator's temporary public key
 * @param[in]  dA        one record: the initiator's private key
 * @param[in]  PB        one record: the responder's public key
 * @param[in]  RB        one record: the responder's temporary public key
 * @param[in]  ZA        32 bytes: Z of the initiator
 * @param[in]  ZB        32 bytes: Z of the responder
 * @param      klen      key length in bytes
 * @param[out] S1_out    32 bytes: to be compared with the SB that was received
 * @param[out] SA_out    32 bytes: to be sent
 * @param[out] K_out     klen bytes: the key
 * @param      hash_sel  hash selector
 * @retval 0 success
 * @retval -1 an argument is unusable, a coordinate of PB is 0, dA is not below n, a coordinate of RA is 0, RB
 *         is not on the curve, there is no memory, h * tA mod p is 0, or T or U is infinite
 *
 * @note Kept: as stated for the group; also PB and RA are not checked to be on the curve.
 * @par Caller checks
 *      The selector, PB, as for Ecdsa_DigitalVeriy, and that S1 and SB are the same.
 * @par Aliasing
 *      K_out must not overlap ZA, ZB, RA or RB.
 * @par Standard
 *      GB/T 32918.3, section 6, steps A4 to A10.
 */
ZOKECC_API int32_t sm2_KeyExChg_A4_10(const ecc_scalar *rA, const ecc_point_bytes *RA, const ecc_scalar *dA,
                                      const ecc_point_bytes *PB, const ecc_point_bytes *RB,
                                      const uint8_t *ZA, const uint8_t *ZB, int32_t klen,
                                      uint8_t *S1_out, uint8_t *SA_out, uint8_t *K_out, uint32_t hash_sel);

/**
 * Does the responder's part of an SM2 exchange in one call; it draws rB itself.
 *
 * The value to compare comes before the one to send here, as in sm2_KeyExChg_A4_10; but that makes it the one
 * with 03, while it is the one with 02 there.
 *
 * @param[in]  dB        one record: the responder's private key
 * @param[in]  PA        one record: the initiator's public key
 * @param[in]  RA        one record: the initiator's temporary public key
 * @param[in]  ZA        32 bytes: Z of the initiator
 * @param[in]  ZB        32 bytes: Z of the responder
 * @param      klen      key length in bytes
 * @param[out] RB_out    one record: the temporary public key, for the peer
 * @param[out] S2_out    32 bytes: to be compared with the SA that will be received
 * @param[out] SB_out    32 bytes: to be sent
 * @param[out] K_out     klen bytes: the key
 * @param      hash_sel  hash selector
 * @retval 0 success
 * @retval -1 with nothing written, if an argument is unusable, a coordinate of PA is 0, dB is not below n, RA
 *         is not on the curve or there is no memory for the key; later, with RB_out written, if h * tB mod p
 *         is 0, T or U is infinite, or a multiplication finds no memory
 *
 * @note Kept: as stated for the group; also PA is not checked to be on the curve.
 * @par Caller checks
 *      The selector, PA, as for Ecdsa_DigitalVeriy, and that S2 and SA are the same.
 * @par Aliasing
 *      RB_out must not be RA. K_out must not overlap ZA, ZB or RA.
 * @par Threads
 *      Draws random numbers.
 * @par Standard
 *      GB/T 32918.3, section 6, steps B1 to B10.
 */
ZOKECC_API int32_t sm2_KeyExChg_B1_10(const ecc_scalar *dB, const ecc_point_bytes *PA,
                                      const ecc_point_bytes *RA, const uint8_t *ZA, const uint8_t *ZB,
                                      int32_t klen, ecc_point_bytes *RB_out, uint8_t *S2_out,
                                      uint8_t *SB_out, uint8_t *K_out, uint32_t hash_sel);

/**
 * Completes an SM2 exchange for either side, with confirmation values that the other side does not have.
 *
 * @param      role      SM2_ROLE_INITIATOR; anything else is SM2_ROLE_RESPONDER
 * @param[in]  r         one record: the own temporary private key; it is not checked
 * @param[in]  R         one record: the own temporary public key
 * @param[in]  peerR     one record: the peer's temporary public key
 * @param[in]  d         one record: the own private key
 * @param[in]  peerP     one record: the peer's public key
 * @param[in]  ZA        32 bytes: Z of the initiator, on both sides
 * @param[in]  ZB        32 bytes: Z of the responder, on both sides
 * @param      klen      key length in bytes
 * @param[out] out03     32 bytes: the confirmation value with 03
 * @param[out] out02     32 bytes: the confirmation value with 02
 * @param[out] K_out     klen bytes: the key, that of the split calls
 * @param      hash_sel  hash selector
 * @retval 0 success
 * @retval -1 an argument is unusable, a coordinate of peerP is 0, d is not below n, a coordinate of R is 0, R
 *         or peerR is not on the curve, there is no memory, h * t mod p is 0, or T or U is infinite
 *
 * @note Kept: as stated for the group; also peerP is not checked to be on the curve, and the confirmation
 *       values: after yU the hash takes 5 * L + 64 bytes instead of H. These are H, zero bytes up to 100, and
 *       peerP as an ecc_point in a device's memory, starting with the flag: on a curve of 32 bytes 224 bytes,
 *       up to the tenth word of y. So they hold each side's own peer, and the two sides never agree on them.
 * @par Caller checks
 *      The selector, and peerP, as for Ecdsa_DigitalVeriy. For confirmation use the split calls.
 * @par Aliasing
 *      K_out must not overlap ZA, ZB, R or peerR.
 * @par Standard
 *      GB/T 32918.3, section 6, except for the confirmation values.
 */
ZOKECC_API int32_t sm2_KeyExChg(uint32_t role, const ecc_scalar *r, const ecc_point_bytes *R,
                                const ecc_point_bytes *peerR, const ecc_scalar *d,
                                const ecc_point_bytes *peerP, const uint8_t *ZA, const uint8_t *ZB,
                                int32_t klen, uint8_t *out03, uint8_t *out02, uint8_t *K_out,
                                uint32_t hash_sel);

/**
 * Writes zero bytes to the y of a record. It does not multiply by the scalar; use sm2_KeyExChg_A1_3.
 *
 * @param[in]  scalar_bytes  not read, but null is refused
 * @param      count         not read
 * @param[out] R_out         one record: y is set to L zero bytes and length to L; x is unchanged
 * @retval 0 success, also without a curve, where L is 0
 * @retval 1 a pointer is null
 *
 * @note Kept: the scalar counts as 0, and both coordinates of the infinite product go to y.
 * @par Timing
 *      Constant.
 */
ZOKECC_API int32_t sm2_RPoint(const uint8_t *scalar_bytes, uint32_t count, ecc_point_bytes *R_out);

/** @} */

#endif
