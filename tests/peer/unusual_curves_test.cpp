// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The hardened build's calls with secrets on curves whose p and n do not fill their words, or have different
// numbers of words, for example secp160r1: keys, signatures and secrets, compared with OpenSSL's points,
// encryption and agreement from one side to the other.
#ifdef ZOKECC_HARDENED

#include <openssl/ec.h>

#include "tests/peer/bignum.h"
#include "tests/sdf/fixtures.h"
#include "tests/support/legacy_curve.h"
#include "tests/support/legacy_records.h"
#include "tests/support/model_hash.h"
#include "tests/support/unusual_curves.h"

namespace zokecc_test::unusual_curves_test {

namespace {

struct Free {
    void operator()(EC_GROUP *group) const { EC_GROUP_free(group); }
    void operator()(EC_POINT *point) const { EC_POINT_free(point); }
};
using Point = std::unique_ptr<EC_POINT, Free>;

struct KeyPair {
    ByteString d, x, y;
    ECCrefPrivateKey priv() const { return private_key(d); }
    ECCrefPublicKey pub() const { return public_key(x, y); }
};

const ByteString kText = text_bytes("a message of no importance");
const ByteString kZ(32, 0x5A);
constexpr uint32_t kKeyBits = 256;

class UnusualCurve : public testing::TestWithParam<Curve> {
protected:
    UnusualCurve()
        : group_(EC_GROUP_new_curve_GFp(bn(c.p).get(), bn(c.a).get(), bn(c.b).get(), scratch())),
          G_(EC_POINT_new(group_.get())) {
        EXPECT_EQ(1, EC_POINT_set_affine_coordinates(group_.get(), G_.get(), bn(c.G.x).get(), bn(c.G.y).get(),
                                                     nullptr));
        EXPECT_EQ(1, EC_GROUP_set_generator(group_.get(), G_.get(), bn(c.n).get(), BN_value_one()));
        install(c);
    }

    ByteString bytes(const Natural &number) const { return fixed_bytes(number.to_mint(), L); }
    Natural number(const uint8_t *field) const { return Natural::from_hex(to_hex(field, L)); }

    // Scalars at both ends of the range, with the order's highest bit and without, and others.
    std::vector<Natural> scalars() {
        const unsigned top = n.bit_length() - 1;
        const Natural half = Natural::power_of_two(top);
        std::vector<Natural> out = {Natural(1), Natural(2),        n - Natural(2),
                                    half,       half - Natural(1), half + Natural(1)};
        for (int i = 0; i < 3; ++i) out.push_back(Natural::from_hex(to_hex(test_bytes(40, ++seed_))) % n);
        return out;
    }

    // u P + v G
    Point sum(const Natural &u, const EC_POINT *P, const Natural &v) const {
        Point out(EC_POINT_new(group_.get()));
        EXPECT_EQ(1, EC_POINT_mul(group_.get(), out.get(), bn(v).get(), P, bn(u).get(), scratch()));
        return out;
    }
    Natural x_of(const Point &P, Natural *y_out = nullptr) const {
        Bignum x = bn(), y = bn();
        EXPECT_EQ(1, EC_POINT_get_affine_coordinates(group_.get(), P.get(), x.get(), y.get(), nullptr));
        if (y_out != nullptr) *y_out = Natural::from_hex(hex_of(y));
        return Natural::from_hex(hex_of(x));
    }
    Point peer_point(const ByteString &x, const ByteString &y) const {
        Point out(EC_POINT_new(group_.get()));
        EXPECT_EQ(1, EC_POINT_set_affine_coordinates(group_.get(), out.get(), bn_of(x).get(), bn_of(y).get(),
                                                     nullptr));
        return out;
    }
    static Bignum bn_of(const ByteString &value) {
        return Bignum(BN_bin2bn(value.data(), static_cast<int>(value.size()), nullptr));
    }
    KeyPair key_pair(const Natural &d) const {
        Natural y;
        const Natural x = x_of(sum(Natural(), G_.get(), d), &y);
        return {bytes(d), bytes(x), bytes(y)};
    }
    KeyPair random_pair() { return key_pair(Natural::from_hex(to_hex(test_bytes(40, ++seed_))) % n); }

