// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Points and their multiples, computed in two ways: the library compared with a second version of its
// formulas, word for word, and the comb, wNAF and plain repeated addition with each other.
#include <zokecc/ecc.h>

#include "fuzz/alloc_ledger.h"
#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_input.h"
#include "tests/support/curves.h"
#include "tests/support/model_curve.h"
#include "tests/support/points.h"
#include "tests/support/tiny_curve.h"

using namespace zokecc_fuzz;

namespace {

// Any nonzero modulus; the formulas do not need a prime.
mint modulus(FuzzInput &input, uint32_t max_len) {
    mint p = input.trimmed(max_len);
    if (p.len == 0) p = FuzzInput::with_rubbish(Natural(97));
    if (input.flag()) p.words[0] |= 1;
    return p;
}

ecc_point point(FuzzInput &input, const mint &p) {
    const uint32_t infinity = input.below(8) == 7 ? 1 : 0;
    return {infinity, input.reduced(p), input.reduced(p)};
}

// The two may have coordinates in common or be opposite.
ecc_point second_point(FuzzInput &input, const mint &p, const ecc_point &first) {
    ecc_point out = point(input, p);
    const uint32_t relation = input.below(4);
    if (relation > 1) out.x = first.x;
    if (relation == 2) out.y = first.y;
    if (relation == 3) mint_mod_sub(&p, &first.y, &p, &out.y);
    return out;
}

ecc_jac_point jacobian_point(FuzzInput &input, const mint &p) {
    if (input.flag()) return {input.reduced(p), input.reduced(p), FuzzInput::with_rubbish(Natural(1))};
    return {input.reduced(p), input.reduced(p), input.reduced(p)};
}

void check_sums(FuzzInput &input) {
    const mint p = modulus(input, 8), a = input.reduced(p);
    const ModelCurve model(a, a, p);
    const ecc_point P = point(input, p), Q = second_point(input, p, P);
    ecc_point affine_sum = P;
    ecc_point_add(&P, &Q, &a, nullptr, &p, &affine_sum);
    check(same_point(affine_sum, model.add(P, Q)), "ecc_point_add");
    affine_sum = P;
    ecc_point_double(&affine_sum, &a, nullptr, &p, &affine_sum);
    check(same_point(affine_sum, model.add(P, P)), "ecc_point_double in place");

    const ecc_jac_point J = jacobian_point(input, p), K = input.flag() ? J : jacobian_point(input, p);
    ecc_jac_point out = J;
    ecc_jac_point_double(&out, &a, nullptr, &p, &out);
    if (!model_is_zero(J.Z)) check(same_point(out, model.twice(J)), "ecc_jac_point_double");
    out = J;
    ecc_jac_point_add(&out, &Q, &a, nullptr, &p, &out);
    check(same_point(out, model.add(J, Q)), "ecc_jac_point_add");
    out = J;
    ecc_jac_point_add_1(&out, &K, &a, nullptr, &p, &out);
    check(same_point(out, model.add(J, K)), "ecc_jac_point_add_1");
    out = J;
    ecc_invert_point(&p, &out);
    check(same_point(out, model.negate(J)), "ecc_invert_point");
    ecc_jacobin_affine(&affine_sum, &p, &J);
    check(same_point(affine_sum, model.to_affine(J)), "ecc_jacobin_affine");
    mint b = input.reduced(p);
    const ModelCurve with_b(a, b, p);
    check((ecc_test_point(&P, &a, &b, &p) == 0) == with_b.holds(P), "ecc_test_point");
}

// Any record as a curve: wNAF and the comb, word for word.
void check_products(FuzzInput &input) {
    const mint p = modulus(input, 2), a = input.reduced(p), k = input.number(8);
    const ModelCurve model(a, a, p);
    const ecc_point P = point(input, p);
    AllocLedger ledger(2);
    ecc_point out{};
    check(ecc_unknown_point_mul(&k, &P, &a, nullptr, &p, &out) == 1, "a window product");
    if (!model_is_zero(k)) check(same_point(out, model.window(k, P)), "ecc_unknown_point_mul");
    if (P.infinity == 1) return;
    std::vector<ecc_point> table(PRECOMP_TABLE_ENTRIES);
    check(ecc_precomputation_point_1(&P, &a, nullptr, &p, table.data()) == 0, "a table");
    ecc_fix_point_mul_1(&k, nullptr, &a, nullptr, &p, &out, table.data());
    mint trimmed = k;
    mint_adjust_len(&trimmed, static_cast<int32_t>(k.len));
    const ecc_point want =
        trimmed.len <= p.len ? model.comb(trimmed, model.table(P)) : model.window(k, table[1]);
    check(same_point(out, want), "ecc_fix_point_mul_1");
}

// Small groups in plain integers: every step of wNAF as the library takes it.
void check_tiny(FuzzInput &input) {
    static const TinyCurve curves[] = {{97, 2, 3}, {23, 1, 1}, {101, 100, 7}, {7, 0, 3}, {113, 5, 0}};
    const TinyCurve &curve = input.pick(curves);
    const TinyPoint P = curve.points()[input.below(curve.order())];
    const mint a = tiny_number(curve.a), p = tiny_number(curve.p), k = input.trimmed(MINT_WORDS);
    const ecc_point record = tiny_affine(P);
    AllocLedger ledger(1);
    ecc_point out{};
    check(ecc_unknown_point_mul(&k, &record, &a, nullptr, &p, &out) == 1, "a tiny product");
    const TinyPoint want = k.len == 0 || P.infinite ? TinyPoint{} : curve.library_window(k, P);
    check(tiny_point(out) == want, "a window over a tiny curve");
}

struct Known {
    const Curve &curve;
    std::vector<ecc_point> table;
};

const Known &known_curve(FuzzInput &input) {
    auto prepared = [](const char *name) {
        Known out{curve(name), std::vector<ecc_point>(PRECOMP_TABLE_ENTRIES)};
        ecc_precomputation_point_1(&out.curve.G, &out.curve.a, nullptr, &out.curve.p, out.table.data());
        return out;
    };
    static const Known curves[] = {prepared("sm2p256v1"), prepared("secp192r1"), prepared("brainpoolP224r1")};
    return input.pick(curves);
}

// KEPT: wNAF loses the multiple n - 2 * (n mod 16) if n mod 16 is 1, 3, 5 or 7.
bool is_lost(const Natural &k, const Natural &n) {
    const uint32_t low = n.word(0) & 15;
    return (low == 1 || low == 3 || low == 5 || low == 7) && k + Natural(2 * low) == n;
}

void check_known(FuzzInput &input) {
    const Known &known = known_curve(input);
    const Curve &c = known.curve;
    const bool few = input.flag();
    const mint k = few ? small(input.below(40)) : input.reduced(c.n);
    AllocLedger ledger(1);
    ecc_point window{}, comb{};
    check(ecc_unknown_point_mul(&k, &c.G, &c.a, nullptr, &c.p, &window) == 1, "a product");
    ecc_fix_point_mul_1(&k, nullptr, &c.a, nullptr, &c.p, &comb, known.table.data());
    if (is_lost(Natural(k), Natural(c.n)))
        check(window.infinity == 1 && comb.infinity == 0, "the lost multiple");
    else
        check(same_point(window, comb), "the comb and the window agree below the order");
    check(comb.infinity == 1 || ecc_test_point(&comb, &c.a, &c.b, &c.p) == 0, "the product is on the curve");
    if (!few) return;
    ecc_point sum{1, small(0), small(0)};
    for (uint32_t i = 0; i < (k.len == 0 ? 0 : k.words[0]); ++i)
        ecc_point_add(&sum, &c.G, &c.a, nullptr, &c.p, &sum);
    check(same_point(sum, comb), "repeated addition");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    switch (input.below(4)) {
    case 0: check_products(input); break;
    case 1: check_tiny(input); break;
    case 2: check_known(input); break;
    default: check_sums(input); break;
    }
    return 0;
}
