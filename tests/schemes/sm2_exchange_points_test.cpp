// The steps between the checked inputs and the shared point, on curves small enough to choose what
// happens: the cofactor, k of zero, and infinite sums and products.
#include <gtest/gtest.h>

#include "tests/support/legacy_exchange.h"

namespace zokecc_test::sm2_exchange_points_test {

using namespace exchange;

namespace {

ExchangeCase installed(const TinyGroup &group, unsigned byte_len = 32) {
    ExchangeCase out = tiny_case(group, byte_len, 0);
    install(out.curve);
    return out;
}

// A point for the peer's key, as the side's record and in the model's input.
void set_peer_key(LegacyExchange &side, TinySide &model, const TinyPoint &P, unsigned byte_len) {
    ASSERT_FALSE(P.infinite || P.x == 0 || P.y == 0);
    model.peer_key = P;
    side.peerP_record = point_record(tiny_bytes(P.x, byte_len), tiny_bytes(P.y, byte_len));
}

// The key for which the sum T is the given point: T less the weighted random point.
TinyPoint key_for_sum(const TinyGroup &group, const TinySide &model, const TinyPoint &T) {
    return group.group.add(T, group.group.negate(tiny_weighted(group, model)));
}

// All calls end with -1 and no result. The call that draws has written its random point.
void expect_refused_late(LegacyExchange &side, const LegacyKeyCall &call, const ExchangeParty &own) {
    EXPECT_EQ((side.*call.call)(), -1) << call.name;
    EXPECT_TRUE(side.results_untouched()) << call.name;
    if (call.call == kResponderCall.call) {
        expect_point_written(side.R_written, own.Rx, own.Ry);
    } else {
        EXPECT_TRUE(side.R_written.unchanged()) << call.name;
    }
}

void expect_results(LegacyExchange &side, const LegacyKeyCall &call, const ExchangeHashes &expected) {
    ASSERT_EQ((side.*call.call)(), 0) << call.name;
    EXPECT_EQ(text_of(side.key), to_hex(expected.key(side.key.size()))) << call.name;
    if (call.call != &LegacyExchange::whole) expect_split_results(side, expected);
}

// d with d + x-bar r = 0 modulo n.
uint32_t key_that_cancels(const TinyGroup &group, TinySide model) {
    model.d = 0;
    return group.n - tiny_steps(group, model).t;
}

// d with h t above n, for which no kept rule of the point arithmetic acts.
uint32_t key_with_product_above_n(const TinyGroup &group, TinySide model) {
    for (model.d = 1; model.d < group.n; ++model.d) {
        const TinySteps steps = tiny_steps(group, model);
        if (steps.k > group.n && steps.U == group.multiple(steps.k, steps.T)) return model.d;
    }
    throw std::invalid_argument("no such key");
}

}  // namespace

// h t never reaches p for t below n and h = p / n, so k is h t itself. Modulo n it would be another
// number, which shows with points outside the multiples of G.
TEST(Sm2KeyExChg, KeptCofactorProductIsReducedModuloP) {
    const TinyGroup &group = cofactor_group();
    const TinyPoint outside = group.point_of_order(1004);
    for (unsigned byte_len : {24u, 28u, 32u}) {
        const ExchangeCase exchange = installed(group, byte_len);
        for (const LegacyKeyCall &call : kLegacyKeyCalls) {
            LegacyExchange side(exchange, call.role);
            TinySide model = tiny_side(exchange, call.role);
            set_peer_key(side, model, outside, byte_len);
            model.d = key_with_product_above_n(group, model);
            side.d_bytes.set(tiny_bytes(model.d, byte_len));
            const TinySteps steps = tiny_steps(group, model);
            ASSERT_NE(steps.U, group.multiple(steps.k % group.n, steps.T)) << "no difference to see";
            ASSERT_EQ(steps.U, group.multiple(steps.k, steps.T));
            expect_results(side, call, with_point(exchange, steps.U));
        }
    }
}

TEST(Sm2KeyExChg, CofactorTakesAPointOutsideTheGroupOfGBackIntoIt) {
    const TinyGroup &group = cofactor_group();
    const ExchangeCase exchange = installed(group);
    LegacyExchange side(exchange, Role::kInitiator);
    TinySide model = tiny_side(exchange, Role::kInitiator);
    set_peer_key(side, model, group.point_of_order(1004), 32);
    const TinySteps steps = tiny_steps(group, model);
    EXPECT_TRUE(group.multiple(group.n, steps.U).infinite);
    EXPECT_FALSE(group.multiple(group.n, steps.T).infinite);
    expect_results(side, kInitiatorCall, with_point(exchange, steps.U));
}

TEST(Sm2KeyExChgRefusals, KOfZeroReturnsMinusOne) {
    for (const TinyGroup *group : {&prime_group(), &cofactor_group()}) {
        const ExchangeCase exchange = installed(*group);
        for (const LegacyKeyCall &call : kLegacyKeyCalls) {
            LegacyExchange side(exchange, call.role);
            TinySide model = tiny_side(exchange, call.role);
            model.d = key_that_cancels(*group, model);
            ASSERT_EQ(tiny_steps(*group, model).k, 0u);
            side.d_bytes.set(tiny_bytes(model.d, 32));
            expect_refused_late(side, call, exchange.own(call.role));
            LegacyExchange neighbour(exchange, call.role);
            neighbour.d_bytes.set(tiny_bytes(model.d - 1, 32));
            EXPECT_EQ((neighbour.*call.call)(), 0) << call.name;
        }
    }
}

TEST(Sm2KeyExChgRefusals, CofactorOfZeroReturnsMinusOne) {
    // An order above p makes p / n zero, and k with it.
    ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    exchange.curve.name = "order above p";
    exchange.curve.n = tiny_number(1013);
    install(exchange.curve);
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        LegacyExchange side(exchange, call.role);
        expect_refused_late(side, call, exchange.own(call.role));
    }
}

