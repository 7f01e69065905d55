/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/**
 * @file ecc.h
 * Curves y^2 = x^3 + a*x + b over a prime field, their points, multiplication of points by scalars, and
 * points as byte strings.
 *
 * @par Where a curve lives
 *      Curve_Init installs one curve for the whole process: ecc_fix_point_mul and ecc_point_mul use its
 *      table, ecc_ByteToPoint and the calls of schemes.h all of it. ZOK_CurveParaCfg installs a curve in a
 *      session. The two do not touch each other. The other point calls take a, b and p as arguments and know
 *      no installed curve.
 * @par Sizes
 *      p has at most eight words (256 bits) wherever a table of multiples is built or used. L is the byte
 *      length that goes with a curve type. Coordinates are reduced, that is below p, and trimmed; this is not
 *      checked.
 * @par Order of arguments
 *      Operands, a, b, p, output. The conversions, ecc_copy_point and ecc_point_unpress have the output
 *      first, ecc_invert_point has p first. b is read by ecc_test_point and ecc_point_unpress alone;
 *      elsewhere it is there only for the common order of arguments, and may be null.
 * @par What is not checked
 *      No call tests that p is prime or that the curve is not singular. Whether a point lies on the curve is
 *      tested by ecc_test_point, by ecc_ByteToPoint and, for G, by the two calls that install a curve and by
 *      ZOK_CurveVerify, which also tries whether n is a multiple of the order of G.
 */
#ifndef ZOKECC_ECC_H
#define ZOKECC_ECC_H

#include <zokecc/mint.h>

/** ecc_curve_bytes.type: 192 bits, L = 24. */
#define ECC_CURVE_192 0u
/** ecc_curve_bytes.type: 256 bits, L = 32. */
#define ECC_CURVE_256 1u
/** ecc_curve_bytes.type: 224 bits, L = 28. */
#define ECC_CURVE_224 4u

/** CurvePara.type: 160 bits, L = 20. */
#define ZOK_CURVE_160 1u
/** CurvePara.type: 192 bits, L = 24. */
#define ZOK_CURVE_192 2u
/** CurvePara.type: 224 bits, L = 28. */
#define ZOK_CURVE_224 3u
/** CurvePara.type: 256 bits, L = 32. Types 5 and 6 mean the same. */
#define ZOK_CURVE_256 4u

/** Form of ecc_PointToByte: 04, x and y. */
#define ECC_POINT_UNCOMPRESSED 0u
/** Form of ecc_PointToByte: 02 or 03 by the parity of y, and x. */
#define ECC_POINT_COMPRESSED 1u
/** Form of ecc_PointToByte: 06 or 07 by the parity of y, x and y. */
#define ECC_POINT_HYBRID 2u

/** A point in affine coordinates. 164 bytes. */
typedef struct ecc_point {
    uint32_t infinity;            /**< 1 for the point at infinity, 0 for a finite point; tested for 1 */
    mint x;                       /**< below p; not read for infinity, where its len is set to 0 */
    mint y;                       /**< below p; not read for infinity, where its len is set to 0 */
} ecc_point;

/** A point in Jacobian coordinates: X / Z^2 and Y / Z^3 in affine ones. 240 bytes. */
typedef struct ecc_jac_point {
    mint X;                       /**< below p; undefined for infinity */
    mint Y;                       /**< below p; undefined for infinity */
    mint Z;                       /**< below p; zero, as len 0 or as len 1, for infinity */
} ecc_jac_point;

/** The curve record of Curve_Init. Numbers are big-endian in the first L bytes of their fields. 396 bytes. */
typedef struct ecc_curve_bytes {
    uint8_t  p[65];               /**< the field's prime */
    uint8_t  a[65];               /**< coefficient a */
    uint8_t  b[65];               /**< coefficient b */
    uint8_t  Gx[65];              /**< base point, x */
    uint8_t  Gy[65];              /**< base point, y */
    uint8_t  n[65];               /**< order of the base point */
    uint32_t type;                /**< ECC_CURVE_192, ECC_CURVE_224 or ECC_CURVE_256: other numbers than in
                                       CurvePara */
} ecc_curve_bytes;

