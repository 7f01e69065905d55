// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The steps of an exchange between the checked inputs and the shared point, in both generations of calls, on
// curves small enough to choose every case: the cofactor, k of zero, and infinite sums and products.
#include <gtest/gtest.h>

#include "tests/support/exchange_generations.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::exchange_points_test {

using namespace exchange;

namespace {

template <class G>
class ExchangePoints : public testing::Test {};
TYPED_TEST_SUITE(ExchangePoints, Generations, GenerationName);

// One side of an exchange, in the call's arguments and in the model.
template <class G, class Call>
struct Trial {
    Trial(const TinyGroup &tiny, const Call &which, unsigned length)
        : group(tiny),
          call(which),
          byte_len(length),
          exchange(tiny_case(tiny, length, 0)),
          side(exchange, which.role),
          model(tiny_side(exchange, which.role)) {
        G::use(exchange.curve);
    }
    ByteString bytes(uint32_t value) const { return tiny_bytes(value, byte_len); }
    ByteString Z(const ByteString &id, const TinyPoint &P) const {
        return model_user_z(exchange.curve, exchange.selector, id, bytes(P.x), bytes(P.y));
    }
    void set_peer_key(const TinyPoint &P) {
        ASSERT_FALSE(P.infinite);
        model.peer_key = P;
        side.set_peer_key(bytes(P.x), bytes(P.y));
    }
    // A private key with its Z value.
    void set_d(uint32_t d) {
        model.d = d;
        own_Z = Z(exchange.own(call.role).id, group.multiple(d));
        G::set_d(side, bytes(d));
        const bool initiates = call.role == Role::kInitiator;
        side.set_Z(initiates ? own_Z : exchange.A.Z, initiates ? exchange.B.Z : own_Z);
    }
    // The peer's key for which the sum is the given point: that minus the weighted random point.
    void set_sum(const TinyPoint &T) {
        set_peer_key(group.group.add(T, group.group.negate(tiny_weighted(group, model))));
    }
    TinySteps steps() const { return tiny_steps(group, model); }
    // -1 and no result. A drawn random point is written, the bits of a given one are set.
    void expect_refused_late() {
        G::mark_point(side, call);
        EXPECT_EQ(run(side, call), ZOK_ERR_INTERNAL);
        EXPECT_TRUE(side.results_untouched());
        expect_random_point<G>(side, call, exchange);
        G::expect_marked_point(side, call, exchange);
    }
    void expect_modelled() {
        ASSERT_FALSE(steps().T.infinite || steps().U.infinite);
        ExchangeHashes hashes = with_point(exchange, steps().U);
        const bool initiates = call.role == Role::kInitiator;
        if (!own_Z.empty()) (initiates ? hashes.ZA : hashes.ZB) = own_Z;
        ByteString *Z_of_peer = G::Z_of(hashes, call, initiates ? Role::kResponder : Role::kInitiator);
        if (Z_of_peer != nullptr) *Z_of_peer = Z(exchange.peer(call.role).id, model.peer_key);
        expect_gives(side, call, hashes);
    }

    const TinyGroup &group;
    const Call &call;
    unsigned byte_len;
    ExchangeCase exchange;
    typename G::Side side;
    TinySide model;
    ByteString own_Z = {};
};

template <class G, class Test>
void for_each_call(const TinyGroup &group, Test test, unsigned byte_len = 32) {
    for (const auto &call : G::kCalls) {
        SCOPED_TRACE(call.name);
        Trial<G, std::decay_t<decltype(call)>> trial(group, call, byte_len);
        test(trial);
    }
}

// h t never reaches p for t below n and h = p / n, so k is h t itself. Modulo n it would be a different
// number, which matters for points outside the multiples of G.
template <class G>
void expect_cofactor_product_modulo_p() {
    const TinyGroup &group = cofactor_group();
    const TinyPoint outside = group.point_of_order(1004);
    for (unsigned byte_len : G::kLengths)
        for_each_call<G>(
            group,
            [&](auto &trial) {
                trial.set_peer_key(outside);
                // d with h t above n, for which no kept rule of the point arithmetic applies.
                uint32_t d = 0;
                auto serves = [&] {
                    trial.model.d = d;
                    const TinySteps steps = trial.steps();
                    return steps.k > group.n && steps.U == group.multiple(steps.k, steps.T);
                };
                do ASSERT_LT(++d, group.n);
                while (!serves());
                trial.set_d(d);
                const TinySteps steps = trial.steps();
                ASSERT_NE(steps.U, group.multiple(steps.k % group.n, steps.T)) << "no difference to see";
                // Back in the group of G, though T is outside.
                EXPECT_TRUE(group.multiple(group.n, steps.U).infinite);
                EXPECT_FALSE(group.multiple(group.n, steps.T).infinite);
                trial.expect_modelled();
            },
            byte_len);
}

// An order above p makes p / n zero, and k with it.
template <class G>
void expect_cofactor_of_zero_refused() {
    for_each_call<G>(prime_group(), [](auto &trial) {
        trial.exchange.curve.name = "order above p";
        trial.exchange.curve.n = tiny_number(1013);
        G::use(trial.exchange.curve);
        G::set_session(trial.side, trial.exchange);
        trial.expect_refused_late();
    });
}

// The peer's key is the negative of its weighted random point: the sum is (-2x, -y).
template <class G>
void expect_opposite_points_have_a_finite_sum() {
    for_each_call<G>(prime_group(), [](auto &trial) {
        const TinyPoint weighted = tiny_weighted(trial.group, trial.model);
        trial.set_peer_key(trial.group.group.negate(weighted));
        ASSERT_EQ(trial.steps().T, (TinyPoint{false, (2 * 1009 - 2 * weighted.x) % 1009, weighted.y}));
        trial.expect_modelled();
    });
}

template <class G>
void expect_peer_key_served(const TinyPoint &P) {
    for_each_call<G>(prime_group(), [&](auto &trial) {
        trial.set_peer_key(P);
        trial.expect_modelled();
    });
}

}  // namespace

