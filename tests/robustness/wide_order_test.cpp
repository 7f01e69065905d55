// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The hardened build on a curve with n far above p, as no curve has it, for which it has no constant-time
// arithmetic: every call that takes or makes a secret returns a failure of its family, draws nothing and
// writes nothing, with memory and without.
#ifdef ZOKECC_HARDENED

#include "tests/robustness/scheme_arguments.h"
#include "tests/robustness/session_arguments.h"
#include "tests/support/legacy_curve.h"

namespace zokecc_test::wide_order_test {

using namespace robustness;

namespace {

constexpr unsigned kMostAllocations = 4;

// 2^40 + 15, for a field of one word.
mint wide_order() {
    mint out{};
    out.words[0] = 15;
    out.words[1] = 256;
    out.len = 2;
    return out;
}

void *wide_session() {
    static const Session session([] {
        Curve out = small_curve();
        out.name = "wide order";
        out.n = wide_order();
        return out;
    }());
    return session.handle();
}

void install_wide_curve() {
    Curve out = small_curve_of(32);
    out.name = "wide order";
    out.n = wide_order();
    install(out);
}

struct SessionRow {
    NamedSessionCall call;
    uint32_t status;
    std::vector<uint32_t> without_memory = {};  // if a failed allocation is detected before the curve
};
const SessionRow kSessionRows[] = {
    {kGenerate, ZOK_ERR_INTERNAL},
    {kSign, ZOK_ERR_SIGN},
    {kSignHash, ZOK_ERR_SIGN, {ZOK_ERR_ARGUMENT, ZOK_ERR_INTERNAL}},
    {kEncrypt, ZOK_ERR_ARGUMENT},
    {kDecrypt, ZOK_ERR_ARGUMENT},
    {kFlatEncrypt, ZOK_ERR_ARGUMENT, {ZOK_ERR_INTERNAL, ZOK_ERR_INTERNAL}},
    {kFlatDecrypt, ZOK_ERR_ARGUMENT},
    {kEcdh, ZOK_ERR_ARGUMENT},
    {kTemporary[0], ZOK_ERR_INTERNAL},
    {kTemporary[1], ZOK_ERR_INTERNAL},
    {kTemporary[2], ZOK_ERR_INTERNAL},
    {kTemporary[3], ZOK_ERR_INTERNAL},
};

struct SchemeRow {
    const char *name;
    SchemeCall call;
    int32_t status;
};
const SchemeRow kSchemeRows[] = {
    {"Ecc_KeyPair_Gen", &SchemeArguments::key_pair, -1},
    {"Ecc_GenPubKey", &SchemeArguments::public_key, -1},
    {"Ecdsa_DigitalSign", &SchemeArguments::ecdsa_sign, -1},
    {"sm2_DigitalSign", &SchemeArguments::sm2_sign, -1},
    {"Ecdh_KeyExChg", &SchemeArguments::exchange, -1},
    {"Eces_Encry", &SchemeArguments::eces_encry, -1},
    {"Eces_Decry", &SchemeArguments::eces_decry, -1},
    {"sm2_Encry", &SchemeArguments::encrypt, -1},
    {"sm2_Decry", &SchemeArguments::decrypt, -1},
};

}  // namespace

TEST(WideOrder, SessionCallsFailAndWriteNothing) {
    for (const SessionRow &row : kSessionRows)
        for (const bool others : {false, true})
            for (unsigned failing = 0; failing <= kMostAllocations; ++failing) {
                SCOPED_TRACE(std::string(row.call.name) + (others ? ", other algorithms, " : ", ") +
                             std::to_string(failing));
                SessionArguments a;
                if (others) a.use_other_algorithms();
                a.session = wide_session();
                const FakeEntropy entropy;
                FailingAlloc memory(failing);
                const uint32_t status = (a.*row.call.call)();
                const bool failed = failing > 0 && memory.allocations >= failing;
                if (!failed || row.without_memory.empty()) {
                    EXPECT_EQ(status, row.status);
                } else {
                    EXPECT_EQ(status, row.without_memory[failing - 1]);
                }
                EXPECT_EQ(memory.outstanding, 0);
                EXPECT_EQ(entropy.calls() + entropy.number_calls, 0u);
                EXPECT_TRUE(a.nothing_written());
            }
}

TEST(WideOrder, SchemeCallsFailAndWriteNothing) {
    install_wide_curve();
    for (const SchemeRow &row : kSchemeRows)
        for (unsigned failing = 0; failing <= kMostAllocations; ++failing) {
            SCOPED_TRACE(std::string(row.name) + ", " + std::to_string(failing));
            SchemeArguments a;
            const FakeEntropy entropy;
            FailingAlloc memory(failing);
            EXPECT_EQ((a.*row.call)(), row.status);
            EXPECT_EQ(memory.outstanding, 0);
            EXPECT_EQ(entropy.calls() + entropy.number_calls, 0u);
            EXPECT_TRUE(a.outputs_untouched());
        }
}

}  // namespace zokecc_test::wide_order_test

#endif
