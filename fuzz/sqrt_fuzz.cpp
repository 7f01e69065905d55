// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Square roots: every reported root is one, every square has one, and of two numbers whose
// quotient is not a square exactly one has a root. With other odd moduli the call only has to terminate.
#include "fuzz/alloc_ledger.h"
#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_input.h"
#include "tests/support/fake_entropy.h"

using namespace zokecc_fuzz;

namespace {

// Mostly short ones: a root modulo 256 bits takes a thousand times as long as one modulo 32.
const char *const kPrimes[] = {
    // 3 modulo 4
    "fffffffeffffffffffffffffffffffffffffffff00000000ffffffffffffffff", "1fffffffffffffff", "7fffffff", "13",
    "3",
    // 5 modulo 8
    "7fffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffed", "ffffffffffffffc5", "65", "5",
    // 1 modulo 8; the first has 2^32 in p - 1
    "ffffffff00000001", "78000001", "a001", "3001", "61", "11"};

struct Root {
    int32_t status;
    mint value;
};

Root root_of(const Natural &a, const mint &p) {
    const mint operand = FuzzInput::with_rubbish(a);
    mint untouched{};
    untouched.words[0] = 0x5A5A5A5Au;
    untouched.len = 1;
    mint out = untouched;
    const int32_t status = mint_sqrt(&operand, &p, &out);
    check(status == 1 || same_record(out, untouched), "without a root nothing is written");
    mint in_place = operand;
    check(mint_sqrt(&in_place, &p, &in_place) == status, "the same result in place");
    check_value(in_place, status == 1 ? out : operand, "the same root in place");
    return {status, out};
}

bool is_root(const Root &root, const Natural &a, const Natural &p) {
    return root.status == 1 && mod_mul(Natural(root.value) % p, Natural(root.value) % p, p) == a;
}

void check_prime(FuzzInput &input) {
    const mint p = mint_from_hex(input.pick(kPrimes));
    const Natural P(p);
    const Natural x(input.reduced(p));
    const Natural square = mod_mul(x, x, P);
    if (square.is_zero()) {
        check(root_of(square, p).status == ((P.word(0) & 7) == 5 ? 0 : 1), "the root of zero");
        return;
    }
    check(is_root(root_of(square, p), square, P), "a square has its root");

    // A number times a non-residue: 2 for p = 5 modulo 8, -1 for p = 3 modulo 4.
    const Root first = root_of(x, p);
    if ((P.word(0) & 7) == 1) {
        check(first.status == 1, "for p = 1 modulo 8 there is always a result");
        return;
    }
    const Natural other = P.bit(1) ? P - x : mod_mul(x, Natural(2), P);
    const Root second = root_of(other, p);
    check(first.status + second.status == 1, "exactly one of the two is a square");
    check(first.status == 1 ? is_root(first, x, P) : is_root(second, other, P), "and it has its root");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    AllocLedger ledger;
    FakeEntropy entropy;
    if (input.flag()) {
        check_prime(input);
        return 0;
    }
    mint p = input.trimmed(2);
    if (p.len > 0 && input.flag()) p.words[0] |= 1;
    mint out = input.number(3);
    const mint a = input.number(3);
    entropy.stuck = input.flag();
    const int32_t status = mint_sqrt(&a, &p, &out);
    check(status >= -1 && status <= 1 && out.len <= MINT_WORDS, "a documented result");
    check(entropy.number_calls <= 60, "at most sixty candidates are drawn");
    return 0;
}
