// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// ECDSA and SM2 signatures on the process-wide curve and OpenSSL: what one side signs the
// other verifies, and neither accepts it for another message.
#include <openssl/ecdsa.h>

#include "tests/peer/scheme_peer.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::scheme_sign_test {

namespace {

constexpr int kRounds = 15;

using DerSignature = PeerOwned<ECDSA_SIG, ECDSA_SIG_free>;

struct Scheme {
    PeerCurve on;
    uint32_t hash;

    bool is_sm2() const { return on.is_sm2(); }
    const EVP_MD *digest() const { return hash == HASH_ALG_SM3 ? EVP_sm3() : EVP_sha256(); }
};

const Scheme kSchemes[] = {
    {{"secp256r1", "prime256v1", NID_X9_62_prime256v1}, HASH_ALG_SHA256},
    {{"secp256r1", "prime256v1", NID_X9_62_prime256v1}, HASH_ALG_SM3},
    {{"secp256k1", "secp256k1", NID_secp256k1}, HASH_ALG_SHA256},
    {{"brainpoolP256r1", "brainpoolP256r1", NID_brainpoolP256r1}, HASH_ALG_SHA256},
    {kPeerSm2, HASH_ALG_SM3},
};

// The value passed to the SM2 calls: H(bit length, identity, a, b, G, Q).
ByteString user_value(const ByteString &id, const PeerKeyPair &keys) {
    const Curve &on = curve(kPeerSm2.name);
    const uint32_t bits = static_cast<uint32_t>(8 * id.size());
    return model_sm3(joined({number_bytes(bits, 2), id, fixed_bytes(on.a, 32), fixed_bytes(on.b, 32),
                             fixed_bytes(on.G.x, 32), fixed_bytes(on.G.y, 32), keys.x, keys.y}));
}

// A signer and its message.
struct Case {
    Case(const Scheme &with, PeerDraws &draws)
        : scheme(with),
          keys(with.on, draws),
          id(draws.bytes(draws.number() % 65)),
          text(draws.bytes(draws.number() % 4 == 0 ? draws.number() % 33 : draws.number() % 2049)),
          Z(user_value(id, keys)) {
        install(with.on.name);
    }

    ByteString sign() {
        Scalar d(keys.d);
        Message msg(text);
        GuardedRecord<ecc_point_bytes> sig;
        int32_t status = scheme.is_sm2()
                             ? sm2_DigitalSign(d.get(), msg.get(), Z.data(), sig.get(), scheme.hash)
                             : Ecdsa_DigitalSign(d.get(), msg.get(), sig.get(), scheme.hash);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(sig->length, 32u);
        return joined({ByteString(sig->x, sig->x + 32), ByteString(sig->y, sig->y + 32)});
    }
    bool accepts(const ByteString &message, const ByteString &pair) {
        Message msg(message);
        PointBytes Q = keys.point();
        PointBytes sig(ByteString(pair.begin(), pair.begin() + 32),
                       ByteString(pair.begin() + 32, pair.end()));
        if (scheme.is_sm2())
            return sm2_DigitalVeriy(Q.get(), msg.get(), sig.get(), Z.data(), scheme.hash) == 0;
        return Ecdsa_DigitalVeriy(Q.get(), msg.get(), sig.get(), scheme.hash) == 1;
    }

    ByteString peer_sign() {
        prepare();
        EXPECT_EQ(EVP_DigestSignInit(context.get(), nullptr, scheme.digest(), nullptr, keys.peer.get()), 1);
        size_t size = 128;
        ByteString der(size);
        EXPECT_EQ(EVP_DigestSign(context.get(), der.data(), &size, text.data(), text.size()), 1);
        const uint8_t *cursor = der.data();
        DerSignature sig(d2i_ECDSA_SIG(nullptr, &cursor, static_cast<long>(size)));
        ByteString out(64);
        EXPECT_EQ(BN_bn2binpad(ECDSA_SIG_get0_r(sig.get()), out.data(), 32), 32);
        EXPECT_EQ(BN_bn2binpad(ECDSA_SIG_get0_s(sig.get()), out.data() + 32, 32), 32);
        return out;
    }
    bool peer_accepts(const ByteString &message, const ByteString &pair) {
        DerSignature sig(ECDSA_SIG_new());
        ECDSA_SIG_set0(sig.get(), BN_bin2bn(pair.data(), 32, nullptr),
                       BN_bin2bn(pair.data() + 32, 32, nullptr));
        ByteString der(static_cast<size_t>(i2d_ECDSA_SIG(sig.get(), nullptr)));
        uint8_t *cursor = der.data();
        i2d_ECDSA_SIG(sig.get(), &cursor);
        prepare();
        EXPECT_EQ(EVP_DigestVerifyInit(context.get(), nullptr, scheme.digest(), nullptr, keys.peer.get()), 1);
        return EVP_DigestVerify(context.get(), der.data(), der.size(), message.data(), message.size()) == 1;
    }

    const Scheme scheme;
    PeerKeyPair keys;
    ByteString id, text, Z;

private:
    // The peer computes the user value itself, from the identity.
    void prepare() {
        context.reset(EVP_MD_CTX_new());
        key_context.reset(EVP_PKEY_CTX_new(keys.peer.get(), nullptr));
        if (scheme.is_sm2()) {
            EXPECT_EQ(EVP_PKEY_CTX_set1_id(key_context.get(), id.data(), static_cast<int>(id.size())), 1);
        }
        EVP_MD_CTX_set_pkey_ctx(context.get(), key_context.get());
    }
    PeerKeyContext key_context;
    PeerDigestContext context;
};

std::string describe(const Case &made, const ByteString &pair) {
    return "seed " + std::to_string(kPeerSeed) + ' ' + made.scheme.on.name + " d " + to_hex(made.keys.d) +
           " identity " + to_hex(made.id) + " signature " + to_hex(pair) + " message " + to_hex(made.text);
}

ByteString changed(ByteString text) {
    text.push_back(0);
    return text;
}

}  // namespace

TEST(PeerLegacySign, ThePeerVerifiesWhatWeSign) {
    PeerDraws draws;
    FakeEntropy entropy;
    for (const Scheme &scheme : kSchemes) {
        for (int round = 0; round < kRounds; ++round) {
            Case made(scheme, draws);
            const ByteString pair = made.sign();
            SCOPED_TRACE(describe(made, pair));
            EXPECT_TRUE(made.peer_accepts(made.text, pair));
            EXPECT_FALSE(made.peer_accepts(changed(made.text), pair));
        }
    }
}

TEST(PeerLegacySign, WeVerifyWhatThePeerSigns) {
    PeerDraws draws;
    for (const Scheme &scheme : kSchemes) {
        for (int round = 0; round < kRounds; ++round) {
            Case made(scheme, draws);
            const ByteString pair = made.peer_sign();
            SCOPED_TRACE(describe(made, pair));
            EXPECT_TRUE(made.accepts(made.text, pair));
            EXPECT_FALSE(made.accepts(changed(made.text), pair));
        }
    }
}

}  // namespace zokecc_test::scheme_sign_test
