// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Published SM2 signatures, the worked examples of GB/T 32918.2 and GM/T 0003.5 among them, over
// the curves that Curve_Init takes. Z is the published one.
#include "tests/schemes/sm2_sign_calls.h"
#include "tests/support/legacy_vectors.h"
#include "tests/support/naive_int.h"

namespace zokecc_test::sm2_sign_vectors_test {

namespace {

std::string describe(const VectorBlock &block) {
    std::string out = block.text("Curve") + ' ' + block.text("Hash") + " r = " + block.text("r");
    return block.has("Reason") ? out + " (" + block.text("Reason") + ')' : out;
}

bool reason_is(const VectorBlock &block, const std::string &text) {
    return block.has("Reason") && block.text("Reason") == text;
}

// Keys 1 and n - 2: 1 / (1 + d) comes out wrong on this order, full of equal words.
bool meets_the_kept_inverse(const VectorBlock &block) {
    const std::string &d = block.text("d");
    return d == "0000000000000000000000000000000000000000000000000000000000000001" ||
           d == "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54121";
}

// Signs with the nonce of the block.
struct Signed {
    explicit Signed(const VectorBlock &block) : call(block.bytes("d"), block.bytes("M"), block.bytes("Z")) {
        install(block.text("Curve"));
        queue_number(entropy, block.number("k"));
        EXPECT_EQ(call.run(hash_of(block)), 0);
        EXPECT_EQ(entropy.number_calls, 1u);
    }
    ByteString s() { return ByteString(call.sig->y, call.sig->y + call.sig->length); }
    FakeEntropy entropy;
    Sm2Signing call;
};

int32_t verify(const VectorBlock &block) {
    install(block.text("Curve"));
    return Sm2Verification(PointBytes(block.bytes("Px"), block.bytes("Py")), block.bytes("M"),
                           PointBytes(block.bytes("r"), block.bytes("s")), block.bytes("Z"))
        .run(hash_of(block));
}

// What the numbers alone decide: a zero, or an r not below the field prime.
int32_t expected_status(const VectorBlock &block) {
    if (block.text("Result") == "valid") return 0;
    const Natural r = Natural::from_hex(block.text("r"));
    const Natural s = Natural::from_hex(block.text("s"));
    return r.is_zero() || s.is_zero() || r >= Natural(global_curve.p) ? -1 : 1;
}

}  // namespace

TEST(Sm2SignVectors, Signing) {
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_legacy, "sm2_sign.rsp")) {
        if (!block.has("k") || meets_the_kept_inverse(block)) continue;
        SCOPED_TRACE(describe(block));
        Signed made(block);
        expect_record(made.call.sig, block.bytes("r"), block.bytes("s"));
        ++checked;
    }
    EXPECT_EQ(checked, 31u);
}

TEST(Sm2SignVectors, Verifying) {
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_legacy, "sm2_sign.rsp")) {
        if (reason_is(block, "s + n (congruent, out of range)")) continue;
        SCOPED_TRACE(describe(block));
        const int32_t status = verify(block);
        EXPECT_EQ(status, expected_status(block));
        ++checked;
    }
    EXPECT_EQ(checked, 76u);
}

TEST(Sm2SignVectors, KeptSPlusTheOrderIsAccepted) {
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_legacy, "sm2_sign.rsp")) {
        if (!reason_is(block, "s + n (congruent, out of range)")) continue;
        SCOPED_TRACE(describe(block));
        EXPECT_EQ(verify(block), 0);
        ++checked;
    }
    EXPECT_EQ(checked, 1u);
}

TEST(Sm2SignVectors, KeptInverseChangesTheSignaturesOfTwoKeys) {
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_legacy, "sm2_sign.rsp")) {
        if (!block.has("k") || !meets_the_kept_inverse(block)) continue;
        SCOPED_TRACE(describe(block));
        Signed made(block);
        expect_record(made.call.sig, block.bytes("r"), made.s());
        EXPECT_NE(to_hex(made.s()), block.text("s"));
        PointBytes Q(block.bytes("Px"), block.bytes("Py"));
        EXPECT_EQ(sm2_DigitalVeriy(Q.get(), made.call.msg.get(), made.call.sig.get(), block.bytes("Z").data(),
                                   hash_of(block)),
                  1);
        ++checked;
    }
    EXPECT_EQ(checked, 2u);
}

TEST(Sm2SignVectors, KeptInverseOfTwoSignsForTheKeyOne) {
    // 1 / 2 comes out as the number below; the true inverse has all ones in its words 4 and 5.
    const Natural half =
        Natural::from_hex("7fffffff7ffffffffffffffefffffffeb901efb590e30295a9ddfa049ceaa092");
    unsigned checked = 0;
    for (const VectorBlock &block : vectors_where(is_legacy, "sm2_sign.rsp")) {
        if (!block.has("k") || Natural::from_hex(block.text("d")) != Natural(1)) continue;
        Signed made(block);
        const Natural n(global_curve.n);
        const Natural difference =
            (Natural::from_hex(block.text("k")) + n - Natural::from_hex(block.text("r"))) % n;
        EXPECT_EQ(Natural::from_hex(to_hex(made.s())), mod_mul(half, difference, n));
        ++checked;
    }
    EXPECT_EQ(checked, 1u);
}

}  // namespace zokecc_test::sm2_sign_vectors_test
