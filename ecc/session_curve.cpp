// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The curve of a session.
#include <cstdlib>
#include <cstring>

#include "base/config.h"
#include "ecc/curve.h"
#include "ecc/curve_numbers.h"
#include "ecc/table.h"

using namespace zokecc;

namespace {

// Copies the caller's record into the session's own record, allocating that if needed. A borrowed
// record is left untouched.
bool take_record(SessionContext &session, const CurvePara *record)
{
    const bool borrowed = session.record_is_borrowed != 0;
    if (borrowed && session.record == record) return true;
    if (borrowed || session.record == nullptr) {
        CurvePara *copy = static_cast<CurvePara *>(std::calloc(1, sizeof(CurvePara)));
        if (copy == nullptr) return false;
        session.record = copy;
        session.record_is_borrowed = 0;
    }
    std::memmove(session.record, record, sizeof(CurvePara));
    return true;
}

void make_table(SessionContext &s)
{
    if constexpr (kHardened) {
        if (fill_exact_table(&s.G, &s.a, &s.b, &s.p, s.table.entry)) return;
    }
    ecc_precomputation_point_1(&s.G, &s.a, &s.b, &s.p, s.table.entry);
}

}  // namespace

uint32_t ZOK_CurveParaCfg(void *session, uint32_t type, const CurvePara *record)
{
    if (session == nullptr) return ZOK_ERR_SESSION;
    const uint32_t byte_len = session_byte_length(type);
    if (record == nullptr || byte_len == 0) return ZOK_ERR_ARGUMENT;
    SessionContext &s = *static_cast<SessionContext *>(session);
    if (!take_record(s, record)) return ZOK_ERR_INTERNAL;

    s.byte_len = byte_len;
    s.config_bits = 8 * s.byte_len;
    s.hash_selector = record->hash_selector;
    install_numbers(s, *record, s.byte_len, s.config_bits);
    make_table(s);
    if (ecc_test_point(&s.G, &s.a, &s.b, &s.p) != 0) return ZOK_ERR_INTERNAL;
    s.curve_type = type;
    s.curve_bits = s.config_bits;
    return ZOK_OK;
}
