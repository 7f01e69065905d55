// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The key derivation of SM2: sm2_kdf and its twin sm2_kdf_session; every test here calls
// both.
#include "hash/sm2_kdf.h"

#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include <climits>

#include "tests/support/emulated.h"
#include "tests/support/hex.h"
#include "tests/support/kdf_model.h"

namespace zokecc_test::sm2_kdf_test {

namespace {

constexpr uint32_t kUnknownHash = 2;

struct Twin {
    const char *name;
    decltype(&sm2_kdf) call;
};
const Twin kTwins[] = {{"sm2_kdf", sm2_kdf}, {"sm2_kdf_session", sm2_kdf_session}};

// Z without equal neighbouring bytes; with five bytes only one block is hashed.
const ByteString kSecret = {0x13, 0x37, 0x00, 0xFF, 0x80};

int32_t run(const Twin &twin, const ByteString &z, int32_t klen, int32_t step_len, uint32_t alg,
            uint8_t *out) {
    return twin.call(z.data(), static_cast<int32_t>(z.size()), klen, step_len, alg, out);
}

// Both twins return 0, write `want` and leave everything after it alone.
void expect_written(const ByteString &z, int32_t klen, int32_t step_len, uint32_t alg,
                    const ByteString &want) {
    for (const Twin &twin : kTwins) {
        GuardedBuffer out(want.size() + 64);
        EXPECT_EQ(run(twin, z, klen, step_len, alg, out.data()), 0) << twin.name;
        EXPECT_EQ(to_hex(out.first(want.size())), to_hex(want)) << twin.name;
        EXPECT_TRUE(out.untouched_from(want.size())) << twin.name;
    }
}

// Both twins return `status` and write nothing.
void expect_nothing(const ByteString &z, int32_t z_len, int32_t klen, int32_t step_len, int32_t status) {
    for (const Twin &twin : kTwins)
        for (uint32_t alg : {HASH_ALG_SM3, HASH_ALG_SHA256, kUnknownHash}) {
            GuardedBuffer out(512);
            EXPECT_EQ(twin.call(z.data(), z_len, klen, step_len, alg, out.data()), status)
                << twin.name << " z_len " << z_len << " klen " << klen << " step_len " << step_len;
            EXPECT_TRUE(out.untouched()) << twin.name << " z_len " << z_len << " klen " << klen;
        }
}

}  // namespace

TEST(Sm2Kdf, OneWholeStepIsOneDigestWithCounterOne) {
    const ByteString counted = joined({kSecret, {0, 0, 0, 1}});
    expect_written(kSecret, 32, 32, HASH_ALG_SM3, model_sm3(counted));
    expect_written(kSecret, 32, 32, HASH_ALG_SHA256, model_sha256(counted));
}

TEST(Sm2Kdf, LengthBelowTheStepTakesCounterOneForTheRemainder) {
    ByteString want = model_sm3(joined({kSecret, {0, 0, 0, 1}}));
    want.resize(19);
    expect_written(kSecret, 19, 32, HASH_ALG_SM3, want);
}

TEST(Sm2Kdf, SeventyBytesTakeTwoWholeStepsAndSixBytesOfCounterThree) {
    ByteString last = model_sha256(joined({kSecret, {0, 0, 0, 3}}));
    last.resize(6);
    expect_written(kSecret, 70, 32, HASH_ALG_SHA256,
                   joined({model_sha256(joined({kSecret, {0, 0, 0, 1}})),
                           model_sha256(joined({kSecret, {0, 0, 0, 2}})), last}));
}

TEST(Sm2Kdf, CounterRunsOverIntoTheSecondByte) {
    const int32_t klen = 258 * 32 + 7;
    expect_written(kSecret, klen, 32, HASH_ALG_SM3, standard_stream(HASH_ALG_SM3, kSecret, 258 * 32 + 7));
}

TEST(Sm2Kdf, HashesGiveDifferentStreams) {
    const ByteString z = test_bytes(64);
    for (const Twin &twin : kTwins) {
        GuardedBuffer sm3(48), sha256(48);
        EXPECT_EQ(run(twin, z, 48, 32, HASH_ALG_SM3, sm3.data()), 0);
        EXPECT_EQ(run(twin, z, 48, 32, HASH_ALG_SHA256, sha256.data()), 0);
        EXPECT_NE(to_hex(sm3.all()), to_hex(sha256.all())) << twin.name;
    }
}

TEST(Sm2Kdf, SecretOfThreeHundredBytesIsAccepted) {
    const ByteString z = test_bytes(300);
    expect_written(z, 40, 32, HASH_ALG_SM3, standard_stream(HASH_ALG_SM3, z, 40));
    expect_written(z, 40, 32, HASH_ALG_SHA256, standard_stream(HASH_ALG_SHA256, z, 40));
}

TEST(Sm2Kdf, SecretOfThreeHundredAndOneBytesIsRefused) {
    const ByteString z = test_bytes(301);
    for (int32_t z_len : {301, 302, INT32_MAX}) expect_nothing(z, z_len, 40, 32, -1);
}

TEST(Sm2Kdf, NegativeSecretLengthIsRefused) {
    const ByteString z = test_bytes(8);
    for (int32_t z_len : {-1, -300, INT32_MIN}) expect_nothing(z, z_len, 40, 32, -1);
}

TEST(Sm2Kdf, EmptySecretMayBeNullAndHashesTheCounterAlone) {
    for (uint32_t alg : {HASH_ALG_SM3, HASH_ALG_SHA256}) {
        const ByteString want = standard_stream(alg, ByteString(), 33);
        for (const Twin &twin : kTwins) {
            GuardedBuffer out(64);
            EXPECT_EQ(twin.call(nullptr, 0, 33, 32, alg, out.data()), 0) << twin.name;
            EXPECT_EQ(to_hex(out.first(33)), to_hex(want)) << twin.name;
            EXPECT_TRUE(out.untouched_from(33)) << twin.name;
        }
    }
}

TEST(Sm2Kdf, EverySecretLengthUpToTwoBlocks) {
    for (size_t size = 0; size <= 130; ++size) {
        const ByteString z = test_bytes(size, 7);
        for (uint32_t alg : {HASH_ALG_SM3, HASH_ALG_SHA256})
            expect_written(z, 33, 32, alg, standard_stream(alg, z, 33));
    }
}

TEST(Sm2Kdf, LengthOfZeroOrBelowWritesNothingAndSucceeds) {
    for (int32_t klen : {0, -1, -32, -33, INT32_MIN})
        for (int32_t step_len : {1, 20, 32, 64, INT32_MAX}) expect_nothing(kSecret, 5, klen, step_len, 0);
}

TEST(Sm2Kdf, StepOfZeroOrBelowIsRefused) {
    for (int32_t step_len : {0, -1, -32, INT32_MIN}) expect_nothing(kSecret, 5, 40, step_len, -1);
}

TEST(Sm2Kdf, BadSecretLengthOrStepWinsOverALengthOfZero) {
    const ByteString z = test_bytes(301);
    expect_nothing(z, 301, 0, 32, -1);
    expect_nothing(z, -1, 0, 32, -1);
    expect_nothing(z, 5, 0, 0, -1);
    expect_nothing(z, 301, -1, 0, -1);
}

TEST(Sm2Kdf, KeptStepsAreFilledWithWholeDigests) {
    // 48 bytes in steps of 24 are two whole digests, 64 bytes.
    expect_written(kSecret, 48, 24, HASH_ALG_SM3, standard_stream(HASH_ALG_SM3, kSecret, 64));
    // 100 bytes in steps of 20 are five, 160 bytes.
    expect_written(kSecret, 100, 20, HASH_ALG_SHA256, standard_stream(HASH_ALG_SHA256, kSecret, 160));
    // 30 bytes in steps of 20: one step, cut to 30, and an empty remainder.
    expect_written(kSecret, 30, 20, HASH_ALG_SM3, standard_stream(HASH_ALG_SM3, kSecret, 30));
}

TEST(Sm2Kdf, KeptRemainderThatIsAlreadyPassedIsSkipped) {
    // 45 bytes in steps of 20: two digests exceed klen, and nothing remains.
    expect_written(kSecret, 45, 20, HASH_ALG_SM3, standard_stream(HASH_ALG_SM3, kSecret, 64));
    expect_written(kSecret, 45, 20, HASH_ALG_SHA256, standard_stream(HASH_ALG_SHA256, kSecret, 64));
}

TEST(Sm2Kdf, KeptRemainderLongerThanADigestEndsInZeroBytes) {
    ByteString want = standard_stream(HASH_ALG_SM3, kSecret, 32);
    want.resize(45, 0);
    expect_written(kSecret, 45, 48, HASH_ALG_SM3, want);
    // Two steps of 48 hold 64 bytes; of the remaining 36 the digest of counter 3 fills 32.
    want = standard_stream(HASH_ALG_SHA256, kSecret, 96);
    want.resize(100, 0);
    expect_written(kSecret, 100, 48, HASH_ALG_SHA256, want);
}

TEST(Sm2Kdf, KeptStepAboveTheDigestLeavesTheEndUnwritten) {
    expect_written(kSecret, 64, 64, HASH_ALG_SM3, standard_stream(HASH_ALG_SM3, kSecret, 32));
}

TEST(Sm2Kdf, KeptUnknownSelectorGivesZeros) {
    for (uint32_t alg : {2u, 3u, 0x80000000u, 0xFFFFFFFFu}) {
        expect_written(kSecret, 33, 32, alg, ByteString(33, 0));
        expect_written(kSecret, 19, 32, alg, ByteString(19, 0));
        expect_written(kSecret, 200, 24, alg, ByteString(200, 0));
        expect_written(kSecret, 64, 32, alg, ByteString());
        expect_written(kSecret, 20, 20, alg, ByteString());
    }
}

TEST(Sm2Kdf, EveryLengthAndStepAgreesWithTheModel) {
    constexpr int32_t kLongest = 200;
    for (uint32_t alg : {HASH_ALG_SM3, HASH_ALG_SHA256, kUnknownHash}) {
        std::vector<ByteString> digests;
        for (uint32_t counter = 1; alg != kUnknownHash && counter <= kLongest + 1; ++counter)
            digests.push_back(counted_digest(alg, kSecret, counter));
        for (int32_t step_len : {1, 16, 20, 24, 28, 32, 33, 48, 64})
            for (int32_t klen = 0; klen <= kLongest; klen += kStride) {
                // One-byte steps leave room for a digest per byte.
                ByteString want(static_cast<size_t>(klen) * 32 + 32, 0xA5);
                deployed_derivation(digests, klen, step_len, want);
                for (const Twin &twin : kTwins) {
                    GuardedBuffer out(want.size());
                    ASSERT_EQ(run(twin, kSecret, klen, step_len, alg, out.data()), 0);
                    ASSERT_TRUE(out.all() == want && out.untouched_from(want.size()))
                        << twin.name << " klen " << klen << " step_len " << step_len << " hash " << alg;
                }
            }
    }
}

TEST(Sm2Kdf, FirstBytesAreTheStandardStreamForStepsUpToADigest) {
    const ByteString whole = standard_stream(HASH_ALG_SM3, kSecret, 200);
    for (int32_t step_len : {16, 20, 24, 28, 32})
        for (int32_t klen = 1; klen <= 200; ++klen) {
            GuardedBuffer out(512);
            ASSERT_EQ(run(kTwins[1], kSecret, klen, step_len, HASH_ALG_SM3, out.data()), 0);
            const size_t size = static_cast<size_t>(klen);
            ASSERT_EQ(to_hex(out.first(size)), to_hex(ByteString(whole.begin(), whole.begin() + klen)))
                << "klen " << klen << " step_len " << step_len;
        }
}

TEST(KdfWrittenBytes, AgreesWithTheBytesThatAreWritten) {
    for (int32_t step_len : {1, 16, 20, 24, 28, 32})
        for (int32_t klen = 0; klen <= 200; klen += step_len == 1 ? 7 : 1) {
            const size_t written = static_cast<size_t>(
                zokecc::kdf_written_bytes(static_cast<uint32_t>(klen), static_cast<uint32_t>(step_len)));
            // A byte that still has both of two different patterns was not written.
            GuardedBuffer one(written + 64, 0xA5), other(written + 64, 0x5A);
            for (GuardedBuffer *out : {&one, &other})
                ASSERT_EQ(run(kTwins[0], kSecret, klen, step_len, HASH_ALG_SHA256, out->data()), 0);
            ASSERT_TRUE(one.untouched_from(written)) << "klen " << klen << " step_len " << step_len;
            ASSERT_EQ(to_hex(one.first(written)), to_hex(other.first(written)))
                << "klen " << klen << " step_len " << step_len;
        }
}

TEST(KdfWrittenBytes, KnownSizes) {
    EXPECT_EQ(zokecc::kdf_written_bytes(0, 32), 0u);
    EXPECT_EQ(zokecc::kdf_written_bytes(100, 20), 160u);
    EXPECT_EQ(zokecc::kdf_written_bytes(119, 20), 160u);
    EXPECT_EQ(zokecc::kdf_written_bytes(30, 20), 30u);
    EXPECT_EQ(zokecc::kdf_written_bytes(100, 32), 100u);
    EXPECT_EQ(zokecc::kdf_written_bytes(48, 24), 64u);
}

TEST(KdfWrittenBytes, StepOfZeroIsTheLengthAlone) {
    EXPECT_EQ(zokecc::kdf_written_bytes(0, 0), 0u);
    EXPECT_EQ(zokecc::kdf_written_bytes(77, 0), 77u);
}

TEST(KdfWrittenBytes, LongestRequestsDoNotWrapAround) {
    EXPECT_EQ(zokecc::kdf_written_bytes(0x7FFFFFFFu, 20), uint64_t{107374182} * 32);
    EXPECT_EQ(zokecc::kdf_written_bytes(0xFFFFFFFFu, 20), uint64_t{214748364} * 32);
    EXPECT_EQ(zokecc::kdf_written_bytes(0xFFFFFFFFu, 1), uint64_t{0xFFFFFFFFu} * 32);
    EXPECT_EQ(zokecc::kdf_written_bytes(0xFFFFFFFFu, 32), uint64_t{0xFFFFFFFFu});
}

}  // namespace zokecc_test::sm2_kdf_test
