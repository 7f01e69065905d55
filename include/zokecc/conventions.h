/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/**
 * @file conventions.h
 * The rules that all headers of zokecc share, the export macro and the status codes.
 *
 * What is said here holds for every call of the library unless the comment of a call says otherwise.
 *
 * @par Language and linkage
 *      The headers are C99 and C++, include only each other and stdint.h, and declare C functions over plain
 *      records. The shared library exports exactly the functions declared here; every other symbol in it is
 *      hidden. A record always travels by pointer. No parameter is declared restrict.
 * @par Pointers
 *      A pointer must not be null unless the comment of its call says that null is refused or allowed. A byte
 *      pointer may be null when its length is 0. Pointers need the natural alignment of what they point to;
 *      byte strings need none.
 * @par Byte strings and lengths
 *      Byte strings are big-endian: the most significant byte comes first. Lengths and capacities are in
 *      bytes unless said otherwise. A coordinate or scalar of a curve of L bytes is written at exactly L
 *      bytes, padded with zero bytes on the left, at the start of its field; the bytes of the field after
 *      it, and every other byte of an output that a comment does not name, are left unchanged.
 * @par Records
 *      "Record" means a C structure of one of these headers, owned and allocated by the caller, whose size
 *      and layout never change. "One record" as the size of an argument means exactly one such structure.
 *      The library keeps no pointer to a caller's record after a call has returned.
 * @par Aliasing
 *      An output record may be the same record as an input record unless a comment excludes it, and const and
 *      non-const pointers may therefore name the same record. Two outputs of one call must be different.
 *      Areas that overlap in part are never supported. An input that is not also an output is left byte for
 *      byte unchanged; the few exceptions (mint_add and mint_mod_add trim their operands) are not const.
 * @par Session handles
 *      "Session handle" means the void pointer that SDF_OpenSession or ZOK_OpenSession stored, between that
 *      call and SDF_CloseSession or ZOK_CloseSession. It is tested for null before every other argument, and
 *      for nothing else: a pointer of another kind, or the handle of a closed session, cannot be recognised.
 *      Calls whose comment says "the session is only tested for null" never dereference the handle.
 * @par Results
 *      Every SDF_ and ZOK_ call returns one of the status codes below. The other families return small
 *      integers, listed with each call; a call with a single value always returns that value. A call
 *      that refuses an argument writes nothing and draws no random number, unless its comment names what
 *      has already been written.
 * @par Order of checks
 *      The session handle comes first, then null pointers, then lengths, then values, each in the order in
 *      which a comment lists the results. The first check that fails decides the result. Where one value has
 *      several reasons, "later" separates those that are checked after the values listed below it.
 * @par Output
 *      Nothing is printed and nothing is logged. The only exception is print_str_array, whose purpose it is.
 * @par Threads
 *      There are no threads and no locks inside. A call that works on its arguments alone may run on any
 *      number of threads at once. The caller must serialise
 *      - every call that draws random numbers, against each other and against the application's own use of
 *        rand and srand: gen_random, gen_random_number, SDF_GenerateRandom; on any sessions
 *        SDF_GenerateKeyPair_ECC, SDF_ExternalSign_ECC, ZOK_ExternalSignHash_ECC, the two encrypting calls,
 *        and the six of key agreement that make a temporary key; Ecc_KeyPair_Gen in mode 0,
 *        Ecdsa_DigitalSign, sm2_DigitalSign, sm2_Encry, Eces_Encry, eces_format and sm2_KeyExChg_B1_10;
 *      - mint_sqrt, ecc_point_unpress and ecc_ByteToPoint of a compressed point for p = 1 (mod 8), which draw
 *        random numbers and use one table for the whole process;
 *      - Curve_Init and ecc_precomputation_point against every call that uses the process-wide curve
 *        (ecc_fix_point_mul, ecc_point_mul, ecc_ByteToPoint and all of schemes.h) and against each other;
 *      - all calls on the same session, and all opening and closing on the same device.
 * @par Timing
 *      "Timing" names what the time of a call, or of every call of a group that has no such paragraph,
 *      depends on in the default build, which is not constant-time; "the values" means that it reveals more
 *      than their lengths. The calls of schemes.h and sdf.h are constant-time in the hardened build: which
 *      instructions run, and which addresses they use, depends on no private key, nonce, temporary key or
 *      shared point. Elsewhere both builds are alike.
 * @par Units of sizes
 *      | Name | Unit | Where |
 *      |---|---|---|
 *      | klen | bytes of key | exchange calls of schemes.h |
 *      | klen_bits | bits of key, rounded down to bytes | agreement calls of sdf.h |
 *      | key_bits | bits of the curve | SDF_GenerateKeyPair_ECC |
 *      | bits | 8 times the bytes to read, or written | ECCrefPublicKey, ECCrefPrivateKey |
 *      | length | bytes | ecc_scalar, ecc_point_bytes |
 *      | len | 32-bit words | mint |
 *      | every other length, count or capacity | bytes | |
 * @par Names
 *      SDF_ExternalEncrytp_ECC, ZOK_ExternalEncrytp_ECC, Ecdsa_DigitalVeriy, sm2_DigitalVeriy and
 *      ecc_affine_jacobin are spelled so on purpose: deployed programs link them by these names. Names such
 *      as add_2, mul_2, gen_random and hash_byte have no prefix and may collide with others in a static link.
 * @par Kept results
 *      Some results differ from the textbook and stay so, because devices in the field agree on them. The
 *      comments name those that a caller can meet after the word "Kept"; docs/compatibility.md and
 *      its companion pages list all of them.
 */
