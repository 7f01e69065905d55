// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// gen_random_number: how much it draws, and its result.
#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include "tests/hash/helpers.h"
#include "tests/hash/model_random.h"
#include "tests/support/fake_entropy.h"

namespace zokecc_test::random_number_test {

namespace {

constexpr uint32_t kNow = 0x65432100u;

struct Drawn {
    mint number;
    unsigned seedings;
};

Drawn draw(const mint &bound, uint32_t counter) {
    FakeEntropy entropy(kNow, counter);
    const mint before = bound;
    GuardedRecord<mint> out;
    EXPECT_EQ(gen_random_number(out.get(), &bound), 0);
    EXPECT_TRUE(out.guards_intact());
    EXPECT_TRUE(same_record(bound, before));
    return {*out.get(), entropy.seedings()};
}

// The expected number: the drawn words modulo a nonzero bound.
std::string expected_number(const mint &bound, uint32_t counter) {
    ModelRandom model(kNow, counter);
    return mint_to_hex(mint_of(model_remainder(model.words(bound.len), words_of(bound))));
}

TEST(GenRandomNumber, BoundOfOneWordDrawsFourBytes) {
    const mint bound = mint_from_hex("fffffffb");
    const Drawn drawn = draw(bound, 3);
    EXPECT_EQ(mint_to_hex(drawn.number), expected_number(bound, 3));
    EXPECT_EQ(drawn.seedings, 2u);
}

TEST(GenRandomNumber, BoundOfEightWordsDrawsThirtyTwoBytes) {
    const mint bound = mint_from_hex("ffffffff00000000ffffffffffffffffbce6faada7179e84f3b9cac2fc632551");
    const Drawn drawn = draw(bound, 3);
    EXPECT_EQ(mint_to_hex(drawn.number), expected_number(bound, 3));
    EXPECT_EQ(drawn.seedings, 2u);
}

// 4 * w bytes: one seeding, and one more for every started 32 bytes.
TEST(GenRandomNumber, EveryWordCountDrawsFourBytesPerWord) {
    for (uint32_t count = 1; count <= MINT_WORDS; ++count) {
        mint bound{};
        bound.len = count;
        bound.words[count - 1] = 0x80000001u;
        const Drawn drawn = draw(bound, count);
        EXPECT_EQ(mint_to_hex(drawn.number), expected_number(bound, count)) << count;
        EXPECT_EQ(drawn.seedings, 1 + (count + 7) / 8) << count;
    }
}

// Bytes 4i to 4i + 3 are word i, least significant first: below a bound of all ones the
// drawn bytes are returned unchanged.
TEST(GenRandomNumber, WordsTakeTheBytesInMemoryOrder) {
    const mint bound = mint_of(std::vector<uint32_t>(3, 0xFFFFFFFFu));
    ModelRandom model(kNow, 0);
    const ByteString bytes = model.bytes(12);
    const mint number = draw(bound, 0).number;
    ASSERT_EQ(number.len, 3u);
    for (size_t i = 0; i < 12; ++i)
        EXPECT_EQ(number.words[i / 4] >> (8 * (i % 4)) & 0xFF, uint32_t{bytes[i]}) << i;
}

TEST(GenRandomNumber, ResultIsAlwaysBelowTheBound) {
    for (const char *text :
         {"1", "2", "3", "80000000", "80000001", "ffffffff", "100000000", "10000000000000001"}) {
        const mint bound = mint_from_hex(text);
        for (uint32_t counter = 0; counter < 20; ++counter) {
            const mint number = draw(bound, counter).number;
            EXPECT_EQ(mint_to_hex(number), expected_number(bound, counter)) << text;
            EXPECT_EQ(mint_compare(&number, &bound), -1) << text;
        }
    }
}

TEST(GenRandomNumber, BoundWithZeroWordsOnTopDrawsForThemToo) {
    mint bound = mint_from_hex("fffffffb");
    bound.len = 9;
    const Drawn drawn = draw(bound, 4);
    EXPECT_EQ(mint_to_hex(drawn.number), expected_number(bound, 4));
    EXPECT_EQ(drawn.seedings, 3u);
}

TEST(GenRandomNumber, WordsAboveTheBoundsLengthDoNotCount) {
    mint bound = mint_from_hex("fffffffb");
    for (uint32_t i = 1; i < MINT_WORDS; ++i) bound.words[i] = 0xDEADBEEFu;
    const Drawn drawn = draw(bound, 3);
    EXPECT_EQ(mint_to_hex(drawn.number), expected_number(bound, 3));
    EXPECT_EQ(drawn.seedings, 2u);
}

TEST(GenRandomNumber, ZeroBoundDrawsAndLeavesTheOutput) {
    for (uint32_t count : {0u, 1u, 3u, 9u}) {
        mint bound{};
        bound.len = count;
        FakeEntropy entropy(kNow, 0);
        GuardedRecord<mint> out;
        EXPECT_EQ(gen_random_number(out.get(), &bound), 0);
        EXPECT_TRUE(out.unchanged()) << count;
        EXPECT_EQ(entropy.seedings(), 1 + (count + 7) / 8) << count;
    }
}

// A drawn value at or above the bound is reduced, not redrawn: small results occur
// more often than large ones, and zero is one of them.
TEST(GenRandomNumber, KeptDrawnValueIsReducedAndMayBeZero) {
    const mint bound = mint_from_hex("c0000000"), three = mint_from_hex("3");
    unsigned reduced = 0, zeros = 0;
    for (uint32_t counter = 0; counter < 32; ++counter) {
        const uint32_t word = ModelRandom(kNow, counter).words(1)[0];
        const Drawn drawn = draw(bound, counter);
        EXPECT_EQ(drawn.number.words[0], word < 0xC0000000u ? word : word - 0xC0000000u);
        EXPECT_EQ(drawn.seedings, 2u);
        if (word >= 0xC0000000u) ++reduced;
        if (mint_to_hex(draw(three, counter).number) == "0") ++zeros;
    }
    EXPECT_GE(reduced, 1u);
    EXPECT_GE(zeros, 1u);
    EXPECT_LT(zeros, 32u);
}

TEST(GenRandomNumber, BoundOneAlwaysGivesZero) {
    const mint one = mint_from_hex("1");
    for (uint32_t counter = 0; counter < 8; ++counter) EXPECT_EQ(mint_to_hex(draw(one, counter).number), "0");
}

}  // namespace

}  // namespace zokecc_test::random_number_test
