// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Glitches: one product after the other of the arithmetic for secrets gets a flipped bit, and the call must
// return the right result or a failure. The program is linked with --wrap for that product.
#include <gtest/gtest.h>

#include "tests/sdf/fixtures.h"

#ifdef ZOKECC_REAL_PRODUCT

namespace zokecc_test::ct_fault_test {

namespace {

// The product that is spoilt, counted from 1, or none; and how many there were.
unsigned spoilt = 0, products = 0;

struct Glitch {
    explicit Glitch(unsigned which) {
        spoilt = which;
        products = 0;
    }
    ~Glitch() { spoilt = 0; }
    Glitch(const Glitch &) = delete;
    Glitch &operator=(const Glitch &) = delete;
    bool happened() const { return products >= spoilt; }
};

ECCrefPublicKey public_key_of(const ByteString &d) {
    const Curve &c = curve("sm2p256v1");
    const mint scalar = mint_from_hex(to_hex(d));
    const SessionContext *const context = static_cast<SessionContext *>(sm2_session());
    ecc_point Q{};
    ecc_fix_point_mul_1(&scalar, &c.G, &c.a, &c.b, &c.p, &Q, context->table.entry);
    return public_key(fixed_bytes(Q.x, 32), fixed_bytes(Q.y, 32));
}

ByteString own_key() { return ByteString(32, 0x5D); }
ByteString peer_key() { return ByteString(32, 0x3A); }

}  // namespace

TEST(Glitches, NoSignatureThatDoesNotVerifyLeaves) {
    const ECCrefPrivateKey priv = private_key(own_key());
    const ECCrefPublicKey pub = public_key_of(own_key());
    const ByteString e(32, 0xE1);
    for (const uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN}) {
        unsigned redrawn = 0, which = 1;
        for (;; ++which) {
            FakeEntropy entropy(0x65432100u, which);
            entropy.draws_secrets = true;
            ECCSignature sig{};
            const Glitch glitch(which);
            ASSERT_EQ(SDF_ExternalSign_ECC(sm2_session(), algorithm, &priv, e.data(), 32, &sig), ZOK_OK);
            if (!glitch.happened()) break;
            // The draw and two blindings of a round.
            redrawn += entropy.kernel.getrandom_calls > 2 ? 1 : 0;
            EXPECT_EQ(SDF_ExternalVerify_ECC(sm2_session(), algorithm, &pub, e.data(), 32, &sig), ZOK_OK)
                << "product " << which;
        }
        EXPECT_GT(which, 500u);
        EXPECT_GT(redrawn, which * 9 / 10);
    }
}

TEST(Glitches, NoWrongPublicKeyLeaves) {
    unsigned which = 1, refused = 0;
    for (;; ++which) {
        FakeEntropy entropy(0x65432100u, which);
        entropy.draws_secrets = true;
        ECCrefPublicKey pub{};
        ECCrefPrivateKey priv{};
        const Glitch glitch(which);
        const uint32_t status = SDF_GenerateKeyPair_ECC(sm2_session(), ZOK_ALG_SM2_KEY, 256, &pub, &priv);
        if (!glitch.happened()) break;
        if (status == ZOK_OK) {
            const ECCrefPublicKey right = public_key_of(ByteString(priv.K, priv.K + 32));
            EXPECT_EQ(to_hex(pub.x, 32) + to_hex(pub.y, 32), to_hex(right.x, 32) + to_hex(right.y, 32))
                << "product " << which;
        } else {
            EXPECT_EQ(status, ZOK_ERR_INTERNAL);
            ++refused;
        }
    }
    EXPECT_GT(which, 500u);
    EXPECT_GT(refused, which * 9 / 10);
}

TEST(Glitches, NoWrongSecretLeaves) {
    const ECCrefPrivateKey priv = private_key(own_key());
    const ECCrefPublicKey peer = public_key_of(peer_key());
    ByteString right(32);
    ASSERT_EQ(ZOK_ExternalEcdhKeyAgreement(sm2_session(), &priv, &peer, right.data()), ZOK_OK);
    unsigned which = 1, refused = 0;
    for (;; which += 3) {
        FakeEntropy entropy;
        GuardedBuffer out(32);
        const Glitch glitch(which);
        const uint32_t status = ZOK_ExternalEcdhKeyAgreement(sm2_session(), &priv, &peer, out.data());
        if (!glitch.happened()) break;
        if (status == ZOK_OK) {
            EXPECT_EQ(to_hex(out.all()), to_hex(right)) << "product " << which;
        } else {
            EXPECT_TRUE(out.untouched());
            ++refused;
        }
    }
    EXPECT_GT(which, 1000u);
    EXPECT_GT(refused, which / 3 * 9 / 10);
}

// A session whose table was written over gives no signature at all.
TEST(Glitches, SpoiltTableGivesNoSignature) {
    const Session session(curve("sm2p256v1"));
    for (ecc_point &entry : session.context()->table.entry) entry.x.words[3] ^= 0x100;
    const ECCrefPrivateKey priv = private_key(own_key());
    const ByteString e(32, 0xE1);
    for (const uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN}) {
        FakeEntropy entropy;
        GuardedRecord<ECCSignature> sig;
        EXPECT_EQ(SDF_ExternalSign_ECC(session.handle(), algorithm, &priv, e.data(), 32, sig.get()),
                  ZOK_ERR_SIGN);
        EXPECT_TRUE(sig.unchanged());
    }
}

}  // namespace zokecc_test::ct_fault_test

extern "C" {

// Of four limbs, by the name that the compiler gives it: tests/CMakeLists.txt.
void ZOKECC_REAL_PRODUCT(const void *field, const uint64_t *a, const uint64_t *b, uint64_t *out);
void ZOKECC_SPOILT_PRODUCT(const void *field, const uint64_t *a, const uint64_t *b, uint64_t *out);

void ZOKECC_SPOILT_PRODUCT(const void *field, const uint64_t *a, const uint64_t *b, uint64_t *out) {
    using zokecc_test::ct_fault_test::products;
    using zokecc_test::ct_fault_test::spoilt;
    ZOKECC_REAL_PRODUCT(field, a, b, out);
    if (++products == spoilt) out[products % 4] ^= uint64_t{1} << (products % 59);
}

}  // extern "C"

#endif
