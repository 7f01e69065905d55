// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Numbers and points to byte strings and back: nothing is lost, nothing is written outside the
// result, and short buffers are refused.
#include <zokecc/ecc.h>

#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_input.h"
#include "tests/mint/kept_rules.h"

using namespace zokecc_fuzz;

namespace {

// Big-endian and as short as the words allow: a zero top word counts as one byte.
ByteString shortest(const mint &value) {
    ByteString out;
    for (uint32_t i = value.len; i-- > 0;)
        for (int shift = 24; shift >= 0; shift -= 8)
            out.push_back(static_cast<uint8_t>(value.words[i] >> shift));
    size_t zeros = 0;
    while (zeros < 3 && zeros + 1 < out.size() && out[zeros] == 0) ++zeros;
    out.erase(out.begin(), out.begin() + static_cast<std::ptrdiff_t>(zeros));
    return out;
}

Natural from_octets(const ByteString &bytes) {
    return bytes.empty() ? Natural() : Natural::from_hex(to_hex(bytes));
}

void check_reading(FuzzInput &input) {
    const ByteString bytes = input.rest(120);
    mint value = input.number(MINT_WORDS);
    check(octetstring_to_mint(bytes.data(), static_cast<uint32_t>(bytes.size()), &value) == 0, "reading");
    check_value(value, from_octets(bytes).low_bits(32 * MINT_WORDS), "octetstring_to_mint");
    for (uint32_t i = value.len; i < MINT_WORDS; ++i) check(value.words[i] == 0, "the rest is cleared");

    GuardedBuffer out(80);
    uint32_t length = 0;
    check(mint_to_octetstring(&value, 80, out.data(), &length) == 0, "writing back");
    mint again{};
    octetstring_to_mint(out.data(), length, &again);
    check(same_record(again, value), "reading, writing and reading again");
    check(out.untouched_from(length), "nothing after the string");
}

// Any size, often one that just fits or just does not.
uint32_t near(FuzzInput &input, uint32_t size) {
    return input.flag() ? input.below(100) : std::max(size, 1u) - 1 + input.below(3);
}

void check_writing(FuzzInput &input) {
    const mint value = input.number(MINT_WORDS);
    const ByteString want = shortest(value);
    const uint32_t size = static_cast<uint32_t>(want.size());
    const uint32_t capacity = near(input, size), fixed = near(input, size);

    GuardedBuffer out(capacity);
    uint32_t length = 0xABCDEF01u;
    if (mint_to_octetstring(&value, capacity, out.data(), &length) == 0) {
        check(size <= capacity && length == size, "the shortest string fits");
        check_bytes(out.first(size), want, "mint_to_octetstring");
        check(out.untouched_from(size), "nothing after it");
    } else {
        check(size > capacity && length == 0xABCDEF01u && out.untouched(), "too short, and nothing written");
    }

    GuardedBuffer padded(std::max(fixed, size));
    const int32_t status = mint_to_fixedlen_os(&value, fixed, capacity, &length, padded.data());
    check(status == (size > capacity ? 1 : size > fixed ? 2 : 0), "the result of padding");
    check(length == (status == 0 ? fixed : 0), "the length of a padded string");
    if (status == 1) check(padded.untouched(), "refused, and nothing written");
    if (status == 0) {
        ByteString expected(fixed - size, 0);
        expected.insert(expected.end(), want.begin(), want.end());
        check_bytes(padded.first(fixed), expected, "mint_to_fixedlen_os");
        check(padded.untouched_from(fixed), "nothing after the padded string");
    }
}

void check_bits(FuzzInput &input) {
    mint value = input.trimmed(MINT_WORDS);
    const Natural number(value);
    check(get_mint_bit_len(&value) == static_cast<int32_t>(number.bit_length()), "get_mint_bit_len");
    const int32_t index = static_cast<int32_t>(input.below(800)) - 50;
    const bool set = index >= 0 && number.bit(static_cast<unsigned>(index));
    check(mint_bit_set(&value, index) == (set ? 1 : 0), "mint_bit_set");
    const uint32_t word = input.word();
    check(mint_bit(word) == static_cast<int32_t>(Natural(word).bit_length()), "mint_bit");

    const int32_t count = static_cast<int32_t>(input.below(24));
    mint trimmed = value;
    mint_adjust_len(&trimmed, count);
    const size_t looked_at = static_cast<size_t>(std::min<int32_t>(count, MINT_WORDS));
    check(trimmed.len == Natural(value.words, looked_at).word_count(), "mint_adjust_len");
    mint copy = Natural(1).to_mint();
    mint_copy(&copy, &value);
    check_value(copy, value, "mint_copy");
}

void check_points(FuzzInput &input) {
    ecc_point_bytes point;
    const ByteString fields = input.bytes(2 * 65);
    std::copy(fields.begin(), fields.begin() + 65, point.x);
    std::copy(fields.begin() + 65, fields.end(), point.y);
    point.length = input.flag() ? input.word() : input.below(70);
    const uint32_t form = input.below(4);
    const uint32_t whole = std::min(point.length, 70u) * (form == 1 ? 1 : 2) + 1;
    const int32_t room = static_cast<int32_t>(near(input, whole)) - (input.flag() ? 0 : 10);
    GuardedBuffer out(room < 0 ? 0 : static_cast<size_t>(room));
    const int32_t written = ecc_PointToByte(&point, form, out.data(), room);

    const uint64_t l = point.length;
    const int64_t needed = static_cast<int64_t>(form == 1 ? l + 1 : 2 * l + 1);
    if (l > 65 || form > 2 || room < needed) {
        check(written == -1 && out.untouched(), "refused, and nothing written");
        return;
    }
    const size_t used = static_cast<size_t>(l);
    const uint8_t odd = used == 0 ? 0 : point.y[used - 1] & 1;
    ByteString want{static_cast<uint8_t>(form == 0 ? 4 : (form == 1 ? 2 : 6) + odd)};
    want.insert(want.end(), point.x, point.x + used);
    if (form != 1) want.insert(want.end(), point.y, point.y + used);
    check(written == needed, "the bytes of a point");
    check_bytes(out.first(want.size()), want, "ecc_PointToByte");
    check(out.untouched_from(want.size()), "nothing after the point");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    switch (input.below(4)) {
    case 0: check_reading(input); break;
    case 1: check_writing(input); break;
    case 2: check_bits(input); break;
    default: check_points(input); break;
    }
    return 0;
}
