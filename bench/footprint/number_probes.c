/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Integers and hashes. */
#include "probe.h"

#define NUMBER_CALLS(CALL) \
    CALL("integers", mint_copy, (&in.out, &in.x)) \
    CALL("integers", mint_compare, (&in.x, &in.y)) \
    CALL("integers", mint_adjust_len, (&in.x, MINT_WORDS)) \
    CALL("integers", octetstring_to_mint, (in.octets, 4 * MINT_WORDS, &in.out)) \
    CALL("integers", mint_to_octetstring, (&in.long_x, sizeof in.out_bytes, in.out_bytes, &in.out_len)) \
    CALL("integers", mint_to_fixedlen_os, \
         (&in.long_x, 4 * MINT_WORDS, sizeof in.out_bytes, &in.out_len, in.out_bytes)) \
    CALL("integers", mint_left_move, (&in.out, 33)) \
    CALL("integers", mint_right_move, (&in.out, 33)) \
    CALL("integers", get_mint_bit_len, (&in.x)) \
    CALL("integers", mint_bit_set, (&in.x, 40)) \
    CALL("integers", mint_bit, (0x8000u)) \
    CALL("print_str_array", print_str_array, ("octets", in.octets, 32)) \
    CALL("integers", mint_add, (&in.long_x, &in.long_y, &in.out)) \
    CALL("integers", mint_sub, (&in.long_x, &in.long_y, &in.out)) \
    CALL("integers", mint_mul, (&in.long_x, &in.long_y, &in.out)) \
    CALL("integers", mint_mul_3, (in.out_words, in.long_x.words, 77, MINT_WORDS)) \
    CALL("integers", mint_mul_4, (in.out_words, in.long_x.words, 77, MINT_WORDS)) \
    CALL("integers", mul_2, (in.long_x.words, MINT_WORDS, in.long_y.words, MINT_WORDS, in.out_words)) \
    CALL("integers", add_2, (in.long_x.words, in.long_y.words, MINT_WORDS, in.out_words)) \
    CALL("integers", sub_2, (in.long_x.words, in.long_y.words, MINT_WORDS, in.out_words)) \
    CALL("integers", div_2, (1, 2, 3)) \
    CALL("integers", mint_div, (&in.long_x, &in.p, &in.out, &in.out_rest)) \
    CALL("integers", mint_mod, (&in.long_x, &in.p, &in.out)) \
    CALL("integers", mint_mod_reduce, (&in.x, &in.p, &in.out)) \
    CALL("integers", mint_mod_add, (&in.x, &in.y, &in.p, &in.out)) \
    CALL("integers", mint_mod_sub, (&in.x, &in.y, &in.p, &in.out)) \
    CALL("integers", mint_mod_mul, (&in.x, &in.y, &in.p, &in.out)) \
    CALL("integers", mint_mod_left_move_1, (&in.out, &in.x, &in.p)) \
    CALL("integers", mint_mod_left_move_n, (&in.out, &in.x, &in.p, 3)) \
    CALL("integers", mint_EEA_algo, (&in.x, &in.p, &in.out)) \
    CALL("integers", mint_exp, (&in.x, &in.y, &in.p, &in.out)) \
    CALL("integers", mint_sqrt, (&in.x, &in.p, &in.out))

#define HASH_CALLS(CALL) \
    CALL("hashes, random numbers", mhash_sha256, (in.octets, 100, in.out_bytes)) \
    CALL("hashes, random numbers", mhmac_sha256, (in.octets, 100, in.octets, 100, in.out_bytes, 32)) \
    CALL("hashes, random numbers", KD_hmac_sha256, (in.octets, 100, in.octets, 32, in.out_bytes, 32)) \
    CALL("hashes, random numbers", ZOK_Sha256, (&in, in.octets, 100, in.out_bytes, &in.out_len)) \
    CALL("hashes, random numbers", ZOK_HmacSha256, (&in, in.octets, 100, in.octets, 100, in.out_bytes, 32)) \
    CALL("hashes, random numbers", ZOK_KdHmacSha256, \
         (&in, in.octets, 32, in.octets, 100, in.out_bytes, &in.out_len)) \
    CALL("hashes, random numbers", sm3_hash, (&in.sm3_message, in.out_bytes)) \
    CALL("hashes, random numbers", ZOK_SM3, (&in, in.octets, 100, in.out_bytes, &in.out_len)) \
    CALL("hashes, random numbers", ZOK_HMAC_SM3, (&in, in.octets, 100, in.octets, 100, in.out_bytes, 32)) \
    CALL("hashes, random numbers", ZOK_KD_HMAC_SM3, (&in, in.octets, 100, in.octets, 100, in.out_bytes, 32)) \
    CALL("hashes, random numbers", hash_byte, (&in.any_message, in.out_bytes)) \
    CALL("hashes, random numbers", hash_mint_value, (&in.any_message, &in.n, &in.out)) \
    CALL("hashes, random numbers", ecc_time, (&in.out_len)) \
    CALL("hashes, random numbers", gen_random, (in.out_bytes, 100)) \
    CALL("hashes, random numbers", gen_random_number, (&in.out, &in.n)) \
    CALL("hashes, random numbers", SDF_GenerateRandom, (&in, 100, in.out_bytes))

NUMBER_CALLS(PROBE_FUNCTION)
HASH_CALLS(PROBE_FUNCTION)

const probe number_probes[] = {NUMBER_CALLS(PROBE_ROW){NULL, NULL, NULL}};
const probe hash_probes[] = {HASH_CALLS(PROBE_ROW){NULL, NULL, NULL}};
