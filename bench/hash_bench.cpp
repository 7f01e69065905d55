// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM3, SHA-256 and their HMACs over a short and a long message. OpenSSL hashes with a fetched
// algorithm and a reused context, and computes HMACs with HMAC_CTX: its fastest interfaces that
// are not tied to one algorithm.
#include <openssl/hmac.h>
#include <zokecc/hash.h>

#include <array>

#include "bench/curves.h"

namespace zokecc_bench {

namespace {

using Digest = std::array<uint8_t, 32>;
using Algorithm = Owned<EVP_MD, EVP_MD_free>;
using HashContext = Owned<EVP_MD_CTX, EVP_MD_CTX_free>;
using HmacContext = Owned<HMAC_CTX, HMAC_CTX_free>;

constexpr uint32_t kShort = 64, kLong = 16384;

struct Hashing {
    Hashing(uint32_t selector, uint32_t count)
        : data(fixed_bytes("message", count)),
          key(fixed_bytes("key", 32)),
          size(count),
          algorithm(EVP_MD_fetch(nullptr, selector == HASH_ALG_SM3 ? "SM3" : "SHA256", nullptr)),
          context(EVP_MD_CTX_new()),
          hmac(HMAC_CTX_new())
    {
        require(HMAC_Init_ex(hmac.get(), key.data(), 32, algorithm.get(), nullptr) == 1, "HMAC");
    }

    Bytes data, key;
    uint32_t size;
    Digest ours{}, peer{};
    Algorithm algorithm;
    HashContext context;
    HmacContext hmac;
};
using SharedHashing = std::shared_ptr<Hashing>;

Sides compared(const SharedHashing &h, Loop ours, Loop peer)
{
    ours(1);
    peer(1);
    require(h->ours == h->peer, "the two sides differ");
    return {std::move(ours), std::move(peer)};
}

Loop peer_hash(const SharedHashing &h)
{
    return repeat([h] {
        return EVP_DigestInit_ex2(h->context.get(), h->algorithm.get(), nullptr) == 1 &&
               EVP_DigestUpdate(h->context.get(), h->data.data(), h->size) == 1 &&
               EVP_DigestFinal_ex(h->context.get(), h->peer.data(), nullptr) == 1;
    });
}

// The key is set on each call, as ours require.
Loop peer_hmac(const SharedHashing &h)
{
    return repeat([h] {
        unsigned size = 0;
        return HMAC_Init_ex(h->hmac.get(), h->key.data(), 32, nullptr, nullptr) == 1 &&
               HMAC_Update(h->hmac.get(), h->data.data(), h->size) == 1 &&
               HMAC_Final(h->hmac.get(), h->peer.data(), &size) == 1;
    });
}

Sides sm3(uint32_t count)
{
    const auto h = std::make_shared<Hashing>(HASH_ALG_SM3, count);
    return compared(h, repeat([h] {
                        const sm3_msg message = {h->data.data(), 0, h->size};
                        sm3_hash(&message, h->ours.data());
                        return true;
                    }),
                    peer_hash(h));
}

Sides sha256(uint32_t count)
{
    const auto h = std::make_shared<Hashing>(HASH_ALG_SHA256, count);
    return compared(h, repeat([h] {
                        mhash_sha256(h->data.data(), h->size, h->ours.data());
                        return true;
                    }),
                    peer_hash(h));
}

// The session handle is only tested for null.
Sides hmac_sm3(uint32_t count)
{
    const auto h = std::make_shared<Hashing>(HASH_ALG_SM3, count);
    return compared(h, repeat([h] {
                        return ZOK_HMAC_SM3(h.get(), h->data.data(), h->size, h->key.data(), 32,
                                            h->ours.data(), 32) == ZOK_OK;
                    }),
                    peer_hmac(h));
}

Sides hmac_sha256(uint32_t count)
{
    const auto h = std::make_shared<Hashing>(HASH_ALG_SHA256, count);
    return compared(h, repeat([h] {
                        return ZOK_HmacSha256(h.get(), h->key.data(), 32, h->data.data(),
                                              static_cast<int32_t>(h->size), h->ours.data(), 32) == ZOK_OK;
                    }),
                    peer_hmac(h));
}

const Register hash_operations{
    {"sm3_64", [] { return sm3(kShort); }, 8},
    {"sm3_16384", [] { return sm3(kLong); }},
    {"sha256_64", [] { return sha256(kShort); }, 8},
    {"sha256_16384", [] { return sha256(kLong); }},
    {"hmac_sm3_64", [] { return hmac_sm3(kShort); }, 8},
    {"hmac_sm3_16384", [] { return hmac_sm3(kLong); }},
    {"hmac_sha256_64", [] { return hmac_sha256(kShort); }, 8},
    {"hmac_sha256_16384", [] { return hmac_sha256(kLong); }},
};

}  // namespace

}  // namespace zokecc_bench