/** The curve record of a session. Numbers are big-endian in the first L bytes of their fields. 392 bytes. */
typedef struct CurvePara {
    uint8_t  p[64];               /**< the field's prime */
    uint8_t  a[64];               /**< coefficient a */
    uint8_t  b[64];               /**< coefficient b */
    uint8_t  Gx[64];              /**< base point, x */
    uint8_t  Gy[64];              /**< base point, y */
    uint8_t  n[64];               /**< order of the base point */
    uint32_t type;                /**< ZOK_CURVE_160, ZOK_CURVE_192, ZOK_CURVE_224 or ZOK_CURVE_256: other
                                       numbers than in ecc_curve_bytes */
    uint32_t hash_selector;       /**< hash of the session's schemes: HASH_ALG_SM3 or HASH_ALG_SHA256 */
} CurvePara;

/** A point, or a signature, as bytes: the record of the calls over the curve of the process. 136 bytes. */
typedef struct ecc_point_bytes {
    uint8_t  x[65];               /**< x, or r of a signature, big-endian from the start of the field */
    uint8_t  y[65];               /**< y, or s of a signature, big-endian from the start of the field */
    uint32_t length;              /**< bytes used of each field, at most 65 */
} ecc_point_bytes;

/** Entries of a table of multiples. An eight-word p has entries 0 to 512 written. */
#define PRECOMP_TABLE_ENTRIES 520

/**
 * @defgroup ecc_install Installing and checking a curve
 * @par Timing
 *      Depends on the values. The table costs some thousand point additions, once.
 * @{
 */

/**
 * Installs the curve of the process: converts the parameters, builds the table of multiples of G and checks
 * that G lies on the curve.
 *
 * @param[in] curve  one record; null is refused
 * @retval 0 success
 * @retval -1 curve is null, with nothing changed; or G is not on the curve, with the new curve and its table
 *         installed nevertheless
 * @retval 1 the type is none of ECC_CURVE_192, ECC_CURVE_224 and ECC_CURVE_256; nothing is changed
 *
 * @note Kept: a base point off the curve is reported, but not undone.
 * @par Caller checks
 *      The result; that p is an odd prime (0 passes) and that n is the order of G.
 * @par Threads
 *      Must not run while another thread uses the curve of the process.
 */
ZOKECC_API int32_t  Curve_Init(const ecc_curve_bytes *curve);

/**
 * Does nothing. The curve of the process stays installed.
 *
 * @return 0, always
 *
 * @par Timing
 *      Constant.
 */
ZOKECC_API int32_t  Curve_Exit(void);

/**
 * Builds the process-wide table of multiples of a point, that of ecc_fix_point_mul.
 *
 * The parameters of the installed curve are not changed. The table has the form that
 * ecc_precomputation_point_1 describes.
 *
 * @param[in] G  one record: a finite point on the curve
 * @param[in] a  one record: coefficient a
 * @param[in] b  not read
 * @param[in] p  one record: the field's prime
 * @retval 0 success
 * @retval 1 with nothing written, if p has no used word or more than eight
 *
 * @par Threads
 *      Must not run while another thread uses the curve of the process.
 * @par Timing
 *      Depends on the values.
 */
ZOKECC_API int32_t  ecc_precomputation_point(const ecc_point *G, const mint *a, const mint *b, const mint *p);

