/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/**
 * @file hash.h
 * SHA-256, SM3, HMAC and key derivation over both, hashing to an integer, and random numbers.
 *
 * @par Sessions
 *      The session handle of the calls in this header is only tested for null. Any other value works.
 * @par Order of arguments
 *      mhmac_sha256, KD_hmac_sha256, ZOK_HMAC_SM3 and ZOK_KD_HMAC_SM3 take the data before the key;
 *      ZOK_HmacSha256 and ZOK_KdHmacSha256 take the key before the data.
 * @par The hardened build
 *      Calls that draw random numbers, of this header and the others, fail there if the kernel gives no
 *      random bytes: gen_random, gen_random_number and mint_sqrt with -1, eces_format with 1,
 *      SDF_ExternalSign_ECC and ZOK_ExternalSignHash_ECC with ZOK_ERR_SIGN, other calls of a session with
 *      ZOK_ERR_INTERNAL, the calls of schemes.h with -1.
 * @par Standards
 *      SHA-256 is that of FIPS 180-4, SM3 that of GB/T 32905 (GM/T 0004), HMAC that of RFC 2104 with blocks
 *      of 64 bytes. Both hashes give 32 bytes, the most significant first.
 */
#ifndef ZOKECC_HASH_H
#define ZOKECC_HASH_H

#include <zokecc/mint.h>

/** Hash selector: SM3. */
#define HASH_ALG_SM3    0u
/** Hash selector: SHA-256. */
#define HASH_ALG_SHA256 1u

/** A message: its address and length. 12 bytes on 32-bit targets. */
typedef struct sm3_msg {
    uint8_t *data;                /**< the message; may be null when the length is 0; never written here */
    uint32_t len_high;            /**< byte length, high word */
    uint32_t len_low;             /**< byte length, low word */
} sm3_msg;

/** A message and the hash to take of it. From data on laid out as sm3_msg. 16 bytes on 32-bit targets. */
typedef struct hash_msg {
    uint32_t       alg;           /**< hash selector: HASH_ALG_SM3 or HASH_ALG_SHA256 */
    const uint8_t *data;          /**< the message; may be null when the length is 0 */
    uint32_t       len_high;      /**< byte length, high word; SM3 reads it, SHA-256 does not */
    uint32_t       len_low;       /**< byte length, low word */
} hash_msg;

/**
 * @defgroup hash_sha256 SHA-256 and HMAC-SHA256
 * @par Timing
 *      Depends on the lengths.
 * @{
 */

/**
 * Hashes a message with SHA-256.
 *
 * @param[in]  data  len bytes; null counts as the empty message for any len
 * @param      len   length in bytes
 * @param[out] out   32 bytes: the digest; null is allowed, and nothing is then written
 * @return 0, always
 *
 * @par Caller checks
 *      A null pointer is not reported; the digest is then that of the empty message.
 * @par Aliasing
 *      out may overlap data, which is read first.
 * @par Timing
 *      Depends on len.
 * @par Standard
 *      FIPS 180-4.
 */
ZOKECC_API uint32_t mhash_sha256(const uint8_t *data, uint32_t len, uint8_t *out);

/**
 * Computes an HMAC with SHA-256. The message comes before the key.
 *
 * A key of more than 64 bytes is replaced by its digest; a key_len of 0 or less is the empty key.
 *
 * @param[in]  text      text_len bytes, the message; may be null when text_len is 0
 * @param      text_len  length in bytes; a negative one is refused
 * @param[in]  key       key_len bytes; may be null when key_len is 0 or less
 * @param      key_len   length in bytes
 * @param[out] out       out_len bytes
 * @param      out_len   bytes to write: up to 32 the code cut short, above 32 the code and then zero bytes
 * @retval 0 success
 * @retval 1 with nothing written, if text_len is negative, text is null with a length above 0, or key is null
 *         with a length above 0
 *
 * @note Kept: out_len has no upper bound; exactly out_len bytes are written.
 * @par Aliasing
 *      out may overlap text and key, which are read first.
 * @par Standard
 *      RFC 2104.
 */
ZOKECC_API int32_t  mhmac_sha256(const uint8_t *text, int32_t text_len, const uint8_t *key, int32_t key_len,
                                 uint8_t *out, uint32_t out_len);

