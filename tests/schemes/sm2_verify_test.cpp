// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// sm2_DigitalVeriy: its three results, the order of its checks, and what is kept: r is compared
// with the field prime, s with nothing.
#include "tests/schemes/sm2_sign_calls.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::sm2_verify_test {

namespace {

constexpr uint32_t kD = 123;

const ByteString kText = text_bytes("message digest");
const ByteString kZ = test_bytes(32, 7);

SmallSignature signature_of(const ByteString &text, uint32_t hash, uint32_t d = kD) {
    uint32_t e = small_sm2_e(kZ, text, hash);
    return small_sm2(e, d, usable_nonce(e, d));
}

PointBytes public_key() { return PointBytes(small_multiple(kD).x, small_multiple(kD).y, 32); }

int32_t verify(const PointBytes &sig, uint32_t hash = HASH_ALG_SM3, const ByteString &text = kText) {
    return Sm2Verification(public_key(), text, sig, kZ).run(hash);
}
int32_t verify(const SmallSignature &sig, uint32_t hash = HASH_ALG_SM3, const ByteString &text = kText) {
    return verify(PointBytes(sig.r, sig.s, 32), hash, text);
}

// x of s G + t Q modulo n, with the kept sum of opposite points.
uint32_t x_of_sum(uint32_t s, uint32_t t, const TinyPoint &Q) {
    TinyPoint tQ = small_group().library_window(small(t), Q);
    return small_group().library_affine_add(small_multiple(s), tQ).x;
}

// A number of `size` bytes: `low` plus n * 2^shift, in plain byte arithmetic.
ByteString plus_shifted_order(const ByteString &low, const mint &n, size_t size, size_t shift_bytes) {
    ByteString out(size, 0);
    std::copy(low.begin(), low.end(), out.end() - static_cast<std::ptrdiff_t>(low.size()));
    const ByteString order = fixed_bytes(n, 4u * n.len);
    unsigned carry = 0;
    for (size_t i = 0; i + shift_bytes < size; ++i) {
        unsigned digit = i < order.size() ? order[order.size() - 1 - i] : 0u;
        uint8_t &place = out[size - 1 - shift_bytes - i];
        unsigned sum = place + digit + carry;
        place = static_cast<uint8_t>(sum);
        carry = sum >> 8;
    }
    return out;
}

}  // namespace

TEST(Sm2DigitalVeriy, AcceptsWhatWasSigned) {
    for (const char *name : {"sm2p256v1", "secp224r1", "sm2test192"}) {
        install(name);
        const size_t L = global_curve.byte_len;
        Scalar d(test_bytes(L - 1, 3));
        GuardedRecord<ecc_point_bytes> Q;
        ASSERT_EQ(Ecc_GenPubKey(d.get(), Q.get()), 0);
        for (uint32_t hash : kHashes) {
            FakeEntropy entropy;
            Sm2Signing signing(test_bytes(L - 1, 3), kText, kZ);
            ASSERT_EQ(signing.run(hash), 0);
            EXPECT_EQ(signing.sig->length, L);
            EXPECT_EQ(sm2_DigitalVeriy(Q.get(), signing.msg.get(), signing.sig.get(), kZ.data(), hash), 0);
            EXPECT_EQ(sm2_DigitalVeriy(Q.get(), signing.msg.get(), signing.sig.get(), kZ.data(), 1 - hash),
                      1);
        }
    }
}

TEST(Sm2DigitalVeriy, OtherZReturnsOne) {
    install_small(32);
    const SmallSignature good = signature_of(kText, HASH_ALG_SM3);
    for (uint32_t seed : {7u, 8u})
        EXPECT_EQ(Sm2Verification(public_key(), kText, PointBytes(good.r, good.s, 32), test_bytes(32, seed))
                      .run(HASH_ALG_SM3),
                  seed == 7 ? 0 : 1);
}

TEST(Sm2DigitalVeriy, KeptRIsBoundedByTheFieldPrime) {
    // From the order up to the prime r passes the range check, and then equals no reduced number.
    install_small(32);
    SmallSignature good = signature_of(kText, HASH_ALG_SM3);
    for (uint32_t r = kSmallN; r < kSmallP; ++r) EXPECT_EQ(verify(SmallSignature{r, good.s}), 1) << r;
}

