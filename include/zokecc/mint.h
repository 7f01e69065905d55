/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/**
 * @file mint.h
 * Unsigned integers of up to 608 bits: conversions, plain arithmetic, division and modular arithmetic.
 *
 * @par Representation
 *      A mint is 19 words of 32 bits, least significant word first, and the number of words in use. Words at
 *      and above len may hold anything and are never read. A value is trimmed when its top used word is not
 *      zero, or when len is 0. Zero is len 0; zero as len 1 with words[0] = 0 is accepted wherever a call
 *      tests whether a value is zero, but not by mint_compare. Results are trimmed unless a comment says
 *      otherwise.
 * @par Capacity
 *      No call writes outside the 80 bytes of an output record. A result of more than 19 words is kept modulo
 *      2^608. Where a call reads words, a len above 19 counts as 19, and one with its top bit set (it is
 *      compared as a signed number) as 0.
 * @par Small constants
 *      Clear the record, then set words[0] to the constant and len to 1.
 * @par Order of arguments
 *      Operands, modulus, output. The exceptions are visible in the prototypes: mint_copy, the
 *      mint_mod_left_move calls, mint_mul_3 and mint_mul_4 have the output first, and the two conversions to
 *      bytes differ from each other.
 */
#ifndef ZOKECC_MINT_H
#define ZOKECC_MINT_H

#include <zokecc/conventions.h>

/** Words of a mint: 19, that is 608 bits or 76 bytes. */
#define MINT_WORDS 19

/** An unsigned integer below 2^608. 80 bytes. */
typedef struct mint {
    uint32_t words[MINT_WORDS];   /**< least significant word first; each word in the machine's own order */
    uint32_t len;                 /**< used words, 0 to 19; compared as a signed value */
} mint;

/**
 * @defgroup mint_values Conversions, comparison and shifts
 * @par Timing
 *      Depends on value->len and bit_count.
 * @{
 */

/**
 * Copies a value.
 *
 * The used words and len are copied; words of *dst above the new len are unchanged.
 *
 * @param[out] dst  one record
 * @param[in]  src  one record
 * @return 0, always
 *
 * @par Aliasing
 *      dst may be src.
 * @par Timing
 *      Depends on src->len.
 */
ZOKECC_API int32_t mint_copy(mint *dst, const mint *src);

/**
 * Compares two values.
 *
 * The longer len decides first, as a signed number, without a look at the words; so both values must be
 * trimmed for the comparison to be numerical. A value with a zero top word counts as greater than the same
 * value trimmed, and zero as len 1 as greater than zero as len 0.
 *
 * @param[in] a  one record
 * @param[in] b  one record
 * @return 1 if a > b, -1 if a < b, 0 if both have the same len and the same used words
 *
 * @par Timing
 *      Depends on both len and on how many words from the top are equal.
 */
ZOKECC_API int32_t mint_compare(const mint *a, const mint *b);

/**
 * Trims a value: sets len to just above the highest nonzero word.
 *
 * len becomes one more than the index of the highest non-zero word among words 0 to word_count - 1, and 0 if
 * all of them are zero. The incoming len is not read and no word is changed.
 *
 * @param[in,out] value       one record
 * @param         word_count  words to look at; above 19 counts as 19; 0 or less is stored in len unchanged
 * @return 0, always
 *
 * @par Timing
 *      Depends on word_count and on the number of zero words at the top.
 */
ZOKECC_API int32_t mint_adjust_len(mint *value, int32_t word_count);

/**
 * Reads a big-endian byte string as an unsigned integer.
 *
 * Leading zero bytes do not count: out->len becomes the number of 32-bit words up to the highest non-zero
 * one, and 0 for an empty or all-zero string. All 80 bytes of *out are rewritten.
 *
 * @param[in]  bytes       byte_count bytes, most significant first; may be null when byte_count is 0
 * @param      byte_count  length in bytes; a record holds 76, and of a longer string the last 76 are taken
 * @param[out] out         one record
 * @return 0, always
 *
 * @par Aliasing
 *      bytes must not lie inside *out, which is cleared first.
 * @par Timing
 *      Depends on byte_count and on the number of leading zero words.
 * @par Standard
 *      SEC 1 version 2, section 2.3.8.
 * @par Example
 *      01 02 03 04 05 gives words[0] = 02030405, words[1] = 00000001, len 2.
 */
