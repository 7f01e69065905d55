// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Every call that allocates, with each of its allocations failing in turn: the call returns a failure
// code of its own, and no memory is left except digit buffers of wNAF multiplications, and in the
// hardened build none at all.
//
// The exact numbers of each call are in its own tests; this table covers all calls.
#include <cstdio>

#include "tests/ecc/tiny_record.h"
#include "tests/robustness/scheme_arguments.h"
#include "tests/robustness/session_arguments.h"
#include "tests/support/legacy_exchange.h"
#include "tests/support/session_exchange.h"

namespace zokecc_test::allocations_test {

using namespace robustness;

namespace {

// The outcome of a call with a given failure.
struct Outcome {
    int64_t status;
    unsigned allocations;
    int outstanding;
    size_t last_size;
    bool untouched = false;  // no output was written and nothing drawn, if a row can tell
};

// The longest digit buffer of a call; its other buffers are longer. The scalars here have ten bits,
// and the 128 of x-bar in an exchange.
constexpr size_t kShortDigits = 12, kXBarDigits = 130;

struct Allocating {
    const char *name;
    int digit_buffers;                     // never freed if nothing fails
    unsigned allocations;                  // if nothing fails
    bool hides_failure;                    // KEPT calls that return as if nothing had failed
    std::function<Outcome(unsigned)> run;  // with the failure of the k-th allocation; 0 for none
    size_t longest_digits = kShortDigits;
    std::vector<uint32_t> failed = {};  // the results for a failure of each allocation
    unsigned untouched = 0;             // the first allocations whose failure changes nothing
};

template <class Call>
Outcome counted(unsigned fail_at, Call call) {
    FakeEntropy entropy;
    FailingAlloc counter(fail_at);
    const int64_t status = static_cast<int64_t>(call());
    return {status, counter.allocations, counter.outstanding, counter.last_size,
            entropy.number_calls + entropy.calls() == 0};
}

Allocating session_row(const NamedSessionCall &call, int digits, const std::vector<uint32_t> &failed,
                       unsigned untouched = 0, void (*change)(SessionArguments &) = nullptr) {
    const auto run = [=](unsigned fail_at) {
        SessionArguments a;
        if (change != nullptr) change(a);
        Outcome out = counted(fail_at, [&] { return (a.*call.call)(); });
        out.untouched = out.untouched && a.nothing_written();
        return out;
    };
    return {call.name, digits,   static_cast<unsigned>(failed.size()), false, run, kShortDigits,
            failed,    untouched};
}

// With a message whose buffers are longer than any digits.
Allocating scheme_row(const char *name, SchemeCall call, int digits, const std::vector<int32_t> &failed,
                      unsigned untouched = 0, bool hides = false) {
    const auto run = [=](unsigned fail_at) {
        install_small(32);
        SchemeArguments a;
        ByteString text = test_bytes(40);
        a.cipher_bytes = small_sm2_cipher(123, 77, 32, text, HASH_ALG_SM3);
        a.cipher = {a.cipher_bytes.data(), 0, static_cast<uint32_t>(a.cipher_bytes.size())};
        a.msg = {text.data(), 0, static_cast<uint32_t>(text.size())};
        Outcome out = counted(fail_at, [&] { return (a.*call)(); });
        out.untouched = out.untouched && a.outputs_untouched();
        return out;
    };
    const std::vector<uint32_t> answers(failed.begin(), failed.end());
    return {name, digits, static_cast<unsigned>(failed.size()), hides, run, kShortDigits, answers, untouched};
}

Allocating exchange_row(const exchange::LegacyKeyCall &call) {
    return {call.name, 2, 2, false, [=](unsigned fail_at) {
                install(exchange::tiny_exchange().curve);
                exchange::LegacyExchange side(exchange::tiny_exchange(), call.role);
                const auto function =
                    call.call == exchange::kResponderCall.call ? &exchange::LegacyExchange::b1_10 : call.call;
                FakeEntropy entropy;
                entropy.queued_numbers.push_back(mint_from_hex(to_hex(side.r->bytes, side.r->length)));
                FailingAlloc counter(fail_at);
                const int32_t status = (side.*function)();
                return Outcome{status, counter.allocations, counter.outstanding, counter.last_size};
            }};
}

// Two buffers for Z if a call computes it.
Allocating agreement_row(const exchange::SessionKeyCall &call) {
    return {call.name, 2, call.makes_Z ? 4u : 2u, false, [=](unsigned fail_at) {
                exchange::SessionExchange side(exchange::tiny_exchange(), call.role);
                FakeEntropy entropy;
                entropy.queued_numbers.push_back(
                    mint_from_hex(to_hex(side.r_record.K, side.r_record.bits / 8)));
                FailingAlloc counter(fail_at);
                const uint32_t status = (side.*call.call)();
                return Outcome{status, counter.allocations, counter.outstanding, counter.last_size};
            }};
}

const mint kScalar = small(5), kWide = power_of_two(300), kA = small(2), kP = small(kSmallP);
const ecc_point kG = affine(small(2), small(365));

template <class Product>
Allocating product_row(const char *name, bool hides, Product product) {
    return {name, 1, 1, hides, [=](unsigned fail_at) {
                install_small(32);
                ecc_point out{};
                return counted(fail_at, [&] { return product(&out); });
            }};
}

std::vector<Allocating> curve_rows() {
    static const CurvePara record = tiny_record<CurvePara>(20, 1);
    return {
        product_row(
            "ecc_unknown_point_mul", false,
            [](ecc_point *out) { return ecc_unknown_point_mul(&kScalar, &kG, &kA, nullptr, &kP, out); }),
        product_row("ecc_point_mul", true,
                    [](ecc_point *out) {
                        const ecc_point other = affine(small(346), small(763));
                        return ecc_point_mul(&kScalar, &other, &kG, &kA, nullptr, &kP, out);
                    }),
        product_row(
            "ecc_fix_point_mul", true,
            [](ecc_point *out) { return ecc_fix_point_mul(&kWide, nullptr, &kA, nullptr, &kP, out); }),
        product_row("ecc_fix_point_mul_1", true,
                    [](ecc_point *out) {
                        return ecc_fix_point_mul_1(&kWide, nullptr, &kA, nullptr, &kP, out,
                                                   global_curve.table.entry);
                    }),
        product_row("ZOK_CurveVerify", false, [](ecc_point *) { return ZOK_CurveVerify(1, &record); }),
        {"SDF_OpenDevice", 0, 1, false,
         [](unsigned fail_at) {
             return counted(fail_at, [] {
                 void *device = nullptr;
                 const uint32_t status = SDF_OpenDevice(&device);
                 if (status == ZOK_OK) {
                     EXPECT_EQ(SDF_CloseDevice(device), ZOK_OK);
                 }
                 return status;
             });
         }},
        {"SDF_OpenSession and ZOK_CurveParaCfg", 0, 3, false,
         [](unsigned fail_at) {
             return counted(fail_at, [] {
                 void *device = nullptr, *session = nullptr;
                 uint32_t status = SDF_OpenDevice(&device);
                 if (status != ZOK_OK) return status;
                 status = SDF_OpenSession(device, &session);
                 if (status == ZOK_OK) {
                     status = ZOK_CurveParaCfg(session, 1, &record);
                     EXPECT_EQ(SDF_CloseSession(session), ZOK_OK);
                 }
                 EXPECT_EQ(SDF_CloseDevice(device), ZOK_OK);
                 return status;
             });
         }},
        {"ZOK_OpenSession", 0, 2, true,
         [](unsigned fail_at) {
             return counted(fail_at, [] {
                 void *session = nullptr;
                 const uint32_t status = ZOK_OpenSession(&session, &record);
                 EXPECT_EQ(session == nullptr, status != ZOK_OK);
                 if (session != nullptr) {
                     EXPECT_EQ(ZOK_CloseSession(session), ZOK_OK);
                 }
                 return status;
             });
         }},
    };
}

std::vector<Allocating> hash_rows() {
    auto derive = [](uint8_t *out) { return ZOK_KD_HMAC_SM3(out, out, 3, out, 4, out, 100); };
    auto code = [](uint8_t *out) { return ZOK_HMAC_SM3(out, out, 3, out, 4, out, 32); };
    return {{"ZOK_HMAC_SM3", 0, 1, false,
             [=](unsigned fail_at) {
                 uint8_t area[100] = {};
                 return counted(fail_at, [&] { return code(area); });
             }},
            {"ZOK_KD_HMAC_SM3", 0, 4, true, [=](unsigned fail_at) {
                 uint8_t area[100] = {};
                 return counted(fail_at, [&] { return derive(area); });
             }}};
}

void with_other_algorithms(SessionArguments &a) { a.use_other_algorithms(); }
void with_wide_key(SessionArguments &a) { a.private_record = private_key(ByteString(64, 0x55)); }
void with_d_out_of_range(SessionArguments &a) { a.private_record = small_private_key(0); }
void with_r_of_zero(SessionArguments &a) { a.numbers = small_signature(0, 216); }

// The row of a call whose digit buffers are those of products with a secret: in the hardened build these
// allocate nothing, and only the failures of its other buffers remain.
Allocating secret(Allocating row) {
    if (!kHardened) return row;
    row.allocations -= static_cast<unsigned>(row.digit_buffers);
    row.digit_buffers = 0;
    if (!row.failed.empty()) row.failed.resize(row.allocations);
    return row;
}

std::vector<Allocating> all_rows() {
    constexpr uint32_t kMinusOne = ZOK_ERR_INTERNAL, kArgument = ZOK_ERR_ARGUMENT;
    std::vector<Allocating> rows = {
        session_row(kGenerate, 0, {}),
        session_row(kGenerate, 0, {}, 0, with_other_algorithms),
        session_row(kSign, 0, {}),
        session_row(kSign, 0, {}, 0, with_other_algorithms),
        session_row(kTemporary[0], 0, {}),
        session_row(kVerify, 1, {kMinusOne}),
        session_row(kVerify, 1, {kMinusOne}, 0, with_other_algorithms),
        session_row(kUserInfo, 0, {kMinusOne}, 1),
        session_row(kSignHash, 0, {kArgument, kMinusOne}, 2),
        session_row(kSignHash, 0, {kArgument, kMinusOne}, 2, with_d_out_of_range),
        session_row(kSignHash, 0, {}, 0, with_other_algorithms),
        session_row(kVerifyHash, 1, {kArgument, kMinusOne, kMinusOne}),
        session_row(kVerifyHash, 0, {kArgument, kMinusOne}, 0, with_r_of_zero),
        session_row(kVerifyHash, 1, {kMinusOne}, 0, with_other_algorithms),
        secret(session_row(kEncrypt, 2, {kMinusOne, kMinusOne})),
        secret(session_row(kEncrypt, 1, {kMinusOne}, 0, with_other_algorithms)),
        secret(session_row(kDecrypt, 2, {kMinusOne, kMinusOne}, 2)),
        secret(session_row(kDecrypt, 1, {kMinusOne}, 1, with_other_algorithms)),
        secret(session_row(kFlatEncrypt, 2, {kMinusOne, kMinusOne, kMinusOne, kMinusOne}, 2)),
        secret(session_row(kFlatDecrypt, 2, {kMinusOne, kMinusOne, kMinusOne, kMinusOne}, 4)),
        secret(session_row(kEcdh, 1, {kMinusOne}, 1)),
        secret(session_row(kEcdh, 1, {kMinusOne}, 1, with_d_out_of_range)),
        scheme_row("Ecc_GenPubKey", &SchemeArguments::public_key, 0, {}),
        scheme_row("Ecc_KeyPair_Gen", &SchemeArguments::key_pair, 0, {}),
        scheme_row("eces_format", &SchemeArguments::format, 0, {}),
        scheme_row("eces_deformat", &SchemeArguments::deformat, 0, {}),
        scheme_row("Ecdsa_DigitalSign", &SchemeArguments::ecdsa_sign, 0, {}),
        scheme_row("Ecdsa_DigitalVeriy", &SchemeArguments::ecdsa_verify, 1, {0}, 0, true),
        scheme_row("sm2_DigitalSign", &SchemeArguments::sm2_sign, 0, {1}, 1),
        scheme_row("sm2_DigitalVeriy", &SchemeArguments::sm2_verify, 1, {-1, -1}),
        secret(scheme_row("Eces_Decry", &SchemeArguments::eces_decry, 1, {-1}, 1)),
        secret(scheme_row("sm2_Encry", &SchemeArguments::encrypt, 2, {-1, -1, -1, -1}, 2)),
        secret(scheme_row("sm2_Decry", &SchemeArguments::decrypt, 2, {-1, -1, -1, -1}, 4, true)),
    };
    // Their results are checked in their own tests.
    rows.push_back(secret(scheme_row("Ecdh_KeyExChg", &SchemeArguments::exchange, 1, {0}, 0, !kHardened)));
    rows.push_back(secret(scheme_row("Eces_Encry", &SchemeArguments::eces_encry, 1, {0}, 0, true)));
    for (size_t i = rows.size() - 2; i < rows.size(); ++i) rows[i].failed.clear();
    for (const auto &more : {curve_rows(), hash_rows()}) rows.insert(rows.end(), more.begin(), more.end());
    const size_t ordinary = rows.size();
    for (const auto &call : exchange::kLegacyKeyCalls) rows.push_back(secret(exchange_row(call)));
    for (const auto &call : exchange::kSessionKeyCalls) rows.push_back(secret(agreement_row(call)));
    for (size_t i = ordinary; i < rows.size(); ++i) rows[i].longest_digits = kXBarDigits;
    return rows;
}

}  // namespace

TEST(Allocations, EachFailingInTurnLeavesNothingButDigits) {
    unsigned failed = 0;
    small_session();  // opened before anything is counted
    for (const Allocating &row : all_rows()) {
        SCOPED_TRACE(row.name);
        const Outcome whole = row.run(0);
        EXPECT_EQ(whole.allocations, row.allocations);
        EXPECT_EQ(whole.outstanding, kept_digit_buffers(row.digit_buffers));
        int digits = 0;  // digit buffers left at the end of the call
        for (unsigned k = 1; k <= whole.allocations; ++k) {
            SCOPED_TRACE(k);
            const Outcome outcome = row.run(k);
            ++failed;
            EXPECT_GE(outcome.allocations, k);
            if (outcome.allocations == k) {
                EXPECT_EQ(outcome.outstanding, kept_digit_buffers(digits));
                if (row.digit_buffers > 0 && outcome.last_size <= row.longest_digits) ++digits;
            } else {  // it continued without
                EXPECT_GE(outcome.outstanding, 0);
                EXPECT_LE(outcome.outstanding, kept_digit_buffers(row.digit_buffers));
            }
            if (!row.hides_failure) {
                EXPECT_NE(outcome.status, whole.status);
            }
            if (!row.failed.empty()) {
                EXPECT_EQ(static_cast<uint32_t>(outcome.status), row.failed[k - 1]);
            }
            if (k <= row.untouched) {
                EXPECT_TRUE(outcome.untouched);
            }
        }
    }
    EXPECT_GT(failed, kHardened ? 40u : 80u);
    std::printf("%u allocations failed in turn\n", failed);
}

TEST(Allocations, WideKeyOfAHashSignatureKeepsItsDigits) {
    // Without digits the public key is infinity, and the range of the key is checked later.
    const Allocating row =
        session_row(kSignHash, 1, {ZOK_ERR_SIGN, ZOK_ERR_ARGUMENT, ZOK_ERR_INTERNAL}, 3, with_wide_key);
    EXPECT_EQ(row.run(0).status, ZOK_ERR_SIGN);
    for (unsigned k = 0; k <= 3; ++k) {
        const Outcome outcome = row.run(k);
        EXPECT_EQ(outcome.outstanding, kept_digit_buffers(k == 1 ? 0 : 1));
        EXPECT_EQ(outcome.allocations, k == 2 ? 2u : 3u);
        EXPECT_TRUE(outcome.untouched);
        if (k > 0) {
            EXPECT_EQ(static_cast<uint32_t>(outcome.status), row.failed[k - 1]);
        }
    }
}

}  // namespace zokecc_test::allocations_test