#ifndef ZOKECC_CONVENTIONS_H
#define ZOKECC_CONVENTIONS_H

#include <stdint.h>

/** Gives a declaration C linkage in C and in C++. */
#ifdef __cplusplus
#define ZOKECC_C_LINKAGE extern "C"
#else
#define ZOKECC_C_LINKAGE extern
#endif

/** Marks a function of the public interface: C linkage, visible in the shared library. */
#define ZOKECC_API ZOKECC_C_LINKAGE __attribute__((visibility("default")))

/**
 * @defgroup status Status codes
 * What the SDF_ and ZOK_ calls return.
 * @{
 */

/** Success. */
#define ZOK_OK                0x00000000u
/** ZOK_SM3: the hash reports an error. SM3 has none to report, so this is never seen. */
#define ZOK_ERR_SM3           0x01000001u
/** Signing: the private key is zero, not below the order or otherwise unusable, or no signature was found. */
#define ZOK_ERR_SIGN          0x0100000Du
/** Verification: the signature does not belong to this key and message. */
#define ZOK_ERR_VERIFY        0x0100000Eu
/** Closing a session: the handle is null. */
#define ZOK_ERR_CLOSE_SESSION 0x01000018u
/** SDF_OpenDevice: no memory for the device. */
#define ZOK_ERR_OPEN_DEVICE   0x0100001Bu
/** SDF_CloseDevice: the handle is null. */
#define ZOK_ERR_CLOSE_DEVICE  0x0100001Du
/** SDF_OpenSession: the device handle is null. */
#define ZOK_ERR_DEVICE        0x01000024u
/** The session handle is null. */
#define ZOK_ERR_SESSION       0x01000026u
/** A pointer that the call needs is null, or a length, size, type, key or point is out of range. */
#define ZOK_ERR_ARGUMENT      0x01000027u
/** Opening a session: no memory for it. */
#define ZOK_ERR_OPEN_SESSION  0x01000042u
/** No memory, a point off the curve, an algorithm that is not served, or a check value that differs. */
#define ZOK_ERR_INTERNAL      0xFFFFFFFFu

/** @} */

#endif
