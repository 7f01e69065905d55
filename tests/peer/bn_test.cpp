// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Plain integer arithmetic and the tests' own oracle, compared with OpenSSL's big numbers.
#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include "tests/mint/kept_rules.h"
#include "tests/mint/moduli.h"
#include "tests/peer/bignum.h"
#include "tests/support/hard_words.h"

namespace zokecc_test::bn_test {
namespace {

constexpr int kRounds = 4000;

// Every third number is uniform; the others are hard.
mint operand(HardWords &draw, uint32_t max_len) {
    mint out = draw.trimmed(max_len);
    if (draw.below(3) == 0) {
        for (uint32_t i = 0; i < out.len; ++i) out.words[i] = draw.uniform();
        while (out.len > 0 && out.words[out.len - 1] == 0) --out.len;
    }
    return out;
}

TEST(BnNatural, OracleAgreesOnPlainArithmetic) {
    HardWords draw(301);
    for (int round = 0; round < 400; ++round) {
        Natural a(operand(draw, MINT_WORDS)), b(operand(draw, MINT_WORDS));
        Bignum x = bn(a), y = bn(b), out = bn(), rest = bn();
        SCOPED_TRACE(draw.where());
        BN_add(out.get(), x.get(), y.get());
        ASSERT_EQ(hex_of(out), (a + b).to_hex());
        BN_mul(out.get(), x.get(), y.get(), scratch());
        ASSERT_EQ(hex_of(out), (a * b).to_hex());
        if (b < a) {
            BN_sub(out.get(), x.get(), y.get());
            ASSERT_EQ(hex_of(out), (a - b).to_hex());
        }
        if (b.is_zero()) continue;
        Natural q, r;
        divide(a, b, q, r);
        BN_div(out.get(), rest.get(), x.get(), y.get(), scratch());
        ASSERT_EQ(hex_of(out), q.to_hex());
        ASSERT_EQ(hex_of(rest), r.to_hex());
        BN_gcd(out.get(), x.get(), y.get(), scratch());
        ASSERT_EQ(hex_of(out), greatest_common_divisor(a, b).to_hex());
    }
}

TEST(BnNatural, OracleAgreesOnModularArithmetic) {
    HardWords draw(302);
    for (const Modulus &modulus : odd_moduli()) {
        mint m = modulus.value.to_mint();
        Natural a(draw.reduced(m)), b(draw.reduced(m)), e(operand(draw, 2));
        Bignum x = bn(a), y = bn(b), p = bn(modulus.value), out = bn();
        SCOPED_TRACE(modulus.name + ", " + draw.where());
        BN_mod_mul(out.get(), x.get(), y.get(), p.get(), scratch());
        EXPECT_EQ(hex_of(out), mod_mul(a, b, modulus.value).to_hex());
        BN_mod_exp(out.get(), x.get(), bn(e).get(), p.get(), scratch());
        EXPECT_EQ(hex_of(out), mod_power(a, e, modulus.value).to_hex());
    }
}

TEST(BnNatural, OracleAgreesOnShiftsAndBits) {
    HardWords draw(303);
    for (int round = 0; round < 400; ++round) {
        Natural a(operand(draw, MINT_WORDS));
        unsigned count = draw.below(640);
        Bignum x = bn(a), out = bn();
        SCOPED_TRACE(draw.where());
        ASSERT_EQ(static_cast<unsigned>(BN_num_bits(x.get())), a.bit_length());
        BN_lshift(out.get(), x.get(), static_cast<int>(count));
        ASSERT_EQ(hex_of(out), (a << count).to_hex());
        BN_rshift(out.get(), x.get(), static_cast<int>(count));
        ASSERT_EQ(hex_of(out), (a >> count).to_hex());
        ASSERT_EQ(a.bit(count), BN_is_bit_set(x.get(), static_cast<int>(count)) != 0);
    }
}

TEST(BnMintAdd, AgreesBelowTheCapacity) {
    HardWords draw(304);
    for (int round = 0; round < kRounds; ++round) {
        mint a = operand(draw, 18), b = operand(draw, 18), out;
        Bignum want = bn();
        BN_add(want.get(), bn(a).get(), bn(b).get());
        ASSERT_EQ(0, mint_add(&a, &b, &out));
        ASSERT_EQ(hex_of(want), mint_to_hex(out)) << draw.where();
    }
}

TEST(BnMintSub, AgreesWhereNoKeptRuleApplies) {
    HardWords draw(305);
    int agreed = 0, departed = 0;
    for (int round = 0; round < 2 * kRounds; ++round) {
        mint a = operand(draw, MINT_WORDS),
             b = draw.below(3) == 0 ? draw.relative_of(a) : operand(draw, MINT_WORDS);
        mint out;
        int32_t sign = mint_sub(&a, &b, &out);
        Bignum want = bn();
        BN_sub(want.get(), bn(a).get(), bn(b).get());
        ASSERT_EQ(BN_is_negative(want.get()), sign) << draw.where();
        BN_set_negative(want.get(), 0);
        mint kept = kept_sub(a, b, Over::kOther).value;
        if (mint_to_hex(kept) == hex_of(want))
            ++agreed;
        else
            ++departed;
        ASSERT_EQ(mint_to_hex(kept), mint_to_hex(out)) << draw.where();
    }
    EXPECT_GT(agreed, 5000);
    EXPECT_GT(departed, 100);
}

TEST(BnMintMul, AgreesBelowTheCapacity) {
    HardWords draw(306);
    for (int round = 0; round < kRounds; ++round) {
        mint a = operand(draw, 18), b = operand(draw, MINT_WORDS - a.len), out;
        Bignum want = bn();
        BN_mul(want.get(), bn(a).get(), bn(b).get(), scratch());
        ASSERT_EQ(1, mint_mul(&a, &b, &out));
        ASSERT_EQ(hex_of(want), mint_to_hex(out)) << draw.where();
    }
}

TEST(BnMintDiv, AgreesOnQuotientAndRemainder) {
    HardWords draw(307);
    for (int round = 0; round < 2 * kRounds; ++round) {
        mint a = operand(draw, MINT_WORDS), b = draw.below(3) == 0 ? draw.relative_of(a) : operand(draw, 12);
        if (b.len == 0) continue;
        mint q, r, alone, by_words;
        Bignum quotient = bn(), remainder = bn();
        BN_div(quotient.get(), remainder.get(), bn(a).get(), bn(b).get(), scratch());
        ASSERT_EQ(1, mint_div(&a, &b, &q, &r));
        ASSERT_EQ(1, mint_mod(&a, &b, &alone));
        ASSERT_EQ(0, mint_mod_reduce(&a, &b, &by_words));
        ASSERT_EQ(hex_of(quotient), mint_to_hex(q)) << draw.where();
        ASSERT_EQ(hex_of(remainder), mint_to_hex(r)) << draw.where();
        ASSERT_EQ(hex_of(remainder), mint_to_hex(alone)) << draw.where();
        ASSERT_EQ(hex_of(remainder), mint_to_hex(by_words)) << draw.where();
    }
}

TEST(BnMintShift, AgreesBelowTheCapacity) {
    HardWords draw(308);
    for (int round = 0; round < kRounds; ++round) {
        mint a = operand(draw, 12), left = a, right = a;
        uint32_t count = draw.below(32 * 7);
        Bignum x = bn(a), want = bn();
        ASSERT_EQ(BN_num_bits(x.get()), get_mint_bit_len(&a)) << draw.where();
        ASSERT_EQ(BN_is_bit_set(x.get(), static_cast<int>(count)),
                  mint_bit_set(&a, static_cast<int32_t>(count)));
        BN_lshift(want.get(), x.get(), static_cast<int>(count));
        mint_left_move(&left, count);
        ASSERT_EQ(hex_of(want), mint_to_hex(left)) << draw.where();
        BN_rshift(want.get(), x.get(), static_cast<int>(count));
        mint_right_move(&right, count);
        ASSERT_EQ(hex_of(want), mint_to_hex(right)) << draw.where();
    }
}

TEST(BnOctets, AgreesOnByteStrings) {
    HardWords draw(309);
    for (int round = 0; round < kRounds; ++round) {
        uint8_t bytes[76] = {}, ours[76] = {}, theirs[76] = {};
        uint32_t count = draw.below(77), len = 0;
        for (uint32_t i = draw.below(count + 1); i < count; ++i)
            bytes[i] = static_cast<uint8_t>(draw.word() >> 8);
        Bignum x(BN_bin2bn(bytes, static_cast<int>(count), nullptr));
        mint value;
        ASSERT_EQ(0, octetstring_to_mint(bytes, count, &value));
        ASSERT_EQ(hex_of(x), mint_to_hex(value)) << draw.where();
        ASSERT_EQ(0, mint_to_fixedlen_os(&value, 76, 76, &len, ours));
        ASSERT_EQ(76, BN_bn2binpad(x.get(), theirs, 76));
        ASSERT_EQ(0, std::memcmp(theirs, ours, 76)) << draw.where();
        ASSERT_EQ(0, mint_to_octetstring(&value, 76, ours, &len));
        ASSERT_EQ(static_cast<uint32_t>(BN_num_bytes(x.get())), len);
        BN_bn2bin(x.get(), theirs);
        ASSERT_EQ(0, std::memcmp(theirs, ours, len)) << draw.where();
    }
}

}  // namespace
}  // namespace zokecc_test::bn_test