    // By the equations of both schemes, with the peer's points.
    void expect_valid(bool is_sm2, const KeyPair &key, const Natural &e, const Natural &r, const Natural &s) {
        EXPECT_TRUE(!r.is_zero() && r < n && !s.is_zero() && s < n);
        const Point Q = peer_point(key.x, key.y);
        if (is_sm2) {
            EXPECT_EQ(r, (e + x_of(sum((r + s) % n, Q.get(), s))) % n);
            return;
        }
        Bignum inverse = bn();
        ASSERT_NE(nullptr, BN_mod_inverse(inverse.get(), bn(s).get(), bn(n).get(), scratch()));
        const Natural w = Natural::from_hex(hex_of(inverse));
        EXPECT_EQ(r, x_of(sum(mod_mul(r, w, n), Q.get(), mod_mul(e, w, n))) % n);
    }

    const Curve &c = GetParam();
    const size_t L = c.byte_len;
    const Natural n{c.n};
    const bool has_h = !(Natural(c.p) < n);  // h is p div n, so 0 for others
    Session session{c, HASH_ALG_SM3};
    uint32_t seed_ = 0;

private:
    std::unique_ptr<EC_GROUP, Free> group_;
    Point G_;
};

TEST_P(UnusualCurve, PublicKeys) {
    for (const Natural &d : scalars()) {
        const KeyPair key = key_pair(d);
        Scalar scalar(key.d), given(key.d);
        GuardedRecord<ecc_point_bytes> made, derived;
        EXPECT_EQ(0, Ecc_GenPubKey(scalar.get(), made.get()));
        expect_record(made, key.x, key.y);
        EXPECT_EQ(0, Ecc_KeyPair_Gen(given.get(), derived.get(), 1));
        expect_record(derived, key.x, key.y);

        FakeEntropy entropy;
        queue_number(entropy, d.to_mint());
        ECCrefPublicKey pub{};
        ECCrefPrivateKey priv{};
        EXPECT_EQ(ZOK_OK, SDF_GenerateKeyPair_ECC(session.handle(), ZOK_ALG_SM2_KEY,
                                                  static_cast<uint32_t>(8 * L), &pub, &priv));
        EXPECT_EQ(to_hex(key.d), to_hex(priv.K, L));
        EXPECT_EQ(to_hex(key.x) + to_hex(key.y), to_hex(pub.x, L) + to_hex(pub.y, L));
    }
    for (const Natural &d : {Natural(), n, n + Natural(1)}) {
        Scalar scalar(bytes(d));
        GuardedRecord<ecc_point_bytes> made;
        EXPECT_EQ(-1, Ecc_GenPubKey(scalar.get(), made.get()));
        EXPECT_TRUE(made.unchanged());
    }
}

TEST_P(UnusualCurve, DrawnKeys) {
    ECCrefPublicKey pub{};
    ECCrefPrivateKey priv{};
    ASSERT_EQ(ZOK_OK, SDF_GenerateKeyPair_ECC(session.handle(), ZOK_ALG_ECDSA_KEY,
                                              static_cast<uint32_t>(8 * L), &pub, &priv));
    EXPECT_EQ(to_hex(key_pair(number(priv.K)).x), to_hex(pub.x, L));
    Scalar drawn(ByteString(L, 0));
    GuardedRecord<ecc_point_bytes> Q;
    ASSERT_EQ(0, Ecc_KeyPair_Gen(drawn.get(), Q.get(), 0));
    EXPECT_EQ(to_hex(key_pair(number(drawn.get()->bytes)).y), to_hex(Q->y, L));
}

// Every key with a nonce of either kind.
TEST_P(UnusualCurve, Signatures) {
    const std::vector<Natural> nonces = scalars();
    size_t used = 0;
    for (const Natural &d : scalars())
        for (const bool is_sm2 : {false, true}) {
            const KeyPair key = key_pair(d);
            SCOPED_TRACE(d.to_hex() + (is_sm2 ? " SM2" : " ECDSA"));
            FakeEntropy entropy;
            for (int i = 0; i < 2; ++i) queue_number(entropy, nonces[used++ % nonces.size()].to_mint());

            const ByteString digest = model_sha256(kText);
            const ECCrefPrivateKey priv = key.priv();
            const ECCrefPublicKey pub = key.pub();
            const uint32_t algorithm = is_sm2 ? ZOK_ALG_SM2_SIGN : ZOK_ALG_ECDSA_SIGN;
            ECCSignature pair{};
            ASSERT_EQ(ZOK_OK,
                      SDF_ExternalSign_ECC(session.handle(), algorithm, &priv, digest.data(), 32, &pair));
            expect_valid(is_sm2, key, Natural::from_hex(to_hex(digest)), number(pair.r), number(pair.s));
            EXPECT_EQ(ZOK_OK,
                      SDF_ExternalVerify_ECC(session.handle(), algorithm, &pub, digest.data(), 32, &pair));

            Scalar scalar(key.d);
            Message message(kText);
            GuardedRecord<ecc_point_bytes> made;
            ASSERT_EQ(
                0, is_sm2 ? sm2_DigitalSign(scalar.get(), message.get(), kZ.data(), made.get(), HASH_ALG_SM3)
                          : Ecdsa_DigitalSign(scalar.get(), message.get(), made.get(), HASH_ALG_SM3));
            const ByteString e = model_sm3(is_sm2 ? joined({kZ, kText}) : kText);
            expect_valid(is_sm2, key, Natural::from_hex(to_hex(e)), number(made->x), number(made->y));
        }
}

TEST_P(UnusualCurve, DiffieHellman) {
    for (const Natural &d : scalars()) {
        const KeyPair key = key_pair(d), peer = random_pair();
        const ByteString secret = bytes(x_of(sum(d, peer_point(peer.x, peer.y).get(), Natural())));
        const ECCrefPrivateKey priv = key.priv();
        const ECCrefPublicKey pub = peer.pub();
        GuardedBuffer out(L);
        EXPECT_EQ(ZOK_OK, ZOK_ExternalEcdhKeyAgreement(session.handle(), &priv, &pub, out.data()));
        EXPECT_EQ(to_hex(secret), to_hex(out.data(), L));
        Scalar scalar(key.d);
        PointBytes point(peer.x, peer.y);
        GuardedBuffer legacy(L);
        EXPECT_EQ(static_cast<int32_t>(L),
                  Ecdh_KeyExChg(scalar.get(), point.get(), legacy.data(), static_cast<uint32_t>(L)));
        EXPECT_EQ(to_hex(secret), to_hex(legacy.data(), L));
    }
}

TEST_P(UnusualCurve, MultiplicativeEncryption) {
    for (const Natural &d : scalars()) {
        const KeyPair key = key_pair(d);
        const ECCrefPrivateKey priv = key.priv();
        const ECCrefPublicKey pub = key.pub();
        ByteString message(L, 0);
        std::copy_n(test_bytes(12, ++seed_).begin(), 12, message.end() - 12);
        message[L - 12] = 1;
        ECCCipher cipher{};
        ASSERT_EQ(ZOK_OK, SDF_ExternalEncrytp_ECC(session.handle(), ZOK_ALG_MULTIPLICATIVE, &pub,
                                                  message.data(), static_cast<uint32_t>(L), &cipher));
        const Point C1 = peer_point(ByteString(cipher.x, cipher.x + L), ByteString(cipher.y, cipher.y + L));
        EXPECT_EQ(number(cipher.C),
                  mod_mul(number(message.data()), x_of(sum(d, C1.get(), Natural())), Natural(c.p)));
        ByteString plain(L, 0);
        uint32_t length = 0;
        ASSERT_EQ(ZOK_OK, SDF_ExternalDecrypt_ECC(session.handle(), ZOK_ALG_MULTIPLICATIVE, &priv, &cipher,
                                                  plain.data(), &length));
        EXPECT_EQ(to_hex(&message[L - 12], 12), to_hex(plain.data(), length));

        Scalar scalar(key.d);
        PointBytes Q(key.x, key.y);
        ByteString flat(200, 0), text(200, 0);
        const int32_t written = Eces_Encry(Q.get(), kText.data(), 9, flat.data(), 200);
        ASSERT_GT(written, 0);
        EXPECT_EQ(9, Eces_Decry(scalar.get(), flat.data(), static_cast<uint32_t>(written), text.data()));
        EXPECT_EQ(to_hex(kText.data(), 9), to_hex(text.data(), 9));
    }
}

// SM2 encryption needs an h other than 0.
TEST_P(UnusualCurve, Encryption) {
    const KeyPair key = random_pair();
    const ECCrefPrivateKey priv = key.priv();
    const ECCrefPublicKey pub = key.pub();
    ByteString cipher(kText.size() + 2 * L + 33), plain(kText.size());
    uint32_t length = 0;
    EXPECT_EQ(has_h ? ZOK_OK : ZOK_ERR_ARGUMENT,
              ZOK_ExternalEncrytp_ECC(session.handle(), &pub, kText.data(),
                                      static_cast<int32_t>(kText.size()), cipher.data(), &length));
    cipher[0] = 4;
    if (!has_h) std::copy_n(joined({key.x, key.y}).begin(), 2 * L, cipher.begin() + 1);
    EXPECT_EQ(has_h ? ZOK_OK : ZOK_ERR_ARGUMENT,
              ZOK_ExternalDecrypt_ECC(session.handle(), &priv, cipher.data(),
                                      static_cast<uint32_t>(cipher.size()), plain.data(), &length));
    if (has_h) {
        EXPECT_EQ(kText, plain);
    }
    PointBytes Q(key.x, key.y);
    Message message(kText);
    Scalar scalar(key.d);
    ByteString area(cipher.size()), text(cipher.size());
    sm3_msg out{area.data(), 0, 0}, opened{text.data(), 0, 0};
    EXPECT_EQ(has_h ? 0 : -1, sm2_Encry(Q.get(), message.get(), &out, HASH_ALG_SM3));
    if (!has_h) return;
    sm2_Decry(scalar.get(), &out, &opened, HASH_ALG_SM3);
    EXPECT_EQ(to_hex(kText), to_hex(text.data(), opened.len_low));
}

// So does an agreement.
TEST_P(UnusualCurve, Agreement) {
    const KeyPair A = random_pair(), B = random_pair();
    const ECCrefPrivateKey dA = A.priv(), dB = B.priv();
    const ECCrefPublicKey PA = A.pub(), PB = B.pub();
    ECCrefPrivateKey rA{};
    ECCrefPublicKey RA{}, RB{};
    ByteString keyA(kKeyBits / 8), keyB(kKeyBits / 8);
    KeyAgreementResult ofA{}, ofB{};
    ofA.key = keyA.data();
    ofB.key = keyB.data();
    const uint8_t *const id = kText.data();
    const uint32_t status = has_h ? ZOK_OK : ZOK_ERR_INTERNAL;
    ASSERT_EQ(ZOK_OK, ZOK_SM2_GenerateAgreementDataWithECC(session.handle(), &rA, &RA));
    EXPECT_EQ(status, ZOK_SM2_GenerateAgreementDataAndKeyWithECC(session.handle(), kKeyBits, id, 5, id, 7,
                                                                 &dB, &PA, &RA, &RB, &ofB));
    EXPECT_EQ(status, ZOK_SM2_GenerateKeyWithECC(session.handle(), kKeyBits, id, 5, id, 7, &dA, &rA, &RA, &PB,
                                                 &RB, &ofA));
    if (!has_h) return;
    EXPECT_EQ(to_hex(keyA), to_hex(keyB));
    EXPECT_NE(keyA, ByteString(kKeyBits / 8));
    EXPECT_EQ(to_hex(ofA.check, 32), to_hex(ofB.send, 32));
    EXPECT_EQ(to_hex(ofB.check, 32), to_hex(ofA.send, 32));
}

INSTANTIATE_TEST_SUITE_P(Curves, UnusualCurve, testing::ValuesIn(unusual_curves()),
                         [](const auto &tested) { return tested.param.name; });

}  // namespace

}  // namespace zokecc_test::unusual_curves_test

#endif
