// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The check of a whole curve record: ZOK_CurveVerify.
#include <gtest/gtest.h>
#include <zokecc/ecc.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "tests/ecc/multiples.h"
#include "tests/ecc/tiny_record.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/naive_int.h"
#include "tests/support/tiny_curve.h"

namespace zokecc_test::verify_curve_test {

namespace {

void put(uint8_t *field, const mint &value, size_t size) {
    const ByteString bytes = fixed_bytes(value, size);
    std::copy(bytes.begin(), bytes.end(), field);
}

// y^2 = x^3 + 2x + 3 modulo 97 with G = (3, 6) of order 5, in 20 bytes.
CurvePara tiny() { return tiny_record<CurvePara>(20, 1); }

CurvePara tiny_with_order(uint32_t n) {
    CurvePara record = tiny();
    set_order(record, 20, n);
    return record;
}

// The record of a curve with another order.
CurvePara with_order(const Curve &c, const Natural &n) {
    CurvePara record = c.record(0);
    put(record.n, n.to_mint(), c.byte_len);
    return record;
}

uint32_t verify(const CurvePara &record) { return ZOK_CurveVerify(record.type, &record); }

class ZokCurveVerifyOn : public testing::TestWithParam<std::string> {};

TEST_P(ZokCurveVerifyOn, NamedCurveIsValid) {
    const CurvePara record = curve(GetParam()).record(0);
    EXPECT_EQ(verify(record), ZOK_OK);
    if (record.type == 4) {
        EXPECT_EQ(ZOK_CurveVerify(5, &record), ZOK_OK);
        EXPECT_EQ(ZOK_CurveVerify(6, &record), ZOK_OK);
    }
}

TEST_P(ZokCurveVerifyOn, AnotherOrderIsRefused) {
    const Curve &c = curve(GetParam());
    const Natural n(c.n), one(1);
    EXPECT_EQ(verify(with_order(c, n - one)), ZOK_ERR_INTERNAL);
    // n + 1 fits, because no order here is all ones.
    EXPECT_EQ(verify(with_order(c, n + one)), ZOK_ERR_INTERNAL);
    EXPECT_EQ(verify(with_order(c, one)), ZOK_ERR_INTERNAL);
    EXPECT_EQ(verify(with_order(c, Natural(c.p))), ZOK_ERR_INTERNAL);
}

TEST_P(ZokCurveVerifyOn, OneFlippedBitInAnyNumberIsRefused) {
    const Curve &c = curve(GetParam());
    const CurvePara good = c.record(0);
    // One bit near each end of every number.
    for (size_t field = 0; field < 6; ++field)
        for (size_t byte : {size_t{3}, size_t{c.byte_len - 1u}}) {
            CurvePara record = good;
            uint8_t *bytes = reinterpret_cast<uint8_t *>(&record) + 64 * field;
            bytes[byte] = static_cast<uint8_t>(bytes[byte] ^ 0x10u);
            EXPECT_EQ(verify(record), ZOK_ERR_INTERNAL) << "field " << field << " byte " << byte;
        }
}

INSTANTIATE_TEST_SUITE_P(Curves, ZokCurveVerifyOn, testing::ValuesIn(session_curve_names()),
                         curve_test_name<testing::TestParamInfo<std::string>>);

}  // namespace

TEST(ZokCurveVerify, TypesZeroAndSevenReturn1000027) {
    const CurvePara record = tiny();
    for (uint32_t type : {0u, 7u, 8u, 0x80000001u, 0xFFFFFFFFu})
        EXPECT_EQ(ZOK_CurveVerify(type, &record), ZOK_ERR_ARGUMENT) << type;
}

TEST(ZokCurveVerify, NullRecordReturns1000027) {
    for (uint32_t type : {0u, 1u, 4u, 6u, 7u}) EXPECT_EQ(ZOK_CurveVerify(type, nullptr), ZOK_ERR_ARGUMENT);
}

TEST(ZokCurveVerify, LengthFollowsTheTypeArgumentAndNotTheRecord) {
    const uint32_t lengths[] = {20, 24, 28, 32, 32, 32};
    for (const char *name : {"brainpoolP160r1", "secp192r1", "secp224r1", "sm2test256"}) {
        CurvePara record = curve(name).record(0);
        record.type = 99;
        for (uint32_t type = 1; type <= 6; ++type)
            EXPECT_EQ(ZOK_CurveVerify(type, &record) == ZOK_OK, lengths[type - 1] == curve(name).byte_len)
                << name << " " << type;
    }
}

TEST(ZokCurveVerify, BytesBehindTheNumbersAndTheHashAreNotRead) {
    CurvePara record = tiny();
    for (uint8_t *field : {record.p, record.a, record.b, record.Gx, record.Gy, record.n})
        std::memset(field + 20, 0xFF, 44);
    record.hash_selector = 77;
    const CurvePara before = record;
    EXPECT_EQ(ZOK_CurveVerify(1, &record), ZOK_OK);
    EXPECT_TRUE(same_bytes(record, before));
}

TEST(ZokCurveVerify, BasePointOffTheCurveIsRefused) {
    CurvePara record = tiny();
    record.Gy[19] = 7;
    EXPECT_EQ(verify(record), ZOK_ERR_INTERNAL);
    record = tiny();
    record.Gx[19] = 2;
    EXPECT_EQ(verify(record), ZOK_ERR_INTERNAL);
}

TEST(ZokCurveVerify, YOfZeroIsRefusedOnAnOtherwiseValidCurve) {
    // (96, 0) is on the curve and has order 2.
    CurvePara record = tiny_with_order(2);
    record.Gx[19] = 96;
    record.Gy[19] = 0;
    EXPECT_EQ(verify(record), ZOK_ERR_INTERNAL);
    // y = p is zero, too.
    record.Gy[19] = 97;
    EXPECT_EQ(verify(record), ZOK_ERR_INTERNAL);
}

TEST(ZokCurveVerify, RightSideOfZeroIsRefused) {
    // b = 97 - (3^3 + 2 * 3) makes the right side at x = 3 zero, with y = 6 and with y = 0.
    CurvePara record = tiny();
    record.b[19] = 64;
    EXPECT_EQ(verify(record), ZOK_ERR_INTERNAL);
    record.Gy[19] = 0;
    EXPECT_EQ(verify(record), ZOK_ERR_INTERNAL);
    set_order(record, 20, 0);
    EXPECT_EQ(verify(record), ZOK_ERR_INTERNAL) << "before the order is looked at";
}

TEST(ZokCurveVerify, ModulusOfZeroIsRefused) {
    CurvePara record = tiny();
    record.p[19] = 0;
    EXPECT_EQ(verify(record), ZOK_ERR_INTERNAL);
    const CurvePara nothing{};
    EXPECT_EQ(ZOK_CurveVerify(1, &nothing), ZOK_ERR_INTERNAL);
}

TEST(ZokCurveVerify, KeptOrderZeroIsAccepted) {
    EXPECT_EQ(verify(tiny_with_order(0)), ZOK_OK);
    EXPECT_EQ(verify(with_order(curve("sm2p256v1"), Natural())), ZOK_OK);
}

TEST(ZokCurveVerify, KeptMultiplesOfTheOrderAreAccepted) {
    for (uint32_t n : {10u, 15u, 100u, 5000u}) EXPECT_EQ(verify(tiny_with_order(n)), ZOK_OK) << n;
    for (uint32_t n : {1u, 2u, 4u, 6u, 99u, 101u})
        EXPECT_EQ(verify(tiny_with_order(n)), ZOK_ERR_INTERNAL) << n;
}

TEST(ZokCurveVerify, KeptWindowMeetsInfinityBelowTheOrder) {
    // The last addition of wNAF meets an equal point at n - 2 * (n mod 16) and returns
    // infinity if that remainder is 1, 3, 5 or 7.
    struct {
        const char *name;
        uint32_t below;
    } const curves[] = {
        {"sm2p256v1", 6}, {"secp256r1", 2}, {"secp192r1", 2}, {"secp256k1", 2}, {"brainpoolP256r1", 14}};
    for (auto [name, below] : curves) {
        const Curve &c = curve(name);
        EXPECT_EQ(verify(with_order(c, Natural(c.n) - Natural(below))), ZOK_OK) << name;
        EXPECT_EQ(verify(with_order(c, Natural(c.n) - Natural(below + 2))), ZOK_ERR_INTERNAL) << name;
    }
}

TEST(ZokCurveVerify, KeptSingularCurveIsAccepted) {
    // y^2 = x^3 has a cusp; its finite points add like numbers modulo 97, so that each has order 97.
    CurvePara record = tiny();
    record.a[19] = 0;
    record.b[19] = 0;
    record.Gx[19] = 1;
    record.Gy[19] = 1;
    set_order(record, 20, 97);
    EXPECT_EQ(verify(record), ZOK_OK);
}

TEST(ZokCurveVerify, EveryPointAndOrderOfSmallCurves) {
    for (auto [p, a, b] : {std::array<uint32_t, 3>{23, 1, 1}, {29, 4, 20}, {31, 2, 3}}) {
        const TinyCurve c(p, a, b);
        for (const TinyPoint &P : c.points()) {
            if (P.infinite) continue;
            CurvePara record{};
            put(record.p, tiny_number(p), 20);
            put(record.a, tiny_number(a), 20);
            put(record.b, tiny_number(b), 20);
            put(record.Gx, tiny_number(P.x), 20);
            put(record.Gy, tiny_number(P.y), 20);
            for (uint32_t n = 0; n <= 2 * c.order(); ++n) {
                put(record.n, tiny_number(n), 20);
                const bool valid = P.y != 0 && c.library_window(tiny_number(n), P).infinite;
                ASSERT_EQ(ZOK_CurveVerify(1, &record), valid ? ZOK_OK : ZOK_ERR_INTERNAL)
                    << "p " << p << " a " << a << " b " << b << " G " << P.x << "," << P.y << " n " << n;
            }
        }
    }
}

TEST(ZokCurveVerify, FailedDigitBufferReturnsMinusOne) {
    const CurvePara record = tiny();
    FailingAlloc failing(1);
    EXPECT_EQ(verify(record), ZOK_ERR_INTERNAL);
    EXPECT_EQ(failing.allocations, 1u);
    EXPECT_EQ(failing.outstanding, 0);
}

TEST(ZokCurveVerify, KeptFailedDigitBufferOfOrderZeroIsNotSeen) {
    const CurvePara record = tiny_with_order(0);
    FailingAlloc failing(1);
    // The one byte of digits cannot be allocated, but the product is infinite before that.
    EXPECT_EQ(verify(record), kHardened ? ZOK_ERR_INTERNAL : ZOK_OK);
    EXPECT_EQ(failing.allocations, 1u);
}

TEST(ZokCurveVerify, KeptEveryCheckKeepsOneDigitBuffer) {
    FailingAlloc counter;
    EXPECT_EQ(verify(tiny()), ZOK_OK);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(1));
    EXPECT_EQ(verify(tiny_with_order(4)), ZOK_ERR_INTERNAL);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(2));
}

TEST(ZokCurveVerify, EarlyRefusalsAllocateNothing) {
    CurvePara record = tiny();
    record.Gy[19] = 7;
    FailingAlloc counter;
    EXPECT_EQ(verify(record), ZOK_ERR_INTERNAL);
    EXPECT_EQ(ZOK_CurveVerify(0, &record), ZOK_ERR_ARGUMENT);
    EXPECT_EQ(ZOK_CurveVerify(1, nullptr), ZOK_ERR_ARGUMENT);
    EXPECT_EQ(counter.allocations, 0u);
}

TEST(ZokCurveVerify, CurveOfTheProcessIsNeitherReadNorChanged) {
    static const GlobalCurve none{};
    global_curve = none;
    EXPECT_EQ(verify(tiny()), ZOK_OK);
    EXPECT_TRUE(same_bytes(global_curve, none));
}

}  // namespace zokecc_test::verify_curve_test
