// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The two ECDSA calls with their arguments, and their results on the small curve in plain
// integers.
#ifndef ZOKECC_TESTS_SCHEMES_ECDSA_CALLS_H
#define ZOKECC_TESTS_SCHEMES_ECDSA_CALLS_H

#include "tests/support/kdf_model.h"
#include "tests/support/legacy_records.h"
#include "tests/support/small_group.h"

namespace zokecc_test {

// The whole digest modulo the small order.
inline uint32_t small_e(const ByteString &text, uint32_t hash) {
    return residue(selected_digest(hash, text), kSmallN);
}

inline SmallSignature small_ecdsa(uint32_t e, uint32_t d, uint32_t k) {
    uint32_t r = small_multiple(k).x % kSmallN;
    return {r, product_modulo(inverse_modulo(k, kSmallN), e + d * r, kSmallN)};
}

// One call of Ecdsa_DigitalSign, which must leave its inputs alone.
struct EcdsaSigning {
    EcdsaSigning(const ByteString &key, const ByteString &text) : d(key), msg(text) {}

    int32_t run(uint32_t hash) {
        int32_t status = Ecdsa_DigitalSign(d.get(), msg.get(), sig.get(), hash);
        EXPECT_TRUE(d.intact() && msg.intact());
        return status;
    }

    Scalar d;
    Message msg;
    GuardedRecord<ecc_point_bytes> sig;
};

// One call of Ecdsa_DigitalVeriy, which writes nothing at all.
struct EcdsaVerification {
    EcdsaVerification(const PointBytes &key, const PointBytes &signature, const ByteString &text)
        : Q(key), sig(signature), msg(text) {}
    EcdsaVerification(const TinyPoint &key, const SmallSignature &signature, const ByteString &text)
        : EcdsaVerification(PointBytes(key.x, key.y, 32), PointBytes(signature.r, signature.s, 32), text) {}

    int32_t run(uint32_t hash) {
        int32_t valid = Ecdsa_DigitalVeriy(Q.get(), msg.get(), sig.get(), hash);
        EXPECT_TRUE(Q.intact() && msg.intact() && sig.intact());
        return valid;
    }

    PointBytes Q, sig;
    Message msg;
};

}  // namespace zokecc_test

#endif
