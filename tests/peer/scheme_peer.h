// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// OpenSSL and the calls on the process-wide curve: a key pair held by both sides.
//
// Keys and messages come from a fixed seed. What OpenSSL draws does not; failures print it.
#ifndef ZOKECC_TESTS_PEER_SCHEME_PEER_H
#define ZOKECC_TESTS_PEER_SCHEME_PEER_H

#include <openssl/core_names.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/param_build.h>

#include <memory>
#include <random>
#include <string>
#include <utility>

#include "tests/support/legacy_curve.h"
#include "tests/support/legacy_records.h"

namespace zokecc_test {

inline constexpr uint32_t kPeerSeed = 20240411;

template <auto Free>
struct PeerDeleter {
    template <class T>
    void operator()(T *object) const {
        Free(object);
    }
};
template <class T, auto Free>
using PeerOwned = std::unique_ptr<T, PeerDeleter<Free>>;
using PeerNumber = PeerOwned<BIGNUM, BN_free>;
using PeerKey = PeerOwned<EVP_PKEY, EVP_PKEY_free>;
using PeerKeyContext = PeerOwned<EVP_PKEY_CTX, EVP_PKEY_CTX_free>;
using PeerDigestContext = PeerOwned<EVP_MD_CTX, EVP_MD_CTX_free>;

class PeerDraws {
public:
    uint32_t number() { return static_cast<uint32_t>(engine_()); }
    ByteString bytes(size_t count) {
        ByteString out(count);
        for (uint8_t &byte : out) byte = static_cast<uint8_t>(number());
        return out;
    }

private:
    std::mt19937 engine_{kPeerSeed};
};

// A curve under the names of both sides.
struct PeerCurve {
    const char *name;
    const char *peer_group;
    int peer_id;

    bool is_sm2() const { return peer_id == NID_sm2; }
    size_t L() const { return curve(name).byte_len; }
};

inline const PeerCurve kPeerSm2 = {"sm2p256v1", "SM2", NID_sm2};

// A private key from 1 to n - 2, with the public key computed by the peer.
class PeerKeyPair {
public:
    PeerKeyPair(const PeerCurve &on, PeerDraws &draws) {
        PeerOwned<EC_GROUP, EC_GROUP_free> group(EC_GROUP_new_by_curve_name(on.peer_id));
        PeerOwned<BN_CTX, BN_CTX_free> scratch(BN_CTX_new());
        PeerNumber limit(BN_dup(EC_GROUP_get0_order(group.get())));
        BN_sub_word(limit.get(), 2);
        const ByteString drawn = draws.bytes(40);
        PeerNumber wide(BN_bin2bn(drawn.data(), 40, nullptr));
        PeerNumber scalar(BN_new());
        EXPECT_EQ(BN_nnmod(scalar.get(), wide.get(), limit.get(), scratch.get()), 1);
        BN_add_word(scalar.get(), 1);
        PeerOwned<EC_POINT, EC_POINT_free> Q(EC_POINT_new(group.get()));
        EXPECT_EQ(EC_POINT_mul(group.get(), Q.get(), scalar.get(), nullptr, nullptr, nullptr), 1);

        const size_t L = on.L();
        ByteString octets(1 + 2 * L);
        EXPECT_EQ(EC_POINT_point2oct(group.get(), Q.get(), POINT_CONVERSION_UNCOMPRESSED, octets.data(),
                                     octets.size(), nullptr),
                  octets.size());
        d.resize(L);
        EXPECT_EQ(BN_bn2binpad(scalar.get(), d.data(), static_cast<int>(L)), static_cast<int>(L));
        const auto middle = octets.begin() + 1 + static_cast<std::ptrdiff_t>(L);
        x.assign(octets.begin() + 1, middle);
        y.assign(middle, octets.end());
        peer = imported(on, scalar.get(), octets);
    }

    PointBytes point() const { return PointBytes(x, y); }

    ByteString d, x, y;
    PeerKey peer;

private:
    static PeerKey imported(const PeerCurve &on, const BIGNUM *scalar, const ByteString &octets) {
        PeerOwned<OSSL_PARAM_BLD, OSSL_PARAM_BLD_free> builder(OSSL_PARAM_BLD_new());
        OSSL_PARAM_BLD_push_utf8_string(builder.get(), OSSL_PKEY_PARAM_GROUP_NAME, on.peer_group, 0);
        OSSL_PARAM_BLD_push_octet_string(builder.get(), OSSL_PKEY_PARAM_PUB_KEY, octets.data(),
                                         octets.size());
        OSSL_PARAM_BLD_push_BN(builder.get(), OSSL_PKEY_PARAM_PRIV_KEY, scalar);
        PeerOwned<OSSL_PARAM, OSSL_PARAM_free> params(OSSL_PARAM_BLD_to_param(builder.get()));
        PeerKeyContext context(EVP_PKEY_CTX_new_from_name(nullptr, on.is_sm2() ? "SM2" : "EC", nullptr));
        EVP_PKEY *key = nullptr;
        EXPECT_EQ(EVP_PKEY_fromdata_init(context.get()), 1);
        EXPECT_EQ(EVP_PKEY_fromdata(context.get(), &key, EVP_PKEY_KEYPAIR, params.get()), 1);
        return PeerKey(key);
    }
};

}  // namespace zokecc_test

#endif
