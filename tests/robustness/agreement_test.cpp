// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Bad inputs of key agreement on a session's curve, and of devices and sessions.
#include <array>

#include "tests/robustness/bad_inputs.h"
#include "tests/sdf/fixtures.h"
#include "tests/support/encryption_case.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_test {

using namespace exchange;
using robustness::bad;

namespace {

using Change = std::function<void(SessionExchange &)>;

std::string export_name(const SessionKeyCall &call) {
    const std::string sm2 = call.makes_Z ? "ZOK_SM2_Generate" : "ZOK_Generate";
    if (call.role == Role::kInitiator) return sm2 + "KeyWithECC";
    return sm2 + (call.draws ? "AgreementDataAndKeyWithECC" : "ResponseWithECC");
}

// Nothing is written and nothing drawn.
void refuses(const SessionKeyCall &call, uint32_t status, const std::string &input, const Change &change,
             unsigned fail_at = 0) {
    bad(export_name(call), input, [=] {
        SessionExchange side(tiny_exchange(), call.role);
        change(side);
        const std::string before = to_hex(image(side.R_record));
        FakeEntropy entropy;
        FailingAlloc counter(fail_at);
        EXPECT_EQ((side.*call.call)(), status);
        EXPECT_TRUE(side.nothing_written());
        EXPECT_EQ(to_hex(image(side.R_record)), before);
        EXPECT_TRUE(entropy.call_order.empty() && entropy.number_calls == 0);
        EXPECT_EQ(counter.outstanding, 0);
    });
}

Change both(const Change &first, const Change &second) {
    return [=](SessionExchange &side) {
        first(side);
        second(side);
    };
}
Change in_session_with(uint32_t selector) {
    return [=](SessionExchange &s) { s.session = shared_session(tiny_exchange().curve, selector); };
}

void spoil_values(SessionExchange &s) {
    s.d_record = private_key(ByteString(64, 0xFF));
    s.r_record.bits = 4000;
    s.peerR_record.y[31] ^= 1;
    s.peerP_record.bits = 520;
    s.R_record.bits = 520;
}
void take_everything(SessionExchange &s) {
    spoil_values(s);
    s.session = nullptr;
    s.d = s.r = nullptr;
    s.R = s.R_out = nullptr;
    s.peerR = s.peerP = nullptr;
    s.idA_bytes = s.idB_bytes = s.ZA_bytes = s.ZB_bytes = nullptr;
    s.result = nullptr;
}
void point_off_the_curve(SessionExchange &s) { s.peerR_record.y[31] ^= 1; }
void d_of_n(SessionExchange &s) { s.d_record = private_key(tiny_bytes(991, 32)); }

bool is_given_r(const SessionKeyCall &call) { return !call.draws; }
bool is_given_R(const SessionKeyCall &call) {
    return !call.draws && (call.makes_Z || call.role == Role::kResponder);
}

void add_pointers(const SessionKeyCall &call) {
    refuses(call, ZOK_ERR_SESSION, "no session", [](SessionExchange &s) { s.session = nullptr; });
    refuses(call, ZOK_ERR_SESSION, "nothing at all", take_everything);
    refuses(call, ZOK_ERR_SESSION, "no session, long values", [](SessionExchange &s) {
        s.session = nullptr;
        s.ZA_len = s.ZB_len = s.idA_len = s.idB_len = 0xFFFFFFFF;
    });
    auto null = [&](const std::string &what, const Change &change) {
        refuses(call, ZOK_ERR_ARGUMENT, what, change);
        refuses(call, ZOK_ERR_ARGUMENT, what + ", bad values", both(spoil_values, change));
    };
    null("no result", [](SessionExchange &s) { s.result = nullptr; });
    null("no d", [](SessionExchange &s) { s.d = nullptr; });
    null("no key of the peer", [](SessionExchange &s) { s.peerP = nullptr; });
    null("no R of the peer", [](SessionExchange &s) { s.peerR = nullptr; });
    if (is_given_r(call)) null("no r", [](SessionExchange &s) { s.r = nullptr; });
    if (call.draws) null("no room for R", [](SessionExchange &s) { s.R_out = nullptr; });
    if (is_given_R(call)) null("no own R", [](SessionExchange &s) { s.R = nullptr; });
    if (call.makes_Z) {
        null("no identity of A", [](SessionExchange &s) { s.idA_bytes = nullptr; });
        null("no identity of B", [](SessionExchange &s) { s.idB_bytes = nullptr; });
    } else {
        null("no ZA", [](SessionExchange &s) { s.ZA_bytes = nullptr; });
        null("no ZB", [](SessionExchange &s) { s.ZB_bytes = nullptr; });
        null("no ZB of one byte", [](SessionExchange &s) {
            s.ZB_bytes = nullptr;
            s.ZB_len = 1;
        });
    }
}

// Each alone, and before a point off the curve.
void add_sizes(const SessionKeyCall &call) {
    auto size = [&](const std::string &what, const Change &change) {
        refuses(call, ZOK_ERR_ARGUMENT, what, change);
        refuses(call, ZOK_ERR_ARGUMENT, what + ", point off the curve", both(change, point_off_the_curve));
    };
    for (uint32_t bits : {520u, 527u, 0x80000000u, 0xFFFFFFFFu}) {
        const std::string what = " of " + std::to_string(bits) + " bits";
        size("d" + what, [=](SessionExchange &s) { s.d_record.bits = bits; });
        size("key" + what, [=](SessionExchange &s) { s.peerP_record.bits = bits; });
        size("R" + what, [=](SessionExchange &s) { s.peerR_record.bits = bits; });
        if (is_given_r(call)) size("r" + what, [=](SessionExchange &s) { s.r_record.bits = bits; });
        if (call.call == kSm2Initiate.call)
            size("own R" + what, [=](SessionExchange &s) { s.R_record.bits = bits; });
    }
    for (const ByteString &d : {tiny_bytes(991, 32), tiny_bytes(992, 32), tiny_bytes(0x80000000u, 32),
                                tiny_bytes(0xFFFFFFFFu, 32), ByteString(32, 0xFF), ByteString(64, 0xFF)}) {
        size("d = " + to_hex(d), [=](SessionExchange &s) { s.d_record = private_key(d); });
        if (call.role == Role::kInitiator)
            size("r = " + to_hex(d), [=](SessionExchange &s) { s.r_record = private_key(d); });
    }
    // Refused for its length alone: there is one byte at the pointer.
    static const uint8_t one = 0x41;
    for (uint32_t length : {0xFFFFFFFFu, 0xFFFFFFFFu - 6 * 32 - 2})
        if (call.makes_Z) {
            size("an identity of A of 2^32 bytes", [=](SessionExchange &s) {
                s.idA_bytes = &one;
                s.idA_len = length;
            });
            size("an identity of B of 2^32 bytes", [=](SessionExchange &s) {
                s.idB_bytes = &one;
                s.idB_len = length;
            });
        }
    if (!call.makes_Z)
        for (uint32_t bytes : {289u - 32u, 0x80000000u, 0xFFFFFFFFu})
            size("ZA of " + std::to_string(bytes) + " bytes", [=](SessionExchange &s) { s.ZA_len = bytes; });
    // Sums that wrap around; with 5 L the last is 1 modulo 2^32.
    constexpr uint32_t kMost = 0xFFFFFFFFu, kHalf = 0x80000000u;
    if (!call.makes_Z)
        for (auto [A, B] : {std::pair{kMost, 0u},
                            {0u, kMost},
                            {kMost, 1u},
                            {kMost, kMost},
                            {kHalf, kHalf},
                            {0xFFFFFF60u, 1u}})
            size("ZA and ZB together too long", [A = A, B = B](SessionExchange &s) {
                s.ZA_len = A;
                s.ZB_len = B;
            });
    for (uint32_t bytes : {1u, 32u, 449u, kMost})
        if (!call.makes_Z)
            size("no ZA of " + std::to_string(bytes) + " bytes", [=](SessionExchange &s) {
                s.ZA_bytes = nullptr;
                s.ZA_len = bytes;
            });
}

void add_points(const SessionKeyCall &call) {
    auto point = [&](const char *what, const Change &change) {
        refuses(call, ZOK_ERR_INTERNAL, what, change);
        refuses(call, ZOK_ERR_INTERNAL, std::string(what) + ", no key buffer",
                both(change, [](SessionExchange &s) { s.result->key = nullptr; }));
    };
    point("x of the peer's R changed", [](SessionExchange &s) { s.peerR_record.x[31] ^= 1; });
    point("y of the peer's R changed", point_off_the_curve);
    point("the peer's R of zero bytes", [](SessionExchange &s) {
        std::memset(s.peerR_record.x, 0, 32);
        std::memset(s.peerR_record.y, 0, 32);
    });
    point("the peer's R of no bytes", [](SessionExchange &s) { s.peerR_record.bits = 0; });
    point("the peer's R of 31 bytes", [](SessionExchange &s) { s.peerR_record.bits = 248; });
}

// The SM2 curve of a standard's example.
void add_named_curve(const SessionKeyCall &call) {
    for (int fault : {0, 1, 2})
        bad(export_name(call), "on the SM2 curve", [=] {
            const ExchangeCase exchange = vector_case(worked_example("GM/T 0003.5-2012 B.2"));
            SessionExchange side(exchange, call.role);
            if (fault == 0) side.d_record = private_key(fixed_bytes(exchange.curve.n, 32));
            if (fault == 1) side.peerR_record.x[31] ^= 1;
            if (fault == 2) side.peerR_record.y[31] ^= 1;
            EXPECT_EQ(run(side, call), fault == 0 ? ZOK_ERR_ARGUMENT : ZOK_ERR_INTERNAL);
            EXPECT_TRUE(side.nothing_written());
        });
}

// An unknown hash: if Z is computed it is detected before the points, otherwise after them.
void add_hashes(const SessionKeyCall &call) {
    for (uint32_t selector : {2u, 0xFFFFFFFFu}) {
        const Change there = in_session_with(selector);
        if (call.makes_Z) refuses(call, ZOK_ERR_ARGUMENT, "an unknown hash", there);
        refuses(call, call.makes_Z ? ZOK_ERR_ARGUMENT : ZOK_ERR_INTERNAL,
                "an unknown hash, point off the curve", both(there, point_off_the_curve));
    }
    if (!call.makes_Z) return;
    for (unsigned fail_at : {1u, 2u})
        refuses(call, ZOK_ERR_ARGUMENT, "no memory for Z, point off the curve", point_off_the_curve, fail_at);
    refuses(call, ZOK_ERR_ARGUMENT, "d = n, no memory for Z", d_of_n, 1);
}

// From a device, with unknown types, and with an order of zero.
void *unusable_session(unsigned which) {
    auto with = [](auto Curve::*field, auto value) {
        Curve changed = tiny_exchange().curve;
        changed.*field = value;
        return changed.record(0);
    };
    static const CurvelessSession device;
    static const AnySession unknown_type(with(&Curve::session_type, 7u)),
        type_zero(with(&Curve::session_type, 0u)), no_order(with(&Curve::n, mint{}));
    return std::array{device.handle(), unknown_type.handle(), type_zero.handle(), no_order.handle()}[which];
}

// For any d.
void add_sessions(const SessionKeyCall &call) {
    for (unsigned which : {0u, 1u, 2u, 3u}) {
        for (uint32_t d : {0u, 1u, 123u})
            refuses(call, ZOK_ERR_ARGUMENT, "no curve or order", [=](SessionExchange &s) {
                s.session = unusable_session(which);
                s.d_record = private_key(tiny_bytes(d, 32));
            });
        refuses(call, ZOK_ERR_ARGUMENT, "no curve or order, point off the curve", [=](SessionExchange &s) {
            s.session = unusable_session(which);
            point_off_the_curve(s);
        });
    }
}

void add_agreement() {
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        add_pointers(call);
        add_sizes(call);
        add_points(call);
        add_named_curve(call);
        add_hashes(call);
        add_sessions(call);
    }
}