/**
 * Derives key material by a chain of HMACs with SHA-256. The message comes before the key.
 *
 * Block 1 is the HMAC of text; every further block is the HMAC, under the same key, of the 32 bytes written
 * just before it, read back from out. There is no counter.
 *
 * @param[in]  text      text_len bytes, the message
 * @param      text_len  length in bytes
 * @param[in]  key       key_len bytes
 * @param      key_len   length in bytes; 0 or less is the empty key
 * @param[out] out       the derived bytes; the note says how many are written
 * @param      out_len   bytes wanted, called L below; 0 writes nothing
 * @return 0, always; it is not a status. A block that mhmac_sha256 refuses keeps its old bytes, and the
 *         blocks after it are derived from them
 *
 * @note Kept: for L below 32 or a multiple of 32, L bytes are written. For any other L the last step writes L
 *       bytes instead of L mod 32, after the (L / 32) * 32 bytes of the whole blocks: the last 32-byte MAC
 *       followed by zero bytes. The buffer out must then hold (L / 32) * 32 + L bytes.
 * @par Caller checks
 *      The size of out, as above, and that text and key would be accepted by mhmac_sha256.
 * @par Aliasing
 *      text may overlap out. key must not overlap any byte that is written.
 * @par Example
 *      L = 20 writes 20 bytes, L = 64 writes 64, L = 40 writes 72: code 1 (32 bytes), code 2 (32 bytes), and
 *      8 zero bytes.
 */
ZOKECC_API int32_t  KD_hmac_sha256(const uint8_t *text, int32_t text_len, const uint8_t *key, int32_t key_len,
                                   uint8_t *out, uint32_t out_len);

/**
 * Hashes a message with SHA-256: mhash_sha256 with a session handle.
 *
 * @param      session   session handle; only tested for null
 * @param[in]  data      data_len bytes; null counts as the empty message
 * @param      data_len  length in bytes
 * @param[out] out       32 bytes: the digest; null is allowed, and no digest is then written
 * @param[out] out_len   set to 32
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT out_len is null
 *
 * @par Aliasing
 *      out may overlap data, which is read first.
 * @par Timing
 *      Depends on data_len.
 * @par Standard
 *      FIPS 180-4.
 */
ZOKECC_API uint32_t ZOK_Sha256(void *session, const uint8_t *data, uint32_t data_len,
                               uint8_t *out, uint32_t *out_len);

/**
 * Computes an HMAC with SHA-256: mhmac_sha256 with a session handle. The key comes before the message.
 *
 * @param      session   session handle; only tested for null
 * @param[in]  key       key_len bytes
 * @param      key_len   length in bytes; 0 or less is the empty key
 * @param[in]  data      data_len bytes, the message
 * @param      data_len  length in bytes
 * @param[out] out       out_len bytes
 * @param      out_len   bytes to write: up to 32 the code cut short, above 32 the code and then zero bytes
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 *
 * @note Kept: what mhmac_sha256 refuses is not reported. The result is ZOK_OK and out is unchanged.
 * @par Caller checks
 *      data_len is not negative, and neither pointer is null with a length above 0.
 * @par Aliasing
 *      out may overlap data and key, which are read first.
 * @par Standard
 *      RFC 2104.
 */
ZOKECC_API uint32_t ZOK_HmacSha256(void *session, const uint8_t *key, int32_t key_len,
                                   const uint8_t *data, int32_t data_len, uint8_t *out, uint32_t out_len);

/**
 * Derives key material: KD_hmac_sha256 with a session handle. The key comes before the message.
 *
 * @param         session   session handle; only tested for null
 * @param[in]     key       key_len bytes
 * @param         key_len   length in bytes; 0 or less is the empty key
 * @param[in]     data      data_len bytes, the message
 * @param         data_len  length in bytes
 * @param[out]    out       the derived bytes; the note of KD_hmac_sha256 says how many are written
 * @param[in,out] out_len   in: bytes wanted; out: the same number
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT out_len is null
 *
 * @note Kept: more than *out_len bytes are written for lengths above 32 that are no multiple of 32, and
 *       *out_len does not say so. What mhmac_sha256 refuses is not reported.
 * @par Caller checks
 *      The size of out, (L / 32) * 32 + L bytes for such a length L, and the arguments as for ZOK_HmacSha256.
 * @par Aliasing
 *      data may overlap out. key must not overlap any byte that is written.
 */
