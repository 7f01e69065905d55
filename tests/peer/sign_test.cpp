// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM2 and ECDSA signatures of messages and OpenSSL: what one side signs the other verifies,
// and a changed message is refused by both.
//
// Keys and messages come from a fixed seed. The nonces of OpenSSL do not; a failure prints the
// signature.
#include <openssl/core_names.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/param_build.h>

#include <memory>
#include <random>

#include "tests/sdf/fixtures.h"

namespace zokecc_test::sign_test {

namespace {

constexpr uint32_t kSeed = 20240307;
constexpr int kRounds = 25;

template <auto Free>
struct Deleter {
    template <class T>
    void operator()(T *object) const {
        Free(object);
    }
};
using BigNumber = std::unique_ptr<BIGNUM, Deleter<BN_free>>;
using Group = std::unique_ptr<EC_GROUP, Deleter<EC_GROUP_free>>;
using Point = std::unique_ptr<EC_POINT, Deleter<EC_POINT_free>>;
using Builder = std::unique_ptr<OSSL_PARAM_BLD, Deleter<OSSL_PARAM_BLD_free>>;
using Params = std::unique_ptr<OSSL_PARAM, Deleter<OSSL_PARAM_free>>;
using KeyContext = std::unique_ptr<EVP_PKEY_CTX, Deleter<EVP_PKEY_CTX_free>>;
using Key = std::unique_ptr<EVP_PKEY, Deleter<EVP_PKEY_free>>;
using DigestContext = std::unique_ptr<EVP_MD_CTX, Deleter<EVP_MD_CTX_free>>;
using DerSignature = std::unique_ptr<ECDSA_SIG, Deleter<ECDSA_SIG_free>>;

class Draws {
public:
    uint32_t number() { return static_cast<uint32_t>(engine_()); }
    ByteString bytes(size_t count) {
        ByteString out(count);
        for (uint8_t &byte : out) byte = static_cast<uint8_t>(number());
        return out;
    }
    // 0 to 4096 bytes, every eighth of them shorter than a digest.
    ByteString message() { return bytes(number() % 8 == 0 ? number() % 33 : number() % 4097); }

private:
    std::mt19937 engine_{kSeed};
};

// A curve under the names of both sides, with the scheme and the hash to sign with.
struct Scheme {
    const char *curve;
    const char *peer_type;
    const char *peer_group;
    int peer_group_id;
    uint32_t algorithm;
    uint32_t selector;

    bool is_sm2() const { return algorithm == ZOK_ALG_SM2_SIGN; }
    const EVP_MD *digest() const { return selector == HASH_ALG_SM3 ? EVP_sm3() : EVP_sha256(); }
    void *session() const { return shared_session(curve_of(), selector); }

private:
    const Curve &curve_of() const { return zokecc_test::curve(curve); }
};

const Scheme kSchemes[] = {
    {"sm2p256v1", "SM2", "SM2", NID_sm2, ZOK_ALG_SM2_SIGN, HASH_ALG_SM3},
    {"secp256r1", "EC", "prime256v1", NID_X9_62_prime256v1, ZOK_ALG_ECDSA_SIGN, HASH_ALG_SHA256},
    {"secp256k1", "EC", "secp256k1", NID_secp256k1, ZOK_ALG_ECDSA_SIGN, HASH_ALG_SHA256},
    {"brainpoolP256r1", "EC", "brainpoolP256r1", NID_brainpoolP256r1, ZOK_ALG_ECDSA_SIGN, HASH_ALG_SHA256},
    {"secp256r1", "EC", "prime256v1", NID_X9_62_prime256v1, ZOK_ALG_ECDSA_SIGN, HASH_ALG_SM3},
};

ByteString to_bytes(const BIGNUM *number) {
    ByteString out(32);
    EXPECT_EQ(BN_bn2binpad(number, out.data(), 32), 32);
    return out;
}

// A key pair drawn below the order, held by both sides. The peer computes the public key.
class KeyPair {
public:
    KeyPair(const Scheme &scheme, Draws &draws) {
        Group group(EC_GROUP_new_by_curve_name(scheme.peer_group_id));
        BigNumber d(draw_scalar(group.get(), draws));
        Point Q(EC_POINT_new(group.get()));
        EXPECT_EQ(EC_POINT_mul(group.get(), Q.get(), d.get(), nullptr, nullptr, nullptr), 1);
        ByteString octets(65);
        EXPECT_EQ(EC_POINT_point2oct(group.get(), Q.get(), POINT_CONVERSION_UNCOMPRESSED, octets.data(),
                                     octets.size(), nullptr),
                  octets.size());
        priv_ = private_key(to_bytes(d.get()));
        pub_ = public_key(ByteString(octets.begin() + 1, octets.begin() + 33),
                          ByteString(octets.begin() + 33, octets.end()));
        peer_ = import_key(scheme, d.get(), octets);
    }