/**
 * Builds a table of multiples of a point, for ecc_fix_point_mul_1.
 *
 * Let m be the used words of p. For 0 < i < 2^m, entry i is the sum of 2^(32 j) * G over the bits j that are
 * set in i, and entry 2^m + i is 2^16 times entry i. Entry 0 is G, entry 2^m is all zero bytes and entry
 * 2^(m+1) is infinity; these three are not read by the multiplication.
 *
 * @param[in]  G      one record: a finite point on the curve
 * @param[in]  a      one record: coefficient a
 * @param[in]  b      not read
 * @param[in]  p      one record: the field's prime
 * @param[out] table  2^(m+1) + 1 records: 513 for eight words; PRECOMP_TABLE_ENTRIES suffice for every p
 * @retval 0 success
 * @retval 1 with nothing written, if p has no used word or more than eight
 *
 * @par Aliasing
 *      G must not lie inside the table.
 * @par Timing
 *      Depends on the values.
 */
ZOKECC_API int32_t  ecc_precomputation_point_1(const ecc_point *G, const mint *a, const mint *b,
                                               const mint *p, ecc_point *table);

/**
 * Installs a curve in a session, or replaces the one it has.
 *
 * The session keeps its own copy of the record, converts the parameters, builds its table of multiples of G
 * and checks that G lies on the curve. h = p / n and the width w of the key exchange are derived.
 *
 * @param     session  session handle
 * @param     type     curve type, 1 to 6 as listed with CurvePara; the type inside the record is not read
 * @param[in] record   one record
 * @retval ZOK_OK success
 * @retval ZOK_ERR_SESSION session is null
 * @retval ZOK_ERR_ARGUMENT record is null or type is not 1 to 6
 * @retval ZOK_ERR_INTERNAL the copy of the record cannot be allocated, or if G is not on the curve
 *
 * @note Kept: when G is not on the curve the session already holds the new parameters, table and record, and
 *       its calls work with them; only the type and the size that mark a success keep their old values.
 * @par Caller checks
 *      The result: after a failure close the session or install another curve. That p is an odd prime (0
 *      passes), that n is the order of G, that the hash selector is 0 or 1 (any other value is stored and
 *      makes later calls fail), and that the record's own type agrees with the argument.
 */
ZOKECC_API uint32_t ZOK_CurveParaCfg(void *session, uint32_t type, const CurvePara *record);

/**
 * Checks a curve record without installing it: that G lies on the curve and that n * G is infinity.
 *
 * @param     type    curve type, 1 to 6 as listed with CurvePara; the type inside the record is not read
 * @param[in] record  one record; its hash selector is not read
 * @retval ZOK_OK success
 * @retval ZOK_ERR_ARGUMENT record is null or type is not 1 to 6
 * @retval ZOK_ERR_INTERNAL G is not on the curve, if both sides of its equation are 0 (y is 0 or p is 0), if
 *         n * G is not infinity or if the multiplication finds no memory
 *
 * @note Kept: n = 0 passes. n * G is that of ecc_unknown_point_mul: a multiple of the order passes, and so
 *       does the one number just below the order that is named there. The digit buffer of that call stays
 *       allocated, some 260 bytes.
 * @par Caller checks
 *      That p and n are prime and the curve is not singular; for parameters from outside, that n is not 0 and
 *      that they are those of a known curve.
 * @par Timing
 *      Depends on the values, all of which are public.
 */
ZOKECC_API uint32_t ZOK_CurveVerify(uint32_t type, const CurvePara *record);

/** @} */

/**
 * @defgroup ecc_points Points
 * Infinity in an ecc_point is written as flag 1 with the len of x and y set to 0; their words stay as they
 * were. None of these calls fails, and their results carry no information unless said otherwise.
 * @par Timing
 *      Depends on the values.
 * @{
 */

/**
 * Converts a point from affine to Jacobian coordinates.
 *
 * Infinity becomes X = 1, Y = 1, Z = 0 (len 1, 1 and 0); a finite point X = x, Y = y, Z = 1.
 *
 * @param[out] out  one record
 * @param[in]  in   one record
 * @return 0, always
 *
 * @par Timing
 *      Depends on the flag and on the len of the coordinates.
 */
ZOKECC_API int32_t ecc_affine_jacobin(ecc_jac_point *out, const ecc_point *in);

