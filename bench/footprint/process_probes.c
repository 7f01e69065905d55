/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* The process-wide curve. */
#include "probe.h"

enum { NEW_KEY = 0, INITIATOR = 1, KEY_BYTES = KEY_BITS / 8 };

/* The capacity is set each time, because the call overwrites it with the length. */
static ecc_scalar *new_key(void)
{
    in.out_scalar.length = in.bytes;
    return &in.out_scalar;
}

#define PROCESS_CALLS(CALL) \
    CALL("points as byte strings", ecc_PointToByte, (&in.G_bytes, 2, in.out_bytes, sizeof in.out_bytes)) \
    CALL("points as byte strings", ecc_ByteToPoint, (in.point_octets, 1 + in.bytes, &in.out_point_bytes)) \
    CALL("installing a curve", Curve_Init, (&in.process_curve)) \
    CALL("installing a curve", Curve_Exit, ()) \
    CALL("a table of multiples", ecc_precomputation_point, (&in.G, &in.a, &in.b, &in.p)) \
    CALL("multiplying by the table", ecc_fix_point_mul, (&in.k, &in.G, &in.a, &in.b, &in.p, &in.out_point)) \
    CALL("multiplying by the table", ecc_point_mul, \
         (&in.k, &in.G, &in.G, &in.a, &in.b, &in.p, &in.out_point)) \
    CALL("process: key pair", Ecc_GenPubKey, (&in.A.d, &in.out_point_bytes)) \
    CALL("process: key pair", Ecc_KeyPair_Gen, (new_key(), &in.out_point_bytes, NEW_KEY)) \
    CALL("process: ECDSA, sign", Ecdsa_DigitalSign, \
         (&in.A.d, &in.sm3_message, &in.out_point_bytes, HASH_ALG_SM3)) \
    CALL("process: ECDSA, verify", Ecdsa_DigitalVeriy, \
         (&in.A.P, &in.sm3_message, &in.ecdsa_signature, HASH_ALG_SM3)) \
    CALL("process: SM2, sign", sm2_DigitalSign, \
         (&in.A.d, &in.sm3_message, in.A.Z, &in.out_point_bytes, HASH_ALG_SM3)) \
    CALL("process: SM2, verify", sm2_DigitalVeriy, \
         (&in.A.P, &in.sm3_message, &in.sm2_signature, in.A.Z, HASH_ALG_SM3)) \
    CALL("process: SM2, encrypt", sm2_Encry, (&in.A.P, &in.sm3_message, &in.out_message, HASH_ALG_SM3)) \
    CALL("process: SM2, decrypt", sm2_Decry, (&in.A.d, &in.cipher, &in.out_message, HASH_ALG_SM3)) \
    CALL("process: ECES", Eces_Encry, (&in.A.P, in.message, in.bytes, in.out_bytes, 3 * BYTES)) \
    CALL("process: ECES", Eces_Decry, (&in.A.d, in.eces_cipher, 3 * in.bytes, in.out_bytes)) \
    CALL("process: ECES", eces_format, (in.bytes, in.message, 8, in.out_bytes, &in.out_len)) \
    CALL("process: ECES", eces_deformat, (in.message, in.bytes - 1, in.out_bytes, &in.out_len)) \
    CALL("process: Diffie-Hellman", Ecdh_KeyExChg, (&in.A.d, &in.B.P, in.out_bytes, sizeof in.out_bytes)) \
    CALL("process: exchange", sm2_KeyExChg_A1_3, (&in.A.r, &in.out_point_bytes)) \
    CALL("process: exchange", sm2_KeyExChg_A4_10, \
         (&in.A.r, &in.A.R, &in.A.d, &in.B.P, &in.B.R, in.A.Z, in.B.Z, KEY_BYTES, in.out_bytes, in.out_more, \
          in.out_key, HASH_ALG_SM3)) \
    CALL("process: exchange", sm2_KeyExChg_B1_10, \
         (&in.B.d, &in.A.P, &in.A.R, in.A.Z, in.B.Z, KEY_BYTES, &in.out_point_bytes, in.out_bytes, \
          in.out_more, in.out_key, HASH_ALG_SM3)) \
    CALL("process: exchange", sm2_KeyExChg, \
         (INITIATOR, &in.A.r, &in.A.R, &in.B.R, &in.A.d, &in.B.P, in.A.Z, in.B.Z, KEY_BYTES, in.out_bytes, \
          in.out_more, in.out_key, HASH_ALG_SM3)) \
    CALL("process: exchange", sm2_RPoint, (in.A.r_bytes, in.bytes, &in.out_point_bytes))

PROCESS_CALLS(PROBE_FUNCTION)

const probe process_probes[] = {PROCESS_CALLS(PROBE_ROW){NULL, NULL, NULL}};