ZOKECC_API int32_t octetstring_to_mint(const uint8_t *bytes, uint32_t byte_count, mint *out);

/**
 * Writes a value as its shortest big-endian byte string.
 *
 * Zero as len 0 is the empty string: nothing is written and *out_len is 0. Of a value whose top used word is
 * zero, that word contributes one 00 byte, so zero as len 1 is the single byte 00.
 *
 * @param[in]  value     one record
 * @param      capacity  bytes that out can take
 * @param[out] out       the string, at most capacity bytes; nothing is written after it
 * @param[out] out_len   bytes written
 * @retval 0 success
 * @retval 1 the string is longer than capacity; *out and *out_len are unchanged
 *
 * @par Aliasing
 *      out must not lie inside *value.
 * @par Timing
 *      Depends on value->len and on the number of leading zero bytes.
 * @par Standard
 *      SEC 1 version 2, section 2.3.7, for the shortest length.
 */
ZOKECC_API int32_t mint_to_octetstring(const mint *value, uint32_t capacity, uint8_t *out, uint32_t *out_len);

/**
 * Writes a value as a big-endian byte string of a fixed length, padded with zero bytes on the left.
 *
 * The arguments after the value are in a different order from those of mint_to_octetstring.
 *
 * @param[in]  value      one record
 * @param      fixed_len  bytes to write
 * @param      capacity   bound for the shortest form of the value, in bytes. It is not compared with
 *                        fixed_len: with a smaller capacity fixed_len bytes are written nevertheless
 * @param[out] out_len    bytes written: fixed_len on success, else 0
 * @param[out] out        room for the greater of fixed_len and the shortest form, in bytes
 * @retval 0 success
 * @retval 1 the shortest form is longer than capacity; *out is unchanged
 * @retval 2 it fits capacity but is longer than fixed_len: the shortest form has then been written
 *
 * @par Caller checks
 *      Pass a capacity of at least fixed_len and a buffer of at least capacity bytes.
 * @par Aliasing
 *      out must not lie inside *value.
 * @par Timing
 *      Depends on value->len, on the number of leading zero bytes and on fixed_len.
 * @par Standard
 *      SEC 1 version 2, section 2.3.7.
 * @par Example
 *      1 with fixed_len 32 and capacity 32 gives 31 bytes 00 and one byte 01.
 */
ZOKECC_API int32_t mint_to_fixedlen_os(const mint *value, uint32_t fixed_len, uint32_t capacity,
                                       uint32_t *out_len, uint8_t *out);

/**
 * Shifts a value left, in place.
 *
 * The result is trimmed, except that a shift by 0 leaves the record unchanged. Bits that leave the 608 of the
 * record are lost.
 *
 * @param[in,out] value      one record
 * @param         bit_count  bits to shift by
 * @return 0, always
 */
ZOKECC_API int32_t mint_left_move(mint *value, uint32_t bit_count);

/**
 * Shifts a value right, in place.
 *
 * The result is trimmed, except that a shift by 0 leaves the record unchanged. A shift by at least the whole
 * value gives 0.
 *
 * @param[in,out] value      one record
 * @param         bit_count  bits to shift by
 * @return 0, always
 */
ZOKECC_API int32_t mint_right_move(mint *value, uint32_t bit_count);

/**
 * Gives the bit length of a value.
 *
 * @param[in] value  one record, trimmed; a zero top word counts 0 bits, each word below it 32
 * @return the number of bits up to the highest one that is set
 * @retval 0 for zero
 *
 * @par Timing
 *      Depends on value->len and on the top word.
 */
ZOKECC_API int32_t get_mint_bit_len(const mint *value);

/**
 * Reads one bit of a value. Despite its name it sets nothing.
 *
 * @param[in] value      one record
 * @param     bit_index  index of the bit, 0 for the least significant
 * @return the bit, 0 or 1
 * @retval 0 a negative index or one at or above 32 * len
 *
 * @par Timing
 *      Does not depend on the words.
 */
ZOKECC_API int32_t mint_bit_set(const mint *value, int32_t bit_index);

/**
 * Gives the bit length of a single word.
 *
 * @param word  any value
 * @return 0 for 0, else one more than the index of the highest bit that is set: 1 to 32
 *
 * @par Timing
 *      Depends on the word.
 */
