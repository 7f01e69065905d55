// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM2 key exchange (GB/T 32918.3), implemented again for the tests: the hashes, from byte strings
// alone, and the steps with numbers and points on curves over primes of a few bits, in plain
// integers. Nothing here uses the library.
#ifndef ZOKECC_TESTS_SUPPORT_MODEL_EXCHANGE_H
#define ZOKECC_TESTS_SUPPORT_MODEL_EXCHANGE_H

#include <cstdint>
#include <string>

#include "tests/support/curves.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/hex.h"
#include "tests/support/naive_int.h"
#include "tests/support/tiny_curve.h"

namespace zokecc_test::exchange {

// The digest for a hash selector: 0 SM3, 1 SHA-256. Gives up on any other.
ByteString model_digest_of(uint32_t selector, const ByteString &message);

// 2^w + (x mod 2^w), also as x.size() big-endian bytes.
Natural model_x_bar(const ByteString &x, unsigned w);
ByteString model_x_bar_bytes(const ByteString &x, unsigned w);

// Z = H(ENTL || id || a || b || xG || yG || x || y), every number in the curve's length.
ByteString model_user_z(const Curve &curve, uint32_t selector, const ByteString &id, const ByteString &x,
                        const ByteString &y);

// An exchange after the shared point is known. All coordinates have the curve's length.
struct ExchangeHashes {
    uint32_t selector;
    ByteString xU, yU;
    ByteString ZA, ZB;
    ByteString x1, y1;  // the initiator's random point
    ByteString x2, y2;  // the responder's

    // The first klen bytes of the key stream.
    ByteString key(size_t klen) const;
    // H(xU || ZA || ZB || x1 || y1 || x2 || y2)
    ByteString inner() const;
    // H(prefix || yU || inner): S1 and SB with 02, S2 and SA with 03.
    ByteString confirmation(uint8_t prefix) const;
    // What the call for both roles hashes instead: yU is followed by 5 L + 64 bytes of a working
    // area, the inner digest in 100 bytes and after it the peer's key as a finite ecc_point of a
    // 32-bit little-endian device.
    ByteString whole_call_confirmation(uint8_t prefix, const ByteString &peer_x,
                                       const ByteString &peer_y) const;
};

// A point record as laid out in the device's memory: flag 0, then x and y with 19 words, least
// significant first, and their count.
ByteString model_point_image(const ByteString &x, const ByteString &y);

// A curve of a few bits with a base point of order n. p, a and b are those of `group`.
struct TinyGroup {
    std::string name;
    TinyCurve group;
    uint32_t n;
    TinyPoint G;

    uint32_t cofactor() const { return group.p / n; }
    TinyPoint multiple(uint32_t k, const TinyPoint &P) const;
    TinyPoint multiple(uint32_t k) const { return multiple(k, G); }
    // The first such point with a nonzero x. Gives up if there is none.
    TinyPoint point_of_order(uint32_t order) const;
    // Records with fields of byte_len bytes, one of the lengths that the library supports.
    Curve curve(unsigned byte_len) const;
    // w for these fields: from the type's bits minus the leading zero bits of the order's only word.
    unsigned width(unsigned byte_len) const;
};

// y^2 = x^3 + 2x + 25 over 1009 elements, 991 points: the whole group is that of G.
const TinyGroup &prime_group();
// y^2 = x^3 + 12x + 3 over 1009 elements, 1004 points, G of order 251: cofactor 4.
const TinyGroup &cofactor_group();
// y^2 = x^3 + 11x over 769 elements, 746 points, G of order 373; (0, 0) has order 2.
const TinyGroup &origin_group();

ByteString tiny_bytes(uint32_t value, unsigned byte_len);
TinyPoint tiny_point_of(const ByteString &x, const ByteString &y);

// The steps up to the shared point, with the library's kept results for opposite points, equal
// points in two records, and k = h t reduced modulo p.
struct TinySteps {
    uint32_t t;
    uint32_t k;
    TinyPoint T;
    TinyPoint U;
};

// One side's inputs. The x fields are the L bytes from which x-bar is computed.
struct TinySide {
    uint32_t d;
    Natural r;
    ByteString own_x;
    TinyPoint peer_key;
    TinyPoint peer_random;
    ByteString peer_x;
};
// The peer's weighted random point, x-bar' R'.
TinyPoint tiny_weighted(const TinyGroup &curve, const TinySide &side);
TinySteps tiny_steps(const TinyGroup &curve, const TinySide &side);

}  // namespace zokecc_test::exchange

#endif
