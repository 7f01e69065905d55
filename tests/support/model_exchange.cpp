// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/support/model_exchange.h"

#include "tests/support/give_up.h"
#include "tests/support/hex.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::exchange {

namespace {

void append(ByteString &out, const ByteString &more) { out.insert(out.end(), more.begin(), more.end()); }

void append_little_endian(ByteString &out, uint32_t word) {
    for (int shift = 0; shift < 32; shift += 8) out.push_back(static_cast<uint8_t>(word >> shift));
}

ByteString counter_bytes(uint32_t counter) {
    ByteString out;
    for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<uint8_t>(counter >> shift));
    return out;
}

void append_number_image(ByteString &out, const ByteString &bytes) {
    const mint value = mint_from_hex(to_hex(bytes));
    for (uint32_t word : value.words) append_little_endian(out, word);
    append_little_endian(out, value.len);
}

}  // namespace

ByteString model_digest_of(uint32_t selector, const ByteString &message) {
    if (selector == 0) return model_sm3(message);
    if (selector == 1) return model_sha256(message);
    give_up("no such hash selector");
}

Natural model_x_bar(const ByteString &x, unsigned w) {
    return Natural::power_of_two(w) + Natural::from_hex(to_hex(x)).low_bits(w);
}

ByteString model_x_bar_bytes(const ByteString &x, unsigned w) {
    return fixed_bytes(model_x_bar(x, w).to_mint(), x.size());
}

ByteString model_user_z(const Curve &curve, uint32_t selector, const ByteString &id, const ByteString &x,
                        const ByteString &y) {
    const size_t L = curve.byte_len;
    const uint32_t bits = static_cast<uint32_t>(8 * id.size());
    const ByteString entl = {static_cast<uint8_t>(bits >> 8), static_cast<uint8_t>(bits)};
    return model_digest_of(selector, joined({entl, id, fixed_bytes(curve.a, L), fixed_bytes(curve.b, L),
                                             fixed_bytes(curve.G.x, L), fixed_bytes(curve.G.y, L), x, y}));
}

ByteString ExchangeHashes::key(size_t klen) const {
    const ByteString secret = joined({xU, yU, ZA, ZB});
    ByteString out;
    for (uint32_t counter = 1; out.size() < klen; ++counter)
        append(out, model_digest_of(selector, joined({secret, counter_bytes(counter)})));
    out.resize(klen);
    return out;
}

ByteString ExchangeHashes::inner() const {
    return model_digest_of(selector, joined({xU, ZA, ZB, x1, y1, x2, y2}));
}

ByteString ExchangeHashes::confirmation(uint8_t prefix) const {
    return model_digest_of(selector, joined({{prefix}, yU, inner()}));
}

ByteString model_point_image(const ByteString &x, const ByteString &y) {
    ByteString out;
    append_little_endian(out, 0);
    append_number_image(out, x);
    append_number_image(out, y);
    return out;
}

ByteString ExchangeHashes::whole_call_confirmation(uint8_t prefix, const ByteString &peer_x,
                                                   const ByteString &peer_y) const {
    ByteString area = inner();
    area.resize(100, 0);
    append(area, model_point_image(peer_x, peer_y));
    area.resize(5 * xU.size() + 64);
    return model_digest_of(selector, joined({{prefix}, yU, area}));
}

TinyPoint TinyGroup::multiple(uint32_t k, const TinyPoint &P) const {
    TinyPoint sum;
    for (int i = 31; i >= 0; --i) {
        sum = group.add(sum, sum);
        if ((k >> i & 1u) != 0) sum = group.add(sum, P);
    }
    return sum;
}

TinyPoint TinyGroup::point_of_order(uint32_t order) const {
    auto has_order = [&](const TinyPoint &P) {
        if (!multiple(order, P).infinite) return false;
        for (uint32_t part = 1; part < order; ++part)
            if (order % part == 0 && multiple(part, P).infinite) return false;
        return true;
    };
    for (const TinyPoint &P : group.points())
        if (!P.infinite && P.x != 0 && has_order(P)) return P;
    give_up("no point of that order");
}

Curve TinyGroup::curve(unsigned byte_len) const {
    Curve out{};
    out.name = name + "-" + std::to_string(byte_len);
    out.byte_len = byte_len;
    out.session_type = byte_len / 4 - 4;
    out.legacy_type = byte_len == 24 ? 0 : byte_len == 28 ? 4 : byte_len == 32 ? 1 : kNoType;
    out.p = tiny_number(group.p);
    out.a = tiny_number(group.a);
    out.b = tiny_number(group.b);
    out.n = tiny_number(n);
    out.G = tiny_affine(G);
    return out;
}

unsigned TinyGroup::width(unsigned byte_len) const {
    const unsigned t = 8 * byte_len - 32 + Natural(n).bit_length();
    return t % 2 == 0 ? t / 2 - 1 : (t - 1) / 2;
}

const TinyGroup &prime_group() {
    static const TinyGroup curve = {"prime", TinyCurve(1009, 2, 25), 991, {false, 2, 365}};
    return curve;
}

const TinyGroup &cofactor_group() {
    static const TinyGroup curve = {"cofactor", TinyCurve(1009, 12, 3), 251, {false, 217, 503}};
    return curve;
}

const TinyGroup &origin_group() {
    static const TinyGroup curve = {"origin", TinyCurve(769, 11, 0), 373, {false, 707, 229}};
    return curve;
}

ByteString tiny_bytes(uint32_t value, unsigned byte_len) { return fixed_bytes(tiny_number(value), byte_len); }

TinyPoint tiny_point_of(const ByteString &x, const ByteString &y) {
    return {false, Natural::from_hex(to_hex(x)).word(0), Natural::from_hex(to_hex(y)).word(0)};
}

TinyPoint tiny_weighted(const TinyGroup &curve, const TinySide &side) {
    const unsigned w = curve.width(static_cast<unsigned>(side.peer_x.size()));
    return curve.group.library_window(model_x_bar(side.peer_x, w).to_mint(), side.peer_random);
}

TinySteps tiny_steps(const TinyGroup &curve, const TinySide &side) {
    const Natural n(curve.n);
    const Natural own_x_bar = model_x_bar(side.own_x, curve.width(static_cast<unsigned>(side.own_x.size())));
    TinySteps out{};
    out.t = ((Natural(side.d) + own_x_bar * side.r % n) % n).word(0);
    out.k = curve.cofactor() * out.t % curve.group.p;
    out.T = curve.group.library_affine_add(side.peer_key, tiny_weighted(curve, side));
    if (!out.T.infinite) out.U = curve.group.library_window(tiny_number(out.k), out.T);
    return out;
}

}  // namespace zokecc_test::exchange
