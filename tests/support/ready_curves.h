// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The nine curves of zokecc/curves.h, by name.
#ifndef ZOKECC_TESTS_SUPPORT_READY_CURVES_H
#define ZOKECC_TESTS_SUPPORT_READY_CURVES_H

#include <zokecc/curves.h>

#include <cstdint>

namespace zokecc_test {

// A curve in both records.
struct ReadyCurve {
    const char *name;
    const CurvePara *session;
    const ecc_curve_bytes *process;  // null if Curve_Init has no type for the size

    uint32_t L() const { return 16 + 4 * session->type; }
};

constexpr ReadyCurve kReadyCurves[9] = {
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

}  // namespace zokecc_test

#endif
