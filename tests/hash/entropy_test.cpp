// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The clock, and the seeding step of the default build: clock, srand, rand and the counter.
#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include <cstdlib>
#include <string>

#include "hash/entropy.h"
#include "tests/hash/model_random.h"
#include "tests/support/fake_entropy.h"

namespace zokecc_test::entropy_test {

namespace {

TEST(EccTime, ReturnsTheClockWithAndWithoutAPointer) {
    FakeEntropy entropy(0x01020304u);
    EXPECT_EQ(ecc_time(nullptr), 0x01020304u);
    GuardedRecord<uint32_t> stored;
    EXPECT_EQ(ecc_time(stored.get()), 0x01020304u);
    EXPECT_EQ(*stored.get(), 0x01020304u);
    EXPECT_TRUE(stored.guards_intact());
    EXPECT_EQ(entropy.time_calls, 2u);
}

TEST(EccTime, KeepsAllThirtyTwoBits) {
    FakeEntropy entropy(0xFEDCBA98u);
    uint32_t stored = 0;
    EXPECT_EQ(ecc_time(&stored), 0xFEDCBA98u);
    EXPECT_EQ(stored, 0xFEDCBA98u);
}

#ifndef ZOKECC_HARDENED

constexpr uint32_t kNow = 0x65432100u;

using Seed = std::array<uint32_t, 8>;

Seed draw() {
    GuardedRecord<Seed> words;
    EXPECT_EQ(gen_random_seed(words->data()), 0);
    EXPECT_TRUE(words.guards_intact());
    return *words.get();
}

TEST(GenRandomSeed, CallsTimeOnceThenSrandOnceThenRandTwentyFourTimes) {
    FakeEntropy entropy;
    draw();
    EXPECT_EQ(std::string(entropy.call_order.begin(), entropy.call_order.end()), "ts" + std::string(24, 'r'));
}

TEST(GenRandomSeed, SeedsSrandWithTheLowBitsOfTheClock) {
    for (uint32_t now : {0u, 1u, kNow, 0x80000000u, 0xFFFFFFFFu}) {
        FakeEntropy entropy(now);
        draw();
        EXPECT_EQ(entropy.srand_seeds, std::vector<unsigned>{now});
    }
}

TEST(GenRandomSeed, WordsAgreeWithTheModel) {
    FakeEntropy entropy(kNow, 0);
    ModelRandom model(kNow, 0);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(draw(), model.seed()) << i;
    EXPECT_EQ(seed_counter, model.counter);
}

TEST(GenRandomSeed, CounterAdvancesByTwentyFour) {
    FakeEntropy entropy(kNow, 1000);
    draw();
    EXPECT_EQ(seed_counter, 1024u);
    draw();
    EXPECT_EQ(seed_counter, 1048u);
}

TEST(GenRandomSeed, CounterWrapsModuloTwoToTheThirtyTwo) {
    FakeEntropy entropy(kNow, 0xFFFFFFF0u);
    ModelRandom model(kNow, 0xFFFFFFF0u);
    EXPECT_EQ(draw(), model.seed());
    EXPECT_EQ(seed_counter, 8u);
    EXPECT_EQ(draw(), model.seed());
}

// rand() = 0 and counter 0: 0, 3 and 7 shifted by 0, 11 and 22, with bit 0 always set.
TEST(GenRandomSeed, FirstWordByHand) {
    FakeEntropy entropy(kNow, 0);
    entropy.stuck = true;
    EXPECT_EQ(draw()[0], 1u | 3u << 11 | 7u << 22);
}

// From 2^31 on the counter is halved as a negative number: 3 * 80000000 + C0000000 = 40000000,
// then 80000003 + C0000000 = 40000003 and 80000006 + C0000001 = 40000007, of which the shifts
// push bit 30 out.
TEST(GenRandomSeed, CounterIsHalvedAsASignedNumber) {
    FakeEntropy entropy(kNow, 0x80000000u);
    entropy.stuck = true;
    EXPECT_EQ(draw()[0], 0x40000000u | 1u | 3u << 11 | 7u << 22);
}

TEST(GenRandomSeed, CounterOverTheSignChangeAgreesWithTheModel) {
    FakeEntropy entropy(kNow, 0x7FFFFFF4u);
    ModelRandom model(kNow, 0x7FFFFFF4u);
    EXPECT_EQ(draw(), model.seed());
    EXPECT_EQ(draw(), model.seed());
}

TEST(GenRandomSeed, LargestRandAgreesWithTheModel) {
    for (uint32_t value : {0x7FFFFFFFu, 0x7FFFu, 1u}) {
        FakeEntropy entropy(kNow, 5);
        entropy.stuck = true;
        entropy.stuck_value = static_cast<int>(value);
        ModelRandom model(kNow, 5);
        model.stuck = true;
        model.stuck_value = value;
        EXPECT_EQ(draw(), model.seed()) << value;
    }
}

// Each rand value goes to its own place: a single nonzero one shows up in one word only.
TEST(GenRandomSeed, EveryRandValueReachesItsOwnWordAndShift) {
    for (size_t turn = 0; turn < 24; ++turn) {
        FakeEntropy entropy(kNow, 0);
        entropy.scripted_rand.assign(24, 0);
        const Seed plain = draw();
        seed_counter = 0;
        entropy.scripted_rand.assign(24, 0);
        entropy.scripted_rand[turn] = 0x200;  // bit 9, 20 or 31; no sum of these counters reaches it
        Seed expected = plain;
        expected[turn / 3] |= 0x200u << (11 * (turn % 3));
        EXPECT_EQ(draw(), expected) << turn;
    }
}

TEST(GenRandomSeed, KeptBitZeroIsAlwaysSet) {
    for (int value : {0, 1, 2, 0x7FFFFFFE}) {
        FakeEntropy entropy;
        entropy.stuck = true;
        entropy.stuck_value = value;
        for (int i = 0; i < 4; ++i)
            for (uint32_t word : draw()) EXPECT_EQ(word & 1, 1u) << value;
    }
}

TEST(GenRandomSeed, KeptTwoSeedingsInOneSecondDifferByTheCounterAlone) {
    FakeEntropy entropy(kNow, 0);
    const Seed first = draw(), second = draw();
    EXPECT_NE(first, second);
    EXPECT_EQ(entropy.srand_seeds, (std::vector<unsigned>{kNow, kNow}));
    seed_counter = 0;
    EXPECT_EQ(draw(), first);
}

// An application's own sequence of rand is restarted from the clock.
TEST(GenRandomSeed, KeptReseedsFromTheClockOnEverySeeding) {
    FakeEntropy entropy(kNow, 0);
    std::srand(1);
    draw();
    const int behind = std::rand();
    std::srand(2);
    draw();
    EXPECT_EQ(std::rand(), behind);
    EXPECT_EQ(entropy.srand_calls, 4u);
}

#endif

}  // namespace

}  // namespace zokecc_test::entropy_test
