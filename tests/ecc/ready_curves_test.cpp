// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The records of zokecc/curves.h, compared with the vector file byte for byte, and used with the library.
#include <zokecc/curves.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "tests/support/curves.h"

namespace {

using zokecc_test::curve;
using zokecc_test::session_curve_names;

struct Ready {
    const char *name;
    const CurvePara *session;
    const ecc_curve_bytes *process;  // null if Curve_Init has no type for the size
};

const Ready kReady[] = {
    {"sm2p256v1", &zokecc_sm2p256v1, &zokecc_sm2p256v1_process},
    {"secp192r1", &zokecc_secp192r1, &zokecc_secp192r1_process},
    {"secp224r1", &zokecc_secp224r1, &zokecc_secp224r1_process},
    {"secp256r1", &zokecc_secp256r1, &zokecc_secp256r1_process},
    {"secp256k1", &zokecc_secp256k1, &zokecc_secp256k1_process},
    {"brainpoolP160r1", &zokecc_brainpoolP160r1, nullptr},
    {"brainpoolP192r1", &zokecc_brainpoolP192r1, &zokecc_brainpoolP192r1_process},
    {"brainpoolP224r1", &zokecc_brainpoolP224r1, &zokecc_brainpoolP224r1_process},
    {"brainpoolP256r1", &zokecc_brainpoolP256r1, &zokecc_brainpoolP256r1_process},
};

TEST(ReadyCurves, SessionRecordsAreThoseOfTheVectors) {
    for (const Ready &ready : kReady) {
        const bool sm2 = std::strcmp(ready.name, "sm2p256v1") == 0;
        const CurvePara expected = curve(ready.name).record(sm2 ? HASH_ALG_SM3 : HASH_ALG_SHA256);
        EXPECT_EQ(0, std::memcmp(&expected, ready.session, sizeof expected)) << ready.name;
    }
}

TEST(ReadyCurves, ProcessRecordsAreThoseOfTheVectors) {
    for (const Ready &ready : kReady) {
        if (ready.process == nullptr) {
            EXPECT_EQ(zokecc_test::kNoType, curve(ready.name).legacy_type) << ready.name;
            continue;
        }
        const ecc_curve_bytes expected = curve(ready.name).legacy_record();
        EXPECT_EQ(0, std::memcmp(&expected, ready.process, sizeof expected)) << ready.name;
        EXPECT_EQ(0, Curve_Init(ready.process)) << ready.name;
    }
}

TEST(ReadyCurves, PassTheLibrarysCheck) {
    for (const Ready &ready : kReady)
        EXPECT_EQ(ZOK_OK, ZOK_CurveVerify(ready.session->type, ready.session)) << ready.name;
}

// The vectors have two more curves: those of the examples in GB/T 32918, which are not used elsewhere.
TEST(ReadyCurves, HaveEveryCurveOfTheVectorsThatIsInUse) {
    std::vector<std::string> ready{"sm2test192", "sm2test256"};
    for (const Ready &one : kReady) ready.push_back(one.name);
    std::vector<std::string> known = session_curve_names();
    std::sort(ready.begin(), ready.end());
    std::sort(known.begin(), known.end());
    EXPECT_EQ(known, ready);
}

}  // namespace
