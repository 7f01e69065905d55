// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "bench/other_peers.h"

#include <zokecc/hash.h>

#include "bench/curves.h"

namespace zokecc_bench {

std::vector<OtherPeer> &other_peers()
{
    static std::vector<OtherPeer> all;
    return all;
}

std::string &other_versions()
{
    static std::string versions;
    return versions;
}

RegisterPeers::RegisterPeers(const std::string &version, std::initializer_list<OtherPeer> added)
{
    other_versions() += (other_versions().empty() ? "" : ", ") + version;
    other_peers().insert(other_peers().end(), added.begin(), added.end());
}

Bytes peer_message(size_t size) { return fixed_bytes("message", size); }

Bytes sm3_of(const Bytes &message)
{
    Bytes digest(32);
    const sm3_msg whole = {const_cast<uint8_t *>(message.data()), 0, static_cast<uint32_t>(message.size())};
    sm3_hash(&whole, digest.data());
    return digest;
}

Bytes sha256_of(const Bytes &message)
{
    Bytes digest(32);
    mhash_sha256(message.data(), static_cast<uint32_t>(message.size()), digest.data());
    return digest;
}

KeyNumbers key_numbers(const std::string &curve_name, const std::string &label)
{
    const SharedKey key = key_on(curve_name, label);
    return {key->d, key->x, key->y};
}

Bytes shared_x(const std::string &curve_name)
{
    const SharedKey own = key_on(curve_name);
    const SharedKey other = key_on(curve_name, "other");
    const mint k = mint_of(other->d), a = mint_of(own->on.a), b = mint_of(own->on.b), p = mint_of(own->on.p);
    const ecc_point P = own->affine();
    ecc_point product{};
    require(ecc_unknown_point_mul(&k, &P, &a, &b, &p, &product) == 1, "multiply a point");
    return bytes_of(product.x, own->on.L);
}

}  // namespace zokecc_bench