void add_devices() {
    static CurvePara record = prime_group().curve(32).record(0);
    bad("SDF_OpenDevice", "no output", [] {
        FailingAlloc counter;
        EXPECT_EQ(SDF_OpenDevice(nullptr), ZOK_ERR_ARGUMENT);
        EXPECT_EQ(counter.allocations, 0u);
    });
    bad("SDF_CloseDevice", "no device", [] { EXPECT_EQ(SDF_CloseDevice(nullptr), ZOK_ERR_CLOSE_DEVICE); });
    bad("SDF_OpenSession", "no device", [] {
        GuardedRecord<void *> out;
        EXPECT_EQ(SDF_OpenSession(nullptr, out.get()), ZOK_ERR_DEVICE);
        EXPECT_EQ(SDF_OpenSession(nullptr, nullptr), ZOK_ERR_DEVICE);
        EXPECT_TRUE(out.unchanged());
    });
    bad("SDF_OpenSession", "no output", [] {
        Device device;
        FailingAlloc counter;
        EXPECT_EQ(SDF_OpenSession(device.handle(), nullptr), ZOK_ERR_ARGUMENT);
        EXPECT_EQ(counter.allocations, 0u);
        EXPECT_EQ(device.context()->session_count, 0u);
    });
    bad("SDF_CloseSession", "no session",
        [] { EXPECT_EQ(SDF_CloseSession(nullptr), ZOK_ERR_CLOSE_SESSION); });
    bad("ZOK_CloseSession", "no session",
        [] { EXPECT_EQ(ZOK_CloseSession(nullptr), ZOK_ERR_CLOSE_SESSION); });
    bad("SDF_GetDeviceInfo", "no session", [] {
        GuardedRecord<DEVICEINFO> info;
        EXPECT_EQ(SDF_GetDeviceInfo(nullptr, info.get()), ZOK_ERR_SESSION);
        EXPECT_EQ(SDF_GetDeviceInfo(nullptr, nullptr), ZOK_ERR_SESSION);
        EXPECT_TRUE(info.unchanged());
    });
    bad("SDF_GetDeviceInfo", "no output", [] {
        int any = 0;
        EXPECT_EQ(SDF_GetDeviceInfo(&any, nullptr), ZOK_ERR_ARGUMENT);
    });
    bad("ZOK_OpenSession", "no output or no record", [] {
        GuardedRecord<void *> out;
        FailingAlloc counter;
        EXPECT_EQ(ZOK_OpenSession(nullptr, &record), ZOK_ERR_ARGUMENT);
        EXPECT_EQ(ZOK_OpenSession(out.get(), nullptr), ZOK_ERR_ARGUMENT);
        EXPECT_EQ(ZOK_OpenSession(nullptr, nullptr), ZOK_ERR_ARGUMENT);
        EXPECT_TRUE(out.unchanged());
        EXPECT_EQ(counter.allocations, 0u);
    });
}

const robustness::Rows agreement(add_agreement), devices(add_devices);

}  // namespace

TEST(AgreementCalls, WorkWithAllArguments) {
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        SessionExchange side(tiny_exchange(), call.role);
        EXPECT_EQ(run(side, call), ZOK_OK) << call.name;
    }
}

}  // namespace zokecc_test::agreement_test