ZOKECC_API uint32_t ZOK_KdHmacSha256(void *session, const uint8_t *key, int32_t key_len,
                                     const uint8_t *data, int32_t data_len, uint8_t *out, uint32_t *out_len);

/** @} */

/**
 * @defgroup hash_sm3 SM3 and HMAC-SM3
 * @par Timing
 *      Depends on the lengths.
 * @{
 */

/**
 * Hashes a message with SM3. The whole message must be in memory.
 *
 * @param[in]  msg  one record; its length is a 64-bit number of bytes
 * @param[out] out  32 bytes: the digest
 * @return 0, always
 *
 * @par Aliasing
 *      out may overlap the message, which is read first.
 * @par Timing
 *      Depends on the length.
 * @par Standard
 *      GB/T 32905, GM/T 0004.
 */
ZOKECC_API uint32_t sm3_hash(const sm3_msg *msg, uint8_t *out);

/**
 * Hashes a message with SM3: sm3_hash with a session handle.
 *
 * @param      session   session handle; only tested for null
 * @param[in]  data      data_len bytes
 * @param      data_len  length in bytes
 * @param[out] out       32 bytes: the digest
 * @param[out] out_len   set to 32
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT out_len is null
 * @retval ZOK_ERR_SM3 the hash reported an error, which it never does
 *
 * @par Aliasing
 *      out may overlap data, which is read first.
 * @par Timing
 *      Depends on data_len.
 * @par Standard
 *      GB/T 32905, GM/T 0004.
 */
ZOKECC_API uint32_t ZOK_SM3(void *session, const uint8_t *data, uint32_t data_len,
                            uint8_t *out, uint32_t *out_len);

/**
 * Computes an HMAC with SM3. The message comes before the key, unlike in ZOK_HmacSha256.
 *
 * A key of more than 64 bytes is replaced by its digest. The message is copied to the heap for the call.
 *
 * @param      session   session handle; only tested for null
 * @param[in]  data      data_len bytes, the message
 * @param      data_len  length in bytes, at most 2^32 - 130
 * @param[in]  key       key_len bytes
 * @param      key_len   length in bytes
 * @param[out] out       out_len bytes: the first bytes of the code
 * @param      out_len   bytes to write, at most 32
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT out_len is above 32
 * @retval ZOK_ERR_INTERNAL data_len + 129 bytes cannot be allocated or are more than 2^32 - 1
 *
 * @par Aliasing
 *      out may overlap data and key, which are read first.
 * @par Standard
 *      RFC 2104.
 */
ZOKECC_API uint32_t ZOK_HMAC_SM3(void *session, const uint8_t *data, uint32_t data_len,
                                 const uint8_t *key, uint32_t key_len, uint8_t *out, uint32_t out_len);

/**
 * Derives key material by a chain of HMACs with SM3. The message comes before the key.
 *
 * The chain is that of KD_hmac_sha256, but exactly out_len bytes are written, for any out_len.
 *
 * @param      session   session handle; only tested for null
 * @param[in]  data      data_len bytes, the message
 * @param      data_len  length in bytes
 * @param[in]  key       key_len bytes
 * @param      key_len   length in bytes
 * @param[out] out       out_len bytes
 * @param      out_len   bytes wanted; 0 writes nothing
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 *
 * @note Kept: a step that fails, for lack of memory or because data is too long, is not reported. Its bytes
 *       are unchanged, and the steps after it continue from them.
 * @par Caller checks
 *      Clear out before the call if a failed allocation must not go unseen.
 * @par Aliasing
 *      data may overlap out. key must not overlap any byte that is written.
 */
ZOKECC_API uint32_t ZOK_KD_HMAC_SM3(void *session, const uint8_t *data, uint32_t data_len,
                                    const uint8_t *key, uint32_t key_len, uint8_t *out, uint32_t out_len);

/** @} */

/**
 * @defgroup hash_select Hashing by selector
 * @{
 */

/**
 * Hashes a message with the hash that its record selects.
 *
 * @param[in]  msg  one record
 * @param[out] out  32 bytes: the digest
 * @retval 32 the bytes written
 * @retval 0 with nothing written, for an unknown selector
 *
 * @note Kept: SHA-256 ignores len_high; a record with len_high 1 and len_low 3 hashes 3 bytes.
 * @par Caller checks
 *      That the result is 32, wherever the selector comes from outside.
 * @par Aliasing
 *      out may overlap the message, which is read first.
 * @par Timing
 *      Depends on the selector and on the length.
 */
