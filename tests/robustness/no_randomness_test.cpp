// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The hardened build without random bytes from the kernel: every call that draws returns a failure of
// its family, with one attempt, and writes nothing.
#ifdef ZOKECC_HARDENED

#include <cerrno>

#include "tests/robustness/scheme_arguments.h"
#include "tests/robustness/session_arguments.h"
#include "tests/support/legacy_exchange.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::no_randomness_test {

using namespace robustness;

namespace {

struct SilentKernel : FakeEntropy {
    SilentKernel() { kernel.getrandom_error = EIO; }
};

struct SessionRow {
    NamedSessionCall call;
    uint32_t signature, encryption;
    uint32_t status;
};
const SessionRow kSessionRows[] = {
    {kGenerate, ZOK_ALG_SM2_SIGN, ZOK_ALG_SM2_ENCRYPT, ZOK_ERR_INTERNAL},
    {kSign, ZOK_ALG_SM2_SIGN, ZOK_ALG_SM2_ENCRYPT, ZOK_ERR_SIGN},
    {kSign, ZOK_ALG_ECDSA_SIGN, ZOK_ALG_SM2_ENCRYPT, ZOK_ERR_SIGN},
    {kSignHash, ZOK_ALG_SM2_SIGN, ZOK_ALG_SM2_ENCRYPT, ZOK_ERR_SIGN},
    {kSignHash, ZOK_ALG_ECDSA_SIGN, ZOK_ALG_SM2_ENCRYPT, ZOK_ERR_SIGN},
    {kEncrypt, ZOK_ALG_SM2_SIGN, ZOK_ALG_SM2_ENCRYPT, ZOK_ERR_INTERNAL},
    {kEncrypt, ZOK_ALG_SM2_SIGN, ZOK_ALG_MULTIPLICATIVE, ZOK_ERR_INTERNAL},
    {kFlatEncrypt, ZOK_ALG_SM2_SIGN, ZOK_ALG_SM2_ENCRYPT, ZOK_ERR_INTERNAL},
    {kTemporary[0], ZOK_ALG_SM2_SIGN, ZOK_ALG_SM2_ENCRYPT, ZOK_ERR_INTERNAL},
    {kTemporary[1], ZOK_ALG_SM2_SIGN, ZOK_ALG_SM2_ENCRYPT, ZOK_ERR_INTERNAL},
    {kTemporary[2], ZOK_ALG_SM2_SIGN, ZOK_ALG_SM2_ENCRYPT, ZOK_ERR_INTERNAL},
    {kTemporary[3], ZOK_ALG_SM2_SIGN, ZOK_ALG_SM2_ENCRYPT, ZOK_ERR_INTERNAL},
};

struct SchemeRow {
    const char *name;
    SchemeCall call;
    int32_t status;
};
const SchemeRow kSchemeRows[] = {{"Ecdsa_DigitalSign", &SchemeArguments::ecdsa_sign, -1},
                                 {"sm2_DigitalSign", &SchemeArguments::sm2_sign, -1},
                                 {"sm2_Encry", &SchemeArguments::encrypt, -1},
                                 {"Eces_Encry", &SchemeArguments::eces_encry, -1},
                                 {"Ecc_KeyPair_Gen", &SchemeArguments::key_pair, -1},
                                 {"eces_format", &SchemeArguments::format, 1}};

}  // namespace

TEST(NoRandomness, SessionCallsFailAndWriteNothing) {
    for (const SessionRow &row : kSessionRows) {
        SCOPED_TRACE(row.call.name);
        SessionArguments a;
        a.algorithm = row.signature;
        a.encryption = row.encryption;
        SilentKernel entropy;
        EXPECT_EQ((a.*row.call.call)(), row.status);
        EXPECT_EQ(entropy.calls(), 1u);
        EXPECT_TRUE(a.nothing_written());
    }
}

TEST(NoRandomness, SchemeCallsFailAndWriteNothing) {
    install_small(32);
    for (const SchemeRow &row : kSchemeRows) {
        SCOPED_TRACE(row.name);
        SchemeArguments a;
        const ByteString scalar = a.scalar_bytes;
        SilentKernel entropy;
        EXPECT_EQ((a.*row.call)(), row.status);
        EXPECT_EQ(entropy.calls(), 1u);
        EXPECT_TRUE(a.outputs_untouched());
        EXPECT_EQ(a.scalar_bytes, scalar);
        EXPECT_EQ(a.scalar.length, 32u);
    }
}

TEST(NoRandomness, RespondersFailAndWriteNothing) {
    const exchange::ExchangeCase &kase = exchange::tiny_exchange();
    install(kase.curve);
    exchange::LegacyExchange legacy(kase, exchange::Role::kResponder);
    {
        SilentKernel entropy;
        EXPECT_EQ(legacy.b1_10(), -1);
        EXPECT_EQ(entropy.calls(), 1u);
        EXPECT_TRUE(legacy.nothing_written());
    }
    for (const auto &call : {exchange::kSm2RespondAtOnce, exchange::kRespondAtOnce}) {
        exchange::SessionExchange side(kase, exchange::Role::kResponder);
        SilentKernel entropy;
        EXPECT_EQ((side.*call.call)(), ZOK_ERR_INTERNAL) << call.name;
        EXPECT_EQ(entropy.calls(), 1u) << call.name;
        EXPECT_TRUE(side.nothing_written()) << call.name;
    }
}

// Moduli of 1 modulo 8 for which none of 2 to 21 is a non-residue.
TEST(NoRandomness, SquareRootAnswersMinusOneAndWritesNothing) {
    unsigned drew = 0;
    for (uint32_t p : {561u, 1729u, 2465u, 6601u}) {
        if (p % 8 != 1) continue;
        const mint modulus = small(p), a = small(4);
        GuardedRecord<mint> out;
        SilentKernel entropy;
        const int32_t status = mint_sqrt(&a, &modulus, out.get());
        if (entropy.calls() == 0) continue;
        ++drew;
        EXPECT_EQ(entropy.calls(), 1u) << p;
        EXPECT_EQ(status, -1) << p;
        EXPECT_TRUE(out.unchanged()) << p;
    }
    EXPECT_GE(drew, 1u);
}

// A failure does not affect the next call.
TEST(NoRandomness, NextCallWorks) {
    SessionArguments a;
    FakeEntropy entropy;
    entropy.kernel.getrandom_answers = {{-1, EIO}};
    EXPECT_EQ(a.sign(), ZOK_ERR_SIGN);
    EXPECT_EQ(a.sign(), ZOK_OK);
}

}  // namespace zokecc_test::no_randomness_test

#endif
