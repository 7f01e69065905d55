// Bad inputs of key agreement over a session's curve, and of devices and sessions themselves.
#include "tests/robustness/bad_inputs.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::agreement_test {

using namespace exchange;
using robustness::bad;

namespace {

using Change = std::function<void(SessionExchange &)>;

const ExchangeCase &small_exchange() {
    static const ExchangeCase exchange = tiny_case(prime_group(), 32, 0);
    return exchange;
}

std::string export_name(const SessionKeyCall &call) {
    const std::string sm2 = call.makes_Z ? "ZOK_SM2_Generate" : "ZOK_Generate";
    if (call.role == Role::kInitiator) return sm2 + "KeyWithECC";
    return sm2 + (call.draws ? "AgreementDataAndKeyWithECC" : "ResponseWithECC");
}

void refuses(const SessionKeyCall &call, uint32_t status, const std::string &input, const Change &change) {
    bad(export_name(call), input, [=] {
        SessionExchange side(small_exchange(), call.role);
        change(side);
        const std::string before = record_text(side.R_record);
        FakeEntropy entropy;
        FailingAlloc counter;
        EXPECT_EQ((side.*call.call)(), status);
        EXPECT_TRUE(side.nothing_written());
        EXPECT_EQ(record_text(side.R_record), before);
        EXPECT_TRUE(entropy.call_order.empty() && entropy.number_calls == 0);
        EXPECT_EQ(counter.outstanding, 0);
    });
}

void add_pointers(const SessionKeyCall &call) {
    refuses(call, ZOK_ERR_SESSION, "no session", [](SessionExchange &s) { s.session = nullptr; });
    auto null = [&](const char *what, const Change &change) {
        refuses(call, ZOK_ERR_ARGUMENT, what, change);
    };
    null("no result", [](SessionExchange &s) { s.result = nullptr; });
    null("no d", [](SessionExchange &s) { s.d = nullptr; });
    null("no key of the peer", [](SessionExchange &s) { s.peerP = nullptr; });
    null("no R of the peer", [](SessionExchange &s) { s.peerR = nullptr; });
    if (!call.draws) null("no r", [](SessionExchange &s) { s.r = nullptr; });
    if (call.draws) null("no room for R", [](SessionExchange &s) { s.R_out = nullptr; });
    if (!call.draws && (call.makes_Z || call.role == Role::kResponder))
        null("no own R", [](SessionExchange &s) { s.R = nullptr; });
    if (call.makes_Z) {
        null("no identity of A", [](SessionExchange &s) { s.idA_bytes = nullptr; });
        null("no identity of B", [](SessionExchange &s) { s.idB_bytes = nullptr; });
    } else {
        null("no ZA", [](SessionExchange &s) { s.ZA_bytes = nullptr; });
        null("no ZB", [](SessionExchange &s) { s.ZB_bytes = nullptr; });
    }
}

void add_values(const SessionKeyCall &call) {
    for (uint32_t bits : {520u, 0x80000000u, 0xFFFFFFFFu}) {
        const std::string what = " of " + std::to_string(bits) + " bits";
        refuses(call, ZOK_ERR_ARGUMENT, "d" + what, [=](SessionExchange &s) { s.d_record.bits = bits; });
        refuses(call, ZOK_ERR_ARGUMENT, "key" + what,
                [=](SessionExchange &s) { s.peerP_record.bits = bits; });
        refuses(call, ZOK_ERR_ARGUMENT, "R" + what, [=](SessionExchange &s) { s.peerR_record.bits = bits; });
        if (!call.draws)
            refuses(call, ZOK_ERR_ARGUMENT, "r" + what, [=](SessionExchange &s) { s.r_record.bits = bits; });
    }
    for (const ByteString &d :
         {tiny_bytes(991, 32), tiny_bytes(992, 32), ByteString(32, 0xFF), ByteString(64, 0xFF)}) {
        refuses(call, ZOK_ERR_ARGUMENT, "d = " + to_hex(d),
                [=](SessionExchange &s) { s.d_record = private_record(d); });
        if (call.role == Role::kInitiator)
            refuses(call, ZOK_ERR_ARGUMENT, "r = " + to_hex(d),
                    [=](SessionExchange &s) { s.r_record = private_record(d); });
    }
    refuses(call, ZOK_ERR_INTERNAL, "the peer's R off the curve",
            [](SessionExchange &s) { s.peerR_record.y[31] ^= 1; });
    refuses(call, ZOK_ERR_INTERNAL, "the peer's R of zero bytes", [](SessionExchange &s) {
        std::memset(s.peerR_record.x, 0, 32);
        std::memset(s.peerR_record.y, 0, 32);
    });
    refuses(call, ZOK_ERR_INTERNAL, "the peer's R of no bytes",
            [](SessionExchange &s) { s.peerR_record.bits = 0; });
    if (call.makes_Z)
        refuses(call, ZOK_ERR_ARGUMENT, "an identity of 2^32 - 1 bytes",
                [](SessionExchange &s) { s.idA_len = s.idB_len = 0xFFFFFFFFu; });
    if (!call.makes_Z)
        for (uint32_t size : {289u - 32u, 0x80000000u, 0xFFFFFFFFu})
            refuses(call, ZOK_ERR_ARGUMENT, "ZA of " + std::to_string(size) + " bytes",
                    [=](SessionExchange &s) { s.ZA_len = size; });
}

void add_agreement() {
    for (const SessionKeyCall &call : kSessionKeyCalls) {
        add_pointers(call);
        add_values(call);
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
        void *device = nullptr;
        ASSERT_EQ(SDF_OpenDevice(&device), ZOK_OK);
        EXPECT_EQ(SDF_OpenSession(device, nullptr), ZOK_ERR_ARGUMENT);
        EXPECT_EQ(SDF_CloseDevice(device), ZOK_OK);
    });
    bad("SDF_CloseSession", "no session",
        [] { EXPECT_EQ(SDF_CloseSession(nullptr), ZOK_ERR_CLOSE_SESSION); });
    bad("ZOK_CloseSession", "no session",
        [] { EXPECT_EQ(ZOK_CloseSession(nullptr), ZOK_ERR_CLOSE_SESSION); });
    bad("SDF_GetDeviceInfo", "no session", [] {
        GuardedRecord<DEVICEINFO> info;
        EXPECT_EQ(SDF_GetDeviceInfo(nullptr, info.get()), ZOK_ERR_SESSION);
        EXPECT_TRUE(info.unchanged());
    });
    bad("SDF_GetDeviceInfo", "no output", [] {
        int any = 0;
        EXPECT_EQ(SDF_GetDeviceInfo(&any, nullptr), ZOK_ERR_ARGUMENT);
    });
    bad("ZOK_OpenSession", "no output",
        [] { EXPECT_EQ(ZOK_OpenSession(nullptr, &record), ZOK_ERR_ARGUMENT); });
    bad("ZOK_OpenSession", "no record", [] {
        GuardedRecord<void *> out;
        EXPECT_EQ(ZOK_OpenSession(out.get(), nullptr), ZOK_ERR_ARGUMENT);
        EXPECT_TRUE(out.unchanged());
    });
    for (uint32_t type : {0u, 7u, 0xFFFFFFFFu})
        bad("ZOK_OpenSession", "type " + std::to_string(type), [=] {
            CurvePara unknown = record;
            unknown.type = type;
            void *session = nullptr;
            ASSERT_EQ(ZOK_OpenSession(&session, &unknown), ZOK_OK);  // a session without a curve
            EXPECT_EQ(static_cast<SessionContext *>(session)->byte_len, 0u);
            EXPECT_EQ(ZOK_CloseSession(session), ZOK_OK);
        });
}

const robustness::Rows agreement(add_agreement), devices(add_devices);

}  // namespace

}  // namespace zokecc_test::agreement_test
