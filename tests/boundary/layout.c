/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * The public records, byte by byte: their sizes and the offsets of their fields, with pointers of four
 * bytes and of eight. Nothing here runs; a changed layout does not compile.
 */
#include <stddef.h>

#include <zokecc/zokecc.h>

#define SIZE(record, bytes) _Static_assert(sizeof(record) == (bytes), "size of " #record)
#define FIELD(record, field, offset) \
    _Static_assert(offsetof(record, field) == (offset), "place of " #field " in " #record)

/* One value for the targets with 4-byte pointers, one for those with 8-byte pointers. */
#define BY_POINTER(four, eight) (sizeof(void *) == 4 ? (four) : (eight))
_Static_assert(sizeof(void *) == 4 || sizeof(void *) == 8, "pointers of four or eight bytes");

SIZE(mint, 80);
FIELD(mint, words, 0);
FIELD(mint, len, 76);
_Static_assert(MINT_WORDS == 19, "words of a mint");

SIZE(sm3_msg, BY_POINTER(12, 16));
FIELD(sm3_msg, data, 0);
FIELD(sm3_msg, len_high, BY_POINTER(4, 8));
FIELD(sm3_msg, len_low, BY_POINTER(8, 12));

SIZE(hash_msg, BY_POINTER(16, 24));
FIELD(hash_msg, alg, 0);
FIELD(hash_msg, data, BY_POINTER(4, 8));
FIELD(hash_msg, len_high, BY_POINTER(8, 16));
FIELD(hash_msg, len_low, BY_POINTER(12, 20));
_Static_assert(sizeof(hash_msg) - offsetof(hash_msg, data) == sizeof(sm3_msg), "hash_msg ends as an sm3_msg");

SIZE(ecc_point, 164);
FIELD(ecc_point, infinity, 0);
FIELD(ecc_point, x, 4);
FIELD(ecc_point, y, 84);

SIZE(ecc_jac_point, 240);
FIELD(ecc_jac_point, X, 0);
FIELD(ecc_jac_point, Y, 80);
FIELD(ecc_jac_point, Z, 160);

SIZE(ecc_curve_bytes, 396);
FIELD(ecc_curve_bytes, p, 0);
FIELD(ecc_curve_bytes, a, 65);
FIELD(ecc_curve_bytes, b, 130);
FIELD(ecc_curve_bytes, Gx, 195);
FIELD(ecc_curve_bytes, Gy, 260);
FIELD(ecc_curve_bytes, n, 325);
FIELD(ecc_curve_bytes, type, 392);

SIZE(CurvePara, 392);
FIELD(CurvePara, p, 0);
FIELD(CurvePara, a, 64);
FIELD(CurvePara, b, 128);
FIELD(CurvePara, Gx, 192);
FIELD(CurvePara, Gy, 256);
FIELD(CurvePara, n, 320);
FIELD(CurvePara, type, 384);
FIELD(CurvePara, hash_selector, 388);
_Static_assert(PRECOMP_TABLE_ENTRIES == 520, "entries of a table");

SIZE(ecc_point_bytes, 136);
FIELD(ecc_point_bytes, x, 0);
FIELD(ecc_point_bytes, y, 65);
FIELD(ecc_point_bytes, length, 132);

SIZE(ecc_scalar, BY_POINTER(8, 16));
FIELD(ecc_scalar, bytes, 0);
FIELD(ecc_scalar, length, BY_POINTER(4, 8));

SIZE(DEVICEINFO, 100);
FIELD(DEVICEINFO, issuer_name, 0);
FIELD(DEVICEINFO, device_name, 40);
FIELD(DEVICEINFO, device_serial, 56);
FIELD(DEVICEINFO, device_version, 72);
FIELD(DEVICEINFO, standard_version, 76);
FIELD(DEVICEINFO, asym_alg_ability, 80);
FIELD(DEVICEINFO, sym_alg_ability, 88);
FIELD(DEVICEINFO, hash_alg_ability, 92);
FIELD(DEVICEINFO, buffer_size, 96);

SIZE(ECCrefPublicKey, 132);
FIELD(ECCrefPublicKey, bits, 0);
FIELD(ECCrefPublicKey, x, 4);
FIELD(ECCrefPublicKey, y, 68);

SIZE(ECCrefPrivateKey, 68);
FIELD(ECCrefPrivateKey, bits, 0);
FIELD(ECCrefPrivateKey, K, 4);

SIZE(ECCSignature, 128);
FIELD(ECCSignature, r, 0);
FIELD(ECCSignature, s, 64);

SIZE(ECCCipher, 256);
FIELD(ECCCipher, x, 0);
FIELD(ECCCipher, y, 64);
FIELD(ECCCipher, C, 128);
FIELD(ECCCipher, M, 192);

SIZE(KeyAgreementResult, BY_POINTER(132, 136));
FIELD(KeyAgreementResult, check, 0);
FIELD(KeyAgreementResult, send, 64);
FIELD(KeyAgreementResult, key, 128);
