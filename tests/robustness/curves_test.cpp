// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Bad inputs of the calls that install, check and use curves: unknown types, records with wrong
// bits, points off the curve and at (0, 0), coordinates of p and above, primes without words.
#include <zokecc/ecc.h>
#include <zokecc/sdf.h>

#include "tests/ecc/tiny_record.h"
#include "tests/robustness/bad_inputs.h"
#include "tests/sdf/fixtures.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/legacy_curve.h"
#include "tests/support/legacy_records.h"
#include "tests/support/small_group.h"

namespace zokecc_test::curves_test {

using robustness::bad;

namespace {

const uint32_t kNoTypes[] = {0, 7, 8, 0x80000000u, 0xFFFFFFFFu};

// Each field with the highest bit of its L bytes set, and with all bits set.
template <class Record>
std::vector<std::pair<std::string, Record>> wrong_records(const Record &good, unsigned L) {
    std::vector<std::pair<std::string, Record>> out;
    const char *names[] = {"a", "b", "Gx", "Gy"};
    for (size_t field = 0; field < 4; ++field)
        for (uint8_t bits : {uint8_t{1}, uint8_t{0x80}}) {
            Record record = good;
            uint8_t *fields[] = {record.a, record.b, record.Gx, record.Gy};
            fields[field][bits == 1 ? L - 1 : 0] ^= bits;
            out.push_back({std::string(names[field]) + (bits == 1 ? ", last bit" : ", first bit"), record});
        }
    return out;
}

void add_process_curve() {
    bad("Curve_Init", "no record", [] {
        install_small();
        const GlobalCurve before = global_curve;
        EXPECT_EQ(Curve_Init(nullptr), -1);
        EXPECT_TRUE(same_bytes(before, global_curve));
    });
    for (uint32_t type : {2u, 3u, 5u, 0x80000000u, 0xFFFFFFFFu})
        bad("Curve_Init", "type " + std::to_string(type), [=] {
            install_small();
            const GlobalCurve before = global_curve;
            const ecc_curve_bytes record = tiny_record<ecc_curve_bytes>(32, type);
            EXPECT_EQ(Curve_Init(&record), 1);
            EXPECT_TRUE(same_bytes(before, global_curve));
        });
    for (const auto &[what, record] : wrong_records(tiny_record<ecc_curve_bytes>(32, 1), 32))
        bad("Curve_Init", what, [record = record] { EXPECT_EQ(Curve_Init(&record), -1); });
    bad("Curve_Exit", "no curve", [] {
        uninstall();
        EXPECT_EQ(Curve_Exit(), 0);
    });
}

void add_session_curve() {
    static const CurvePara good = tiny_record<CurvePara>(20, 1);
    bad("ZOK_CurveParaCfg", "no session",
        [] { EXPECT_EQ(ZOK_CurveParaCfg(nullptr, 1, &good), ZOK_ERR_SESSION); });
    bad("ZOK_CurveParaCfg", "no record",
        [] { EXPECT_EQ(ZOK_CurveParaCfg(CurvelessSession().handle(), 1, nullptr), ZOK_ERR_ARGUMENT); });
    bad("ZOK_CurveVerify", "no record", [] { EXPECT_EQ(ZOK_CurveVerify(1, nullptr), ZOK_ERR_ARGUMENT); });
    for (uint32_t type : kNoTypes) {
        const std::string what = "type " + std::to_string(type);
        bad("ZOK_CurveVerify", what, [=] { EXPECT_EQ(ZOK_CurveVerify(type, &good), ZOK_ERR_ARGUMENT); });
        bad("ZOK_CurveParaCfg", what, [=] {
            const CurvelessSession session;
            const ByteString before = image(*static_cast<SessionContext *>(session.handle()));
            FailingAlloc counter;
            EXPECT_EQ(ZOK_CurveParaCfg(session.handle(), type, &good), ZOK_ERR_ARGUMENT);
            EXPECT_EQ(counter.allocations, 0u);
            EXPECT_TRUE(before == image(*static_cast<SessionContext *>(session.handle())));
        });
    }
    for (const auto &[what, record] : wrong_records(good, 20)) {
        bad("ZOK_CurveVerify", what,
            [record = record] { EXPECT_EQ(ZOK_CurveVerify(1, &record), ZOK_ERR_INTERNAL); });
        bad("ZOK_CurveParaCfg", what, [record = record] {
            const CurvelessSession session;
            EXPECT_EQ(ZOK_CurveParaCfg(session.handle(), 1, &record), ZOK_ERR_INTERNAL);
            EXPECT_EQ(static_cast<SessionContext *>(session.handle())->curve_type, 0u);
        });
    }
    for (uint32_t order : {1u, 2u, 4u, 6u})
        bad("ZOK_CurveVerify", "order " + std::to_string(order), [=] {
            CurvePara record = good;
            set_order(record, 20, order);
            EXPECT_EQ(ZOK_CurveVerify(1, &record), ZOK_ERR_INTERNAL);
        });
    for (const char *what : {"a record of zero bytes", "a record of ones"})
        bad("ZOK_CurveVerify", what, [=] {
            CurvePara record;
            std::memset(&record, what[12] == 'z' ? 0 : 0xFF, sizeof record);
            EXPECT_EQ(ZOK_CurveVerify(4, &record), ZOK_ERR_INTERNAL);
        });
}

mint words_of_ones(uint32_t len) {
    mint out;
    for (uint32_t &word : out.words) word = 0xFFFFFFFFu;
    out.len = len;
    return out;
}

// A prime without words, or with more than eight: no table is built and nothing multiplied.
void add_tables() {
    for (uint32_t len : {0u, 9u, 19u, 20u, 0x80000000u}) {
        const std::string what = "a prime of len " + std::to_string(len);
        bad("ecc_precomputation_point", what, [=] {
            install_small();
            const GlobalCurve before = global_curve;
            const mint p = words_of_ones(len), a = small(2);
            EXPECT_EQ(ecc_precomputation_point(&kTinyG, &a, nullptr, &p), 1);
            EXPECT_TRUE(same_bytes(before, global_curve));
        });
        bad("ecc_precomputation_point_1", what, [=] {
            GuardedRecord<PrecompTable> table;
            const mint p = words_of_ones(len), a = small(2);
            EXPECT_EQ(ecc_precomputation_point_1(&kTinyG, &a, nullptr, &p, table->entry), 1);
            EXPECT_TRUE(table.unchanged());
        });
        for (const char *call : {"ecc_fix_point_mul", "ecc_fix_point_mul_1"})
            bad(call, what, [=] {
                install_small();
                const mint p = words_of_ones(len), a = small(2), k = small(3);
                GuardedRecord<ecc_point> out;
                if (std::string(call) == "ecc_fix_point_mul")
                    ecc_fix_point_mul(&k, nullptr, &a, nullptr, &p, out.get());
                else
                    ecc_fix_point_mul_1(&k, nullptr, &a, nullptr, &p, out.get(), global_curve.table.entry);
                EXPECT_EQ(out->infinity, 1u);
                EXPECT_EQ(out->x.len + out->y.len, 0u);
                EXPECT_TRUE(out.guards_intact());
            });
    }
}

const robustness::Rows process(add_process_curve), sessions(add_session_curve), tables(add_tables);

}  // namespace

}  // namespace zokecc_test::curves_test
