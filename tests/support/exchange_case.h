// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// One SM2 key exchange with the data of both sides, from a vector file or from a curve over a
// prime of a few bits.
#ifndef ZOKECC_TESTS_SUPPORT_EXCHANGE_CASE_H
#define ZOKECC_TESTS_SUPPORT_EXCHANGE_CASE_H

#include <zokecc/ecc.h>

#include <string>
#include <vector>

#include "tests/support/curves.h"
#include "tests/support/model_exchange.h"
#include "tests/support/vector_file.h"

namespace zokecc_test::exchange {

enum class Role { kInitiator, kResponder };

// Scalars as big-endian integers, coordinates at the curve's length.
struct ExchangeParty {
    ByteString d, r;
    ByteString x, y;    // d G
    ByteString Rx, Ry;  // r G
    ByteString id;
    ByteString Z;
};

struct ExchangeCase {
    std::string source;
    Curve curve;
    uint32_t selector;
    ExchangeParty A, B;
    ByteString xU, yU;

    const ExchangeParty &own(Role role) const { return role == Role::kInitiator ? A : B; }
    const ExchangeParty &peer(Role role) const { return role == Role::kInitiator ? B : A; }
    ExchangeHashes hashes() const { return {selector, xU, yU, A.Z, B.Z, A.Rx, A.Ry, B.Rx, B.Ry}; }
};

ExchangeCase vector_case(const VectorBlock &block);
// The first block of sm2_kex.rsp with the given source.
const VectorBlock &worked_example(const std::string &source);
const std::vector<VectorBlock> &exchange_vectors();

// The scalars of both sides. With these the kept rules of the point arithmetic do not apply to the
// small groups in fields of 20, 24, 28 and 32 bytes, so that the sides agree.
struct TinyScalars {
    uint32_t dA = 101, rA = 37, dB = 214, rB = 98;
};
// Gives up if the sides do not agree, or for an unusable point.
ExchangeCase tiny_case(const TinyGroup &group, unsigned byte_len, uint32_t selector,
                       TinyScalars scalars = {});

// On the curve of 991 points in 32 bytes.
const ExchangeCase &tiny_exchange();

// One side's inputs to the steps, for tests that change some of them.
TinySide tiny_side(const ExchangeCase &exchange, Role role);
// The case's hashes with the shared point of these steps.
ExchangeHashes with_point(const ExchangeCase &exchange, const TinyPoint &U);

}  // namespace zokecc_test::exchange

#endif