TEST(Sm2DigitalVeriy, KeptRPlusTheOrderBelowThePrimeReturnsOne) {
    install_small(32);
    unsigned found = 0;
    for (uint32_t number = 0; number < 1000 && found < 3; ++number) {
        ByteString text = number_bytes(number, 4);
        SmallSignature good = signature_of(text, HASH_ALG_SM3);
        if (good.r >= kSmallP - kSmallN) continue;
        EXPECT_EQ(verify(good, HASH_ALG_SM3, text), 0);
        EXPECT_EQ(verify(SmallSignature{good.r + kSmallN, good.s}, HASH_ALG_SM3, text), 1);
        ++found;
    }
    EXPECT_EQ(found, 3u);
}

TEST(Sm2DigitalVeriy, KeptSHasNoUpperBound) {
    install_small(32);
    SmallSignature good = signature_of(kText, HASH_ALG_SM3);
    for (uint32_t times : {1u, 2u, 1000u, 4000000u})
        EXPECT_EQ(verify(SmallSignature{good.r, good.s + times * kSmallN}), 0) << times;
}

TEST(Sm2DigitalVeriy, KeptSWiderThanTheCurveIsMultipliedInFull) {
    // s + n * 256^i fills up to the 65 bytes of its field, twice as many words as the prime has.
    for (const char *name : {"sm2p256v1", "secp192r1"}) {
        SCOPED_TRACE(name);
        install(name);
        const size_t L = global_curve.byte_len;
        FakeEntropy entropy;
        Sm2Signing signing(test_bytes(L - 1, 3), kText, kZ);
        ASSERT_EQ(signing.run(HASH_ALG_SM3), 0);
        GuardedRecord<ecc_point_bytes> Q;
        ASSERT_EQ(Ecc_GenPubKey(signing.d.get(), Q.get()), 0);
        const ByteString r = joined({ByteString(65 - L, 0), ByteString(signing.sig->x, signing.sig->x + L)});
        const ByteString s(signing.sig->y, signing.sig->y + L);
        for (size_t shift : {size_t{0}, size_t{4}, 64 - L, 65 - L}) {
            SCOPED_TRACE(shift);
            PointBytes sig(r, plus_shifted_order(s, global_curve.n, 65, shift));
            EXPECT_EQ(sm2_DigitalVeriy(Q.get(), signing.msg.get(), sig.get(), kZ.data(), HASH_ALG_SM3), 0);
            sig.get()->y[64] ^= 1;
            EXPECT_EQ(sm2_DigitalVeriy(Q.get(), signing.msg.get(), sig.get(), kZ.data(), HASH_ALG_SM3), 1);
        }
    }
}

TEST(Sm2DigitalVeriy, KeptSEqualToTheOrderCountsAsZeroInTheSum) {
    // s is not 0, so that it is not refused, and s G is infinite: R is e + x of r Q.
    install_small(32);
    unsigned found = 0;
    for (uint32_t number = 0; number < 20; ++number) {
        ByteString text = number_bytes(number, 4);
        uint32_t e = small_sm2_e(kZ, text, HASH_ALG_SM3);
        for (uint32_t r = 1; r < kSmallN; ++r) {
            bool holds = (e + small_multiple(product_modulo(r, kD, kSmallN)).x) % kSmallN == r;
            if (!holds && r % 100 != 0) continue;
            EXPECT_EQ(verify(SmallSignature{r, kSmallN}, HASH_ALG_SM3, text), holds ? 0 : 1);
            found += holds ? 1 : 0;
        }
    }
    EXPECT_GE(found, 5u);
}

TEST(Sm2DigitalVeriy, RPlusSEqualToTheOrderReturnsOne) {
    install_small(32);
    for (uint32_t r : {1u, 500u, kSmallN - 1}) {
        EXPECT_EQ(verify(SmallSignature{r, kSmallN - r}), 1);
        EXPECT_EQ(verify(SmallSignature{r, 2 * kSmallN - r}), 1);
    }
}

TEST(Sm2DigitalVeriy, RPlusSEqualToTheOrderIsFoundBeforeTheMultiplication) {
    install_small(32);
    FailingAlloc counter;
    EXPECT_EQ(verify(SmallSignature{500, kSmallN - 500}), 1);
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(counter.outstanding, 0);
}

TEST(Sm2DigitalVeriy, KeptOppositeProductsAddToAFinitePoint) {
    // s G = -(t Q) should be infinity; the addition returns x = -2 x1.
    install_small(32);
    unsigned found = 0;
    const uint32_t inverse = inverse_modulo(kD, kSmallN);
    for (uint32_t number = 0; number < 20; ++number) {
        ByteString text = number_bytes(number, 4);
        uint32_t e = small_sm2_e(kZ, text, HASH_ALG_SM3);
        for (uint32_t s = 1; s < kSmallN; ++s) {
            uint32_t t = negative_modulo(product_modulo(s, inverse, kSmallN), kSmallN);
            uint32_t r = (t + kSmallN - s) % kSmallN;
            if (r == 0 || (e + x_of_sum(s, t, small_multiple(kD))) % kSmallN != r) continue;
            EXPECT_EQ(verify(SmallSignature{r, s}, HASH_ALG_SM3, text), 0);
            ++found;
        }
    }
    EXPECT_GE(found, 5u);
}

