// The steps between the checked inputs and the shared point of the session calls, on curves small
// enough to choose what happens: the cofactor, k of zero, and infinite sums and products.
#include <gtest/gtest.h>

#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_points_test {

using namespace exchange;

namespace {

void set_peer_key(SessionExchange &side, TinySide &model, const TinyPoint &P, unsigned byte_len) {
    ASSERT_FALSE(P.infinite);
    model.peer_key = P;
    side.peerP_record = public_record(tiny_bytes(P.x, byte_len), tiny_bytes(P.y, byte_len));
}

// The key for which the sum T is the given point: T less the weighted random point.
TinyPoint key_for_sum(const TinyGroup &group, const TinySide &model, const TinyPoint &T) {
    return group.group.add(T, group.group.negate(tiny_weighted(group, model)));
}

// -1 without results. Bits of a given random point are set, a drawn one is written.
void expect_refused_late(SessionExchange &side, const SessionKeyCall &call, const ExchangeCase &exchange) {
    const uint32_t bits = 8 * exchange.curve.byte_len;
    if (call.role == Role::kResponder) side.R_record.bits = 0xDEADBEEF;
    EXPECT_EQ(run(side, call), ZOK_ERR_INTERNAL) << call.name;
    EXPECT_TRUE(side.results_untouched()) << call.name;
    if (call.role == Role::kInitiator) {
        EXPECT_EQ(side.R_record.bits, bits) << call.name;
    } else if (call.draws) {
        expect_public_written(side.R_written, exchange.B.Rx, exchange.B.Ry);
        EXPECT_EQ(side.R_record.bits, 0xDEADBEEF) << call.name;
    } else {
        EXPECT_EQ(record_text(side.R_record), record_text(public_record(exchange.B.Rx, exchange.B.Ry)))
            << call.name;
    }
}

// The peer's key in the hashes of the SM2 family.
ExchangeHashes with_peer_Z(ExchangeHashes hashes, const ExchangeCase &exchange, const SessionKeyCall &call,
                           const TinyPoint &P) {
    if (!call.makes_Z) return hashes;
    const unsigned L = exchange.curve.byte_len;
    ByteString &Z = call.role == Role::kInitiator ? hashes.ZB : hashes.ZA;
    Z = model_user_z(exchange.curve, exchange.selector, exchange.peer(call.role).id, tiny_bytes(P.x, L),
                     tiny_bytes(P.y, L));
    return hashes;
}

// d with h t above n, for which no kept rule of the point arithmetic acts.
uint32_t key_with_product_above_n(const TinyGroup &group, TinySide model) {
    for (model.d = 1; model.d < group.n; ++model.d) {
        const TinySteps steps = tiny_steps(group, model);
        if (steps.k > group.n && steps.U == group.multiple(steps.k, steps.T)) return model.d;
    }
    throw std::invalid_argument("no such key");
}

// A private key for the side, with the Z value that belongs to it.
void set_own_key(SessionExchange &side, ExchangeCase &exchange, Role role, const TinyGroup &group,
                 uint32_t d) {
    const unsigned L = exchange.curve.byte_len;
    const TinyPoint P = group.multiple(d);
    ExchangeParty &own = role == Role::kInitiator ? exchange.A : exchange.B;
    own.d = tiny_bytes(d, L);
    own.Z = model_user_z(exchange.curve, exchange.selector, own.id, tiny_bytes(P.x, L), tiny_bytes(P.y, L));
    side.d_record = private_record(own.d);
    role == Role::kInitiator ? side.set_ZA(own.Z) : side.set_ZB(own.Z);
}

}  // namespace

// h t never reaches p for t below n and h = p / n, so k is h t itself. Modulo n it would be another
// number, which shows with points outside the multiples of G.
TEST(ZokGenerateKeyWithEcc, KeptCofactorProductIsReducedModuloP) {
    const TinyGroup &group = cofactor_group();
    const TinyPoint outside = group.point_of_order(1004);
    for (unsigned byte_len : {20u, 24u, 28u, 32u})
        for (const SessionKeyCall &call : kSessionKeyCalls) {
            ExchangeCase exchange = tiny_case(group, byte_len, 0);
            SessionExchange side(exchange, call.role);
            TinySide model = tiny_side(exchange, call.role);
            set_peer_key(side, model, outside, byte_len);
            model.d = key_with_product_above_n(group, model);
            set_own_key(side, exchange, call.role, group, model.d);
            const TinySteps steps = tiny_steps(group, model);
            ASSERT_NE(steps.U, group.multiple(steps.k % group.n, steps.T)) << "no difference to see";
            ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
            expect_results(side, call, with_peer_Z(with_point(exchange, steps.U), exchange, call, outside));
        }
}

