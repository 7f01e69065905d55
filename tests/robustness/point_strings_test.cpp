// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Bad inputs of points as byte strings: every length up to beyond the longest, every first byte,
// unknown forms, buffers that are too small, null.
#include <zokecc/ecc.h>

#include "tests/robustness/bad_inputs.h"
#include "tests/support/legacy_records.h"
#include "tests/support/small_group.h"

namespace zokecc_test::point_strings_test {

using robustness::bad;

namespace {

void refused_string(const std::string &what, const ByteString &octets) {
    bad("ecc_ByteToPoint", what, [=] {
        install_small(32);
        GuardedRecord<ecc_point_bytes> out;
        EXPECT_EQ(ecc_ByteToPoint(octets.data(), static_cast<uint32_t>(octets.size()), out.get()), -1);
        EXPECT_TRUE(out.unchanged());
    });
}

void add_reading() {
    for (size_t size = 0; size <= 200; ++size) {
        const bool has_a_form = size % 2 == 1 && size <= 131;
        if (!has_a_form) refused_string(std::to_string(size) + " bytes from 04 on", ByteString(size, 4));
        if (size != 33) refused_string(std::to_string(size) + " bytes from 02 on", ByteString(size, 2));
    }
    for (unsigned first = 0; first < 256; ++first)
        if (first < 2 || first == 5 || first > 7) {
            ByteString octets(65, 1);
            octets[0] = static_cast<uint8_t>(first);
            refused_string("first byte " + std::to_string(first), octets);
        }
    bad("ecc_ByteToPoint", "null", [] {
        install_small(32);
        const ByteString octets(65, 4);
        GuardedRecord<ecc_point_bytes> out;
        EXPECT_EQ(ecc_ByteToPoint(nullptr, 65, out.get()), -1);
        EXPECT_EQ(ecc_ByteToPoint(octets.data(), 65, nullptr), -1);
        EXPECT_TRUE(out.unchanged());
    });
    bad("ecc_ByteToPoint", "no curve", [] {
        uninstall();
        const ByteString octets(65, 4);
        GuardedRecord<ecc_point_bytes> out;
        EXPECT_EQ(ecc_ByteToPoint(octets.data(), 65, out.get()), -1);
        EXPECT_TRUE(out.unchanged());
    });
    for (uint32_t y : {0u, 364u, 1009u})
        bad("ecc_ByteToPoint", "off the curve, y = " + std::to_string(y), [=] {
            install_small(32);
            const ByteString octets = joined({{4}, number_bytes(2, 32), number_bytes(y, 32)});
            GuardedRecord<ecc_point_bytes> out;
            EXPECT_EQ(ecc_ByteToPoint(octets.data(), 65, out.get()), -1);
            expect_record(out, 2, y, 32);
        });
}

void add_writing() {
    static const PointBytes good(2, 365, 32);
    auto refused = [](const std::string &what, std::function<int32_t(ecc_point_bytes &, uint8_t *)> call) {
        bad("ecc_PointToByte", what, [=] {
            PointBytes point = good;
            GuardedBuffer out(131);
            EXPECT_EQ(call(*point.get(), out.data()), -1);
            EXPECT_TRUE(out.untouched());
        });
    };
    refused("no point",
            [](ecc_point_bytes &, uint8_t *out) { return ecc_PointToByte(nullptr, 0, out, 131); });
    refused("no output", [](ecc_point_bytes &P, uint8_t *) { return ecc_PointToByte(&P, 0, nullptr, 131); });
    for (uint32_t form : {3u, 4u, 0x80000000u, 0xFFFFFFFFu})
        refused("form " + std::to_string(form),
                [=](ecc_point_bytes &P, uint8_t *out) { return ecc_PointToByte(&P, form, out, 131); });
    for (uint32_t length : {66u, 0x80000000u, 0xFFFFFFFFu})
        refused("length " + std::to_string(length), [=](ecc_point_bytes &P, uint8_t *out) {
            P.length = length;
            return ecc_PointToByte(&P, 0, out, 131);
        });
    for (int32_t room : {INT32_MIN, -1, 0, 1, 64})
        refused("room for " + std::to_string(room) + " bytes",
                [=](ecc_point_bytes &P, uint8_t *out) { return ecc_PointToByte(&P, 0, out, room); });
    refused("room for 32 bytes, compressed",
            [](ecc_point_bytes &P, uint8_t *out) { return ecc_PointToByte(&P, 1, out, 32); });
    bad("ecc_PointToByte", "length 0", [] {
        PointBytes point = good;
        point.set_length(0);
        GuardedBuffer out(4);
        EXPECT_EQ(ecc_PointToByte(point.get(), 0, out.data(), 4), 1);
        EXPECT_TRUE(out.untouched_from(1));
    });
}

// Over 1019 elements, where p is 3 modulo 4: an x without a point, and a composite "prime".
void add_unpress() {
    const mint a = small(2), b = small(25);
    for (uint32_t x = 0; x < 30; ++x) {
        uint32_t squares = 0;
        const uint32_t right = (x * x * x + 2 * x + 25) % 1019;
        for (uint32_t y = 0; y < 1019; ++y) squares += y * y % 1019 == right ? 1u : 0u;
        if (squares != 0) continue;
        bad("ecc_point_unpress", "no point at x = " + std::to_string(x), [=] {
            const mint p = small(1019), at = small(x);
            GuardedRecord<mint> y;
            EXPECT_EQ(ecc_point_unpress(y.get(), &at, &a, &b, &p, 0), -1);
            EXPECT_TRUE(y.unchanged());
        });
    }
    for (uint32_t p : {0u, 2u, 1018u})
        bad("ecc_point_unpress", "the even prime " + std::to_string(p), [=] {
            const mint even = small(p), at = small(3);
            GuardedRecord<mint> y;
            EXPECT_EQ(ecc_point_unpress(y.get(), &at, &a, &b, &even, 1), -1);
            EXPECT_TRUE(y.unchanged());
        });
}

const robustness::Rows reading(add_reading), writing(add_writing), unpress(add_unpress);

}  // namespace

}  // namespace zokecc_test::point_strings_test