TEST(Sm2KeyExChg, KeptCofactorProductIsReducedModuloP) { expect_cofactor_product_modulo_p<Legacy>(); }
TEST(ZokGenerateKeyWithEcc, KeptCofactorProductIsReducedModuloP) {
    expect_cofactor_product_modulo_p<Sessions>();
}

// d with d + x-bar r = 0 modulo n, and d - 1.
TYPED_TEST(ExchangePoints, KOfZeroReturnsMinusOne) {
    for (const TinyGroup *group : {&prime_group(), &cofactor_group()})
        for (uint32_t less : {0u, 1u})
            for_each_call<TypeParam>(*group, [&](auto &trial) {
                trial.model.d = 0;
                trial.set_d(group->n - trial.steps().t - less);
                ASSERT_EQ(trial.steps().k == 0, less == 0);
                if (less == 0)
                    trial.expect_refused_late();
                else
                    EXPECT_EQ(run(trial.side, trial.call), ZOK_OK);
            });
}

TEST(Sm2KeyExChgRefusals, CofactorOfZeroReturnsMinusOne) { expect_cofactor_of_zero_refused<Legacy>(); }
TEST(ZokAgreementRefusals, CofactorOfZeroReturnsMinusOne) { expect_cofactor_of_zero_refused<Sessions>(); }

// (0, 0) as a sum is treated as infinity.
TYPED_TEST(ExchangePoints, InfiniteSumReturnsMinusOne) {
    for_each_call<TypeParam>(
        origin_group(),
        [](auto &trial) {
            trial.set_sum({false, 0, 0});
            ASSERT_TRUE(trial.steps().T.infinite);
            ASSERT_NE(trial.steps().k, 0u);
            trial.expect_refused_late();
        },
        28);
}

TYPED_TEST(ExchangePoints, InfiniteSharedPointReturnsMinusOne) {
    for (uint32_t order : {2u, 4u})
        for_each_call<TypeParam>(
            cofactor_group(),
            [&](auto &trial) {
                trial.set_sum(trial.group.point_of_order(order));
                ASSERT_FALSE(trial.steps().T.infinite);
                ASSERT_NE(trial.steps().k, 0u);
                ASSERT_TRUE(trial.steps().U.infinite);
                trial.expect_refused_late();
            },
            24);
}

TEST(Sm2KeyExChg, KeptOppositePointsHaveAFiniteSum) { expect_opposite_points_have_a_finite_sum<Legacy>(); }
TEST(ZokAgreement, KeptOppositePointsHaveAFiniteSum) { expect_opposite_points_have_a_finite_sum<Sessions>(); }

TYPED_TEST(ExchangePoints, EqualPointsAreDoubledInTheSum) {
    for_each_call<TypeParam>(prime_group(), [](auto &trial) {
        const TinyPoint weighted = tiny_weighted(trial.group, trial.model);
        trial.set_peer_key(weighted);
        ASSERT_EQ(trial.steps().T, trial.group.group.add(weighted, weighted));
        trial.expect_modelled();
    });
}

TEST(Sm2KeyExChgAccepted, PeerKeyOffTheCurveIsNotRefused) { expect_peer_key_served<Legacy>({false, 2, 366}); }
TEST(ZokAgreement, PeerKeyIsNotTestedForTheCurveOrForZeroCoordinates) {
    for (const TinyPoint &P : {TinyPoint{false, 2, 366}, TinyPoint{false, 7, 0}, TinyPoint{false, 0, 0}})
        expect_peer_key_served<Sessions>(P);
}
TEST(ZokAgreement, PeerKeyWithAZeroCoordinateIsServed) { expect_peer_key_served<Sessions>({false, 0, 5}); }

TEST(ZokAgreementRefusals, ModulusOfZeroReturnsMinusOneWithoutResults) {
    // p / n is zero, and k with it.
    const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    Curve changed = exchange.curve;
    changed.p = tiny_number(0);
    const Session session(changed);
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(exchange, call.role);
        side.session = session.handle();
        EXPECT_EQ(run(side, call), kHardened ? ZOK_ERR_ARGUMENT : ZOK_ERR_INTERNAL) << call.name;
        EXPECT_TRUE(side.results_untouched()) << call.name;
        const ByteString zero(32, 0);
        if (!call.draws || kHardened)
            EXPECT_TRUE(side.R_written.unchanged()) << call.name;
        else
            expect_public_written(side.R_written, zero, zero);
    }
}

}  // namespace zokecc_test::exchange_points_test
