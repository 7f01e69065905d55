// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// nettle: hashes in a context on the stack, points in the curve's own representation. Its signatures
// get random numbers from a function of the caller.
#include <nettle/ecc-curve.h>
#include <nettle/ecdsa.h>
#include <nettle/sha2.h>
#include <nettle/sm3.h>
#include <nettle/version.h>

#include <memory>

#include "bench/other_peers.h"

namespace zokecc_bench {

namespace {

struct Integer {
    Integer() { mpz_init(value); }
    explicit Integer(const Bytes &bytes) : Integer()
    {
        nettle_mpz_set_str_256_u(value, bytes.size(), bytes.data());
    }
    ~Integer() { mpz_clear(value); }
    Integer(const Integer &) = delete;
    Integer &operator=(const Integer &) = delete;

    mpz_t value;
};

struct Point {
    explicit Point(const ecc_curve *curve) { ecc_point_init(&point, curve); }
    Point(const ecc_curve *curve, const KeyNumbers &key) : Point(curve)
    {
        require(ecc_point_set(&point, Integer(key.x).value, Integer(key.y).value) == 1, "a point");
    }
    ~Point() { ecc_point_clear(&point); }
    Point(const Point &) = delete;
    Point &operator=(const Point &) = delete;

    ecc_point point;
};

struct Scalar {
    Scalar(const ecc_curve *curve, const Bytes &number)
    {
        ecc_scalar_init(&scalar, curve);
        require(ecc_scalar_set(&scalar, Integer(number).value) == 1, "a scalar");
    }
    ~Scalar() { ecc_scalar_clear(&scalar); }
    Scalar(const Scalar &) = delete;
    Scalar &operator=(const Scalar &) = delete;

    ecc_scalar scalar;
};

Loop compared(const std::shared_ptr<Bytes> &digest, const Bytes &expected, const Loop &loop)
{
    loop(1);
    require(*digest == expected, "the two sides differ");
    return loop;
}

Loop sm3(size_t size)
{
    const Bytes message = peer_message(size);
    const auto digest = std::make_shared<Bytes>(SM3_DIGEST_SIZE);
    return compared(digest, sm3_of(message), repeat([=] {
                        sm3_ctx context;
                        sm3_init(&context);
                        sm3_update(&context, message.size(), message.data());
                        sm3_digest(&context, SM3_DIGEST_SIZE, digest->data());
                        return true;
                    }));
}

void hash_sha256(const Bytes &message, uint8_t *digest)
{
    sha256_ctx context;
    sha256_init(&context);
    sha256_update(&context, message.size(), message.data());
    sha256_digest(&context, SHA256_DIGEST_SIZE, digest);
}

Loop sha256(size_t size)
{
    const Bytes message = peer_message(size);
    const auto digest = std::make_shared<Bytes>(SHA256_DIGEST_SIZE);
    return compared(digest, sha256_of(message), repeat([=] {
                        hash_sha256(message, digest->data());
                        return true;
                    }));
}

// The product in affine coordinates.
struct Products {
    Products(const ecc_curve *curve, const Bytes &k, const KeyNumbers &key)
        : scalar(curve, k), P(curve, key), out(curve)
    {
    }
    void multiply(bool is_base_point)
    {
        if (is_base_point)
            ecc_point_mul_g(&out.point, &scalar.scalar);
        else
            ecc_point_mul(&out.point, &scalar.scalar, &P.point);
        ecc_point_get(&out.point, x.value, y.value);
    }

    Scalar scalar;
    Point P, out;
    Integer x, y;
};

Loop product(const ecc_curve *curve, const std::string &ours, bool is_base_point)
{
    const KeyNumbers other = key_numbers(ours, "other");
    const auto s = std::make_shared<Products>(curve, other.d, key_numbers(ours));
    Loop loop = repeat([s, is_base_point] {
        s->multiply(is_base_point);
        return true;
    });
    loop(1);
    require(mpz_cmp(s->x.value, Integer(is_base_point ? other.x : shared_x(ours)).value) == 0,
            "the two sides differ");
    return loop;
}

// Cheap, because the cost of a generator must not be measured.
void fill(void *state, size_t count, uint8_t *out)
{
    uint64_t &x = *static_cast<uint64_t *>(state);
    for (; count > 0; --count) {
        x = x * 6364136223846793005u + 1442695040888963407u;
        *out++ = static_cast<uint8_t>(x >> 56);
    }
}

struct Ecdsa {
    Ecdsa(const ecc_curve *curve, const KeyNumbers &key)
        : message(peer_message(kSignedMessage)), scalar(curve, key.d), point(curve, key)
    {
        dsa_signature_init(&signature);
    }
    ~Ecdsa() { dsa_signature_clear(&signature); }
    Ecdsa(const Ecdsa &) = delete;
    Ecdsa &operator=(const Ecdsa &) = delete;

    bool sign()
    {
        hash_sha256(message, digest);
        ecdsa_sign(&scalar.scalar, &random_state, fill, sizeof digest, digest, &signature);
        return true;
    }
    bool verify()
    {
        hash_sha256(message, digest);
        return ecdsa_verify(&point.point, sizeof digest, digest, &signature) == 1;
    }

    Bytes message;
    Scalar scalar;
    Point point;
    dsa_signature signature;
    uint8_t digest[SHA256_DIGEST_SIZE] = {};
    uint64_t random_state = 1;
};

Loop ecdsa_sign(const ecc_curve *curve, const char *ours)
{
    const auto s = std::make_shared<Ecdsa>(curve, key_numbers(ours));
    require(s->sign() && s->verify(), "sign");
    return repeat([s] { return s->sign(); });
}

Loop ecdsa_verify(const ecc_curve *curve, const char *ours)
{
    const auto s = std::make_shared<Ecdsa>(curve, key_numbers(ours));
    require(s->sign(), "sign");
    return repeat([s] { return s->verify(); });
}

const ecc_curve *p192() { return nettle_get_secp_192r1(); }
const ecc_curve *p224() { return nettle_get_secp_224r1(); }
const ecc_curve *p256() { return nettle_get_secp_256r1(); }

constexpr char kName[] = "nettle";

const RegisterPeers peers{"nettle " + std::to_string(nettle_version_major()) + '.' +
                              std::to_string(nettle_version_minor()),
                          {
                              {"sm3_64", kName, [] { return sm3(kShortMessage); }},
                              {"sm3_16384", kName, [] { return sm3(kLongMessage); }},
                              {"sha256_64", kName, [] { return sha256(kShortMessage); }},
                              {"sha256_16384", kName, [] { return sha256(kLongMessage); }},
                              {"fixed_point_mul_p256", kName, [] { return product(p256(), "P-256", true); }},
                              {"point_mul_p256", kName, [] { return product(p256(), "P-256", false); }},
                              {"ecdsa_sign_p256", kName, [] { return ecdsa_sign(p256(), "P-256"); }},
                              {"ecdsa_verify_p256", kName, [] { return ecdsa_verify(p256(), "P-256"); }},
                              {"ecdsa_sign_p192", kName, [] { return ecdsa_sign(p192(), "P-192"); }},
                              {"ecdsa_verify_p192", kName, [] { return ecdsa_verify(p192(), "P-192"); }},
                              {"ecdsa_sign_p224", kName, [] { return ecdsa_sign(p224(), "P-224"); }},
                              {"ecdsa_verify_p224", kName, [] { return ecdsa_verify(p224(), "P-224"); }},
                          }};

}  // namespace

}  // namespace zokecc_bench
