// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The source of the hardened build: getrandom, /dev/urandom if that is missing, and the case
// that both fail.
#ifdef ZOKECC_HARDENED

#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "hash/entropy.h"
#include "tests/hash/helpers.h"
#include "tests/hash/model_random.h"
#include "tests/support/fake_entropy.h"

namespace zokecc_test::kernel_random_test {

namespace {

constexpr uint32_t kNow = 0x65432100u;

using Seed = std::array<uint32_t, 8>;

std::string order(const FakeEntropy &entropy) {
    return std::string(entropy.call_order.begin(), entropy.call_order.end());
}

struct Seeding {
    int32_t status;
    Seed words;
    bool guards_intact;
};

Seeding seed() {
    GuardedRecord<Seed> words;
    const int32_t status = gen_random_seed(words->data());
    return {status, *words.get(), words.guards_intact()};
}

void expect_words_of(const Seeding &seeding, ModelRandom &model) {
    EXPECT_EQ(seeding.status, 0);
    EXPECT_EQ(seeding.words, model.seed());
    EXPECT_TRUE(seeding.guards_intact);
}

void expect_failure(const Seeding &seeding) {
    EXPECT_EQ(seeding.status, -1);
    EXPECT_EQ(seeding.words, Seed{});
    EXPECT_TRUE(seeding.guards_intact);
}

TEST(GenRandomSeed, TakesThirtyTwoBytesByOneCallWithoutFlags) {
    FakeEntropy entropy(kNow, 7);
    ModelRandom model(kNow, 7);
    for (int i = 0; i < 8; ++i) expect_words_of(seed(), model);
    EXPECT_EQ(order(entropy), "gggggggg");
    EXPECT_EQ(entropy.kernel.bytes_given, 8 * 32u);
    EXPECT_EQ(entropy.kernel.flags, 0u);
}

TEST(GenRandomSeed, EveryBitIsTheKernels) {
    FakeEntropy entropy(kNow, 0);
    entropy.stuck = true;
    for (int value : {0, 1, 2, 0x7FFFFFFE, -1}) {
        entropy.stuck_value = value;
        Seed expected;
        expected.fill(static_cast<uint32_t>(value));
        EXPECT_EQ(seed().words, expected);
    }
}

TEST(GenRandomSeed, LeavesTheApplicationsRandAlone) {
    FakeEntropy entropy(kNow, 0);
    std::srand(1);
    const int first = std::rand(), second = std::rand();
    std::srand(1);
    EXPECT_EQ(std::rand(), first);
    seed();
    EXPECT_EQ(std::rand(), second);
    EXPECT_EQ(entropy.time_calls, 0u);
}

TEST(GenRandomSeed, InterruptedCallIsRepeated) {
    FakeEntropy entropy(kNow, 0);
    ModelRandom model(kNow, 0);
    entropy.kernel.getrandom_answers = {{-1, EINTR}, {-1, EINTR}};
    expect_words_of(seed(), model);
    EXPECT_EQ(order(entropy), "ggg");
}

TEST(GenRandomSeed, ShortAnswersAreFilledUp) {
    FakeEntropy entropy(kNow, 0);
    ModelRandom model(kNow, 0);
    entropy.kernel.getrandom_answers = {{5, 0}, {-1, EINTR}, {1, 0}, {25, 0}};
    expect_words_of(seed(), model);
    EXPECT_EQ(order(entropy), "ggggg");
    EXPECT_EQ(entropy.kernel.bytes_given, 32u);
}

TEST(GenRandomSeed, KernelWithoutTheCallIsReadFromItsDevice) {
    FakeEntropy entropy(kNow, 0);
    ModelRandom model(kNow, 0);
    entropy.kernel.getrandom_error = ENOSYS;
    expect_words_of(seed(), model);
    expect_words_of(seed(), model);
    EXPECT_EQ(order(entropy), "godcgodc");
}

TEST(GenRandomSeed, DeviceIsReadOnAfterInterruptionsAndShortAnswers) {
    FakeEntropy entropy(kNow, 0);
    ModelRandom model(kNow, 0);
    entropy.kernel.getrandom_error = ENOSYS;
    entropy.kernel.open_answers = {{-1, EINTR}};
    entropy.kernel.read_answers = {{-1, EINTR}, {7, 0}, {-1, EINTR}, {20, 0}};
    expect_words_of(seed(), model);
    EXPECT_EQ(order(entropy), "goodddddc");
}

TEST(GenRandomSeed, MissingDeviceFails) {
    FakeEntropy entropy(kNow, 0);
    entropy.kernel.getrandom_error = ENOSYS;
    for (int error : {ENOENT, EACCES, EMFILE}) {
        entropy.kernel.open_error = error;
        expect_failure(seed());
    }
    EXPECT_EQ(order(entropy), "gogogo");
}

// The words are then zero, even those already read.
TEST(GenRandomSeed, DeviceThatEndsOrFailsIsClosedAndFails) {
    for (const FakeKernel::Answer &last : {FakeKernel::Answer{0, 0}, FakeKernel::Answer{-1, EIO}}) {
        FakeEntropy entropy(kNow, 0);
        entropy.kernel.getrandom_error = ENOSYS;
        entropy.kernel.read_answers = {{31, 0}, last};
        expect_failure(seed());
        EXPECT_EQ(order(entropy), "goddc");
    }
}

// A file, another device, a pipe: not random, so nothing is read from it.
TEST(GenRandomSeed, WhatIsNotTheRandomDeviceFailsUnread) {
    constexpr unsigned kFile = 0100000, kBlockDevice = 0060000, kCharacterDevice = 0020000, kPipe = 0010000;
    constexpr unsigned long kRandom = 1 << 8 | 9;
    struct {
        unsigned type;
        unsigned long device;
    } const others[] = {{kFile, 0},
                        {kFile, kRandom},
                        {kPipe, 0},
                        {kBlockDevice, kRandom},
                        {kCharacterDevice, 1 << 8 | 5},  // /dev/zero
                        {kCharacterDevice, 2 << 8 | 9}};
    for (const auto &other : others) {
        FakeEntropy entropy(kNow, 0);
        entropy.kernel.getrandom_error = ENOSYS;
        entropy.kernel.file_type = other.type;
        entropy.kernel.device = other.device;
        expect_failure(seed());
        EXPECT_EQ(order(entropy), "goc");
        EXPECT_EQ(entropy.kernel.stat_calls, 1u);
    }
}

TEST(GenRandomSeed, DeviceThatCannotBeLookedAtFailsUnread) {
    FakeEntropy entropy(kNow, 0);
    entropy.kernel.getrandom_error = ENOSYS;
    entropy.kernel.stat_error = EIO;
    expect_failure(seed());
    EXPECT_EQ(order(entropy), "goc");
}

// Any other error does not lead to another source.
TEST(GenRandomSeed, OtherErrorOfTheCallFailsWithoutTheDevice) {
    for (int error : {EPERM, EFAULT, EINVAL, EIO, EAGAIN}) {
        FakeEntropy entropy(kNow, 0);
        entropy.kernel.getrandom_error = error;
        expect_failure(seed());
        EXPECT_EQ(order(entropy), "g") << error;
    }
}

TEST(GenRandomSeed, EmptyAnswerFails) {
    FakeEntropy entropy(kNow, 0);
    entropy.kernel.getrandom_answers = {{12, 0}, {0, 0}};
    expect_failure(seed());
    EXPECT_EQ(order(entropy), "gg");
}

TEST(GenRandom, FailedFirstBlockWritesNothing) {
    for (const std::deque<FakeKernel::Answer> &answers :
         {std::deque<FakeKernel::Answer>{{-1, EIO}}, std::deque<FakeKernel::Answer>{{32, 0}, {-1, EIO}}})
        for (uint32_t length : {1u, 32u, 100u}) {
            FakeEntropy entropy(kNow, 0);
            entropy.kernel.getrandom_answers = answers;
            GuardedBuffer out(length);
            EXPECT_EQ(gen_random(out.data(), length), -1);
            EXPECT_TRUE(out.untouched());
            EXPECT_EQ(entropy.calls(), answers.size());
        }
}

TEST(GenRandom, FailedLaterBlockClearsTheOnesBefore) {
    FakeEntropy entropy(kNow, 0);
    entropy.kernel.getrandom_answers = {{32, 0}, {32, 0}, {32, 0}, {-1, EIO}};
    GuardedBuffer out(100);
    EXPECT_EQ(gen_random(out.data(), 100), -1);
    EXPECT_EQ(out.first(64), ByteString(64, 0));
    EXPECT_TRUE(out.untouched_from(64));
}

TEST(GenRandom, FailureAtLengthZeroIsReported) {
    FakeEntropy entropy(kNow, 0);
    entropy.kernel.getrandom_error = EIO;
    EXPECT_EQ(gen_random(nullptr, 0), -1);
}

TEST(GenRandom, NextCallAfterAFailureWorks) {
    FakeEntropy entropy(kNow, 0);
    ModelRandom model(kNow, 0);
    entropy.kernel.getrandom_answers = {{-1, EIO}};
    GuardedBuffer out(50);
    EXPECT_EQ(gen_random(out.data(), 50), -1);
    EXPECT_EQ(gen_random(out.data(), 50), 0);
    EXPECT_EQ(out.all(), model.bytes(50));
}

TEST(GenRandomNumber, FailureLeavesTheOutput) {
    const mint bound = mint_from_hex("ffffffff00000000ffffffffffffffffbce6faada7179e84f3b9cac2fc632551");
    FakeEntropy entropy(kNow, 0);
    entropy.kernel.getrandom_error = EIO;
    GuardedRecord<mint> out;
    EXPECT_EQ(gen_random_number(out.get(), &bound), -1);
    EXPECT_TRUE(out.unchanged());
}

TEST(SdfGenerateRandom, FailureReturnsMinusOne) {
    FakeEntropy entropy(kNow, 0);
    entropy.kernel.getrandom_error = EIO;
    GuardedBuffer out(32);
    EXPECT_EQ(SDF_GenerateRandom(any_session(), 32, out.data()), ZOK_ERR_INTERNAL);
    EXPECT_TRUE(out.untouched());
}

}  // namespace

}  // namespace zokecc_test::kernel_random_test

#endif
