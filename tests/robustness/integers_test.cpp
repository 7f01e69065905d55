// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Bad inputs of the integer calls: counts beyond the record, untrimmed numbers, moduli of
// zero, capacities that are too small, null where it is refused or allowed.
#include <zokecc/mint.h>

#include "tests/mint/kept_rules.h"
#include "tests/robustness/bad_inputs.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/points.h"

namespace zokecc_test::integers_test {

using robustness::bad;

namespace {

// A count above 19 reads as 19, one with its top bit set as 0.
const uint32_t kWrongLens[] = {20, 1000, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu};

mint full_record(uint32_t len) {
    mint out;
    for (uint32_t i = 0; i < MINT_WORDS; ++i) out.words[i] = 0x01020304u + 0x11111111u * (i % 5);
    out.len = len;
    return out;
}
Natural value_of(uint32_t len) { return Natural(full_record(len)); }

const Natural kSecond = Natural::from_hex("123456789abcdef012345679");
const Natural kModulus =
    Natural::from_hex("fffffffeffffffffffffffffffffffffffffffff00000000ffffffffffffffff");
constexpr unsigned kRecordBits = 32 * MINT_WORDS;

using Binary = std::function<void(mint *a, mint *b, mint *out)>;

// The call with a wrong count in the first operand, for all positions of the result.
void wrong_lens(const std::string &call, Binary run, std::function<Natural(const Natural &)> expected) {
    for (uint32_t len : kWrongLens)
        bad(call, "len " + std::to_string(len), [=] {
            mint a = full_record(len), b = kSecond.to_mint();
            GuardedRecord<mint> out;
            run(&a, &b, out.get());
            EXPECT_TRUE(out.guards_intact());
            EXPECT_TRUE(Natural(*out.get()) == expected(value_of(len)));
            GuardedRecord<mint> over;
            *over.get() = full_record(len);
            run(over.get(), &b, over.get());
            EXPECT_TRUE(over.guards_intact());
        });
}

void add_plain() {
    wrong_lens("mint_add", mint_add, [](const Natural &a) { return (a + kSecond).low_bits(kRecordBits); });
    wrong_lens("mint_sub", mint_sub,
               [](const Natural &a) { return a.is_zero() ? kSecond : kept_sub(a, kSecond, Over::kOther); });
    wrong_lens("mint_mul", mint_mul, [](const Natural &a) { return (a * kSecond).low_bits(kRecordBits); });
    wrong_lens(
        "mint_copy", [](mint *a, mint *, mint *out) { mint_copy(out, a); },
        [](const Natural &a) { return a; });
    for (uint32_t len : kWrongLens) {
        const std::string what = "len " + std::to_string(len);
        const bool negative = static_cast<int32_t>(len) < 0;
        bad("mint_compare", what, [=] {
            const mint a = full_record(len), b = kSecond.to_mint();
            EXPECT_EQ(mint_compare(&a, &b), negative ? -1 : 1);
            EXPECT_EQ(mint_compare(&a, &a), 0);
        });
        bad("mint_left_move", what, [=] {
            GuardedRecord<mint> value;
            *value.get() = full_record(len);
            EXPECT_EQ(mint_left_move(value.get(), 33), 0);
            EXPECT_TRUE(Natural(*value.get()) == (value_of(len) << 33).low_bits(kRecordBits));
            EXPECT_TRUE(value.guards_intact());
        });
        bad("mint_right_move", what, [=] {
            GuardedRecord<mint> value;
            *value.get() = full_record(len);
            EXPECT_EQ(mint_right_move(value.get(), 33), 0);
            EXPECT_TRUE(Natural(*value.get()) == value_of(len) >> 33);
            EXPECT_TRUE(value.guards_intact());
        });
        bad("get_mint_bit_len", what, [=] {
            const mint value = full_record(len);
            EXPECT_EQ(get_mint_bit_len(&value), static_cast<int32_t>(value_of(len).bit_length()));
        });
        bad("mint_adjust_len", what, [=] {
            GuardedRecord<mint> value;
            *value.get() = full_record(3);
            EXPECT_EQ(mint_adjust_len(value.get(), static_cast<int32_t>(len)), 0);
            EXPECT_EQ(value->len, negative ? len : 19u);
            EXPECT_TRUE(value.guards_intact());
        });
    }
    for (uint32_t bits : {608u, 609u, 1000u, 0x7FFFFFFFu, 0xFFFFFFFFu})
        for (const char *call : {"mint_left_move", "mint_right_move"})
            bad(call, std::to_string(bits) + " bits", [=] {
                GuardedRecord<mint> value;
                *value.get() = full_record(19);
                (call[5] == 'l' ? mint_left_move : mint_right_move)(value.get(), bits);
                EXPECT_EQ(value->len, 0u);
                EXPECT_TRUE(value.guards_intact());
            });
    for (int32_t index : {-1, INT32_MIN, 608, INT32_MAX})
        bad("mint_bit_set", "index " + std::to_string(index), [=] {
            const mint value = full_record(19);
            EXPECT_EQ(mint_bit_set(&value, index), 0);
        });
    bad("mint_bit", "the word 0", [] { EXPECT_EQ(mint_bit(0), 0); });
    bad("mint_bit", "a word of ones", [] { EXPECT_EQ(mint_bit(0xFFFFFFFFu), 32); });
}

// Counts below 1: nothing is written, and the carry is 0.
void add_words() {
    for (int32_t count : {0, -1, INT32_MIN}) {
        const std::string what = "count " + std::to_string(count);
        const uint32_t x[1] = {0xFFFFFFFFu};
        auto unwritten = [=](std::function<uint32_t(uint32_t *)> call) {
            return [=] {
                GuardedBuffer out(8);
                EXPECT_EQ(call(static_cast<uint32_t *>(static_cast<void *>(out.data()))), 0u);
                EXPECT_TRUE(out.untouched());
            };
        };
        bad("add_2", what, unwritten([=](uint32_t *out) { return add_2(x, x, count, out); }));
        bad("sub_2", what, unwritten([=](uint32_t *out) { return sub_2(x, x, count, out); }));
        bad("mint_mul_3", what, unwritten([=](uint32_t *out) { return mint_mul_3(out, x, 7, count); }));
        bad("mint_mul_4", what, unwritten([=](uint32_t *out) { return mint_mul_4(out, x, 7, count); }));
        bad("mul_2", what, unwritten([=](uint32_t *out) {
                mul_2(x, count, x, count, out);
                return 0u;
            }));
        bad("mul_2", what + " and one word", [=] {
            GuardedBuffer out(8);
            mul_2(x, 1, x, count, static_cast<uint32_t *>(static_cast<void *>(out.data())));
            EXPECT_EQ(to_hex(out.first(4)), "00000000");
            EXPECT_TRUE(out.untouched_from(4));
        });
    }
    bad("div_2", "everything at its largest",
        [] { EXPECT_EQ(div_2(0xFFFFFFFFu, 0xFFFFFFFFu, 1), 0xFFFFFFFFFFFFFFFFull); });
}

void add_bytes() {
    for (uint32_t count : {0u, 77u, 1000u})
        bad("octetstring_to_mint", std::to_string(count) + " bytes", [=] {
            const ByteString bytes(count, 0xEE);
            GuardedRecord<mint> out;
            EXPECT_EQ(octetstring_to_mint(count == 0 ? nullptr : bytes.data(), count, out.get()), 0);
            EXPECT_EQ(out->len, count == 0 ? 0u : 19u);
            EXPECT_TRUE(out.guards_intact());
        });
    for (uint32_t capacity : {0u, 1u, 75u})
        bad("mint_to_octetstring", "capacity " + std::to_string(capacity), [=] {
            const mint value = full_record(19);
            GuardedBuffer out(80);
            GuardedRecord<uint32_t> length;
            EXPECT_EQ(mint_to_octetstring(&value, capacity, out.data(), length.get()), 1);
            EXPECT_TRUE(out.untouched() && length.unchanged());
            EXPECT_EQ(mint_to_fixedlen_os(&value, 80, capacity, length.get(), out.data()), 1);
            EXPECT_TRUE(out.untouched());
            EXPECT_EQ(*length.get(), 0u);
        });
    for (uint32_t fixed : {0u, 1u, 75u})
        bad("mint_to_fixedlen_os", "fixed length " + std::to_string(fixed), [=] {
            const mint value = full_record(19);
            GuardedBuffer out(76);
            uint32_t length = 5;
            EXPECT_EQ(mint_to_fixedlen_os(&value, fixed, 76, &length, out.data()), 2);
            EXPECT_EQ(length, 0u);
            EXPECT_TRUE(out.untouched_from(76));
        });
    for (int32_t count : {0, -1, INT32_MIN})
        bad("print_str_array", "no label, no bytes, count " + std::to_string(count),
            [=] { print_str_array(nullptr, nullptr, count); });
}

const robustness::Rows plain(add_plain), words(add_words), bytes(add_bytes);

}  // namespace

}  // namespace zokecc_test::integers_test