ZOKECC_API int32_t mint_bit(uint32_t word);

/**
 * Prints a byte string in hexadecimal to standard output, for diagnosis.
 *
 * With a label, a first line holds the label, the count in brackets and a colon: "label(count) :". Every byte
 * follows as two upper-case digits, with a space after each fourth byte and, after that space, a line end
 * after each 32nd. If the count is no multiple of 32 one more line end follows.
 *
 * @param[in] label       text ended by a zero byte; may be null for no first line
 * @param[in] bytes       byte_count bytes; may be null when byte_count is 0
 * @param     byte_count  bytes to print; 0 prints the first line alone
 *
 * @par Caller checks
 *      The library itself never calls it. Whoever prints keys or nonces with it leaves them in a log.
 * @par Timing
 *      Depends on byte_count and on the output stream.
 */
ZOKECC_API void    print_str_array(const char *label, const uint8_t *bytes, int32_t byte_count);

/** @} */

/**
 * @defgroup mint_plain Addition, subtraction and multiplication
 * The calls on bare words take arrays with the least significant word first, and counts in words.
 * @par Timing
 *      Depends on count.
 * @{
 */

/**
 * Adds two values and trims both operands.
 *
 * @param[in,out] a    one record; its len is trimmed, its words are not touched
 * @param[in,out] b    one record; likewise
 * @param[out]    out  one record: a + b, trimmed
 * @return 0, always
 *
 * @par Aliasing
 *      out may be a or b or both, and a may be b.
 * @par Timing
 *      Depends on the used words and on how far a carry runs.
 * @par Example
 *      FFFFFFFF + 1 gives words[0] = 0, words[1] = 1, len 2.
 */
ZOKECC_API int32_t  mint_add(mint *a, mint *b, mint *out);

/**
 * Subtracts two values and gives the magnitude of the difference and its sign.
 *
 * The smaller value, by mint_compare, is subtracted from the larger. Equal values give 0.
 *
 * @param[in]  a    one record, trimmed
 * @param[in]  b    one record, trimmed
 * @param[out] out  one record: the magnitude of a - b by the borrow rule below, trimmed
 * @return 1 if a < b, else 0
 *
 * @note Kept: the difference is not always the true one. Word by word from the lowest, with a borrow that
 *       starts at 0, x a word of the larger value and y the word of the smaller at the same index:
 *       - x and y differ: x - y - borrow; the borrow becomes 1 if x < y, else 0;
 *       - x equals y, no borrow: 0;
 *       - x equals y, borrow: FFFFFFFE, one below the true word; the borrow stays 1;
 *       - above the used words of the smaller value: x - borrow; the borrow continues only if x was 0, and it
 *         is lost there if out is the record of the larger value.
 *       So a result can only differ from the true difference where that has a word FFFFFFFF. Operands that
 *       share words, such as a small number and a modulus with words of ones, meet the rule at once.
 * @par Aliasing
 *      out may be a or b; if it is the larger of the two, the last case above applies.
 * @par Timing
 *      Depends on the values.
 * @par Example
 *      Words (1, 5, 1) minus words (2, 5), least significant first, give (FFFFFFFF, FFFFFFFE), len 2.
 */
ZOKECC_API int32_t  mint_sub(const mint *a, const mint *b, mint *out);

/**
 * Multiplies two values.
 *
 * A zero operand, as len 0 or as len 1, gives len 0 with words[0] cleared. A product of more than 19 words is
 * kept modulo 2^608; operands of at most nine words each always fit.
 *
 * @param[in]  a    one record
 * @param[in]  b    one record
 * @param[out] out  one record: a * b, trimmed
 * @return 1, always
 *
 * @par Aliasing
 *      out may be a or b or both, and a may be b.
 * @par Timing
 *      Depends on both len, and on whether an operand is zero.
 */
ZOKECC_API int32_t  mint_mul(const mint *a, const mint *b, mint *out);

/**
 * Multiplies an array by one word and adds the product to another array.
 *
 * @param[in,out] accumulator  count words: accumulator + x * w, without the word that is returned
 * @param[in]     x            count words
 * @param         w            the multiplier
 * @param         count        words; below 1 nothing is written and the carry is 0
 * @return the carry: the word above the last one
 *
 * @par Aliasing
 *      accumulator may be x; areas shifted against each other are not supported.
 */
