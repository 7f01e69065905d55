// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// One interface to ECDSA and SM2 signatures on the small curve: process-wide, in a session, and there for a
// digest, too; for tests of their common behaviour.
#ifndef ZOKECC_TESTS_SUPPORT_SIGNING_GENERATIONS_H
#define ZOKECC_TESTS_SUPPORT_SIGNING_GENERATIONS_H

#include <string>

#include "tests/schemes/ecdsa_calls.h"
#include "tests/schemes/sm2_sign_calls.h"
#include "tests/sdf/fixtures.h"
#include "tests/support/model_exchange.h"

namespace zokecc_test::signing {

// What one call wrote, if anything; already checked to have written nothing else.
struct Made {
    uint32_t status;
    ByteString r, s;
};

template <bool IsSm2>
struct Scheme {
    static constexpr bool kIsSm2 = IsSm2;
    static constexpr uint32_t kLargestKey = kSmallN - (IsSm2 ? 2 : 1);

    static SmallSignature pair(uint32_t e, uint32_t d, uint32_t k) {
        return IsSm2 ? small_sm2(e, d, k) : small_ecdsa(e, d, k);
    }
    // Whether the call draws another nonce.
    static bool is_fruitless(uint32_t e, uint32_t d, uint32_t k) {
        if (!IsSm2 && small_multiple(k).x % kSmallN == 0) return true;
        const auto [r, s] = pair(e, d, k);
        return s == 0 || (IsSm2 ? r + k == kSmallN : k == 0);
    }
    static uint32_t good_nonce(uint32_t e, uint32_t d) {
        return first_scalar([=](uint32_t k) { return !is_fruitless(e, d, k) && pair(e, d, k).r != 0; });
    }
};

// On the process-wide curve. Z is 32 bytes from the caller.
template <bool IsSm2>
struct Legacy : Scheme<IsSm2> {
    static constexpr unsigned kLengths[] = {24, 28, 32};
    static constexpr size_t kMostKeyBytes = 76, kMostCoordinateBytes = 65, kMostText = 65536;
    static constexpr uint32_t kFailed = 0xFFFFFFFFu;
    static constexpr bool kHashesKeyFields = false;
    static inline const ByteString kZ = test_bytes(32, 7);

    static uint32_t e(const ByteString &text, uint32_t hash, uint32_t) {
        return IsSm2 ? small_sm2_e(kZ, text, hash) : small_e(text, hash);
    }
    static Made sign(const ByteString &d, const ByteString &text, uint32_t hash, unsigned L) {
        install_small(L);
        Scalar key(d);
        Message msg(text);
        if (text.empty()) msg.get()->data = nullptr;
        GuardedRecord<ecc_point_bytes> sig;
        const int32_t status = IsSm2 ? sm2_DigitalSign(key.get(), msg.get(), kZ.data(), sig.get(), hash)
                                     : Ecdsa_DigitalSign(key.get(), msg.get(), sig.get(), hash);
        EXPECT_TRUE(key.intact() && (text.empty() || msg.intact()));
        if (sig.unchanged()) return {static_cast<uint32_t>(status), {}, {}};
        const ByteString r(sig->x, sig->x + L), s(sig->y, sig->y + L);
        expect_record(sig, r, s);
        return {static_cast<uint32_t>(status), r, s};
    }
    // Writes nothing. True for a valid signature.
    static bool verify(const ByteString &x, const ByteString &y, const ByteString &text, uint32_t hash,
                       const ByteString &r, const ByteString &s) {
        install_small(static_cast<unsigned>(r.size()));
        PointBytes key(x, y), sig(r, s);
        Message msg(text);
        if (text.empty()) msg.get()->data = nullptr;
        const int32_t status = IsSm2 ? sm2_DigitalVeriy(key.get(), msg.get(), sig.get(), kZ.data(), hash)
                                     : Ecdsa_DigitalVeriy(key.get(), msg.get(), sig.get(), hash);
        EXPECT_TRUE(key.intact() && sig.intact() && (text.empty() || msg.intact()));
        EXPECT_TRUE(status == 0 || status == 1);
        return status == (IsSm2 ? 0 : 1);
    }
};

// In a session. Z is computed from the identity.
template <bool IsSm2>
struct OfMessage : Scheme<IsSm2> {
    static constexpr unsigned kLengths[] = {20};
    static constexpr size_t kMostKeyBytes = 64, kMostCoordinateBytes = 64, kMostText = 65536;
    static constexpr uint32_t kFailed = ZOK_ERR_SIGN;
    static constexpr bool kHashesKeyFields = IsSm2;  // independent of bits
    static constexpr uint32_t kAlgorithm = IsSm2 ? ZOK_ALG_SM2_SIGN : ZOK_ALG_ECDSA_SIGN;
    static inline const ByteString kId = text_bytes("ALICE");

