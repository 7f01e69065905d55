// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Nothing hangs: every call that draws, with a stuck generator and on curves without any usable
// number, ends after at most 1,024 draws; so do the square root and the calls that use it.
#include "tests/robustness/scheme_arguments.h"
#include "tests/robustness/session_arguments.h"
#include "tests/support/legacy_exchange.h"

namespace zokecc_test::loops_test {

using namespace robustness;

namespace {

constexpr unsigned kMost = 1024;

// y^2 = x^3 + ax + b over 1009 elements, each degenerate in the way that its test needs.
struct Degenerate {
    const char *what;
    uint32_t p, a, b, Gx, Gy, n;
};
const Degenerate kCurves[] = {
    {"the base point (0, 0)", 1009, 2, 0, 0, 0, 991},
    {"a base point of order 2", 1009, 2, 1009 - 3, 1, 0, 991},
    {"the order 1", 1009, 2, 25, 2, 365, 1},
    {"the order 2", 1009, 2, 25, 2, 365, 2},
    {"an order above p", 1009, 2, 25, 2, 365, 5003},
    {"the curve y^2 = x^3", 1009, 0, 0, 1, 1, 991},
    {"the prime 3", 3, 0, 1, 0, 1, 6},
    {"a prime that is none", 1008, 2, 13, 1, 4, 991},
};

Curve in_bytes(const Degenerate &curve, unsigned byte_len) {
    Curve out = legacy_curve(byte_len, curve.p, curve.a, curve.b, curve.Gx, curve.Gy, curve.n);
    out.session_type = byte_len == 20 ? 1 : 4;
    return out;
}

struct Stuck {
    const char *what;
    void (*apply)(FakeEntropy &);
};
void rand_of_zero(FakeEntropy &entropy) { entropy.stuck = true; }
void rand_at_its_largest(FakeEntropy &entropy) {
    entropy.stuck = true;
    entropy.stuck_value = 0x7FFFFFFF;
}
template <uint32_t value>
void always(FakeEntropy &entropy) {
    entropy.queued_numbers.assign(3000, small(value));
}
const Stuck kStuck[] = {{"rand gives 0", rand_of_zero},
                        {"rand gives its largest", rand_at_its_largest},
                        {"every number is 0", always<0>},
                        {"every number is 1", always<1>},
                        {"every number is n - 1", always<kSmallN - 1>}};

const NamedSessionCall kDrawing[] = {kGenerate,     kSign,         kSignHash,     kEncrypt,     kFlatEncrypt,
                                     kTemporary[0], kTemporary[1], kTemporary[2], kTemporary[3]};

void expect_an_end(const NamedSessionCall &call, void *session, uint32_t algorithm, uint32_t encryption,
                   const Stuck &stuck) {
    SCOPED_TRACE(std::string(call.name) + ", " + stuck.what);
    SessionArguments a;
    a.session = session;
    a.algorithm = algorithm;
    a.encryption = encryption;
    FakeEntropy entropy;
    stuck.apply(entropy);
    (a.*call.call)();
    EXPECT_LE(entropy.number_calls, kMost);
}

void every_session_call_ends(void *session) {
    for (const Stuck &stuck : kStuck)
        for (const NamedSessionCall &call : kDrawing) {
            expect_an_end(call, session, ZOK_ALG_SM2_SIGN, ZOK_ALG_SM2_ENCRYPT, stuck);
            expect_an_end(call, session, ZOK_ALG_ECDSA_SIGN, ZOK_ALG_MULTIPLICATIVE, stuck);
        }
}

const SchemeCall kDrawingSchemes[] = {&SchemeArguments::ecdsa_sign, &SchemeArguments::sm2_sign,
                                      &SchemeArguments::encrypt,    &SchemeArguments::eces_encry,
                                      &SchemeArguments::key_pair,   &SchemeArguments::format};

void every_scheme_call_ends(const Curve &curve) {
    for (const Stuck &stuck : kStuck)
        for (SchemeCall call : kDrawingSchemes) {
            SCOPED_TRACE(stuck.what);
            SchemeArguments a;
            ecc_curve_bytes record = curve.legacy_record();
            Curve_Init(&record);  // returns 1 and -1, too: the curve is installed nevertheless
            FakeEntropy entropy;
            stuck.apply(entropy);
            (a.*call)();
            EXPECT_LE(entropy.number_calls, kMost);
        }
}

}  // namespace

TEST(Loops, EverySessionCallThatDrawsEndsWithAStuckGenerator) { every_session_call_ends(small_session()); }

TEST(Loops, EverySchemeCallThatDrawsEndsWithAStuckGenerator) { every_scheme_call_ends(small_curve_of(32)); }

TEST(Loops, EveryCallThatDrawsEndsOnADegenerateCurve) {
    for (const Degenerate &curve : kCurves) {
        SCOPED_TRACE(curve.what);
        CurvePara record = in_bytes(curve, 20).record(HASH_ALG_SM3);
        void *session = nullptr;
        ASSERT_EQ(ZOK_OpenSession(&session, &record), ZOK_OK);
        every_session_call_ends(session);
        EXPECT_EQ(ZOK_CloseSession(session), ZOK_OK);
        every_scheme_call_ends(in_bytes(curve, 32));
    }
}

TEST(Loops, EcdsaOverTheBasePointZeroGivesUpAfter1024Draws) {
    Session session(in_bytes(kCurves[0], 20));
    SessionArguments a;
    a.session = session.handle();
    a.algorithm = ZOK_ALG_ECDSA_SIGN;
    for (const NamedSessionCall &call : {kSign, kSignHash}) {
        FakeEntropy entropy;
        EXPECT_EQ((a.*call.call)(), ZOK_ERR_SIGN) << call.name;
        EXPECT_EQ(entropy.number_calls, kMost) << call.name;
    }
    SchemeArguments legacy;
    install(in_bytes(kCurves[0], 32));
    FakeEntropy entropy;
    EXPECT_EQ(legacy.ecdsa_sign(), -1);
    EXPECT_EQ(entropy.number_calls, kMost);
    EXPECT_TRUE(legacy.written.unchanged() && a.sig_written.unchanged());
}

// Composite moduli of 1 modulo 8: there may be no number whose power is -1.
TEST(Loops, SquareRootGivesUpAfterSixtyDraws) {
    for (uint32_t p : {9u, 25u, 33u, 49u, 561u, 1729u, 2465u, 6601u, 0xFFFFFFF1u}) {
        if (p % 8 != 1) continue;
        SCOPED_TRACE(p);
        const mint modulus = small(p), a = small(2);
        for (const Stuck &stuck : kStuck) {
            mint out{};
            FakeEntropy entropy;
            stuck.apply(entropy);
            const int32_t status = mint_sqrt(&a, &modulus, &out);
            EXPECT_TRUE(status == 1 || status == -1);
            EXPECT_LE(entropy.number_calls, 60u);
            EXPECT_LE(ecc_point_unpress(&out, &a, &a, &a, &modulus, 1), 0);
            EXPECT_LE(entropy.number_calls, 120u);
        }
    }
}

TEST(Loops, ResponderDrawsOnce) {
    const exchange::ExchangeCase &kase = exchange::tiny_exchange();
    for (const Stuck &stuck : kStuck) {
        install(kase.curve);
        exchange::LegacyExchange side(kase, exchange::Role::kResponder);
        FakeEntropy entropy;
        stuck.apply(entropy);
        EXPECT_LE(side.b1_10(), 0);
        EXPECT_EQ(entropy.number_calls, 1u) << stuck.what;
    }
}

TEST(Loops, BytesAreDrawnInAFixedNumberOfSteps) {
    for (const Stuck &stuck : kStuck) {
        uint8_t bytes[100];
        FakeEntropy entropy;
        stuck.apply(entropy);
        EXPECT_EQ(gen_random(bytes, sizeof bytes), 0);
        EXPECT_EQ(entropy.seedings(), 5u);
    }
}

}  // namespace zokecc_test::loops_test
