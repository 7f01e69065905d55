// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Bad inputs of the key exchange on the process-wide curve.
#include "tests/robustness/bad_inputs.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/legacy_exchange.h"

namespace zokecc_test::exchange_test {

using namespace exchange;
using robustness::bad;

namespace {

using Change = std::function<void(LegacyExchange &)>;

const ExchangeCase &small_exchange() {
    static const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    install(exchange.curve);
    return exchange;
}

struct Target {
    const char *name;
    LegacyCall call;
    Role role;
    bool has_own_r, has_own_R;
};
const Target kTargets[] = {
    {"sm2_KeyExChg_A4_10", &LegacyExchange::a4_10, Role::kInitiator, true, true},
    {"sm2_KeyExChg_B1_10", &LegacyExchange::b1_10, Role::kResponder, false, false},
    {"sm2_KeyExChg", &LegacyExchange::whole, Role::kInitiator, true, true},
    {"sm2_KeyExChg", &LegacyExchange::whole, Role::kResponder, true, true},
};

void refuses(const Target &target, const std::string &input, const Change &change) {
    bad(target.name, input, [=] {
        LegacyExchange side(small_exchange(), target.role);
        install(small_exchange().curve);
        change(side);
        FakeEntropy entropy;
        FailingAlloc counter;
        EXPECT_EQ((side.*target.call)(), -1);
        EXPECT_TRUE(side.nothing_written());
        EXPECT_TRUE(entropy.call_order.empty() && entropy.number_calls == 0);
        EXPECT_EQ(counter.allocations, 0u);
    });
}

void zero_coordinates(const Target &target, const std::string &what,
                      ecc_point_bytes LegacyExchange::*record) {
    refuses(target, what + " with x = 0", [=](LegacyExchange &s) { std::memset((s.*record).x, 0, 32); });
    refuses(target, what + " with y = 0", [=](LegacyExchange &s) { std::memset((s.*record).y, 0, 32); });
    refuses(target, what + " of (0, 0)", [=](LegacyExchange &s) {
        std::memset((s.*record).x, 0, 32);
        std::memset((s.*record).y, 0, 32);
    });
    for (uint32_t length : {0u, 30u})  // nothing, or the leading zeros only
        refuses(target, what + " of few bytes", [=](LegacyExchange &s) { (s.*record).length = length; });
}
void lengths(const Target &target, const std::string &what, ecc_point_bytes LegacyExchange::*record) {
    for (uint32_t length : {66u, 67u, 0x80000000u, 0xFFFFFFFFu})
        refuses(target, what + " of " + std::to_string(length) + " bytes",
                [=](LegacyExchange &s) { (s.*record).length = length; });
}

void add_pointers(const Target &target) {
    refuses(target, "no d", [](LegacyExchange &s) { s.d = nullptr; });
    refuses(target, "no bytes of d", [](LegacyExchange &s) { s.d->bytes = nullptr; });
    refuses(target, "no key of the peer", [](LegacyExchange &s) { s.peerP = nullptr; });
    refuses(target, "no R of the peer", [](LegacyExchange &s) { s.peerR = nullptr; });
    refuses(target, "no ZA", [](LegacyExchange &s) { s.ZA = nullptr; });
    refuses(target, "no ZB", [](LegacyExchange &s) { s.ZB = nullptr; });
    refuses(target, "no key buffer", [](LegacyExchange &s) { s.K = nullptr; });
    refuses(target, "no value with 02", [](LegacyExchange &s) { s.out02 = nullptr; });
    refuses(target, "no value with 03", [](LegacyExchange &s) { s.out03 = nullptr; });
    if (target.has_own_r) {
        refuses(target, "no r", [](LegacyExchange &s) { s.r = nullptr; });
        refuses(target, "no bytes of r", [](LegacyExchange &s) { s.r->bytes = nullptr; });
        refuses(target, "an r of 77 bytes", [](LegacyExchange &s) { s.r->length = 77; });
        refuses(target, "no own R", [](LegacyExchange &s) { s.R = nullptr; });
    } else {
        refuses(target, "no room for R", [](LegacyExchange &s) { s.R_out = nullptr; });
    }
}

// No curve, or one whose order or modulus is zero, also as one zero word.
void without_curve(const Target &target) {
    refuses(target, "no curve", [](LegacyExchange &) { uninstall(); });
    for (mint GlobalCurve::*number : {&GlobalCurve::n, &GlobalCurve::p})
        for (uint32_t len : {0u, 1u})
            refuses(target, "no order or modulus", [=](LegacyExchange &) {
                global_curve.*number = mint{};
                (global_curve.*number).len = len;
            });
}

void add_values(const Target &target) {
    const ByteString wide_five = joined({ByteString(76, 0x00), {0x05}});
    for (const ByteString &d :
         {tiny_bytes(991, 32), tiny_bytes(992, 32), ByteString(32, 0xFF), ByteString(76, 0xFF),
          joined({{0x01}, ByteString(75, 0x00)}), ByteString(77, 0), wide_five})
        refuses(target, "d = " + to_hex(d), [=](LegacyExchange &s) { s.d_bytes.set(d); });
    refuses(target, "d of 2^32 - 1 bytes", [](LegacyExchange &s) { s.d->length = 0xFFFFFFFF; });
    if (target.has_own_r) {
        refuses(target, "r of 77 bytes", [=](LegacyExchange &s) { s.r_bytes.set(wide_five); });
        refuses(target, "r of 2^32 - 1 bytes", [](LegacyExchange &s) { s.r->length = 0xFFFFFFFF; });
    }
    zero_coordinates(target, "the peer's key", &LegacyExchange::peerP_record);
    lengths(target, "the peer's key", &LegacyExchange::peerP_record);
    lengths(target, "the peer's R", &LegacyExchange::peerR_record);
    refuses(target, "the peer's R off the curve", [](LegacyExchange &s) { s.peerR_record.y[31] ^= 1; });
    refuses(target, "the peer's R off the curve", [](LegacyExchange &s) { s.peerR_record.x[31] ^= 1; });
    refuses(target, "the peer's R of no bytes", [](LegacyExchange &s) { s.peerR_record.length = 0; });
    for (bool x : {true, false})
        bad(target.name, "the peer's R off the SM2 curve", [=] {
            const ExchangeCase exchange = vector_case(worked_example("GM/T 0003.5-2012 B.2"));
            install(exchange.curve);
            LegacyExchange side(exchange, target.role);
            (x ? side.peerR_record.x : side.peerR_record.y)[31] ^= 1;
            FakeEntropy entropy;
            EXPECT_EQ((side.*target.call)(), -1);
            EXPECT_TRUE(side.nothing_written());
        });
    refuses(target, "the peer's R of zero bytes", [](LegacyExchange &s) {
        std::memset(s.peerR_record.x, 0, 32);
        std::memset(s.peerR_record.y, 0, 32);
    });
    without_curve(target);
    // No curve of that length can be installed; the transcript would not hold it.
    bad(target.name, "a curve of 40 bytes", [=] {
        LegacyExchange side(small_exchange(), target.role);
        install(small_exchange().curve);
        global_curve.byte_len = 40;
        EXPECT_EQ((side.*target.call)(), -1);
        EXPECT_TRUE(side.results_untouched());
    });
    if (target.has_own_R) {
        zero_coordinates(target, "the own R", &LegacyExchange::R_record);
        lengths(target, "the own R", &LegacyExchange::R_record);
    }
}

void add_exchange() {
    for (const Target &target : kTargets) {
        add_pointers(target);
        add_values(target);
    }
    for (const Target &whole : {kTargets[2], kTargets[3]}) {
        refuses(whole, "the own R off the curve", [](LegacyExchange &s) { s.R_record.x[31] ^= 1; });
        refuses(whole, "the own R off the curve", [](LegacyExchange &s) { s.R_record.y[31] ^= 1; });
    }

    const Target first{"sm2_KeyExChg_A1_3", &LegacyExchange::a1_3, Role::kInitiator, true, false};
    refuses(first, "no r", [](LegacyExchange &s) { s.r = nullptr; });
    refuses(first, "no bytes of r", [](LegacyExchange &s) { s.r->bytes = nullptr; });
    refuses(first, "no room for R", [](LegacyExchange &s) { s.R_out = nullptr; });
    without_curve(first);
    for (const ByteString &r :
         {tiny_bytes(991, 32), tiny_bytes(992, 32), ByteString(32, 0xFF), ByteString(76, 0xFF),
          ByteString(77, 0), joined({ByteString(76, 0x00), {0x05}})})
        refuses(first, "r = " + to_hex(r), [=](LegacyExchange &s) { s.r_bytes.set(r); });

    for (bool scalar : {false, true})
        bad("sm2_RPoint", scalar ? "no output" : "no scalar", [=] {
            const uint8_t byte = 1;
            GuardedRecord<ecc_point_bytes> out;
            EXPECT_EQ(sm2_RPoint(scalar ? &byte : nullptr, 1, scalar ? nullptr : out.get()), 1);
            EXPECT_TRUE(out.unchanged());
        });
    bad("sm2_RPoint", "no curve, a count beyond everything", [] {
        uninstall();
        const uint8_t byte = 1;
        GuardedRecord<ecc_point_bytes> out;
        EXPECT_EQ(sm2_RPoint(&byte, 0xFFFFFFFFu, out.get()), 0);
        EXPECT_EQ(out->length, 0u);
    });
}

const robustness::Rows rows(add_exchange);

}  // namespace

TEST(Sm2KeyExChgCalls, WorkWithAllArguments) {
    for (const Target &target : kTargets) {
        LegacyExchange side(small_exchange(), target.role);
        install(small_exchange().curve);
        EXPECT_EQ((side.*target.call)(), 0) << target.name;
    }
}

}  // namespace zokecc_test::exchange_test