    const ECCrefPrivateKey &priv() const { return priv_; }
    const ECCrefPublicKey &pub() const { return pub_; }
    EVP_PKEY *peer() const { return peer_.get(); }

private:
    // 1 to n - 2: SM2 has no signature for n - 1.
    static BIGNUM *draw_scalar(const EC_GROUP *group, Draws &draws) {
        ByteString drawn = draws.bytes(40);
        BigNumber limit(BN_dup(EC_GROUP_get0_order(group)));
        BN_sub_word(limit.get(), 2);
        BigNumber wide(BN_bin2bn(drawn.data(), 40, nullptr));
        std::unique_ptr<BN_CTX, Deleter<BN_CTX_free>> context(BN_CTX_new());
        BIGNUM *d = BN_new();
        EXPECT_EQ(BN_nnmod(d, wide.get(), limit.get(), context.get()), 1);
        BN_add_word(d, 1);
        return d;
    }

    static Key import_key(const Scheme &scheme, const BIGNUM *d, const ByteString &octets) {
        Builder builder(OSSL_PARAM_BLD_new());
        OSSL_PARAM_BLD_push_utf8_string(builder.get(), OSSL_PKEY_PARAM_GROUP_NAME, scheme.peer_group, 0);
        OSSL_PARAM_BLD_push_octet_string(builder.get(), OSSL_PKEY_PARAM_PUB_KEY, octets.data(),
                                         octets.size());
        OSSL_PARAM_BLD_push_BN(builder.get(), OSSL_PKEY_PARAM_PRIV_KEY, d);
        Params params(OSSL_PARAM_BLD_to_param(builder.get()));
        KeyContext context(EVP_PKEY_CTX_new_from_name(nullptr, scheme.peer_type, nullptr));
        EVP_PKEY *key = nullptr;
        EXPECT_EQ(EVP_PKEY_fromdata_init(context.get()), 1);
        EXPECT_EQ(EVP_PKEY_fromdata(context.get(), &key, EVP_PKEY_KEYPAIR, params.get()), 1);
        return Key(key);
    }

