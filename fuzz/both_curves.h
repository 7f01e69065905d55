// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Curves supported by both generations of the interface, with what a call on either needs: the
// process-wide curve installed, sessions that stay open, and records in both layouts.
#ifndef ZOKECC_FUZZ_BOTH_CURVES_H
#define ZOKECC_FUZZ_BOTH_CURVES_H

#include <zokecc/schemes.h>
#include <zokecc/sdf.h>

#include <map>
#include <memory>

#include "fuzz/alloc_ledger.h"
#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_input.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/legacy_curve.h"
#include "tests/support/small_group.h"

namespace zokecc_fuzz {

inline constexpr uint32_t kUnknownHash = 2;

inline const Curve &small_of(unsigned byte_len, uint32_t session_type) {
    static std::map<unsigned, Curve> curves;
    if (curves.count(byte_len) == 0) {
        Curve made = small_curve_of(byte_len);
        made.session_type = session_type;
        curves.emplace(byte_len, made);
    }
    return curves.at(byte_len);
}

// Usually a small one, 991 points over 1009 elements, where scalar multiplication takes no time.
inline const Curve &both_curve(FuzzInput &input) {
    const Curve *const wide[] = {&curve("sm2p256v1"), &curve("secp192r1")};
    const Curve *const curves[] = {&small_of(32, 4), &small_of(24, 2), &small_of(32, 4), &small_of(24, 2),
                                   input.pick(wide)};
    const Curve &chosen = *input.pick(curves);
    const LedgerPause outlives_the_input;
    install(chosen);
    return chosen;
}
inline bool is_small(const Curve &c) { return c.p.len == 1; }

inline void *session_of(const Curve &c, uint32_t selector) {
    static std::map<std::pair<std::string, uint32_t>, std::unique_ptr<Session>> sessions;
    std::unique_ptr<Session> &slot = sessions[{c.name + std::to_string(c.byte_len), selector}];
    const LedgerPause outlives_the_input;
    if (!slot) slot = std::make_unique<Session>(c, selector);
    return slot->handle();
}

inline mint number_of(const ByteString &bytes) { return Natural::from_hex("0" + to_hex(bytes)).to_mint(); }

// A scalar: below n in L bytes, or anything of up to 64 bytes.
inline ByteString scalar_bytes(FuzzInput &input, const Curve &c) {
    if (input.below(4) != 3) return fixed_bytes(input.reduced(c.n), c.byte_len);
    return input.bytes(input.below(65));
}

struct Coordinates {
    ByteString x, y;
};

inline Coordinates written_as(const ecc_point &P, size_t L) {
    if (P.infinity == 1) return {ByteString(L), ByteString(L)};
    return {fixed_bytes(P.x, L), fixed_bytes(P.y, L)};
}
// k * G; zero bytes for infinity.
inline Coordinates multiple_of_G(const Curve &c, const mint &k) {
    ecc_point out{};
    ecc_fix_point_mul(&k, nullptr, &c.a, nullptr, &c.p, &out);
    return written_as(out, c.byte_len);
}
// L bytes each: usually a multiple of G, otherwise anything.
inline Coordinates point_bytes(FuzzInput &input, const Curve &c) {
    if (input.below(4) != 3) return multiple_of_G(c, input.reduced(c.n));
    const ByteString x = input.bytes(c.byte_len);
    return {x, input.bytes(c.byte_len)};
}

// A scalar multiplication by the public call; infinity is zero bytes.
inline Coordinates product(const Curve &c, const ByteString &k, const Coordinates &P) {
    const mint scalar = number_of(k);
    const ecc_point point{0, number_of(P.x), number_of(P.y)};
    ecc_point out{};
    ecc_unknown_point_mul(&scalar, &point, &c.a, nullptr, &c.p, &out);
    return written_as(out, c.byte_len);
}

inline ECCrefPrivateKey private_record(const ByteString &d) {
    ECCrefPrivateKey out{};
    out.bits = static_cast<uint32_t>(8 * d.size());
    std::copy(d.begin(), d.end(), out.K);
    return out;
}
inline ECCrefPublicKey public_record(const Coordinates &P) {
    ECCrefPublicKey out{};
    out.bits = static_cast<uint32_t>(8 * P.x.size());
    std::copy(P.x.begin(), P.x.end(), out.x);
    std::copy(P.y.begin(), P.y.end(), out.y);
    return out;
}
inline ecc_point_bytes point_record(const Coordinates &P) {
    ecc_point_bytes out{};
    out.length = static_cast<uint32_t>(P.x.size());
    std::copy(P.x.begin(), P.x.end(), out.x);
    std::copy(P.y.begin(), P.y.end(), out.y);
    return out;
}

inline bool all_zero(const ByteString &bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](uint8_t each) { return each == 0; });
}
inline uint32_t length_of(const ByteString &bytes) { return static_cast<uint32_t>(bytes.size()); }

}  // namespace zokecc_fuzz

#endif
