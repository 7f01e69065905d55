/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Devices and sessions. */
#include "probe.h"

#define IDENTITIES in.identity, IDENTITY_BYTES, in.identity, IDENTITY_BYTES
#define VALUES_Z in.A.Z, BYTES, in.B.Z, BYTES

#define SESSION_CALLS(CALL) \
    CALL("session: open, close", SDF_OpenDevice, (&in.out_device)) \
    CALL("session: open, close", SDF_OpenSession, (in.out_device, &in.out_session)) \
    CALL("session: open, close", SDF_GetDeviceInfo, (in.out_session, &in.out_info)) \
    CALL("session: open, close", SDF_CloseSession, (in.out_session)) \
    CALL("session: open, close", SDF_CloseDevice, (in.out_device)) \
    CALL("session: open, close", ZOK_OpenSession, (&in.out_session, &in.session_curve)) \
    CALL("installing a curve", ZOK_CurveParaCfg, (in.out_session, in.session_curve.type, &in.session_curve)) \
    CALL("session: open, close", ZOK_CloseSession, (in.out_session)) \
    CALL("checking a curve", ZOK_CurveVerify, (in.session_curve.type, &in.session_curve)) \
    CALL("session: key pair", SDF_GenerateKeyPair_ECC, \
         (in.session, ZOK_ALG_SM2_KEY, 8 * in.bytes, &in.out_pub, &in.out_priv)) \
    CALL("session: sign", SDF_ExternalSign_ECC, \
         (in.session, ZOK_ALG_SM2_SIGN, &in.A.d_record, in.message, in.bytes, &in.out_signature)) \
    CALL("session: verify", SDF_ExternalVerify_ECC, \
         (in.session, ZOK_ALG_SM2_SIGN, &in.A.P_record, in.message, in.bytes, &in.signature)) \
    CALL("session: hash and sign", ZOK_GenerateUserInfo, \
         (in.session, &in.A.P_record, in.identity, IDENTITY_BYTES, in.out_bytes, &in.out_len)) \
    CALL("session: hash and sign", ZOK_ExternalSignHash_ECC, \
         (in.session, ZOK_ALG_SM2_SIGN, &in.A.d_record, in.message, MESSAGE_BYTES, in.identity, \
          IDENTITY_BYTES, &in.out_signature)) \
    CALL("session: hash and verify", ZOK_ExternalVerifyHash_ECC, \
         (in.session, ZOK_ALG_SM2_SIGN, &in.A.P_record, in.message, MESSAGE_BYTES, in.identity, \
          IDENTITY_BYTES, &in.message_signature)) \
    CALL("session: record, encrypt", SDF_ExternalEncrytp_ECC, \
         (in.session, ZOK_ALG_SM2_ENCRYPT, &in.A.P_record, in.message, in.bytes, &in.out_record)) \
    CALL("session: record, decrypt", SDF_ExternalDecrypt_ECC, \
         (in.session, ZOK_ALG_SM2_ENCRYPT, &in.A.d_record, &in.record, in.out_bytes, &in.out_len)) \
    CALL("session: byte string, encrypt", ZOK_ExternalEncrytp_ECC, \
         (in.session, &in.A.P_record, in.message, MESSAGE_BYTES, in.out_bytes, &in.out_len)) \
    CALL("session: byte string, decrypt", ZOK_ExternalDecrypt_ECC, \
         (in.session, &in.A.d_record, in.flat_cipher, in.flat_cipher_len, in.out_bytes, &in.out_len)) \
    CALL("session: Diffie-Hellman", ZOK_ExternalEcdhKeyAgreement, \
         (in.session, &in.A.d_record, &in.B.P_record, in.out_bytes)) \
    CALL("session: temporary key", ZOK_SM2_GenerateResponseTmpKeyWithECC, \
         (in.session, &in.out_priv, &in.out_pub)) \
    CALL("session: temporary key", ZOK_SM2_GenerateAgreementDataWithECC, \
         (in.session, &in.out_priv, &in.out_pub)) \
    CALL("session: temporary key", ZOK_GenerateResponseTmpKeyWithECC, \
         (in.session, &in.out_priv, &in.out_pub)) \
    CALL("session: temporary key", ZOK_GenerateAgreementDataWithECC, \
         (in.session, &in.out_priv, &in.out_pub)) \
    CALL("session: agreement", ZOK_SM2_GenerateKeyWithECC, \
         (in.session, KEY_BITS, IDENTITIES, &in.A.d_record, &in.A.r_record, &in.A.R_record, &in.B.P_record, \
          &in.B.R_record, &in.out_agreement)) \
    CALL("session: agreement", ZOK_SM2_GenerateResponseWithECC, \
         (in.session, KEY_BITS, IDENTITIES, &in.B.d_record, &in.A.P_record, &in.A.R_record, &in.B.r_record, \
          &in.B.R_record, &in.out_agreement)) \
    CALL("session: agreement", ZOK_SM2_GenerateAgreementDataAndKeyWithECC, \
         (in.session, KEY_BITS, IDENTITIES, &in.B.d_record, &in.A.P_record, &in.A.R_record, &in.out_pub, \
          &in.out_agreement)) \
    CALL("session: agreement", ZOK_GenerateKeyWithECC, \
         (in.session, KEY_BITS, VALUES_Z, &in.A.d_record, &in.A.r_record, &in.B.P_record, &in.B.R_record, \
          &in.out_agreement)) \
    CALL("session: agreement", ZOK_GenerateResponseWithECC, \
         (in.session, KEY_BITS, VALUES_Z, &in.B.d_record, &in.A.P_record, &in.A.R_record, &in.B.r_record, \
          &in.B.R_record, &in.out_agreement)) \
    CALL("session: agreement", ZOK_GenerateAgreementDataAndKeyWithECC, \
         (in.session, KEY_BITS, VALUES_Z, &in.B.d_record, &in.A.P_record, &in.A.R_record, &in.out_pub, \
          &in.out_agreement))

SESSION_CALLS(PROBE_FUNCTION)

const probe session_probes[] = {SESSION_CALLS(PROBE_ROW){NULL, NULL, NULL}};
