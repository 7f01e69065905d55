// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Points from byte strings: an accepted point is on the curve and is the one in the string,
// and a written point can be read back.
#include "fuzz/both_curves.h"

using namespace zokecc_fuzz;

namespace {

Natural residue_of(const uint8_t *field, size_t count, const Natural &p) {
    return count == 0 ? Natural() : Natural::from_hex(to_hex(field, count)) % p;
}

bool on_curve(const Curve &c, const ecc_point_bytes &P) {
    const Natural p(c.p), x = residue_of(P.x, P.length, p), y = residue_of(P.y, P.length, p);
    const Natural cube = mod_mul(mod_mul(x, x, p), x, p);
    return mod_mul(y, y, p) == (cube + mod_mul(Natural(c.a), x, p) + Natural(c.b)) % p;
}

bool compressed(uint8_t first) { return first == 2 || first == 3; }

// Whether length and first byte match; the point itself is not checked.
bool fits_a_form(const ByteString &octets, size_t L) {
    const size_t size = octets.size();
    if (size == 0 || size % 2 == 0) return false;
    if (compressed(octets[0])) return size == L + 1;
    return (octets[0] == 4 || octets[0] == 6 || octets[0] == 7) && (size - 1) / 2 <= 65;
}

void check_reading(const Curve &c, const ByteString &octets) {
    const size_t L = c.byte_len;
    GuardedRecord<ecc_point_bytes> out;
    const int32_t status = ecc_ByteToPoint(octets.data(), length_of(octets), out.get());
    check(out.guards_intact(), "nothing outside the record");
    if (!fits_a_form(octets, L)) {
        check(status == -1 && out.unchanged(), "not a point: refused, and nothing written");
        return;
    }
    if (status != 0 && out.unchanged()) {
        check(compressed(octets[0]), "only a compressed point can be without a y");
        return;
    }
    const size_t l = compressed(octets[0]) ? L : (octets.size() - 1) / 2;
    check(out->length == l, "the length of the record");
    check((status == 0) == on_curve(c, *out.get()), "accepted if it is on the curve");
    check(ByteString(out->x, out->x + l) ==
              ByteString(octets.begin() + 1, octets.begin() + 1 + static_cast<std::ptrdiff_t>(l)),
          "x unchanged");
    for (size_t i = l; i < 65; ++i) check(out->x[i] == 0xA5 && out->y[i] == 0xA5, "the rest of the fields");
    if (!compressed(octets[0])) {
        check(std::equal(out->y, out->y + l, octets.begin() + 1 + static_cast<std::ptrdiff_t>(l)),
              "y unchanged");
    } else if (status == 0 && !residue_of(out->y, l, Natural(c.p)).is_zero()) {
        check((out->y[l - 1] & 1) == (octets[0] & 1), "y has the requested parity");
    }
}

void check_round_trip(FuzzInput &input, const Curve &c) {
    const mint k = input.reduced(c.n);
    const Coordinates P = multiple_of_G(c, k);
    if (all_zero(P.x) && all_zero(P.y)) return;  // infinity has no byte string
    const ecc_point_bytes record = point_record(P);
    for (uint32_t form : {0u, 1u, 2u}) {
        ByteString octets(2 * c.byte_len + 1);
        const int32_t size =
            ecc_PointToByte(&record, form, octets.data(), static_cast<int32_t>(octets.size()));
        check(size == static_cast<int32_t>(form == 1 ? c.byte_len + 1 : octets.size()), "the size of a form");
        octets.resize(static_cast<size_t>(size));
        ecc_point_bytes back{};
        check(ecc_ByteToPoint(octets.data(), length_of(octets), &back) == 0, "a written point is read");
        check(std::memcmp(&back, &record, sizeof back) == 0, "and is the same");
    }
}

void check_unpress(FuzzInput &input, const Curve &c) {
    const mint x = input.reduced(c.p);
    const uint32_t parity = input.below(2);
    mint y = Natural(5).to_mint();
    const int32_t status = ecc_point_unpress(&y, &x, &c.a, &c.b, &c.p, parity);
    check(status == 0 || status == -1, "a result that is listed");
    if (status == -1) {
        check(Natural(y) == Natural(5), "without a root nothing is written");
        return;
    }
    // KEPT: for p = 1 modulo 8 the root is not verified by squaring.
    const ecc_point P{0, x, y};
    check((c.p.words[0] & 7) == 1 || ecc_test_point(&P, &c.a, &c.b, &c.p) == 0, "the point is on the curve");
    check(Natural(y) == Natural(c.p) || (Natural(y).is_odd() ? 1u : 0u) == parity, "and has its parity");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    const uint32_t what = input.below(8);
    if (what == 0) {
        const Curve &c = both_curve(input);
        AllocLedger ledger;
        check_round_trip(input, c);
        return 0;
    }
    // secp224r1 has p = 1 modulo 8, with 2^96 in p - 1: a root takes long, so seldom.
    const bool one_mod_eight = what == 1 && input.below(16) == 0;
    const Curve &c = one_mod_eight ? curve("secp224r1") : both_curve(input);
    if (one_mod_eight) install(c);
    AllocLedger ledger;
    FakeEntropy entropy;
    if (what == 2 || what == 3) {
        check_unpress(input, c);
        return 0;
    }
    ByteString octets{input.flag() ? static_cast<uint8_t>(2 + input.below(6)) : input.byte()};
    if (input.flag()) {
        const Coordinates P = point_bytes(input, c);
        octets = joined({octets, P.x, compressed(octets[0]) ? ByteString() : P.y});
    } else {
        octets = joined({octets, input.rest(160)});
        if (octets.size() == 1 && octets[0] == 0) octets.clear();
    }
    check_reading(c, octets);
    return 0;
}
