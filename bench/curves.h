// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Curves and keys in the formats of both sides. A curve's numbers are OpenSSL's for its name;
// keys are derived from the curve's name, so they are the same in every run.
#ifndef ZOKECC_BENCH_CURVES_H
#define ZOKECC_BENCH_CURVES_H

#include <openssl/ec.h>
#include <openssl/evp.h>
#include <zokecc/schemes.h>
#include <zokecc/sdf.h>

#include <memory>
#include <string>
#include <vector>

#include "bench/operation.h"

namespace zokecc_bench {

using Bytes = std::vector<uint8_t>;

template <auto Free>
struct Deleter {
    template <class T>
    void operator()(T *object) const
    {
        Free(object);
    }
};
template <class T, auto Free>
using Owned = std::unique_ptr<T, Deleter<Free>>;
using Number = Owned<BIGNUM, BN_free>;
using Scratch = Owned<BN_CTX, BN_CTX_free>;
using Group = Owned<EC_GROUP, EC_GROUP_free>;
using Point = Owned<EC_POINT, EC_POINT_free>;
using CurveKey = Owned<EC_KEY, EC_KEY_free>;
using Key = Owned<EVP_PKEY, EVP_PKEY_free>;

// Pseudo-random bytes, fixed for a label.
Bytes fixed_bytes(const std::string &label, size_t count);
Number number_of(const Bytes &bytes);
mint mint_of(const Bytes &bytes);
Bytes bytes_of(const BIGNUM *value, size_t count);
Bytes bytes_of(const mint &value, size_t count);

// One of SM2, P-192, P-224, P-256 and brainpoolP256r1.
struct Curve {
    explicit Curve(const std::string &name);

    std::string name;
    int id;    // OpenSSL's
    size_t L;  // bytes of a coordinate
    Bytes p, a, b, Gx, Gy, n;
    Group group;

    uint32_t hash() const { return id == NID_sm2 ? HASH_ALG_SM3 : HASH_ALG_SHA256; }
    CurvePara session_record() const;
    ecc_curve_bytes process_record() const;
};

const Curve &curve(const std::string &name);

// A session on the curve, opened at first use and never closed.
void *session_on(const std::string &curve_name);

// Installs the process-wide curve unless it is already installed.
void install(const std::string &curve_name);

// A key pair on both sides.
struct KeyPair {
    KeyPair(const std::string &curve_name, const std::string &label);

    const Curve &on;
    Bytes d, x, y;
    ECCrefPrivateKey session_private() const;
    ECCrefPublicKey session_public() const;
    ecc_scalar scalar() const { return {const_cast<uint8_t *>(d.data()), static_cast<uint32_t>(d.size())}; }
    ecc_point_bytes point() const;
    ecc_point affine() const;

    CurveKey peer;  // for the calls on curves
    Key peer_key;   // for the calls on keys
};
using SharedKey = std::shared_ptr<const KeyPair>;

inline SharedKey key_on(const std::string &curve_name, const std::string &label = "own")
{
    return std::make_shared<const KeyPair>(curve_name, label);
}

}  // namespace zokecc_bench

#endif