    static uint32_t e(const ByteString &text, uint32_t hash, uint32_t d) {
        if (!IsSm2) return small_e(text, hash);
        const TinyPoint Q = small_multiple(d);
        return small_sm2_e(
            exchange::model_user_z(small_curve(), hash, kId, small_bytes(Q.x), small_bytes(Q.y)), text, hash);
    }
    static uint32_t call(uint32_t hash, const ECCrefPrivateKey &key, const ByteString &text,
                         ECCSignature *sig) {
        return sign_message(small_session(hash), kAlgorithm, key, text, kId, sig);
    }
    static uint32_t call(uint32_t hash, const ECCrefPublicKey &key, const ByteString &text,
                         const ECCSignature &sig) {
        return verify_message(small_session(hash), kAlgorithm, key, text, kId, sig);
    }
    static Made sign(const ByteString &d, const ByteString &text, uint32_t hash, unsigned) {
        return sign_by<OfMessage>(d, text, hash);
    }
    static bool verify(const ByteString &x, const ByteString &y, const ByteString &text, uint32_t hash,
                       const ByteString &r, const ByteString &s) {
        return verify_by<OfMessage>(x, y, text, hash, r, s);
    }

    template <class Self>
    static Made sign_by(const ByteString &d, const ByteString &text, uint32_t hash) {
        const ECCrefPrivateKey key = private_key(d);
        const ByteString before = image(key),
                         session = image(*static_cast<SessionContext *>(small_session(hash)));
        GuardedRecord<ECCSignature> sig;
        const uint32_t status = Self::call(hash, key, text, sig.get());
        EXPECT_EQ(image(key), before);
        EXPECT_EQ(image(*static_cast<SessionContext *>(small_session(hash))), session);
        if (sig.unchanged()) return {status, {}, {}};
        const ByteString r(sig->r, sig->r + 20), s(sig->s, sig->s + 20);
        expect_signature(sig, r, s);
        return {status, r, s};
    }
    template <class Self>
    static bool verify_by(const ByteString &x, const ByteString &y, const ByteString &text, uint32_t hash,
                          const ByteString &r, const ByteString &s) {
        const ECCrefPublicKey key = public_key(x, y);
        const ECCSignature sig = signature(r, s);
        const ByteString key_before = image(key), sig_before = image(sig);
        const uint32_t status = Self::call(hash, key, text, sig);
        EXPECT_EQ(image(key), key_before);
        EXPECT_EQ(image(sig), sig_before);
        EXPECT_TRUE(status == ZOK_OK || status == ZOK_ERR_VERIFY);
        return status == ZOK_OK;
    }
};

// In a session, with e instead of the message.
template <bool IsSm2>
struct OfValue : OfMessage<IsSm2> {
    static constexpr size_t kMostText = 76;
    static constexpr bool kHashesKeyFields = false;

    static uint32_t e(const ByteString &text, uint32_t, uint32_t) { return residue(text, kSmallN); }
    static uint32_t call(uint32_t hash, const ECCrefPrivateKey &key, const ByteString &text,
                         ECCSignature *sig) {
        return sign_e(small_session(hash), OfValue::kAlgorithm, key, text, sig);
    }
    static uint32_t call(uint32_t hash, const ECCrefPublicKey &key, const ByteString &text,
                         const ECCSignature &sig) {
        return verify_e(small_session(hash), OfValue::kAlgorithm, key, text, sig);
    }
    static Made sign(const ByteString &d, const ByteString &text, uint32_t hash, unsigned) {
        return OfMessage<IsSm2>::template sign_by<OfValue>(d, text, hash);
    }
    static bool verify(const ByteString &x, const ByteString &y, const ByteString &text, uint32_t hash,
                       const ByteString &r, const ByteString &s) {
        return OfMessage<IsSm2>::template verify_by<OfValue>(x, y, text, hash, r, s);
    }
};

using Calls = testing::Types<Legacy<false>, Legacy<true>, OfMessage<false>, OfMessage<true>, OfValue<false>,
                             OfValue<true>>;
struct CallName {
    template <class S>
    static std::string GetName(int index) {
        static const char *const kGenerations[] = {"Legacy", "OfMessage", "OfValue"};
        return kGenerations[index / 2] + std::string(S::kIsSm2 ? "Sm2" : "Ecdsa");
    }
};

}  // namespace zokecc_test::signing

#endif