TEST(Sm2DigitalVeriy, EveryRecordIsReadAtItsOwnLength) {
    install_small(32);
    SmallSignature good = signature_of(kText, HASH_ALG_SM3);
    TinyPoint Q = small_multiple(kD);
    for (size_t key_length : {2u, 31u, 65u})
        for (size_t sig_length : {2u, 33u, 65u})
            EXPECT_EQ(Sm2Verification(PointBytes(Q.x, Q.y, key_length), kText,
                                      PointBytes(good.r, good.s, sig_length), kZ)
                          .run(HASH_ALG_SM3),
                      0);
    EXPECT_EQ(verify(PointBytes(ByteString(), ByteString())), -1);
}

TEST(Sm2DigitalVeriy, FailedAllocationReturnsMinusOne) {
    install_small(32);
    SmallSignature good = signature_of(kText, HASH_ALG_SM3);
    Sm2Verification call(public_key(), kText, PointBytes(good.r, good.s, 32), kZ);
    {
        FailingAlloc failing(1);
        EXPECT_EQ(call.run(HASH_ALG_SM3), -1);
        EXPECT_EQ(failing.allocations, 1u);
        EXPECT_EQ(failing.last_size, kText.size() + 33);
    }
    FailingAlloc failing(2);
    EXPECT_EQ(call.run(HASH_ALG_SM3), -1);
    EXPECT_EQ(failing.allocations, 2u);
    EXPECT_EQ(failing.outstanding, 0);
}

TEST(Sm2DigitalVeriy, KeptOneDigitBufferStaysAllocated) {
    install_small(32);
    SmallSignature good = signature_of(kText, HASH_ALG_SM3);
    Sm2Verification call(public_key(), kText, PointBytes(good.r, good.s, 32), kZ);
    FailingAlloc counter;
    EXPECT_EQ(call.run(HASH_ALG_SM3), 0);
    EXPECT_EQ(counter.allocations, 2u);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(1));
}

TEST(Sm2DigitalVeriy, NumbersOutOfRangeWinOverAFailedAllocation) {
    install_small(32);
    for (const SmallSignature &sig :
         {SmallSignature{0, 5}, SmallSignature{kSmallP, 5}, SmallSignature{5, 0}}) {
        Sm2Verification call(public_key(), kText, PointBytes(sig.r, sig.s, 32), kZ);
        FailingAlloc failing(1);
        EXPECT_EQ(call.run(HASH_ALG_SM3), -1);
        EXPECT_EQ(failing.allocations, 0u);
    }
}

TEST(Sm2DigitalVeriy, FailedAllocationWinsOverRPlusSEqualToTheOrder) {
    install_small(32);
    Sm2Verification call(public_key(), kText, PointBytes(500, kSmallN - 500, 32), kZ);
    FailingAlloc failing(1);
    EXPECT_EQ(call.run(HASH_ALG_SM3), -1);
}

TEST(Sm2DigitalVeriy, MessageTooLongForItsBufferReturnsMinusOneUnread) {
    install_small(32);
    SmallSignature good = signature_of(kText, HASH_ALG_SM3);
    Sm2Verification call(public_key(), kText, PointBytes(good.r, good.s, 32), kZ);
    sm3_msg claims_more = *call.msg.get();
    for (uint32_t length : {0xFFFFFFDFu, 0xFFFFFFE0u, 0xFFFFFFFFu}) {
        claims_more.len_low = length;
        FailingAlloc counter;
        EXPECT_EQ(sm2_DigitalVeriy(call.Q.get(), &claims_more, call.sig.get(), kZ.data(), HASH_ALG_SM3), -1);
        EXPECT_EQ(counter.allocations, 0u);
    }
    claims_more.len_low = 0xFFFFFFDEu;
    FailingAlloc failing(1);
    EXPECT_EQ(sm2_DigitalVeriy(call.Q.get(), &claims_more, call.sig.get(), kZ.data(), HASH_ALG_SM3), -1);
    EXPECT_EQ(failing.last_size, 0xFFFFFFFFu);
}

}  // namespace zokecc_test::sm2_verify_test