/**
 * Converts a point from Jacobian to affine coordinates. Costs one inversion.
 *
 * @param[out] out  one record; infinity if Z is zero, as len 0 or as len 1
 * @param[in]  p    one record: the field's prime
 * @param[in]  in   one record
 * @return 0, always
 *
 * @note Kept: the inverse is that of mint_EEA_algo; for a small or structured Z it may not be the true one.
 */
ZOKECC_API int32_t ecc_jacobin_affine(ecc_point *out, const mint *p, const ecc_jac_point *in);

/**
 * Adds two points in affine coordinates. Costs one inversion.
 *
 * In this order: with P at infinity the result is Q, with Q at infinity it is P; equal coordinates double the
 * point, or give infinity where y equals p - y; everything else goes through the general formula. The points
 * are compared by value.
 *
 * @param[in]  P    one record
 * @param[in]  Q    one record
 * @param[in]  a    one record: coefficient a
 * @param[in]  b    not read
 * @param[in]  p    one record: the field's prime
 * @param[out] out  one record
 * @return 0, always
 *
 * @note Kept: P + (-P) is not infinity but the finite point (-2 * x, -y), with y that of P, since the inverse
 *       of 0 is taken to be p. A result with x = 0 and y = 0 is turned into infinity. A point with y = 0
 *       doubles to infinity if y is held as len 0, and to a finite point without meaning if it is held as
 *       len 1.
 * @par Caller checks
 *      Where Q may be -P, compare the coordinates first.
 * @par Aliasing
 *      out may be P or Q or both.
 */
ZOKECC_API int32_t ecc_point_add(const ecc_point *P, const ecc_point *Q, const mint *a, const mint *b,
                                 const mint *p, ecc_point *out);

/**
 * Doubles a point in affine coordinates: ecc_point_add with Q = P.
 *
 * @param[in]  P    one record
 * @param[in]  a    one record: coefficient a
 * @param[in]  b    not read
 * @param[in]  p    one record: the field's prime
 * @param[out] out  one record
 * @return 0, always
 *
 * @note Kept: what ecc_point_add says about y = 0 and about a result (0, 0).
 * @par Aliasing
 *      out may be P.
 */
ZOKECC_API int32_t ecc_point_double(const ecc_point *P, const mint *a, const mint *b, const mint *p,
                                    ecc_point *out);

/**
 * Makes a point infinite: sets Z to 0 (len 0, word 0 cleared) and leaves X and Y unchanged.
 *
 * @param[in,out] point  one record
 * @return 1, always
 *
 * @par Timing
 *      Constant.
 */
ZOKECC_API int32_t ecc_infinite_point(ecc_jac_point *point);

/**
 * Negates a point in place: Y becomes p - Y.
 *
 * @param[in]     p      one record: the field's prime
 * @param[in,out] point  one record; unchanged if Z or Y is zero
 * @retval 0 Y is now p - Y
 * @retval 1 Z or Y is zero, and nothing was done; or Y was above p and is now Y - p
 *
 * @note Kept: the subtraction follows the borrow rule of mint_sub.
 */
ZOKECC_API int32_t ecc_invert_point(const mint *p, ecc_jac_point *point);

/**
 * Copies a point, each coordinate as mint_copy does.
 *
 * @param[out] out  one record
 * @param[in]  in   one record
 * @return 1, always
 *
 * @par Aliasing
 *      out may be in.
 * @par Timing
 *      Depends on the len of the coordinates.
 */
ZOKECC_API int32_t ecc_copy_point(ecc_jac_point *out, const ecc_jac_point *in);

/**
 * Doubles a point in Jacobian coordinates. Infinity gives infinity, with undefined X and Y.
 *
 * @param[in]  P    one record
 * @param[in]  a    one record: coefficient a
 * @param[in]  b    not read
 * @param[in]  p    one record: the field's prime
 * @param[out] out  one record
 * @return 1, always
 *
 * @par Aliasing
 *      out may be P.
 */
