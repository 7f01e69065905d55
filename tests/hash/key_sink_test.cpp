// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The destination of a derived key: in place, or through a block if whole digests need more room than
// the caller has.
#include "hash/key_sink.h"

#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include "tests/support/failing_alloc.h"
#include "tests/support/hex.h"
#include "tests/support/kdf_model.h"

namespace zokecc_test::key_sink_test {

using zokecc::KeySink;

namespace {

constexpr uint32_t kUnknownHash = 2;

// A derivation through a sink, as its callers do it.
struct Derived {
    bool ready;
    unsigned allocations;
    int outstanding;
    size_t block_size;
};

Derived derive(uint8_t *key, int32_t klen, uint32_t step_len, uint32_t alg, const ByteString &z,
               unsigned fail_at = 0) {
    FailingAlloc counter(fail_at);
    bool ready = false;
    {
        KeySink sink(key, klen, step_len, alg);
        ready = sink.is_ready();
        if (ready) {
            sm2_kdf(z.data(), static_cast<int32_t>(z.size()), klen, static_cast<int32_t>(step_len), alg,
                    sink.target());
            sink.deliver();
        }
    }
    return {ready, counter.allocations, counter.outstanding, counter.largest_size};
}

}  // namespace

TEST(KeySink, StepOfADigestDerivesInPlace) {
    for (int32_t klen : {1, 16, 31, 32, 33, 64, 100}) {
        GuardedBuffer key(128);
        FailingAlloc counter;
        KeySink sink(key.data(), klen, 32, HASH_ALG_SM3);
        EXPECT_TRUE(sink.is_ready()) << klen;
        EXPECT_EQ(sink.target(), key.data()) << klen;
        sink.deliver();
        EXPECT_TRUE(key.untouched()) << "nothing to hand over in place";
        EXPECT_EQ(counter.allocations, 0u) << klen;
    }
}

TEST(KeySink, ShortStepGoesThroughABlockOfWholeDigests) {
    const ByteString z = test_bytes(40);
    GuardedBuffer key(45);
    const Derived done = derive(key.data(), 45, 20, HASH_ALG_SM3, z);
    EXPECT_TRUE(done.ready);
    EXPECT_EQ(done.allocations, 1u);
    EXPECT_EQ(done.outstanding, 0);
    EXPECT_EQ(done.block_size, 64u);
    EXPECT_EQ(to_hex(key.all()), to_hex(standard_stream(HASH_ALG_SM3, z, 45)));
    EXPECT_TRUE(key.untouched_from(45));
}

TEST(KeySink, BlockStartsAsZeroAndIsNotTheKey) {
    GuardedBuffer key(40);
    KeySink sink(key.data(), 40, 20, HASH_ALG_SHA256);
    ASSERT_TRUE(sink.is_ready());
    ASSERT_NE(sink.target(), key.data());
    EXPECT_EQ(to_hex(sink.target(), 64), to_hex(ByteString(64, 0)));
    EXPECT_TRUE(key.untouched());
    sink.target()[0] = 0x11;
    sink.target()[39] = 0x22;
    sink.target()[40] = 0x33;
    sink.deliver();
    EXPECT_EQ(key.data()[0], 0x11);
    EXPECT_EQ(key.data()[39], 0x22);
    EXPECT_TRUE(key.untouched_from(40));
}

TEST(KeySink, OneStepCutToTheLengthNeedsNoBlock) {
    GuardedBuffer key(30);
    FailingAlloc counter(1);
    KeySink sink(key.data(), 30, 20, HASH_ALG_SM3);
    EXPECT_TRUE(sink.is_ready());
    EXPECT_EQ(sink.target(), key.data());
    EXPECT_EQ(counter.allocations, 0u);
}

TEST(KeySink, FailedBlockIsReportedAndNothingIsWritten) {
    GuardedBuffer key(45);
    const Derived done = derive(key.data(), 45, 20, HASH_ALG_SM3, test_bytes(40), 1);
    EXPECT_FALSE(done.ready);
    EXPECT_EQ(done.allocations, 1u);
    EXPECT_EQ(done.outstanding, 0);
    EXPECT_TRUE(key.untouched());
}

TEST(KeySink, LengthBelowOneNeedsNoBlock) {
    for (int32_t klen : {0, -1, INT32_MIN}) {
        GuardedBuffer key(8);
        FailingAlloc counter(1);
        KeySink sink(key.data(), klen, 20, HASH_ALG_SM3);
        EXPECT_TRUE(sink.is_ready()) << klen;
        sink.deliver();
        EXPECT_EQ(counter.allocations, 0u) << klen;
        EXPECT_TRUE(key.untouched()) << klen;
    }
}

TEST(KeySink, UnknownHashDerivesInPlaceAndLeavesWholeStepsUnwritten) {
    GuardedBuffer zeros(45), nothing(60);
    const Derived remainder = derive(zeros.data(), 45, 20, kUnknownHash, test_bytes(40));
    EXPECT_TRUE(remainder.ready);
    EXPECT_EQ(remainder.allocations, 0u);
    EXPECT_EQ(to_hex(zeros.all()), to_hex(ByteString(45, 0)));
    EXPECT_TRUE(zeros.untouched_from(45));
    const Derived whole = derive(nothing.data(), 60, 20, kUnknownHash, test_bytes(40));
    EXPECT_TRUE(whole.ready);
    EXPECT_EQ(whole.allocations, 0u);
    EXPECT_TRUE(nothing.untouched());
}

TEST(KeySink, EveryLengthGetsExactlyTheStandardStream) {
    const ByteString z = test_bytes(40, 3);
    const ByteString whole = standard_stream(HASH_ALG_SHA256, z, 200);
    for (uint32_t step_len : {20u, 24u, 28u, 32u})
        for (int32_t klen = 0; klen <= 200; ++klen) {
            const size_t size = static_cast<size_t>(klen);
            GuardedBuffer key(size);
            const Derived done = derive(key.data(), klen, step_len, HASH_ALG_SHA256, z);
            ASSERT_TRUE(done.ready && key.untouched_from(size))
                << "klen " << klen << " step_len " << step_len;
            ASSERT_EQ(done.outstanding, 0);
            ASSERT_TRUE(key.all() == ByteString(whole.begin(), whole.begin() + klen))
                << "klen " << klen << " step_len " << step_len;
        }
}

TEST(DerivationWrites, AnyLengthForAKnownHash) {
    for (uint32_t alg : {HASH_ALG_SM3, HASH_ALG_SHA256}) {
        EXPECT_FALSE(zokecc::derivation_writes(0, 32, alg));
        EXPECT_FALSE(zokecc::derivation_writes(-1, 32, alg));
        EXPECT_TRUE(zokecc::derivation_writes(1, 32, alg));
        EXPECT_TRUE(zokecc::derivation_writes(32, 32, alg));
    }
}

TEST(DerivationWrites, OnlyARemainderForAnUnknownHash) {
    EXPECT_FALSE(zokecc::derivation_writes(0, 32, kUnknownHash));
    EXPECT_FALSE(zokecc::derivation_writes(-1, 32, kUnknownHash));
    EXPECT_FALSE(zokecc::derivation_writes(64, 32, kUnknownHash));
    EXPECT_FALSE(zokecc::derivation_writes(20, 20, kUnknownHash));
    EXPECT_TRUE(zokecc::derivation_writes(1, 32, kUnknownHash));
    EXPECT_TRUE(zokecc::derivation_writes(65, 32, kUnknownHash));
}

TEST(DerivationWrites, AgreesWithTheDerivation) {
    for (uint32_t alg : {HASH_ALG_SM3, kUnknownHash})
        for (int32_t step_len : {20, 24, 28, 32})
            for (int32_t klen = -1; klen <= 100; ++klen) {
                GuardedBuffer out(256);
                ASSERT_EQ(sm2_kdf(nullptr, 0, klen, step_len, alg, out.data()), 0);
                ASSERT_EQ(zokecc::derivation_writes(klen, static_cast<uint32_t>(step_len), alg),
                          !out.untouched())
                    << "klen " << klen << " step_len " << step_len << " hash " << alg;
            }
}

}  // namespace zokecc_test::key_sink_test