ZOKECC_API uint32_t mint_mul_3(uint32_t *accumulator, const uint32_t *x, uint32_t w, int32_t count);

/**
 * Multiplies an array by one word.
 *
 * @param[out] out    count words: x * w, without the word that is returned
 * @param[in]  x      count words
 * @param      w      the multiplier
 * @param      count  words; below 1 nothing is written and the carry is 0
 * @return the carry: the word above the last one
 *
 * @par Aliasing
 *      out may be x; areas shifted against each other are not supported.
 */
ZOKECC_API uint32_t mint_mul_4(uint32_t *out, const uint32_t *x, uint32_t w, int32_t count);

/**
 * Multiplies two arrays.
 *
 * If the shorter count is below 1, exactly as many zero words are written as the longer count says, and the
 * words after them are unchanged.
 *
 * @param[in]  a        a_count words
 * @param      a_count  words of a
 * @param[in]  b        b_count words
 * @param      b_count  words of b
 * @param[out] out      a_count + b_count words
 *
 * @par Aliasing
 *      out may be a or b if that array has at most 38 words.
 * @par Timing
 *      Depends on the counts.
 */
ZOKECC_API void     mul_2(const uint32_t *a, int32_t a_count, const uint32_t *b, int32_t b_count,
                          uint32_t *out);

/**
 * Adds two arrays of the same length.
 *
 * @param[in]  x      count words
 * @param[in]  y      count words
 * @param      count  words; below 1 nothing is written and the carry is 0
 * @param[out] out    count words: the sum without its carry
 * @return the last carry, 0 or 1
 *
 * @par Aliasing
 *      out may be x or y; areas shifted against each other are not supported.
 */
ZOKECC_API uint32_t add_2(const uint32_t *x, const uint32_t *y, int32_t count, uint32_t *out);

/**
 * Subtracts two arrays of the same length. The difference is the true one, unlike that of mint_sub.
 *
 * @param[in]  x      count words
 * @param[in]  y      count words
 * @param      count  words; below 1 nothing is written and the borrow is 0
 * @param[out] out    count words: x - y modulo 2^(32 * count)
 * @return the last borrow, 0 or 1
 *
 * @par Aliasing
 *      out may be x or y; areas shifted against each other are not supported.
 */
ZOKECC_API uint32_t sub_2(const uint32_t *x, const uint32_t *y, int32_t count, uint32_t *out);

/**
 * Divides a 64-bit value by a word.
 *
 * @param high     upper 32 bits of the dividend
 * @param low      lower 32 bits of the dividend
 * @param divisor  divisor, not zero
 * @return the quotient, 64 bits
 *
 * @par Caller checks
 *      A divisor of 0 is handed to the platform's integer division, which usually ends the process.
 * @par Timing
 *      Depends on the values and on the platform's division.
 */
ZOKECC_API uint64_t div_2(uint32_t high, uint32_t low, uint32_t divisor);

/** @} */

/**
 * @defgroup mint_division Division and reduction
 * Every dividend and divisor that a record can hold is divided correctly.
 * @par Timing
 *      Depends on the values.
 * @{
 */

/**
 * Divides two values and gives quotient and remainder.
 *
 * A dividend that is below the divisor by mint_compare is copied to the remainder unchanged, trimmed or not.
 *
 * @param[in]  dividend   one record
 * @param[in]  divisor    one record
 * @param[out] quotient   one record; may be null, and the quotient is then dropped
 * @param[out] remainder  one record; null is refused
 * @retval 1 success
 * @retval 0 with nothing written, if the divisor is zero or remainder is null
 *
 * @par Aliasing
 *      remainder may be dividend. It must be neither divisor nor quotient. quotient may be either input.
 */
ZOKECC_API int32_t mint_div(const mint *dividend, const mint *divisor, mint *quotient, mint *remainder);

/**
 * Reduces a value modulo another.
 *
 * A value that is below the modulus by mint_compare is copied unchanged, trimmed or not.
 *
 * @param[in]  dividend   one record
 * @param[in]  modulus    one record
 * @param[out] remainder  one record; null is refused
 * @retval 1 success
 * @retval 0 with nothing written, if the modulus is zero or remainder is null
 *
 * @par Aliasing
 *      remainder may be dividend. It must not be modulus.
 */