ZOKECC_API int32_t ecc_jac_point_double(const ecc_jac_point *P, const mint *a, const mint *b, const mint *p,
                                        ecc_jac_point *out);

/**
 * Adds an affine point to a Jacobian one.
 *
 * Equal points are doubled, and opposite points give infinity as X = 1, Y = 1, Z = 0; both are recognised by
 * value. With Q at infinity the result is P; with P at infinity it is Q with Z = 1.
 *
 * @param[in]  P    one record
 * @param[in]  Q    one record
 * @param[in]  a    one record: coefficient a
 * @param[in]  b    not read
 * @param[in]  p    one record: the field's prime
 * @param[out] out  one record
 * @return 0, always
 *
 * @par Aliasing
 *      out may be P.
 */
ZOKECC_API int32_t ecc_jac_point_add(const ecc_jac_point *P, const ecc_point *Q, const mint *a, const mint *b,
                                     const mint *p, ecc_jac_point *out);

/**
 * Adds two Jacobian points.
 *
 * The same record as both operands is doubled. With P at infinity the result is a copy of Q, else with Q at
 * infinity a copy of P.
 *
 * @param[in]  P    one record
 * @param[in]  Q    one record
 * @param[in]  a    one record: coefficient a
 * @param[in]  b    not read
 * @param[in]  p    one record: the field's prime
 * @param[out] out  one record
 * @return 1, always
 *
 * @note Kept: only the same record is recognised as the same point. Equal points in two records give infinity
 *       (Z = 0, with undefined X and Y), not the double.
 * @par Caller checks
 *      Where P and Q may be equal points, compare them first, or pass the same record twice.
 * @par Aliasing
 *      out may be P or Q or both.
 */
ZOKECC_API int32_t ecc_jac_point_add_1(const ecc_jac_point *P, const ecc_jac_point *Q, const mint *a,
                                       const mint *b, const mint *p, ecc_jac_point *out);

/**
 * Tests whether a point lies on the curve.
 *
 * @param[in] P  one record; the infinity flag is ignored
 * @param[in] a  one record: coefficient a
 * @param[in] b  one record: coefficient b
 * @param[in] p  one record: the field's prime; with 0 every point passes
 * @retval 0 y^2 = x^3 + a*x + b (mod p)
 * @retval 1 the point is not on the curve
 *
 * @par Caller checks
 *      That the point is finite and that x and y are below p; the equation alone does not say so.
 * @par Standard
 *      SEC 1 version 2, section 3.2.2.1, step 3.
 */
ZOKECC_API int32_t ecc_test_point(const ecc_point *P, const mint *a, const mint *b, const mint *p);

/** @} */

/**
 * @defgroup ecc_multiplication Multiplication of points
 * The result is affine. A scalar 0, as len 0 or as len 1, gives infinity. Scalars are not reduced modulo an
 * order; none is known here.
 * @par Timing
 *      Depends on the values, the scalar included: 16 doublings and up to 32 additions.
 * @{
 */

/**
 * Multiplies the base point by a scalar, with the process-wide table.
 *
 * The table is that of the last Curve_Init or ecc_precomputation_point, and p must be the prime it was built
 * for.
 *
 * @param[in]  k    one record: the scalar. One with more words than p goes through ecc_unknown_point_mul with
 *                  the base point, and gives infinity if that fails
 * @param[in]  G    not read, may be null: the point is that of the table
 * @param[in]  a    one record: coefficient a
 * @param[in]  b    not read
 * @param[in]  p    one record: the field's prime; infinity if it is zero or has more than eight words
 * @param[out] out  one record
 * @return 0, always
 *
 * @par Threads
 *      Must not run while another thread rebuilds the table.
 * @par Aliasing
 *      out may be G.
 */
ZOKECC_API int32_t ecc_fix_point_mul(const mint *k, const ecc_point *G, const mint *a, const mint *b,
                                     const mint *p, ecc_point *out);

