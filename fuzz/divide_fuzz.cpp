// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Division and reduction: dividend = quotient * divisor + remainder, the remainder is below the
// divisor, and all three routines agree with bitwise long division, wherever they store.
#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_input.h"
#include "tests/mint/kept_rules.h"

using namespace zokecc_fuzz;

namespace {

struct Division {
    mint quotient, remainder;
};

// The result of mint_div: a dividend below the divisor, by mint_compare, is returned unchanged.
Division model_division(const mint &a, const mint &m) {
    if (kept_compare(a, m) < 0) return {Natural().to_mint(), a};
    Natural quotient, remainder;
    divide(Natural(a), Natural(m), quotient, remainder);
    return {quotient.to_mint(), remainder.to_mint()};
}

// Zero in several words is detected only after the comparison, which may find the dividend smaller.
bool refused_as_zero(const mint &a, const mint &m) {
    return Natural(m).is_zero() && (m.len < 2 || kept_compare(a, m) >= 0);
}

void check_zero_divisor(const mint &a, const mint &m) {
    mint quotient = a, remainder = m, reduced = a;
    check(mint_div(&a, &m, &quotient, &remainder) == 0, "a divisor of zero is refused");
    check(same_record(quotient, a) && same_record(remainder, m), "a refused division writes nothing");
    check(mint_mod(&a, &m, &remainder) == 0 && same_record(remainder, m), "so does a refused reduction");
    mint_mod_reduce(&a, &m, &reduced);
}

// The quotient and the remainder in every permitted output.
void check_places(const mint &a, const mint &m, const Division &want) {
    mint quotient{}, remainder{};
    check(mint_div(&a, &m, nullptr, &remainder) == 1, "a dropped quotient");
    check_value(remainder, want.remainder, "the remainder with a dropped quotient");

    mint over_a = a;
    check(mint_div(&over_a, &m, &quotient, &over_a) == 1, "a remainder over the dividend");
    check_value(over_a, want.remainder, "the remainder over the dividend");
    check_value(quotient, want.quotient, "the quotient with it");

    over_a = a;
    check(mint_div(&over_a, &m, &over_a, &remainder) == 1, "a quotient over the dividend");
    check_value(over_a, want.quotient, "the quotient over the dividend");
    mint over_m = m;
    check(mint_div(&a, &over_m, &over_m, &remainder) == 1, "a quotient over the divisor");
    check_value(over_m, want.quotient, "the quotient over the divisor");
    check_value(remainder, want.remainder, "the remainder with it");
}

void check_reductions(const mint &a, const mint &m, const Division &want) {
    mint out{};
    check(mint_mod(&a, &m, &out) == 1, "mint_mod");
    check_value(out, want.remainder, "mint_mod");
    mint_mod_reduce(&a, &m, &out);
    check_value(out, want.remainder, "mint_mod_reduce");
    out = a;
    check(mint_mod(&out, &m, &out) == 1, "mint_mod in place");
    check_value(out, want.remainder, "mint_mod in place");
    out = a;
    mint_mod_reduce(&out, &m, &out);
    check_value(out, want.remainder, "mint_mod_reduce in place");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    const uint32_t high = input.word(), low = input.word(), by = input.word();
    if (by != 0)
        check(div_2(high, low, by) == (uint64_t{high} << 32 | low) / by, "div_2 is the 64-bit division");

    const mint a = input.number(MINT_WORDS);
    const mint m = input.flag() ? input.relative_of(a) : input.number(MINT_WORDS);
    const mint a_given = a, m_given = m;
    if (refused_as_zero(a, m)) {
        check_zero_divisor(a, m);
        return 0;
    }
    const Division want = model_division(a, m);
    mint quotient{}, remainder{};
    check(mint_div(&a, &m, &quotient, &remainder) == 1, "a division");
    check(Natural(quotient) * Natural(m) + Natural(remainder) == Natural(a), "q * m + r is a");
    check(kept_compare(a, m) < 0 || Natural(remainder) < Natural(m), "r is below m");
    check_value(quotient, want.quotient, "quotient");
    check_value(remainder, want.remainder, "remainder");
    check_places(a, m, want);
    check_reductions(a, m, want);
    check(same_record(a, a_given) && same_record(m, m_given), "the operands are unchanged");
    return 0;
}