    ECCrefPrivateKey priv_{};
    ECCrefPublicKey pub_{};
    Key peer_;
};

// One signing or verifying operation of the peer, with the identity if there is one.
class PeerOperation {
public:
    PeerOperation(const Scheme &scheme, const KeyPair &keys, const ByteString &id)
        : key_context_(EVP_PKEY_CTX_new(keys.peer(), nullptr)), context_(EVP_MD_CTX_new()) {
        if (scheme.is_sm2()) {
            EXPECT_EQ(EVP_PKEY_CTX_set1_id(key_context_.get(), id.data(), static_cast<int>(id.size())), 1);
        }
        EVP_MD_CTX_set_pkey_ctx(context_.get(), key_context_.get());
    }
    EVP_MD_CTX *get() { return context_.get(); }

private:
    KeyContext key_context_;
    DigestContext context_;
};

ECCSignature peer_sign(const Scheme &scheme, const KeyPair &keys, const ByteString &message,
                       const ByteString &id) {
    PeerOperation operation(scheme, keys, id);
    EXPECT_EQ(EVP_DigestSignInit(operation.get(), nullptr, scheme.digest(), nullptr, keys.peer()), 1);
    ByteString der(128);
    size_t size = der.size();
    EXPECT_EQ(EVP_DigestSign(operation.get(), der.data(), &size, message.data(), message.size()), 1);
    const uint8_t *cursor = der.data();
    DerSignature parsed(d2i_ECDSA_SIG(nullptr, &cursor, static_cast<long>(size)));
    if (!parsed) {
        ADD_FAILURE() << "no signature";
        return ECCSignature{};
    }
    return signature(to_bytes(ECDSA_SIG_get0_r(parsed.get())), to_bytes(ECDSA_SIG_get0_s(parsed.get())));
}

bool peer_verify(const Scheme &scheme, const KeyPair &keys, const ByteString &message, const ByteString &id,
                 const ECCSignature &sig) {
    DerSignature parsed(ECDSA_SIG_new());
    ECDSA_SIG_set0(parsed.get(), BN_bin2bn(sig.r, 32, nullptr), BN_bin2bn(sig.s, 32, nullptr));
    uint8_t *der = nullptr;
    int size = i2d_ECDSA_SIG(parsed.get(), &der);
    PeerOperation operation(scheme, keys, id);
    EXPECT_EQ(EVP_DigestVerifyInit(operation.get(), nullptr, scheme.digest(), nullptr, keys.peer()), 1);
    int answer =
        EVP_DigestVerify(operation.get(), der, static_cast<size_t>(size), message.data(), message.size());
    OPENSSL_free(der);
    return answer == 1;
}

ByteString changed(ByteString message) {
    if (message.empty()) return ByteString(1, 0);
    message[message.size() / 2] ^= 1;
    return message;
}

std::string describe(const Scheme &scheme, const ByteString &message, const ECCSignature &sig) {
    return std::string(scheme.curve) + ", " + std::to_string(message.size()) +
           " bytes, r = " + to_hex(sig.r, 32) + ", s = " + to_hex(sig.s, 32) + ", seed " +
           std::to_string(kSeed);
}

}  // namespace

TEST(PeerSignature, PeerVerifiesWhatTheLibrarySigns) {
    Draws draws;
    FakeEntropy entropy;
    for (const Scheme &scheme : kSchemes)
        for (int round = 0; round < kRounds; ++round) {
            const KeyPair keys(scheme, draws);
            const ByteString message = draws.message();
            const ByteString id = draws.bytes(1 + draws.number() % 100);
            ECCSignature sig{};
            ASSERT_EQ(sign_message(scheme.session(), scheme.algorithm, keys.priv(), message, id, &sig),
                      ZOK_OK);
            SCOPED_TRACE(describe(scheme, message, sig));
            EXPECT_TRUE(peer_verify(scheme, keys, message, id, sig));
            EXPECT_FALSE(peer_verify(scheme, keys, changed(message), id, sig));
        }
}

TEST(PeerSignature, LibraryVerifiesWhatThePeerSigns) {
    Draws draws;
    for (const Scheme &scheme : kSchemes)
        for (int round = 0; round < kRounds; ++round) {
            const KeyPair keys(scheme, draws);
            const ByteString message = draws.message();
            const ByteString id = draws.bytes(1 + draws.number() % 100);
            const ECCSignature sig = peer_sign(scheme, keys, message, id);
            SCOPED_TRACE(describe(scheme, message, sig));
            void *session = scheme.session();
            EXPECT_EQ(verify_message(session, scheme.algorithm, keys.pub(), message, id, sig), ZOK_OK);
            EXPECT_EQ(verify_message(session, scheme.algorithm, keys.pub(), changed(message), id, sig),
                      ZOK_ERR_VERIFY);
        }
}

TEST(PeerSignature, IdentityCountsOnBothSidesForSm2) {
    Draws draws;
    const Scheme &sm2 = kSchemes[0];
    const KeyPair keys(sm2, draws);
    const ByteString message = draws.message();
    // The peer accepts identities of up to 8190 bytes.
    for (size_t size : {size_t{1}, size_t{16}, size_t{100}, size_t{4096}, size_t{8190}}) {
        const ByteString id = draws.bytes(size);
        const ECCSignature sig = peer_sign(sm2, keys, message, id);
        SCOPED_TRACE(describe(sm2, message, sig));
        EXPECT_EQ(verify_message(sm2.session(), sm2.algorithm, keys.pub(), message, id, sig), ZOK_OK);
        EXPECT_EQ(verify_message(sm2.session(), sm2.algorithm, keys.pub(), message, changed(id), sig),
                  ZOK_ERR_VERIFY);
        EXPECT_FALSE(peer_verify(sm2, keys, message, changed(id), sig));
    }
}

TEST(PeerSignature, GeneratedKeyPairsAreThePeersMultiples) {
    Draws draws;
    for (const Scheme &scheme : kSchemes)
        for (int round = 0; round < kRounds; ++round) {
            const KeyPair keys(scheme, draws);
            FakeEntropy entropy;
            entropy.queued_numbers.push_back(mint_from_hex(to_hex(keys.priv().K, 32)));
            ECCrefPublicKey pub = public_key(ByteString(), ByteString());
            ECCrefPrivateKey priv = private_key(ByteString());
            ASSERT_EQ(SDF_GenerateKeyPair_ECC(scheme.session(), ZOK_ALG_ECDSA_KEY, 256, &pub, &priv), ZOK_OK);
            EXPECT_EQ(image(pub), image(keys.pub()));
            EXPECT_EQ(image(priv), image(keys.priv()));
        }
}

}  // namespace zokecc_test::sign_test
