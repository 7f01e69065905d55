// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Installs a process-wide curve, for example the small one that most scheme tests use.
#ifndef ZOKECC_TESTS_SUPPORT_LEGACY_CURVE_H
#define ZOKECC_TESTS_SUPPORT_LEGACY_CURVE_H

#include <zokecc/ecc.h>

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "ecc/curve.h"
#include "tests/support/curves.h"
#include "tests/support/give_up.h"
#include "tests/support/points.h"

namespace zokecc_test {

// A curve over a one-word prime in records of 24, 28 or 32 bytes. Numbers of one word never
// meet an equal word under a borrow, so plain integers predict every result.
inline Curve legacy_curve(unsigned byte_len, uint32_t p, uint32_t a, uint32_t b, uint32_t Gx, uint32_t Gy,
                          uint32_t n) {
    Curve out{};
    out.name = "p " + std::to_string(p) + " a " + std::to_string(a) + " b " + std::to_string(b) + " n " +
               std::to_string(n);
    out.byte_len = byte_len;
    out.session_type = kNoType;
    out.legacy_type = byte_len == 24 ? 0u : byte_len == 32 ? 1u : 4u;
    out.p = small(p);
    out.a = small(a);
    out.b = small(b);
    out.n = small(n);
    out.G = affine(small(Gx), small(Gy));
    return out;
}

// Installs the curve process-wide. Its table is built once per program.
inline void install(const Curve &curve) {
    static std::map<std::pair<std::string, unsigned>, std::unique_ptr<GlobalCurve>> installed;
    std::unique_ptr<GlobalCurve> &slot = installed[{curve.name, curve.byte_len}];
    if (!slot) {
        ecc_curve_bytes record = curve.legacy_record();
        if (Curve_Init(&record) != 0) give_up("cannot install " + curve.name);
        slot = std::make_unique<GlobalCurve>(global_curve);
    }
    global_curve = *slot;
}
inline void install(const std::string &name) { install(curve(name)); }

// The state before the first Curve_Init.
inline void uninstall() {
    static const GlobalCurve none{};
    global_curve = none;
}

}  // namespace zokecc_test

#endif
