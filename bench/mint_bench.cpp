// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// 256-bit integers and their products, compared with OpenSSL's big numbers. The modulus is the prime of
// the SM2 curve; operands are fixed and look random.
#include <zokecc/mint.h>

#include "bench/curves.h"

namespace zokecc_bench {

namespace {

constexpr unsigned kBatch = 32;

// The same numbers on both sides, and buffers for the results.
struct Numbers {
    explicit Numbers(const std::string &prime_of = "SM2") : Numbers(prime_of, curve(prime_of).L) {}
    Numbers(const std::string &prime_of, size_t size)
        : a(mint_of(reduced("a", prime_of, size))),
          b(mint_of(reduced("b", prime_of, size))),
          p(mint_of(curve(prime_of).p)),
          peer_a(number_of(bytes_of(a, size))),
          peer_b(number_of(bytes_of(b, size))),
          peer_p(number_of(curve(prime_of).p)),
          scratch(BN_CTX_new()),
          peer_out(BN_new()),
          peer_rest(BN_new())
    {
    }

    // Below the prime, whose top byte is 255 on the curves used here.
    static Bytes reduced(const std::string &label, const std::string &prime_of, size_t size)
    {
        Bytes out = fixed_bytes(label + " for " + prime_of, size);
        if (out[0] == 255) out[0] = 254;
        return out;
    }

    mint a, b, p, out{}, rest{};
    Number peer_a, peer_b, peer_p;
    Scratch scratch;
    Number peer_out, peer_rest;
};
using SharedNumbers = std::shared_ptr<Numbers>;

// Runs both sides once and compares the results.
Sides compared(const SharedNumbers &n, Loop ours, Loop peer)
{
    ours(1);
    peer(1);
    const size_t size = 4 * MINT_WORDS;
    require(bytes_of(n->out, size) == bytes_of(n->peer_out.get(), size) &&
                bytes_of(n->rest, size) == bytes_of(n->peer_rest.get(), size),
            "the two sides differ");
    return {std::move(ours), std::move(peer)};
}

Sides add()
{
    const auto n = std::make_shared<Numbers>();
    return compared(n, repeat([n] { return mint_add(&n->a, &n->b, &n->out) == 0; }),
                    repeat([n] { return BN_add(n->peer_out.get(), n->peer_a.get(), n->peer_b.get()) == 1; }));
}

Sides multiply()
{
    const auto n = std::make_shared<Numbers>();
    return compared(n, repeat([n] { return mint_mul(&n->a, &n->b, &n->out) == 1; }), repeat([n] {
                        return BN_mul(n->peer_out.get(), n->peer_a.get(), n->peer_b.get(),
                                      n->scratch.get()) == 1;
                    }));
}

// 512 bits by 256.
Sides divide()
{
    const auto n = std::make_shared<Numbers>("SM2", 64);
    return compared(n, repeat([n] { return mint_div(&n->a, &n->p, &n->out, &n->rest) == 1; }), repeat([n] {
                        return BN_div(n->peer_out.get(), n->peer_rest.get(), n->peer_a.get(), n->peer_p.get(),
                                      n->scratch.get()) == 1;
                    }));
}

Sides mod_add()
{
    const auto n = std::make_shared<Numbers>();
    return compared(n, repeat([n] { return mint_mod_add(&n->a, &n->b, &n->p, &n->out) == 0; }), repeat([n] {
                        return BN_mod_add_quick(n->peer_out.get(), n->peer_a.get(), n->peer_b.get(),
                                                n->peer_p.get()) == 1;
                    }));
}

Sides mod_sub()
{
    const auto n = std::make_shared<Numbers>();
    return compared(n, repeat([n] { return mint_mod_sub(&n->a, &n->b, &n->p, &n->out) == 0; }), repeat([n] {
                        return BN_mod_sub_quick(n->peer_out.get(), n->peer_a.get(), n->peer_b.get(),
                                                n->peer_p.get()) == 1;
                    }));
}

Sides mod_mul()
{
    const auto n = std::make_shared<Numbers>();
    return compared(n, repeat([n] { return mint_mod_mul(&n->a, &n->b, &n->p, &n->out) == 0; }), repeat([n] {
                        return BN_mod_mul(n->peer_out.get(), n->peer_a.get(), n->peer_b.get(),
                                          n->peer_p.get(), n->scratch.get()) == 1;
                    }));
}

Sides invert()
{
    const auto n = std::make_shared<Numbers>();
    return compared(n, repeat([n] { return mint_EEA_algo(&n->a, &n->p, &n->out) == 0; }), repeat([n] {
                        return BN_mod_inverse(n->peer_out.get(), n->peer_a.get(), n->peer_p.get(),
                                              n->scratch.get()) != nullptr;
                    }));
}

Sides power()
{
    const auto n = std::make_shared<Numbers>();
    return compared(n, repeat([n] { return mint_exp(&n->a, &n->b, &n->p, &n->out) == 0; }), repeat([n] {
                        return BN_mod_exp(n->peer_out.get(), n->peer_a.get(), n->peer_b.get(),
                                          n->peer_p.get(), n->scratch.get()) == 1;
                    }));
}

// Either side may return either root, so the squares are compared.
Sides square_root(const std::string &prime_of)
{
    const auto n = std::make_shared<Numbers>(prime_of);
    mint_mod_mul(&n->b, &n->b, &n->p, &n->a);
    n->peer_a = number_of(bytes_of(n->a, curve(prime_of).L));
    Loop ours = repeat([n] { return mint_sqrt(&n->a, &n->p, &n->out) == 1; });
    Loop peer = repeat([n] {
        return BN_mod_sqrt(n->peer_out.get(), n->peer_a.get(), n->peer_p.get(), n->scratch.get()) != nullptr;
    });
    ours(1);
    peer(1);
    mint square;
    mint_mod_mul(&n->out, &n->out, &n->p, &square);
    require(mint_compare(&square, &n->a) == 0, "no root");
    return {std::move(ours), std::move(peer)};
}

const Register mint_operations{
    {"mint_add", add, kBatch},
    {"mint_mul", multiply, kBatch},
    {"mint_div", divide, kBatch},
    {"mint_mod_add", mod_add, kBatch},
    {"mint_mod_sub", mod_sub, kBatch},
    {"mint_mod_mul", mod_mul, kBatch},
    {"mint_EEA_algo", invert},
    {"mint_exp", power},
    {"mint_sqrt", [] { return square_root("SM2"); }},
    {"mint_sqrt_P224", [] { return square_root("P-224"); }},
};

}  // namespace

}  // namespace zokecc_bench