TEST(ZokAgreementRefusals, KOfZeroReturnsMinusOne) {
    for (const TinyGroup *group : {&prime_group(), &cofactor_group()}) {
        const ExchangeCase exchange = tiny_case(*group, 32, 0);
        for (const SessionKeyCall &call : kSessionKeyCalls) {
            SessionExchange side(exchange, call.role);
            TinySide model = tiny_side(exchange, call.role);
            model.d = 0;
            model.d = group->n - tiny_steps(*group, model).t;
            ASSERT_EQ(tiny_steps(*group, model).k, 0u);
            side.d_record = private_record(tiny_bytes(model.d, 32));
            expect_refused_late(side, call, exchange);
        }
    }
}

TEST(ZokAgreementRefusals, CofactorOfZeroReturnsMinusOne) {
    // An order above p makes p / n zero, and k with it.
    ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    exchange.curve.name = "order above p";
    exchange.curve.n = tiny_number(1013);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        expect_refused_late(side, call, exchange);
    }
}

TEST(ZokAgreementRefusals, InfiniteSumReturnsMinusOne) {
    // (0, 0) is read as infinity where a sum gives it.
    const TinyGroup &group = origin_group();
    const ExchangeCase exchange = tiny_case(group, 28, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        TinySide model = tiny_side(exchange, call.role);
        set_peer_key(side, model, key_for_sum(group, model, {false, 0, 0}), 28);
        const TinySteps steps = tiny_steps(group, model);
        ASSERT_TRUE(steps.T.infinite);
        ASSERT_NE(steps.k, 0u);
        expect_refused_late(side, call, exchange);
    }
}

TEST(ZokAgreementRefusals, InfiniteSharedPointReturnsMinusOne) {
    const TinyGroup &group = cofactor_group();
    const ExchangeCase exchange = tiny_case(group, 20, 0);
    for (uint32_t order : {2u, 4u})
        for (const SessionKeyCall &call : kSessionKeyCalls) {
            SessionExchange side(exchange, call.role);
            TinySide model = tiny_side(exchange, call.role);
            set_peer_key(side, model, key_for_sum(group, model, group.point_of_order(order)), 20);
            const TinySteps steps = tiny_steps(group, model);
            ASSERT_FALSE(steps.T.infinite);
            ASSERT_NE(steps.k, 0u);
            ASSERT_TRUE(steps.U.infinite);
            expect_refused_late(side, call, exchange);
        }
}

TEST(ZokAgreement, KeptOppositePointsHaveAFiniteSum) {
    // The peer's key is the negative of its weighted random point: the sum is (-2x, -y).
    const TinyGroup &group = prime_group();
    const ExchangeCase exchange = tiny_case(group, 32, 0);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        TinySide model = tiny_side(exchange, call.role);
        const TinyPoint weighted = tiny_weighted(group, model);
        set_peer_key(side, model, group.group.negate(weighted), 32);
        const TinySteps steps = tiny_steps(group, model);
        ASSERT_EQ(steps.T, (TinyPoint{false, (2 * 1009 - 2 * weighted.x) % 1009, weighted.y}));
        ASSERT_FALSE(steps.U.infinite);
        ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
        expect_results(side, call,
                       with_peer_Z(with_point(exchange, steps.U), exchange, call, model.peer_key));
    }
}

TEST(ZokAgreement, PeerKeyIsNotTestedForTheCurveOrForZeroCoordinates) {
    const TinyGroup &group = prime_group();
    const ExchangeCase exchange = tiny_case(group, 32, 0);
    for (const TinyPoint &P :
         {TinyPoint{false, 2, 366}, TinyPoint{false, 0, 5}, TinyPoint{false, 7, 0}, TinyPoint{false, 0, 0}})
        for (const SessionKeyCall &call : kSessionKeyCalls) {
            SessionExchange side(exchange, call.role);
            TinySide model = tiny_side(exchange, call.role);
            set_peer_key(side, model, P, 32);
            const TinySteps steps = tiny_steps(group, model);
            ASSERT_FALSE(steps.T.infinite || steps.U.infinite);
            ASSERT_EQ(run(side, call), ZOK_OK) << call.name;
            expect_results(side, call, with_peer_Z(with_point(exchange, steps.U), exchange, call, P));
        }
}

TEST(ZokAgreementRefusals, ModulusOfZeroReturnsMinusOneWithoutResults) {
    // p / n is zero, and k with it.
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    Curve changed = exchange.curve;
    changed.p = tiny_number(0);
    const Session session(changed);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        side.session = session.handle();
        EXPECT_EQ(run(side, call), ZOK_ERR_INTERNAL) << call.name;
        EXPECT_TRUE(side.results_untouched()) << call.name;
        if (!call.draws) continue;
        const ByteString zero(32, 0);
        expect_public_written(side.R_written, zero, zero);
    }
}

}  // namespace zokecc_test::agreement_points_test
