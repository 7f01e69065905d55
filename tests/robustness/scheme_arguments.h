// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Arguments with which every scheme call succeeds, to be broken one at a time, and what
// must not have changed when a call has refused them.
#ifndef ZOKECC_TESTS_ROBUSTNESS_SCHEME_ARGUMENTS_H
#define ZOKECC_TESTS_ROBUSTNESS_SCHEME_ARGUMENTS_H

#include "tests/schemes/ecdsa_calls.h"
#include "tests/schemes/sm2_encrypt_calls.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test {

struct SchemeArguments {
    SchemeArguments() {
        scalar = {scalar_bytes.data(), 32};
        msg = {text.data(), 0, static_cast<uint32_t>(text.size())};
        cipher = {cipher_bytes.data(), 0, static_cast<uint32_t>(cipher_bytes.size())};
        out_msg = {out.data(), kDescriptorFill, kDescriptorFill};
    }
    SchemeArguments(const SchemeArguments &) = delete;
    SchemeArguments &operator=(const SchemeArguments &) = delete;

    ByteString scalar_bytes = number_bytes(123, 32);
    ByteString text = text_bytes("some text");
    ByteString z = test_bytes(32);
    ByteString cipher_bytes = small_sm2_cipher(123, 77, 32, text_bytes("text"), HASH_ALG_SM3);
    ByteString eces_bytes =
        joined({ByteString(1, 4), number_bytes(2, 4), number_bytes(365, 4), number_bytes(9, 4)});
    PointBytes key = PointBytes(small_multiple(123).x, small_multiple(123).y, 32);
    PointBytes numbers = PointBytes(5, 6, 32);
    ecc_scalar scalar;
    sm3_msg msg, cipher, out_msg;
    GuardedRecord<ecc_point_bytes> written;
    GuardedBuffer out{200};
    uint32_t out_len = kDescriptorFill;

    // The inputs of the calls.
    ecc_scalar *d = &scalar;
    const ecc_point_bytes *Q = key.get();
    const ecc_point_bytes *sig = numbers.get();
    const sm3_msg *message = &msg;
    const sm3_msg *ciphertext = &cipher;
    sm3_msg *descriptor = &out_msg;
    const uint8_t *Z = z.data();
    const uint8_t *bytes = text.data();
    const uint8_t *eces = eces_bytes.data();
    uint8_t *area = out.data();
    uint32_t *length = &out_len;
    ecc_point_bytes *point = written.get();
    uint32_t hash = HASH_ALG_SM3;
    uint32_t mode = 0;

    void set_scalar(const ByteString &value) {
        scalar_bytes = value;
        scalar = {scalar_bytes.data(), static_cast<uint32_t>(value.size())};
    }

    int32_t ecdsa_sign() { return Ecdsa_DigitalSign(d, message, point, hash); }
    int32_t ecdsa_verify() { return Ecdsa_DigitalVeriy(Q, message, sig, hash); }
    int32_t exchange() { return Ecdh_KeyExChg(d, Q, area, 100); }
    int32_t eces_encry() { return Eces_Encry(Q, bytes, 9, area, 100); }
    int32_t eces_decry() { return Eces_Decry(d, eces, 12, area); }
    int32_t public_key() { return Ecc_GenPubKey(d, point); }
    int32_t key_pair() { return Ecc_KeyPair_Gen(d, point, mode); }
    int32_t format() { return eces_format(32, bytes, 9, area, length); }
    int32_t deformat() { return eces_deformat(bytes, 9, area, length); }
    int32_t sm2_sign() { return sm2_DigitalSign(d, message, Z, point, hash); }
    int32_t sm2_verify() { return sm2_DigitalVeriy(Q, message, sig, Z, hash); }
    int32_t encrypt() { return sm2_Encry(Q, message, descriptor, hash); }
    int32_t decrypt() { return sm2_Decry(d, ciphertext, descriptor, hash); }

    bool outputs_untouched() const {
        return written.unchanged() && out.untouched() && out_len == kDescriptorFill &&
               out_msg.len_high == kDescriptorFill && out_msg.len_low == kDescriptorFill;
    }
};

using SchemeCall = int32_t (SchemeArguments::*)();

}  // namespace zokecc_test

#endif
