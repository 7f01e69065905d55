// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The two SM2 signature calls with their arguments, and their results on the small curve in
// plain integers.
#ifndef ZOKECC_TESTS_SCHEMES_SM2_SIGN_CALLS_H
#define ZOKECC_TESTS_SCHEMES_SM2_SIGN_CALLS_H

#include "tests/support/kdf_model.h"
#include "tests/support/legacy_records.h"
#include "tests/support/small_group.h"

namespace zokecc_test {

// The digest of Z and the message modulo the small order.
inline uint32_t small_sm2_e(const ByteString &Z, const ByteString &text, uint32_t hash) {
    return residue(selected_digest(hash, joined({Z, text})), kSmallN);
}

inline SmallSignature small_sm2(uint32_t e, uint32_t d, uint32_t k) {
    uint32_t r = (e + small_multiple(k).x) % kSmallN;
    uint32_t difference = (k + negative_modulo(r * d, kSmallN)) % kSmallN;
    return {r, product_modulo(inverse_modulo(1 + d, kSmallN), difference, kSmallN)};
}

// The smallest nonce that signs at once: r + k is not n, and s is not 0.
inline uint32_t usable_nonce(uint32_t e, uint32_t d) {
    return first_scalar([=](uint32_t k) {
        SmallSignature made = small_sm2(e, d, k);
        return made.r != 0 && made.r + k != kSmallN && made.s != 0;
    });
}

// One call of sm2_DigitalSign, which must leave its inputs alone.
struct Sm2Signing {
    Sm2Signing(const ByteString &key, const ByteString &message, const ByteString &identity)
        : d(key), msg(message), Z(identity) {}

    int32_t run(uint32_t hash) {
        const ByteString before = Z;
        int32_t status = sm2_DigitalSign(d.get(), msg.get(), Z.data(), sig.get(), hash);
        EXPECT_TRUE(d.intact() && msg.intact() && Z == before);
        return status;
    }

    Scalar d;
    Message msg;
    ByteString Z;
    GuardedRecord<ecc_point_bytes> sig;
};

// One call of sm2_DigitalVeriy, which writes nothing at all.
struct Sm2Verification {
    Sm2Verification(const PointBytes &key, const ByteString &message, const PointBytes &signature,
                    const ByteString &identity)
        : Q(key), msg(message), sig(signature), Z(identity) {}

    int32_t run(uint32_t hash) {
        const ByteString before = Z;
        int32_t status = sm2_DigitalVeriy(Q.get(), msg.get(), sig.get(), Z.data(), hash);
        EXPECT_TRUE(Q.intact() && msg.intact() && sig.intact() && Z == before);
        return status;
    }

    PointBytes Q;
    Message msg;
    PointBytes sig;
    ByteString Z;
};

}  // namespace zokecc_test

#endif
