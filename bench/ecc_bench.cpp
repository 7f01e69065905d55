// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Points: scalar multiplication with and without a table, addition, and decoding. OpenSSL's
// results are converted to affine coordinates, as ours are.
#include <zokecc/ecc.h>

#include "bench/curves.h"

namespace zokecc_bench {

namespace {

struct Points {
    explicit Points(const std::string &curve_name)
        : key(key_on(curve_name)),
          other(key_on(curve_name, "other")),
          on(key->on),
          k(mint_of(other->d)),
          a(mint_of(on.a)),
          b(mint_of(on.b)),
          p(mint_of(on.p)),
          P(key->affine()),
          Q(other->affine()),
          table(PRECOMP_TABLE_ENTRIES),
          peer_k(number_of(other->d)),
          peer_out(EC_POINT_new(on.group.get())),
          peer_x(BN_new()),
          peer_y(BN_new()),
          scratch(BN_CTX_new())
    {
    }

    const EC_GROUP *group() const { return on.group.get(); }
    const EC_POINT *peer_P() const { return EC_KEY_get0_public_key(key->peer.get()); }
    const EC_POINT *peer_Q() const { return EC_KEY_get0_public_key(other->peer.get()); }
    bool peer_affine()
    {
        return EC_POINT_get_affine_coordinates(group(), peer_out.get(), peer_x.get(), peer_y.get(),
                                               scratch.get()) == 1;
    }

    SharedKey key, other;
    const Curve &on;
    mint k, a, b, p;
    ecc_point P, Q, out{};
    std::vector<ecc_point> table;
    Number peer_k;
    Point peer_out;
    Number peer_x, peer_y;
    Scratch scratch;
};
using SharedPoints = std::shared_ptr<Points>;

// Runs both sides once and compares the points.
Sides compared(const SharedPoints &s, Loop ours, Loop peer)
{
    ours(1);
    peer(1);
    const size_t L = s->on.L;
    require(bytes_of(s->out.x, L) == bytes_of(s->peer_x.get(), L) &&
                bytes_of(s->out.y, L) == bytes_of(s->peer_y.get(), L),
            "the two sides differ");
    return {std::move(ours), std::move(peer)};
}

Sides base_point_multiple(const std::string &curve_name)
{
    const auto s = std::make_shared<Points>(curve_name);
    ecc_point G{};
    G.x = mint_of(s->on.Gx);
    G.y = mint_of(s->on.Gy);
    require(ecc_precomputation_point_1(&G, &s->a, &s->b, &s->p, s->table.data()) == 0, "make a table");
    return compared(s, repeat([s] {
                        return ecc_fix_point_mul_1(&s->k, nullptr, &s->a, &s->b, &s->p, &s->out,
                                                   s->table.data()) == 0;
                    }),
                    repeat([s] {
                        return EC_POINT_mul(s->group(), s->peer_out.get(), s->peer_k.get(), nullptr, nullptr,
                                            s->scratch.get()) == 1 &&
                               s->peer_affine();
                    }));
}

Sides point_multiple(const std::string &curve_name)
{
    const auto s = std::make_shared<Points>(curve_name);
    return compared(s, repeat([s] {
                        ecc_unknown_point_mul(&s->k, &s->P, &s->a, &s->b, &s->p, &s->out);
                        return s->out.infinity == 0;
                    }),
                    repeat([s] {
                        return EC_POINT_mul(s->group(), s->peer_out.get(), nullptr, s->peer_P(),
                                            s->peer_k.get(), s->scratch.get()) == 1 &&
                               s->peer_affine();
                    }));
}

Sides add_affine(const std::string &curve_name)
{
    const auto s = std::make_shared<Points>(curve_name);
    return compared(s, repeat([s] { return ecc_point_add(&s->P, &s->Q, &s->a, &s->b, &s->p, &s->out) == 0; }),
                    repeat([s] {
                        return EC_POINT_add(s->group(), s->peer_out.get(), s->peer_P(), s->peer_Q(),
                                            s->scratch.get()) == 1 &&
                               s->peer_affine();
                    }));
}

// 33 bytes to a point: a square root, and the check that the point is on the curve.
Sides decode(const std::string &curve_name)
{
    const auto s = std::make_shared<Points>(curve_name);
    Bytes octets(1 + s->on.L);
    EC_POINT_point2oct(s->group(), s->peer_P(), POINT_CONVERSION_COMPRESSED, octets.data(), octets.size(),
                       s->scratch.get());
    const auto out = std::make_shared<ecc_point_bytes>();
    Sides sides{repeat([octets, out] {
                    return ecc_ByteToPoint(octets.data(), static_cast<uint32_t>(octets.size()), out.get()) ==
                           0;
                }),
                repeat([s, octets] {
                    return EC_POINT_oct2point(s->group(), s->peer_out.get(), octets.data(), octets.size(),
                                              s->scratch.get()) == 1;
                }),
                [curve_name] { install(curve_name); }};
    sides.before_ours();
    sides.ours(1);
    require(Bytes(out->y, out->y + s->on.L) == s->key->y, "a different point was decoded");
    return sides;
}

const Register ecc_operations{
    {"fixed_point_mul_sm2", [] { return base_point_multiple("SM2"); }},
    {"fixed_point_mul_p256", [] { return base_point_multiple("P-256"); }},
    {"point_mul_sm2", [] { return point_multiple("SM2"); }},
    {"point_mul_p256", [] { return point_multiple("P-256"); }},
    {"point_add_sm2", [] { return add_affine("SM2"); }},
    {"point_decode_sm2", [] { return decode("SM2"); }},
};

}  // namespace

}  // namespace zokecc_bench
