// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The named curves of tests/vectors/curves.rsp, as integers and as the two records that the
// library takes, and a session that lives as long as its object.
#ifndef ZOKECC_TESTS_SUPPORT_CURVES_H
#define ZOKECC_TESTS_SUPPORT_CURVES_H

#include <zokecc/ecc.h>
#include <zokecc/sdf.h>

#include <string>
#include <vector>

#include "ecc/curve.h"
#include "tests/support/hex.h"

namespace zokecc_test {

inline constexpr uint32_t kNoType = 0xFFFFFFFFu;

// The value as `size` big-endian bytes. Gives up if it needs more. Does not use the library.
ByteString fixed_bytes(const mint &value, size_t size);

struct Curve {
    std::string name;
    unsigned byte_len;      // L
    uint32_t session_type;  // the lowest type with L bytes, or kNoType
    uint32_t legacy_type;   // the type of Curve_Init with L bytes, or kNoType
    mint p, a, b, n;        // normalised, zero above their used words
    ecc_point G;

    // The session interface's record. Gives up if a number does not fit L bytes.
    CurvePara record(uint32_t hash_selector) const;
    // Curve_Init's record. Gives up if there is no legacy type or a number does not fit.
    ecc_curve_bytes legacy_record() const;
};

// Gives up if the file does not have the curve.
const Curve &curve(const std::string &name);

// Every curve that fits the session's record, in file order. secp160r1 does not:
// its order has 161 bits.
std::vector<std::string> session_curve_names();

// Every curve that Curve_Init supports.
std::vector<std::string> legacy_curve_names();

// Opens a session without a device on the curve; gives up if that fails or if the curve was
// not configured. The destructor closes it.
class Session {
public:
    explicit Session(const Curve &curve, uint32_t hash_selector = 0);
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    void *handle() const { return handle_; }
    SessionContext *context() const { return static_cast<SessionContext *>(handle_); }

private:
    void *handle_ = nullptr;
};

// The same for a record that need not hold a usable curve.
class AnySession {
public:
    explicit AnySession(const CurvePara &record) { ZOK_OpenSession(&handle_, &record); }
    ~AnySession() { ZOK_CloseSession(handle_); }
    AnySession(const AnySession &) = delete;
    AnySession &operator=(const AnySession &) = delete;
    void *handle() const { return handle_; }

private:
    void *handle_ = nullptr;
};

}  // namespace zokecc_test

#endif