ZOKECC_API int32_t mint_mod(const mint *dividend, const mint *modulus, mint *remainder);

/**
 * Reduces a value modulo another, one word of the value at a time.
 *
 * The result is that of mint_mod; only a zero modulus is treated differently. A value below the modulus is
 * copied unchanged, trimmed or not.
 *
 * @param[in]  value    one record
 * @param[in]  modulus  one record; zero gives the result 0
 * @param[out] out      one record
 * @return 0, always
 *
 * @par Aliasing
 *      out may be value. It must not be modulus.
 */
ZOKECC_API int32_t mint_mod_reduce(const mint *value, const mint *modulus, mint *out);

/** @} */

/**
 * @defgroup mint_modular Modular arithmetic
 * Operands are expected below the modulus and trimmed; this is not checked, and each comment says what comes
 * out otherwise. Sums and doubled values must stay below 2^608. The modulus must be a prime where a comment
 * says so.
 * @par Timing
 *      Depends on the values.
 * @{
 */

/**
 * Adds two values modulo p and trims both operands.
 *
 * Operands that are not reduced are allowed as long as a + b is below 2^608.
 *
 * @param[in,out] a    one record; its len is trimmed, its words are not touched
 * @param[in,out] b    one record; likewise
 * @param[in]     p    the modulus; if it is zero, *out is unchanged
 * @param[out]    out  one record: (a + b) mod p
 * @return 0, always
 *
 * @par Aliasing
 *      out may be a or b or both. It must not be p.
 */
ZOKECC_API int32_t mint_mod_add(mint *a, mint *b, const mint *p, mint *out);

/**
 * Subtracts two values modulo p.
 *
 * Equal values give 0; for a > b the result is (a - b) mod p, for a < b it is p - ((b - a) mod p).
 *
 * @param[in]  a    one record, below p and trimmed
 * @param[in]  b    one record, below p and trimmed
 * @param[in]  p    the modulus; if it is zero, *out is unchanged for a > b and 0 otherwise
 * @param[out] out  one record
 * @return 0, always
 *
 * @note Kept: every subtraction follows the borrow rule of mint_sub. For a < b where b - a is a multiple of
 *       p, which takes an operand that is not reduced, the result is p and not 0.
 * @par Aliasing
 *      out may be a or b. It must not be p.
 * @par Example
 *      1 - 2 modulo p is p - 1.
 */
ZOKECC_API int32_t mint_mod_sub(const mint *a, const mint *b, const mint *p, mint *out);

/**
 * Multiplies two values modulo p.
 *
 * The product is formed at its full width, so operands of up to 19 words give the right result, reduced or
 * not. A zero operand, as len 0 or as len 1, gives len 0.
 *
 * @param[in]  a    one record
 * @param[in]  b    one record
 * @param[in]  p    the modulus; if it is zero and no operand is, *out is unchanged
 * @param[out] out  one record: (a * b) mod p
 * @return 0, always
 *
 * @par Aliasing
 *      out may be a or b or both. It must not be p.
 */
ZOKECC_API int32_t mint_mod_mul(const mint *a, const mint *b, const mint *p, mint *out);

/**
 * Doubles a value modulo p: shifts left by one bit and subtracts p once if the result is not below it.
 *
 * @param[out] out  one record: 2 * a mod p
 * @param[in]  a    one record, below p; for a larger one the result is 2 * a - p and not reduced
 * @param[in]  p    the modulus
 * @return 1, always
 *
 * @note Kept: the subtraction follows the borrow rule of mint_sub, with the output in the larger operand.
 * @par Aliasing
 *      out may be a. It must not be p.
 */
ZOKECC_API int32_t mint_mod_left_move_1(mint *out, const mint *a, const mint *p);

/**
 * Multiplies a value by a power of two modulo p, by shifting and subtracting.
 *
 * @param[out] out        one record: a * 2^bit_count mod p
 * @param[in]  a          one record, below p and trimmed
 * @param[in]  p          the modulus
 * @param      bit_count  the exponent, in bits to shift; 0 or less only copies
 * @retval 1 success
 * @retval 0 the value has more bits than p when a shift is due, with what had been reached so far in *out
 *
 * @note Kept: the subtractions follow the borrow rule of mint_sub, with the output in the larger operand.
 * @par Aliasing
 *      out may be a. It must not be p.
 * @par Timing
 *      Depends on the values and on bit_count.
 */
