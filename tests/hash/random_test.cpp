// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// gen_random and SDF_GenerateRandom: exact bytes, and how often they seed.
#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include <string>

#include "hash/entropy.h"
#include "tests/hash/helpers.h"
#include "tests/hash/model_random.h"
#include "tests/support/fake_entropy.h"

namespace zokecc_test::random_test {

namespace {

constexpr uint32_t kNow = 0x65432100u;

ByteString draw(uint32_t length) {
    GuardedBuffer out(length + 32);
    EXPECT_EQ(gen_random(out.data(), length), 0);
    EXPECT_TRUE(out.untouched_from(length)) << length;
    return out.first(length);
}

#ifdef ZOKECC_HARDENED
const std::string kCallsOfASeeding = "g";
#else
const std::string kCallsOfASeeding = "ts" + std::string(24, 'r');
#endif

// True if the library seeded that often, each time with its calls in order.
bool seeded(const FakeEntropy &entropy, unsigned times) {
    std::string expected;
    for (unsigned i = 0; i < times; ++i) expected += kCallsOfASeeding;
    return std::string(entropy.call_order.begin(), entropy.call_order.end()) == expected;
}

TEST(GenRandom, LengthsAroundABlockAgreeWithTheModel) {
    for (uint32_t length : {0u, 1u, 31u, 32u, 33u, 64u, 65u, 100u}) {
        FakeEntropy entropy(kNow, 77);
        ModelRandom model(kNow, 77);
        EXPECT_EQ(to_hex(draw(length)), to_hex(model.bytes(length))) << length;
        EXPECT_TRUE(seeded(entropy, model.seedings)) << length;
    }
}

TEST(GenRandom, ThirtyTwoBytesTakeTwoSeedingsAndThirtyThreeTakeThree) {
    {
        FakeEntropy entropy;
        draw(32);
        EXPECT_TRUE(seeded(entropy, 2));
    }
    FakeEntropy entropy;
    draw(33);
    EXPECT_TRUE(seeded(entropy, 3));
}

TEST(GenRandom, EverySeedingCountIsOnePlusTheBlocksBegun) {
    for (uint32_t length = 0; length <= 100; ++length) {
        FakeEntropy entropy;
        draw(length);
        EXPECT_TRUE(seeded(entropy, 1 + (length + 31) / 32)) << length;
    }
}

TEST(GenRandom, LengthZeroWritesNothingAndSeedsOnce) {
    FakeEntropy entropy;
    draw(0);
    EXPECT_TRUE(seeded(entropy, 1));
    EXPECT_EQ(gen_random(nullptr, 0), 0);
    EXPECT_TRUE(seeded(entropy, 2));
}

#ifndef ZOKECC_HARDENED

TEST(GenRandom, CounterGrowsBy24WithEverySeeding) {
    for (uint32_t length = 0; length <= 100; ++length) {
        FakeEntropy entropy;
        draw(length);
        EXPECT_EQ(seed_counter, 24 * (1 + (length + 31) / 32)) << length;
    }
}

TEST(GenRandom, TwoCallsInOneSecondDifferAlthoughTheSeedIsTheSame) {
    FakeEntropy entropy(kNow, 0);
    ModelRandom model(kNow, 0);
    const ByteString first = draw(32), second = draw(32);
    EXPECT_NE(first, second);
    EXPECT_EQ(first, model.bytes(32));
    EXPECT_EQ(second, model.bytes(32));
    EXPECT_EQ(entropy.srand_seeds, std::vector<unsigned>(4, kNow));
}

TEST(GenRandom, SameClockAndCounterGiveTheSameBytes) {
    FakeEntropy entropy(kNow, 5);
    const ByteString first = draw(40);
    seed_counter = 5;
    EXPECT_EQ(draw(40), first);
}

TEST(GenRandom, ClockIsReadAgainByEveryCall) {
    FakeEntropy entropy(kNow, 0);
    ModelRandom model(kNow, 0);
    EXPECT_EQ(draw(40), model.bytes(40));
    entropy.now = model.now = kNow + 1;
    EXPECT_EQ(draw(40), model.bytes(40));
    EXPECT_EQ(entropy.srand_seeds, (std::vector<unsigned>{kNow, kNow, kNow, kNow + 1, kNow + 1, kNow + 1}));
}

TEST(GenRandom, StuckRandStillGivesDifferentBytesByTheCounter) {
    FakeEntropy entropy(kNow, 0);
    entropy.stuck = true;
    ModelRandom model(kNow, 0);
    model.stuck = true;
    const ByteString first = draw(64), second = draw(64);
    EXPECT_EQ(first, model.bytes(64));
    EXPECT_EQ(second, model.bytes(64));
    EXPECT_NE(first, second);
    EXPECT_NE(shortened(first, 32), ByteString(first.begin() + 32, first.end()));
}

TEST(GenRandom, ShorterCallGivesTheStartOfALongerOne) {
    FakeEntropy entropy(kNow, 0);
    const ByteString whole = draw(100);
    for (uint32_t length : {1u, 31u, 33u, 99u}) {
        seed_counter = 0;
        EXPECT_EQ(draw(length), shortened(whole, length)) << length;
    }
}

#endif

TEST(SdfGenerateRandom, FillsTheOutputLikeTheGenerator) {
    for (uint32_t length : {0u, 1u, 32u, 50u}) {
        FakeEntropy entropy(kNow, 9);
        ModelRandom model(kNow, 9);
        GuardedBuffer out(64);
        EXPECT_EQ(SDF_GenerateRandom(any_session(), length, out.data()), 0u);
        EXPECT_EQ(out.first(length), model.bytes(length));
        EXPECT_TRUE(out.untouched_from(length));
        EXPECT_TRUE(seeded(entropy, model.seedings));
    }
}

TEST(SdfGenerateRandom, NullSessionIsRefusedWithoutADraw) {
    FakeEntropy entropy;
    GuardedBuffer out(32);
    EXPECT_EQ(SDF_GenerateRandom(nullptr, 32, out.data()), ZOK_ERR_SESSION);
    EXPECT_EQ(SDF_GenerateRandom(nullptr, 0, out.data()), ZOK_ERR_SESSION);
    EXPECT_TRUE(out.untouched());
    EXPECT_TRUE(seeded(entropy, 0));
}

TEST(SdfGenerateRandom, NullSessionWinsOverANullOutput) {
    FakeEntropy entropy;
    EXPECT_EQ(SDF_GenerateRandom(nullptr, 32, nullptr), ZOK_ERR_SESSION);
    EXPECT_TRUE(seeded(entropy, 0));
}

TEST(SdfGenerateRandom, NullOutputWithALengthIsRefusedWithoutADraw) {
    FakeEntropy entropy;
    EXPECT_EQ(SDF_GenerateRandom(any_session(), 1, nullptr), ZOK_ERR_ARGUMENT);
    EXPECT_TRUE(seeded(entropy, 0));
}

TEST(SdfGenerateRandom, NullOutputOfLengthZeroStillSeedsOnce) {
    FakeEntropy entropy;
    EXPECT_EQ(SDF_GenerateRandom(any_session(), 0, nullptr), 0u);
    EXPECT_TRUE(seeded(entropy, 1));
}

}  // namespace

}  // namespace zokecc_test::random_test
