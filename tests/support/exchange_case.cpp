// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/support/exchange_case.h"

#include "tests/support/give_up.h"
#include "tests/support/hex.h"

namespace zokecc_test::exchange {

namespace {

ExchangeParty vector_party(const VectorBlock &block, const std::string &side) {
    return {block.bytes("d" + side),       block.bytes("r" + side),       block.bytes("P" + side + "x"),
            block.bytes("P" + side + "y"), block.bytes("R" + side + "x"), block.bytes("R" + side + "y"),
            block.bytes("ID" + side),      block.bytes("Z" + side)};
}

ExchangeParty tiny_party(const TinyGroup &group, const Curve &curve, uint32_t selector, uint32_t d,
                         uint32_t r, const std::string &id) {
    const unsigned L = curve.byte_len;
    const TinyPoint P = group.multiple(d);
    const TinyPoint R = group.multiple(r);
    if (P.infinite || R.infinite) give_up("a scalar of zero");
    ExchangeParty out;
    out.d = tiny_bytes(d, L);
    out.r = tiny_bytes(r, L);
    out.x = tiny_bytes(P.x, L);
    out.y = tiny_bytes(P.y, L);
    out.Rx = tiny_bytes(R.x, L);
    out.Ry = tiny_bytes(R.y, L);
    out.id = ByteString(id.begin(), id.end());
    out.Z = model_user_z(curve, selector, out.id, out.x, out.y);
    return out;
}

}  // namespace

ExchangeCase vector_case(const VectorBlock &block) {
    return {block.text("Source"),     curve(block.text("Curve")), block.text("Hash") == "SM3" ? 0u : 1u,
            vector_party(block, "A"), vector_party(block, "B"),   block.bytes("Ux"),
            block.bytes("Uy")};
}

const std::vector<VectorBlock> &exchange_vectors() {
    static const std::vector<VectorBlock> blocks = read_vectors("sm2_kex.rsp");
    return blocks;
}

const VectorBlock &worked_example(const std::string &source) {
    for (const VectorBlock &block : exchange_vectors())
        if (block.text("Source") == source) return block;
    give_up("no example " + source);
}

ExchangeCase tiny_case(const TinyGroup &group, unsigned byte_len, uint32_t selector, TinyScalars s) {
    ExchangeCase out;
    out.source = "tiny";
    out.curve = group.curve(byte_len);
    out.selector = selector;
    out.A = tiny_party(group, out.curve, selector, s.dA, s.rA, "ALICE");
    out.B = tiny_party(group, out.curve, selector, s.dB, s.rB, "BILL");
    const TinySteps own = tiny_steps(group, tiny_side(out, Role::kInitiator));
    const TinySteps peer = tiny_steps(group, tiny_side(out, Role::kResponder));
    const TinyPoint U = own.U;
    if (own.k == 0 || peer.k == 0 || U.infinite || !(U == peer.U))
        give_up("scalars for which the sides do not agree");
    out.xU = tiny_bytes(U.x, byte_len);
    out.yU = tiny_bytes(U.y, byte_len);
    return out;
}

const ExchangeCase &tiny_exchange() {
    static const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    return exchange;
}

TinySide tiny_side(const ExchangeCase &exchange, Role role) {
    const ExchangeParty &own = exchange.own(role);
    const ExchangeParty &peer = exchange.peer(role);
    return {Natural::from_hex(to_hex(own.d)).word(0),
            Natural::from_hex(to_hex(own.r)),
            own.Rx,
            tiny_point_of(peer.x, peer.y),
            tiny_point_of(peer.Rx, peer.Ry),
            peer.Rx};
}

ExchangeHashes with_point(const ExchangeCase &exchange, const TinyPoint &U) {
    ExchangeHashes out = exchange.hashes();
    out.xU = tiny_bytes(U.x, exchange.curve.byte_len);
    out.yU = tiny_bytes(U.y, exchange.curve.byte_len);
    return out;
}

}  // namespace zokecc_test::exchange