ZOKECC_API int32_t mint_mod_left_move_n(mint *out, const mint *a, const mint *p, int32_t bit_count);

/**
 * Inverts a value modulo another.
 *
 * For an odd modulus the binary Euclidean method runs, for an even one the method with division. There is no
 * test that an inverse exists, and no error: a multiple of the modulus gives the modulus itself, any other
 * value that shares a factor with it a meaningless number, and a modulus of 0 gives 1 unless a is 0, too.
 *
 * @param[in]  a        one record; reduced first if it is not below the modulus
 * @param[in]  modulus  one record
 * @param[out] out      one record: the number x with a * x = 1 (mod modulus), where the note does not apply
 * @return 0, always
 *
 * @note Kept: both methods subtract by the borrow rule of mint_sub, the odd one with the output in the
 *       greater operand. Inverses of small or structured numbers, and of numbers just below the
 *       modulus, therefore differ from the true ones where the modulus has words of ones. Modulo the
 *       order of the SM2 curve those of 2, 3, 4, 5, 6, 8, 10, 12, 15, 16, 17 and others do; modulo the
 *       orders of secp192r1, secp224r1, secp256r1 and secp256k1 those of 2, 4, 8 and further powers of
 *       two; modulo all five those of n - 1 to n - 5 and most others near n. Inverses of random numbers
 *       are right.
 * @par Caller checks
 *      Where a structured operand can occur, multiply the result by a and compare with 1.
 * @par Aliasing
 *      out may be a or modulus.
 * @par Example
 *      1/3 modulo 7 is 5; 1/3 modulo 8 is 3. 1/2 modulo the SM2 order is computed as
 *      7FFFFFFF7FFFFFFFFFFFFFFEFFFFFFFEB901EFB590E30295A9DDFA049CEAA092.
 */
ZOKECC_API int32_t mint_EEA_algo(const mint *a, const mint *modulus, mint *out);

/**
 * Raises a value to a power modulo a prime.
 *
 * @param[in]  base      one record; it is not reduced
 * @param[in]  exponent  one record
 * @param[in]  p         the modulus, a prime; 0 and 1 give 1
 * @param[out] out       one record: base^exponent mod p; 1 as len 1 if the exponent is a multiple of p - 1
 * @return 0, always
 *
 * @note Kept: the exponent is first reduced modulo p - 1, whether p is prime or not; so a base that is a
 *       multiple of p, raised to a multiple of p - 1 above 0, gives 1. The base is never reduced by itself:
 *       an exponent that reduces to 1 returns the base unchanged, even at or above p.
 * @par Aliasing
 *      out may be base or exponent. It must not be p.
 */
ZOKECC_API int32_t mint_exp(const mint *base, const mint *exponent, const mint *p, mint *out);

/**
 * Finds a square root modulo a prime.
 *
 * One of the two roots is given, without a choice: for p = 3 (mod 4) the root a^((p + 1) / 4).
 *
 * @param[in]  a    one record, below p
 * @param[in]  p    the modulus, an odd prime
 * @param[out] out  one record: the root; unchanged if the result is 0 or -1
 * @return 1 if a root was found;
 *         0 if a has none, if p is even, or if p - 1 is divisible by 2^202 or a higher power of two and the
 *         table for such primes would not suffice;
 *         -1 if 80 candidates (2 to 21 and 60 random ones) held no quadratic non-residue, or a random one was
 *         0; only for p = 1 (mod 8)
 *
 * @note Kept: for p = 1 (mod 8) the result is not verified, and an a that is not a square gives 1 and a
 *       meaningless number. Zero has no root for p = 5 (mod 8) and the root 0 for p = 1 (mod 8); for
 *       p = 3 (mod 4) it has the root 0 as len 0 and none as len 1.
 * @par Caller checks
 *      For p = 1 (mod 8) square the result and compare it with a.
 * @par Threads
 *      For p = 1 (mod 8) the call uses one table for the whole process, and may draw random numbers.
 * @par Aliasing
 *      out may be a. It must not be p.
 */
ZOKECC_API int32_t mint_sqrt(const mint *a, const mint *p, mint *out);

/** @} */

#endif
