/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Keys, signatures and ciphertexts for each set of numbers. */
#include "probe.h"

#include <stdlib.h>
#include <string.h>

inputs in;

/* Writes digits to the first bytes of a field. Returns the number of bytes. */
static uint32_t from_hex(uint8_t *bytes, const char *digits)
{
    uint32_t count = 0;
    for (; *digits != '\0'; digits += 2, ++count) {
        const char pair[3] = {digits[0], digits[1], '\0'};
        bytes[count] = (uint8_t)strtoul(pair, NULL, 16);
    }
    return count;
}

static mint number(const char *digits)
{
    uint8_t bytes[4 * MINT_WORDS];
    mint value;
    octetstring_to_mint(bytes, from_hex(bytes, digits), &value);
    return value;
}

/* n - n / part: below n, and as long. */
static mint scalar(uint32_t part)
{
    const mint divisor = {{part}, 1};
    mint result;
    mint rest;
    mint_div(&in.n, &divisor, &result, &rest);
    mint_sub(&in.n, &result, &result);
    return result;
}

static void prepare_numbers(const number_set *set)
{
    in.p = number(set->p);
    in.a = number(set->a);
    in.b = number(set->b);
    in.n = number(set->n);
    in.G.x = number(set->x);
    in.G.y = number(set->y);
    in.k = scalar(3);
    in.x = in.G.x;
    in.y = in.k;
    if (mint_compare(&in.y, &in.p) >= 0) in.y = in.x;
    for (uint32_t i = 0; i < MINT_WORDS; ++i) {
        in.long_x.words[i] = 0xdeadbeefu + i;
        in.long_y.words[i] = 0xfeedf00du * (i + 1);
    }
    in.long_x.len = in.long_y.len = MINT_WORDS;
    ecc_point_double(&in.G, &in.a, &in.b, &in.p, &in.Q);
    ecc_affine_jacobin(&in.jacobian, &in.G);
    ecc_jac_point_double(&in.jacobian, &in.a, &in.b, &in.p, &in.jacobian);
    ecc_jac_point_double(&in.jacobian, &in.a, &in.b, &in.p, &in.jacobian_2);
    in.out_jacobian = in.jacobian;
}

static void prepare_messages(void)
{
    memset(in.octets, 0x5a, sizeof in.octets);
    memset(in.message, 0x11, sizeof in.message);
    in.message[0] = 0; /* below p, as a number */
    memset(in.identity, '1', sizeof in.identity);
    const sm3_msg message = {in.message, 0, sizeof in.message};
    const hash_msg any = {HASH_ALG_SM3, in.message, 0, sizeof in.message};
    in.sm3_message = message;
    in.any_message = any;
    in.cipher.data = in.cipher_bytes;
    in.out_message.data = in.out_bytes;
    in.out_scalar.bytes = in.out_key;
    in.out_agreement.key = in.out_key;
}

static void prepare_curves(const number_set *set)
{
    const char *const digits[] = {set->p, set->a, set->b, set->x, set->y, set->n};
    uint8_t *const process[] = {in.process_curve.p,  in.process_curve.a,  in.process_curve.b,
                                in.process_curve.Gx, in.process_curve.Gy, in.process_curve.n};
    uint8_t *const session[] = {in.session_curve.p,  in.session_curve.a,  in.session_curve.b,
                                in.session_curve.Gx, in.session_curve.Gy, in.session_curve.n};
    for (int i = 0; i < 6; ++i) {
        from_hex(process[i], digits[i]);
        from_hex(session[i], digits[i]);
    }
    in.process_curve.type = set->process_type;
    in.session_curve.type = set->session_type;
    Curve_Init(&in.process_curve);
    ecc_precomputation_point_1(&in.G, &in.a, &in.b, &in.p, in.table);
    ZOK_OpenSession(&in.session, &in.session_curve);
    from_hex(in.G_bytes.x, set->x);
    from_hex(in.G_bytes.y, set->y);
    in.G_bytes.length = in.bytes;
    ecc_PointToByte(&in.G_bytes, 2, in.point_octets, 1 + 2 * BYTES); /* compressed */
}

static void to_record(const ecc_point_bytes *point, ECCrefPublicKey *record)
{
    record->bits = 8 * in.bytes;
    memcpy(record->x, point->x, in.bytes);
    memcpy(record->y, point->y, in.bytes);
}

static void prepare_side(side *s, uint32_t part)
{
    const mint d = scalar(part);
    const mint r = scalar(part + 1);
    uint32_t length = 0;
    mint_to_fixedlen_os(&d, in.bytes, in.bytes, &length, s->d_bytes);
    mint_to_fixedlen_os(&r, in.bytes, in.bytes, &length, s->r_bytes);
    s->d.bytes = s->d_bytes;
    s->r.bytes = s->r_bytes;
    s->d.length = s->r.length = in.bytes;
    Ecc_GenPubKey(&s->d, &s->P);
    Ecc_GenPubKey(&s->r, &s->R);
    memcpy(s->d_record.K, s->d_bytes, in.bytes);
    memcpy(s->r_record.K, s->r_bytes, in.bytes);
    s->d_record.bits = s->r_record.bits = 8 * in.bytes;
    to_record(&s->P, &s->P_record);
    to_record(&s->R, &s->R_record);
    memset(s->Z, (int)part, sizeof s->Z);
}

/* If a set of numbers is not a curve, a signature is at least in range. */
static void prepare_results(void)
{
    in.signature.r[in.bytes - 1] = in.signature.s[in.bytes - 1] = 7;
    in.sm2_signature.x[in.bytes - 1] = in.sm2_signature.y[in.bytes - 1] = 7;
    in.sm2_signature.length = in.bytes;
    in.ecdsa_signature = in.sm2_signature;
    in.message_signature = in.signature;

    sm2_DigitalSign(&in.A.d, &in.sm3_message, in.A.Z, &in.sm2_signature, HASH_ALG_SM3);
    Ecdsa_DigitalSign(&in.A.d, &in.sm3_message, &in.ecdsa_signature, HASH_ALG_SM3);
    sm2_Encry(&in.A.P, &in.sm3_message, &in.cipher, HASH_ALG_SM3);
    Eces_Encry(&in.A.P, in.message, in.bytes, in.eces_cipher, 1 + 3 * BYTES);
    SDF_ExternalSign_ECC(in.session, ZOK_ALG_SM2_SIGN, &in.A.d_record, in.message, in.bytes, &in.signature);
    ZOK_ExternalSignHash_ECC(in.session, ZOK_ALG_SM2_SIGN, &in.A.d_record, in.message, MESSAGE_BYTES,
                             in.identity, IDENTITY_BYTES, &in.message_signature);
    SDF_ExternalEncrytp_ECC(in.session, ZOK_ALG_SM2_ENCRYPT, &in.A.P_record, in.message, in.bytes,
                            &in.record);
    ZOK_ExternalEncrytp_ECC(in.session, &in.A.P_record, in.message, MESSAGE_BYTES, in.flat_cipher,
                            &in.flat_cipher_len);
}

void prepare(const number_set *set)
{
    if (in.session != NULL) ZOK_CloseSession(in.session);
    if (in.device != NULL) SDF_CloseDevice(in.device);
    memset(&in, 0, sizeof in);
    in.bytes = set->bytes;
    prepare_messages();
    prepare_numbers(set);
    SDF_OpenDevice(&in.device);
    if (set->session_type == 0) return;
    prepare_curves(set);
    prepare_side(&in.A, 5);
    prepare_side(&in.B, 7);
    prepare_results();
}