/**
 * Multiplies the base point by a scalar, with the caller's table.
 *
 * @param[in]  k      one record: the scalar, as for ecc_fix_point_mul
 * @param[in]  G      not read, may be null: the point is that of the table
 * @param[in]  a      one record: coefficient a
 * @param[in]  b      not read
 * @param[in]  p      one record: the field's prime, as for ecc_fix_point_mul
 * @param[out] out    one record
 * @param[in]  table  the records that ecc_precomputation_point_1 wrote for the same a and p
 * @return 0, always
 *
 * @par Aliasing
 *      out must not lie inside the table.
 */
ZOKECC_API int32_t ecc_fix_point_mul_1(const mint *k, const ecc_point *G, const mint *a, const mint *b,
                                       const mint *p, ecc_point *out, const ecc_point *table);

/**
 * Multiplies any point by a scalar, with a signed sliding window.
 *
 * The window is 1 bit wide for scalars below 20 bits, 2 below 70, 3 below 300 and 4 from there on.
 *
 * @param[in]  k    one record: the scalar, of up to 19 words
 * @param[in]  P    one record; infinity gives infinity
 * @param[in]  a    one record: coefficient a
 * @param[in]  b    not read
 * @param[in]  p    one record: the field's prime
 * @param[out] out  one record
 * @retval 1 success
 * @retval -1 the buffer for the digits cannot be allocated, and *out is then infinity if k is zero or P
 *         infinite, and unchanged otherwise
 *
 * @note Kept: the digit buffer, one byte more than the scalar has bits (1 byte for the scalar 0), is never
 *       freed. Where the window meets an equal point in its last addition the result is infinity (see
 *       ecc_jac_point_add_1): for points of an order n of 70 bits or more that is 1, 3, 5 or 7 modulo 16,
 *       at the scalar n - 2 * (n mod 16); from 20 bits on where n is 1 or 3 modulo 8, at
 *       n - 2 * (n mod 8), and below that where n is 1 modulo 4, at n - 2. That is n - 6 on the SM2
 *       curve, n - 2 on secp192r1, secp256r1 and secp256k1 and n - 14 on brainpoolP256r1.
 *       ecc_fix_point_mul is right there. Scalars above n have such values as well, and points of small
 *       order have more of them.
 * @par Caller checks
 *      The result. That P lies on the curve: other points are multiplied nevertheless, on another curve.
 * @par Aliasing
 *      out may be P.
 * @par Timing
 *      Depends on the values, the scalar included.
 */
ZOKECC_API int32_t ecc_unknown_point_mul(const mint *k, const ecc_point *P, const mint *a, const mint *b,
                                         const mint *p, ecc_point *out);

/**
 * Multiplies a point by a scalar, by the faster way if it is the base point.
 *
 * P and G are compared by value (flag, x and y). Equal points go through ecc_fix_point_mul, others through
 * ecc_unknown_point_mul.
 *
 * @param[in]  k    one record: the scalar
 * @param[in]  P    one record
 * @param[in]  G    one record: the base point that the process-wide table was built for
 * @param[in]  a    one record: coefficient a
 * @param[in]  b    not read
 * @param[in]  p    one record: the field's prime
 * @param[out] out  one record
 * @return 0, always
 *
 * @note Kept: a failure of ecc_unknown_point_mul is not reported.
 * @par Caller checks
 *      That the table belongs to G. Fill *out with a known value before the call if running out of memory
 *      must not go unseen.
 * @par Threads
 *      Must not run while another thread rebuilds the table.
 * @par Aliasing
 *      out may be P or G.
 * @par Timing
 *      Depends on the values, the scalar included.
 */
ZOKECC_API int32_t ecc_point_mul(const mint *k, const ecc_point *P, const ecc_point *G, const mint *a,
                                 const mint *b, const mint *p, ecc_point *out);

/** @} */

/**
 * @defgroup ecc_encoding Points as byte strings
 * A compressed point is 02 or 03 (03 for an odd y) and x, an uncompressed one 04, x and y, a hybrid one 06 or
 * 07 (07 for an odd y), x and y. There is no byte string for infinity.
 * @par Timing
 *      Depends on the values.
 * @{
 */