TEST(Sm2KeyExChgRefusals, InfiniteSumReturnsMinusOne) {
    // (0, 0) is read as infinity where a sum gives it.
    const TinyGroup &group = origin_group();
    const ExchangeCase exchange = installed(group);
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        LegacyExchange side(exchange, call.role);
        TinySide model = tiny_side(exchange, call.role);
        set_peer_key(side, model, key_for_sum(group, model, {false, 0, 0}), 32);
        const TinySteps steps = tiny_steps(group, model);
        ASSERT_TRUE(steps.T.infinite);
        ASSERT_NE(steps.k, 0u);
        expect_refused_late(side, call, exchange.own(call.role));
    }
}

TEST(Sm2KeyExChgRefusals, InfiniteSharedPointReturnsMinusOne) {
    const TinyGroup &group = cofactor_group();
    const ExchangeCase exchange = installed(group);
    for (uint32_t order : {2u, 4u})
        for (const LegacyKeyCall &call : kLegacyKeyCalls) {
            LegacyExchange side(exchange, call.role);
            TinySide model = tiny_side(exchange, call.role);
            set_peer_key(side, model, key_for_sum(group, model, group.point_of_order(order)), 32);
            const TinySteps steps = tiny_steps(group, model);
            ASSERT_FALSE(steps.T.infinite);
            ASSERT_NE(steps.k, 0u);
            ASSERT_TRUE(steps.U.infinite);
            expect_refused_late(side, call, exchange.own(call.role));
        }
}

TEST(Sm2KeyExChg, KeptOppositePointsHaveAFiniteSum) {
    // The peer's key is the negative of its weighted random point: the sum is (-2x, -y).
    const TinyGroup &group = prime_group();
    const ExchangeCase exchange = installed(group);
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        LegacyExchange side(exchange, call.role);
        TinySide model = tiny_side(exchange, call.role);
        const TinyPoint weighted = tiny_weighted(group, model);
        set_peer_key(side, model, group.group.negate(weighted), 32);
        const TinySteps steps = tiny_steps(group, model);
        ASSERT_EQ(steps.T, (TinyPoint{false, (2 * 1009 - 2 * weighted.x) % 1009, weighted.y}));
        ASSERT_FALSE(steps.U.infinite);
        expect_results(side, call, with_point(exchange, steps.U));
    }
}

TEST(Sm2KeyExChg, EqualPointsAreDoubledInTheSum) {
    const TinyGroup &group = prime_group();
    const ExchangeCase exchange = installed(group);
    for (const LegacyKeyCall &call : kLegacyKeyCalls) {
        LegacyExchange side(exchange, call.role);
        TinySide model = tiny_side(exchange, call.role);
        const TinyPoint weighted = tiny_weighted(group, model);
        set_peer_key(side, model, weighted, 32);
        const TinySteps steps = tiny_steps(group, model);
        ASSERT_EQ(steps.T, group.group.add(weighted, weighted));
        expect_results(side, call, with_point(exchange, steps.U));
    }
}

}  // namespace zokecc_test::sm2_exchange_points_test
