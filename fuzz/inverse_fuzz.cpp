// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The inverse matches the deployed iteration word for word, for odd and even moduli and for
// operands without an inverse; if no kept subtraction applied it is also the true one.
#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_input.h"
#include "tests/mint/kept_rules.h"

using namespace zokecc_fuzz;

namespace {

constexpr uint32_t kWords = 9;  // the widest modulus

// Moduli with words of all ones, which expose the kept subtraction.
const char *const kModuli[] = {
    "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54123",  // order of the SM2 curve
    "fffffffeffffffffffffffffffffffffffffffff00000000ffffffffffffffff",  // its prime
    "ffffffff00000000ffffffffffffffffbce6faada7179e84f3b9cac2fc632551",  // order of secp256r1
    "ffffffff00000001000000000000000000000000ffffffffffffffffffffffff",  // its prime
    "ffffffffffffffffffffffff99def836146bc9b1b4d22831",                  // order of secp192r1
    "ffffffffffffffffffffffffffffffff000000000000000000000001",          // prime of secp224r1
};

mint modulus(FuzzInput &input) {
    if (input.flag()) return mint_from_hex(input.pick(kModuli));
    mint m = input.trimmed(kWords);
    if (m.len > 0 && input.flag()) m.words[0] |= 1;
    return m;
}

mint operand(FuzzInput &input, const mint &m) {
    if (Natural(m).is_zero() || input.flag()) return input.relative_or_trimmed(m, kWords + 1);
    return input.reduced(m);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    const mint m = modulus(input);
    const mint a = operand(input, m);
    const Natural A(a), M(m);
    const Natural want = kept_inverse(A, M);

    mint out{};
    check(mint_EEA_algo(&a, &m, &out) == 0, "the result is 0");
    check_value(out, want, "inverse");
    mint over_a = a, over_m = m;
    mint_EEA_algo(&over_a, &m, &over_a);
    check_value(over_a, want, "inverse over the operand");
    mint_EEA_algo(&a, &over_m, &over_m);
    check_value(over_m, want, "inverse over the modulus");

    if (!M.is_zero() && (A % M).is_zero() && M.is_odd() && M != Natural(1))
        check_value(out, M, "a multiple of an odd modulus gives the modulus");
    // A single word cannot meet an equal one under a borrow, so the inverse is the textbook's.
    const Natural one(1);
    if (M.word_count() == 1 && M != one && greatest_common_divisor(A % M, M) == one)
        check(mod_mul(A % M, Natural(out), M) == one, "a * x is 1 modulo one word");
    return 0;
}