/**
 * Finds the y that belongs to an x, from the parity of y.
 *
 * @param[out] out_y   one record: the one of the two roots of x^3 + a*x + b modulo p whose bit 0 is parity;
 *                     unchanged if the result is -1
 * @param[in]  x       one record
 * @param[in]  a       one record: coefficient a
 * @param[in]  b       one record: coefficient b
 * @param[in]  p       one record: the field's prime
 * @param      parity  0 or 1
 * @retval 0 success
 * @retval -1 mint_sqrt finds no root
 *
 * @note Kept: the root 0 and parity 1 give y = p, not reduced. The other root is p less the one that was
 *       found, by the borrow rule of mint_sub, and is given for every parity but 0 and 1. For p = 1 (mod 8)
 *       an x without a point gives 0 and a meaningless y, and for p = 5 (mod 8) an x with y = 0 gives -1, as
 *       mint_sqrt has it.
 * @par Caller checks
 *      For p = 1 (mod 8) that the point lies on the curve: ecc_test_point.
 * @par Aliasing
 *      out_y may be x, a or b. It must not be p.
 * @par Threads
 *      For p = 1 (mod 8) the call uses one table for the whole process, and may draw random numbers.
 * @par Standard
 *      SEC 1 version 2, section 2.3.4, step 2.4.
 */
ZOKECC_API int32_t  ecc_point_unpress(mint *out_y, const mint *x, const mint *a, const mint *b, const mint *p,
                                      uint32_t parity);

/**
 * Writes a point as a byte string. No curve is needed.
 *
 * With l for the record's length, the compressed form takes l + 1 bytes and the others 2 * l + 1. Coordinates
 * are copied as they stand; the parity is that of the last of the l bytes of y.
 *
 * @param[in]  point     one record
 * @param      form      0: uncompressed; 1: compressed; 2: hybrid
 * @param[out] out       the bytes written
 * @param      out_size  room in bytes; a negative one is too small
 * @return the bytes written
 * @retval -1 with nothing written, if a pointer is null, point->length is above 65, the form is another or
 *         out_size is too small
 *
 * @par Aliasing
 *      out must not lie inside *point.
 * @par Timing
 *      Depends on the length and the form.
 * @par Standard
 *      SEC 1 version 2, section 2.3.3; ANSI X9.62 for the hybrid form.
 */
ZOKECC_API int32_t  ecc_PointToByte(const ecc_point_bytes *point, uint32_t form, uint8_t *out,
                                    int32_t out_size);

/**
 * Reads a point from a byte string and checks that it is on the process-wide curve.
 *
 * A compressed point must have the curve's length, 1 + L bytes. The other forms may have coordinates of any
 * length up to 65 bytes, which are copied as they stand and become the record's length.
 *
 * @param[in]  in      in_len bytes
 * @param      in_len  length in bytes
 * @param[out] out     one record
 * @retval 0 success
 * @retval -1 with nothing written, if a pointer is null, no curve is installed, in_len is even or fits no
 *         form, the first byte is not 02, 03, 04, 06 or 07, or a compressed x has no y; later, with the
 *         record written, if the point is not on the curve
 *
 * @note Kept: the parity in a hybrid prefix is not compared with y. Coordinates of p and above are tested,
 *       and passed on unchanged.
 * @par Caller checks
 *      That out->length is L, where a record of that length is needed, and that x and y are below p.
 * @par Aliasing
 *      in must not lie inside *out.
 * @par Threads
 *      Must not run while another thread installs a curve. For compressed points what ecc_point_unpress says.
 * @par Standard
 *      SEC 1 version 2, section 2.3.4; ANSI X9.62 for the hybrid form.
 */
ZOKECC_API int32_t  ecc_ByteToPoint(const uint8_t *in, uint32_t in_len, ecc_point_bytes *out);

/** @} */

#endif
