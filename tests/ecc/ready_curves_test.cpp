// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The records of zokecc/curves.h, compared with the vector file byte for byte, and used with the library.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "tests/support/curves.h"
#include "tests/support/ready_curves.h"

namespace {

using zokecc_test::curve;
using zokecc_test::kReadyCurves;
using zokecc_test::ReadyCurve;
using zokecc_test::session_curve_names;

TEST(ReadyCurves, SessionRecordsAreThoseOfTheVectors) {
    for (const ReadyCurve &ready : kReadyCurves) {
        const bool sm2 = std::strcmp(ready.name, "sm2p256v1") == 0;
        const CurvePara expected = curve(ready.name).record(sm2 ? HASH_ALG_SM3 : HASH_ALG_SHA256);
        EXPECT_EQ(0, std::memcmp(&expected, ready.session, sizeof expected)) << ready.name;
    }
}

TEST(ReadyCurves, ProcessRecordsAreThoseOfTheVectors) {
    for (const ReadyCurve &ready : kReadyCurves) {
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
    for (const ReadyCurve &ready : kReadyCurves)
        EXPECT_EQ(ZOK_OK, ZOK_CurveVerify(ready.session->type, ready.session)) << ready.name;
}

// The vectors have two more curves: those of the examples in GB/T 32918, which are not used elsewhere.
TEST(ReadyCurves, HaveEveryCurveOfTheVectorsThatIsInUse) {
    std::vector<std::string> ready{"sm2test192", "sm2test256"};
    for (const ReadyCurve &one : kReadyCurves) ready.push_back(one.name);
    std::vector<std::string> known = session_curve_names();
    std::sort(ready.begin(), ready.end());
    std::sort(known.begin(), known.end());
    EXPECT_EQ(known, ready);
}

}  // namespace
