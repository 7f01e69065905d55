// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Ecc_GenPubKey and Ecc_KeyPair_Gen.
#include <optional>

#include "tests/support/failing_alloc.h"
#include "tests/support/legacy_records.h"
#include "tests/support/small_group.h"

namespace zokecc_test::keys_test {

namespace {

constexpr uint32_t kGenerate = 0;
constexpr uint32_t kDerive = 1;

// Infinity is written as zeros.
ByteString x_of(const TinyPoint &P, size_t size) { return number_bytes(P.infinite ? 0 : P.x, size); }
ByteString y_of(const TinyPoint &P, size_t size) { return number_bytes(P.infinite ? 0 : P.y, size); }

void expect_small_point(const GuardedRecord<ecc_point_bytes> &written, const TinyPoint &P,
                        unsigned byte_len) {
    expect_record(written, x_of(P, byte_len), y_of(P, byte_len));
}

// The public key of d, by Ecc_KeyPair_Gen if there is a mode; d is unchanged, and nothing is drawn.
void expect_derived(const ByteString &d, const ByteString &x, const ByteString &y,
                    std::optional<uint32_t> mode = {}) {
    FakeEntropy entropy;
    Scalar key(d);
    GuardedRecord<ecc_point_bytes> Q;
    ASSERT_EQ(mode ? Ecc_KeyPair_Gen(key.get(), Q.get(), *mode) : Ecc_GenPubKey(key.get(), Q.get()), 0);
    expect_record(Q, x, y);
    EXPECT_TRUE(key.intact());
    EXPECT_EQ(entropy.number_calls + entropy.calls(), 0u);
}

// A pair on a small curve from the drawn number, with a capacity for the key's bytes.
struct Generated {
    Generated(uint32_t count, uint32_t drawn) : key{bytes.data(), count} {
        FakeEntropy entropy;
        queue_number(entropy, drawn);
        EXPECT_EQ(Ecc_KeyPair_Gen(&key, Q.get(), kGenerate), 0);
        EXPECT_EQ(entropy.number_calls, 1u);
    }
    void expect(const ByteString &d, const TinyPoint &P, unsigned byte_len) {
        EXPECT_EQ(to_hex(bytes.first(d.size())), to_hex(d));
        EXPECT_TRUE(bytes.untouched_from(d.size()));
        EXPECT_EQ(key.length, d.size());
        expect_small_point(Q, P, byte_len);
    }
    GuardedBuffer bytes{80};
    ecc_scalar key;
    GuardedRecord<ecc_point_bytes> Q;
};

}  // namespace

TEST(EccGenPubKey, EveryScalarBelowTheOrder) {
    install_small(24);
    for (uint32_t d = kLeastKey; d < kSmallN; ++d)
        expect_derived(number_bytes(d, 24), x_of(small_multiple(d), 24), y_of(small_multiple(d), 24));
}

TEST(EccGenPubKey, WritesTheCurveLengthWhateverTheScalarsIs) {
    const TinyPoint P = small_multiple(990);
    for (unsigned byte_len : kLegacyLengths) {
        install_small(byte_len);
        for (size_t length : {2u, 31u, 76u})
            expect_derived(number_bytes(990, length), x_of(P, byte_len), y_of(P, byte_len));
    }
}

TEST(EccGenPubKey, ScalarZeroGivesZeroBytes) {
    install("sm2p256v1");
    for (const ByteString &zero : {ByteString(), ByteString(1, 0), ByteString(76, 0)})
        expect_derived(zero, ByteString(32, 0), ByteString(32, 0));
}

TEST(EccGenPubKey, OneBelowTheOrderIsTheBasePointNegated) {
    install("sm2p256v1");
    mint d = global_curve.n, y{};
    d.words[0] -= 1;
    ASSERT_EQ(mint_sub(&global_curve.p, &global_curve.G.y, &y), 0);
    expect_derived(fixed_bytes(d, 32), fixed_bytes(global_curve.G.x, 32), fixed_bytes(y, 32));
}

TEST(EccKeyPairGen, GeneratedKeyIsWrittenAtTheCurveLength) {
    for (unsigned byte_len : kLegacyLengths) {
        install_small(byte_len);
        Generated(byte_len, 700).expect(number_bytes(700, byte_len), small_multiple(700), byte_len);
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
    GuardedBuffer bytes(32);
    ecc_scalar key = {bytes.data(), 32};
    GuardedRecord<ecc_point_bytes> Q;
    EXPECT_EQ(Ecc_KeyPair_Gen(&key, Q.get(), kGenerate), 0);
    EXPECT_EQ(key.length, 32u);
    EXPECT_EQ(to_hex(bytes.all()), to_hex(fixed_bytes(d, 32)));
    EXPECT_TRUE(bytes.untouched_from(32));
    EXPECT_EQ(entropy.number_calls, 1u);
    EXPECT_EQ(entropy.seedings(), 2u);
    Scalar scalar(fixed_bytes(d, 32));
    GuardedRecord<ecc_point_bytes> derived;
    EXPECT_EQ(Ecc_GenPubKey(scalar.get(), derived.get()), 0);
    EXPECT_EQ(to_hex(Q.bytes()), to_hex(derived.bytes()));
}

TEST(EccKeyPairGen, CountAboveTheCurveLengthIsLowered) {
    install_small(24);
    for (uint32_t count : {25u, 77u, 0x80000000u, 0xFFFFFFFFu})
        Generated(count, 990).expect(number_bytes(990, 24), small_multiple(990), 24);
}

TEST(EccKeyPairGen, CountBelowTheCurveLengthLosesTheKeyAndKeepsThePublicKey) {
    // Even if the shortest form of the key would have fitted.
    install_small(24);
    for (uint32_t count : {0u, 1u, 2u, 23u}) Generated(count, 700).expect({}, small_multiple(700), 24);
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
    Generated(28, 0).expect(ByteString(28, 0), TinyPoint{}, 28);
}

TEST(EccKeyPairGen, DerivingLeavesTheKeyAloneAndDrawsNothing) {
    install_small(28);
    for (uint32_t d : {kLeastKey, 1u, 2u, 123u, kSmallN - 1})
        for (size_t length : {2u, 28u, 76u})
            expect_derived(number_bytes(d, length), x_of(small_multiple(d), 28), y_of(small_multiple(d), 28),
                           kDerive);
}

TEST(EccKeyPairGen, KeptUnknownModeGivesThePublicKeyOfZero) {
    for (unsigned byte_len : kLegacyLengths) {
        install_small(byte_len);
        for (uint32_t mode : {2u, 7u, 0xFFFFFFFFu})
            expect_derived(number_bytes(123, byte_len), ByteString(byte_len, 0), ByteString(byte_len, 0),
                           mode);
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
    expect_derived(number_bytes(123, 32), {}, {}, 2);
}

TEST(EccKeyPairGen, KeptUnknownModeWithoutOrderOrPrimeGivesZeroBytes) {
    for (mint GlobalCurve::*number : {&GlobalCurve::n, &GlobalCurve::p}) {
        install_small(28);
        global_curve.*number = mint{};
        expect_derived(number_bytes(123, 32), ByteString(28, 0), ByteString(28, 0), 7);
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