ZOKECC_API int32_t hash_byte(const hash_msg *msg, uint8_t *out);

/**
 * Hashes a message to an integer, reduced modulo another one if wanted.
 *
 * All 256 bits of the digest are used, for a modulus of any size.
 *
 * @param[in]  msg      one record
 * @param[in]  modulus  one record; may be null for no reduction, and a modulus of zero reduces nothing
 * @param[out] out      one record
 * @retval 0 success
 * @retval -1 with nothing written, for an unknown selector
 *
 * @note Kept: with SHA-256 the value has len 8, even if its top words are zero, and words 8 to 18 of *out
 *       are unchanged. A value that compares below the modulus is returned like that; any other
 *       is reduced and trimmed. With SM3 the value is trimmed and the words above it are cleared.
 *       For orders of fewer than 256 bits SEC 1 cuts the digest down to the size of the order before it is
 *       used in ECDSA; this call does not.
 * @par Aliasing
 *      out must not be modulus.
 * @par Timing
 *      Depends on the selector, the length and, with a modulus, on the values.
 */
ZOKECC_API int32_t hash_mint_value(const hash_msg *msg, const mint *modulus, mint *out);

/** @} */

/**
 * @defgroup hash_random Random numbers
 * One generator serves all calls. Every seeding takes the time in seconds (one call of time), restarts the C
 * library's generator with it (one call of srand), draws 24 values from it (24 calls of rand) and mixes in a
 * counter that grows with every rand; SHA-256 spreads the result over the output.
 *
 * @par Caller checks
 *      The output is only as hard to guess as the clock, the counter and the C library's rand. It suits a
 *      device whose keys come from elsewhere, or where rand, srand and time are replaced at link time by a
 *      source of better quality. docs/security.md says more.
 * @par Threads
 *      The counter and the C library's generator are shared by the process and not locked.
 * @par Timing
 *      Depends on len.
 * @{
 */

/**
 * Gives the calendar time in seconds, from the C library's time.
 *
 * @param[out] t  set to the result; may be null
 * @return the low 32 bits of the number of seconds
 *
 * @par Timing
 *      Depends on the C library.
 */
ZOKECC_API uint32_t ecc_time(uint32_t *t);

/**
 * Fills a buffer with random bytes.
 *
 * Seeds once at the start and once for every begun 32 bytes, so 1 + (len + 31) / 32 times in all; len 0 still
 * seeds once.
 *
 * @param[out] out  len bytes; may be null when len is 0
 * @param      len  bytes wanted
 * @return 0; in the hardened build -1 if the kernel delivers no random bytes, with nothing but zeros written
 *
 * @note Kept: every seeding restarts the C library's generator from the clock, also for the application.
 *       Bit 0 of every seed word is 1, and the three values mixed into a word overlap. Not so in the
 *       hardened build, which takes its seeds from the kernel.
 */
ZOKECC_API int32_t gen_random(uint8_t *out, uint32_t len);

/**
 * Draws a random number below a bound.
 *
 * 4 * bound->len random bytes, the least significant first, are reduced modulo the bound.
 *
 * @param[out] out    one record: a number from 0 to bound - 1
 * @param[in]  bound  one record, not zero; for zero the bytes are drawn and *out is unchanged
 * @return 0; in the hardened build -1 if the kernel delivers no random bytes, with nothing written
 *
 * @note Kept: small results are a little more likely than large ones, and 0 is possible.
 * @par Caller checks
 *      That the result is not 0, if 0 is unusable.
 * @par Aliasing
 *      out must not be bound.
 * @par Timing
 *      Depends on the values.
 */
ZOKECC_API int32_t gen_random_number(mint *out, const mint *bound);

/**
 * Fills a buffer with random bytes: gen_random with a session handle.
 *
 * @param      session  session handle; only tested for null
 * @param      len      bytes wanted
 * @param[out] out      len bytes; may be null when len is 0
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT out is null and len is not 0
 *
 * @par Standard
 *      The call of that name in GM/T 0018.
 */
ZOKECC_API uint32_t SDF_GenerateRandom(void *session, uint32_t len, uint8_t *out);

/** @} */

#endif
