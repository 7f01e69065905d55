// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Ecc_GenPubKey and Ecc_KeyPair_Gen.
#include "tests/support/failing_alloc.h"
#include "tests/support/legacy_records.h"
#include "tests/support/small_group.h"

namespace zokecc_test::keys_test {

namespace {

constexpr uint32_t kGenerate = 0;
constexpr uint32_t kDerive = 1;

// Infinity is written as zeros.
void expect_small_point(GuardedRecord<ecc_point_bytes> &written, const TinyPoint &P, unsigned byte_len) {
    expect_record(written, P.infinite ? 0 : P.x, P.infinite ? 0 : P.y, byte_len);
}

// A key whose bytes the call may write, with a count of its own.
struct WritableKey {
    explicit WritableKey(uint32_t count, size_t room = 80) : bytes(room), record{bytes.data(), count} {}
    GuardedBuffer bytes;
    ecc_scalar record;
};

}  // namespace

TEST(EccGenPubKey, EveryScalarBelowTheOrder) {
    install_small(24);
    for (uint32_t d = 0; d < kSmallN; ++d) {
        Scalar scalar(d, 24);
        GuardedRecord<ecc_point_bytes> Q;
        ASSERT_EQ(Ecc_GenPubKey(scalar.get(), Q.get()), 0) << d;
        expect_small_point(Q, small_multiple(d), 24);
        EXPECT_TRUE(scalar.intact());
    }
}

TEST(EccGenPubKey, WritesTheCurveLengthWhateverTheScalarsIs) {
    for (unsigned byte_len : kLegacyLengths) {
        install_small(byte_len);
        for (size_t length : {2u, 31u, 76u}) {
            Scalar scalar(990, length);
            GuardedRecord<ecc_point_bytes> Q;
            EXPECT_EQ(Ecc_GenPubKey(scalar.get(), Q.get()), 0);
            expect_small_point(Q, small_multiple(990), byte_len);
        }
    }
}

TEST(EccGenPubKey, ScalarZeroGivesZeroBytes) {
    install("sm2p256v1");
    for (const ByteString &zero : {ByteString(), ByteString(1, 0), ByteString(76, 0)}) {
        Scalar scalar(zero);
        GuardedRecord<ecc_point_bytes> Q;
        EXPECT_EQ(Ecc_GenPubKey(scalar.get(), Q.get()), 0);
        expect_record(Q, ByteString(32, 0), ByteString(32, 0));
    }
}

TEST(EccGenPubKey, OneBelowTheOrderIsTheBasePointNegated) {
    install("sm2p256v1");
    mint d = global_curve.n;
    d.words[0] -= 1;
    Scalar scalar(fixed_bytes(d, 32));
    GuardedRecord<ecc_point_bytes> Q;
    EXPECT_EQ(Ecc_GenPubKey(scalar.get(), Q.get()), 0);
    mint y{};
    ASSERT_EQ(mint_sub(&global_curve.p, &global_curve.G.y, &y), 0);
    expect_record(Q, fixed_bytes(global_curve.G.x, 32), fixed_bytes(y, 32));
}

TEST(EccKeyPairGen, GeneratedKeyIsWrittenAtTheCurveLength) {
    for (unsigned byte_len : kLegacyLengths) {
        install_small(byte_len);
        FakeEntropy entropy;
        queue_number(entropy, 700u);
        WritableKey key(byte_len);
        GuardedRecord<ecc_point_bytes> Q;
        EXPECT_EQ(Ecc_KeyPair_Gen(&key.record, Q.get(), kGenerate), 0);
        EXPECT_EQ(to_hex(key.bytes.first(byte_len)), to_hex(number_bytes(700, byte_len)));
        EXPECT_TRUE(key.bytes.untouched_from(byte_len));
        EXPECT_EQ(key.record.length, byte_len);
        expect_small_point(Q, small_multiple(700), byte_len);
        EXPECT_EQ(entropy.number_calls, 1u);
    }
}

TEST(EccKeyPairGen, CountOf32OnA256BitCurveGives32Bytes) {
    install("sm2p256v1");
    mint d{};
    {
        FakeEntropy entropy;
        gen_random_number(&d, &global_curve.n);
    }
    FakeEntropy entropy;
    WritableKey key(32);
    GuardedRecord<ecc_point_bytes> Q;
    EXPECT_EQ(Ecc_KeyPair_Gen(&key.record, Q.get(), kGenerate), 0);
    EXPECT_EQ(key.record.length, 32u);
    EXPECT_EQ(to_hex(key.bytes.first(32)), to_hex(fixed_bytes(d, 32)));
    EXPECT_TRUE(key.bytes.untouched_from(32));
    EXPECT_EQ(entropy.number_calls, 1u);
    EXPECT_EQ(entropy.seedings(), 2u);
    Scalar scalar(fixed_bytes(d, 32));
    GuardedRecord<ecc_point_bytes> derived;
    EXPECT_EQ(Ecc_GenPubKey(scalar.get(), derived.get()), 0);
    EXPECT_EQ(to_hex(Q.bytes()), to_hex(derived.bytes()));
}

TEST(EccKeyPairGen, CountAboveTheCurveLengthIsLowered) {
    install_small(24);
    for (uint32_t count : {25u, 77u, 0x80000000u, 0xFFFFFFFFu}) {
        FakeEntropy entropy;
        queue_number(entropy, 990u);
        WritableKey key(count);
        GuardedRecord<ecc_point_bytes> Q;
        EXPECT_EQ(Ecc_KeyPair_Gen(&key.record, Q.get(), kGenerate), 0);
        EXPECT_EQ(to_hex(key.bytes.first(24)), to_hex(number_bytes(990, 24)));
        EXPECT_TRUE(key.bytes.untouched_from(24));
        EXPECT_EQ(key.record.length, 24u);
    }
}

TEST(EccKeyPairGen, CountBelowTheCurveLengthLosesTheKeyAndKeepsThePublicKey) {
    // Also where the shortest form of the key would have fitted.
    install_small(24);
    for (uint32_t count : {0u, 1u, 2u, 23u}) {
        FakeEntropy entropy;
        queue_number(entropy, 700u);
        WritableKey key(count);
        GuardedRecord<ecc_point_bytes> Q;
        EXPECT_EQ(Ecc_KeyPair_Gen(&key.record, Q.get(), kGenerate), 0);
        EXPECT_TRUE(key.bytes.untouched());
        EXPECT_EQ(key.record.length, 0u);
        expect_small_point(Q, small_multiple(700), 24);
        EXPECT_EQ(entropy.number_calls, 1u);
    }
}

TEST(EccKeyPairGen, KeyBytesMayBeNullWhereNothingIsWrittenToThem) {
    install_small(24);
    FakeEntropy entropy;
    queue_number(entropy, 700u);
    ecc_scalar key{nullptr, 23};
    GuardedRecord<ecc_point_bytes> Q;
    EXPECT_EQ(Ecc_KeyPair_Gen(&key, Q.get(), kGenerate), 0);
    EXPECT_EQ(key.length, 0u);
    expect_small_point(Q, small_multiple(700), 24);
}

TEST(EccKeyPairGen, DrawOfZeroIsUsed) {
    install_small(28);
    FakeEntropy entropy;
    queue_number(entropy, 0u);
    WritableKey key(28);
    GuardedRecord<ecc_point_bytes> Q;
    EXPECT_EQ(Ecc_KeyPair_Gen(&key.record, Q.get(), kGenerate), 0);
    EXPECT_EQ(to_hex(key.bytes.first(28)), std::string(56, '0'));
    EXPECT_EQ(key.record.length, 28u);
    expect_record(Q, 0, 0, 28);
    EXPECT_EQ(entropy.number_calls, 1u);
}

TEST(EccKeyPairGen, DerivingLeavesTheKeyAloneAndDrawsNothing) {
    install_small(28);
    for (uint32_t d : {0u, 1u, 2u, 123u, kSmallN - 1}) {
        for (size_t length : {2u, 28u, 76u}) {
            FakeEntropy entropy;
            Scalar key(d, length);
            GuardedRecord<ecc_point_bytes> Q;
            EXPECT_EQ(Ecc_KeyPair_Gen(key.get(), Q.get(), kDerive), 0);
            expect_small_point(Q, small_multiple(d), 28);
            EXPECT_TRUE(key.intact());
            EXPECT_EQ(entropy.number_calls + entropy.calls(), 0u);
        }
    }
}

TEST(EccKeyPairGen, KeptUnknownModeGivesThePublicKeyOfZero) {
    for (unsigned byte_len : kLegacyLengths) {
        install_small(byte_len);
        for (uint32_t mode : {2u, 7u, 0xFFFFFFFFu}) {
            FakeEntropy entropy;
            Scalar key(123, byte_len);
            GuardedRecord<ecc_point_bytes> Q;
            EXPECT_EQ(Ecc_KeyPair_Gen(key.get(), Q.get(), mode), 0);
            expect_record(Q, 0, 0, byte_len);
            EXPECT_TRUE(key.intact());
            EXPECT_EQ(entropy.number_calls + entropy.calls(), 0u);
        }
    }
}

TEST(EccKeyPairGen, KeptUnknownModeDoesNotLookAtTheKey) {
    install_small(32);
    uint8_t nothing = 0;
    ecc_scalar wide{&nothing, 0xFFFFFFFFu};
    ecc_scalar null_bytes{nullptr, 32};
    for (ecc_scalar *key : {static_cast<ecc_scalar *>(nullptr), &wide, &null_bytes}) {
        GuardedRecord<ecc_point_bytes> Q;
        EXPECT_EQ(Ecc_KeyPair_Gen(key, Q.get(), 2), 0);
        expect_record(Q, 0, 0, 32);
    }
    EXPECT_EQ(wide.length, 0xFFFFFFFFu);
}

TEST(EccKeyPairGen, KeptUnknownModeWithoutACurveWritesTheLengthOnly) {
    uninstall();
    Scalar key(123, 32);
    GuardedRecord<ecc_point_bytes> Q;
    EXPECT_EQ(Ecc_KeyPair_Gen(key.get(), Q.get(), 2), 0);
    expect_record(Q, ByteString(), ByteString());
}

TEST(EccKeyPairGen, KeptUnknownModeWithoutOrderOrPrimeGivesZeroBytes) {
    for (mint GlobalCurve::*number : {&GlobalCurve::n, &GlobalCurve::p}) {
        install_small(28);
        global_curve.*number = mint{};
        Scalar key(123, 32);
        GuardedRecord<ecc_point_bytes> Q;
        EXPECT_EQ(Ecc_KeyPair_Gen(key.get(), Q.get(), 7), 0);
        expect_record(Q, 0, 0, 28);
    }
    uninstall();
}

TEST(EccKeyPairGen, AllocatesNothing) {
    install_small(32);
    for (uint32_t mode : {0u, 1u, 2u}) {
        Scalar d(123, 32);
        GuardedRecord<ecc_point_bytes> Q;
        FailingAlloc failing(1);
        EXPECT_EQ(Ecc_KeyPair_Gen(d.get(), Q.get(), mode), 0);
        EXPECT_EQ(failing.allocations, 0u);
    }
}

}  // namespace zokecc_test::keys_test
