// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Eces_Decry: ciphertext lengths, refusals, and the shortest form that it returns.
#include "tests/schemes/eces_calls.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::eces_decry_test {

namespace {

constexpr uint32_t kD = 123;
constexpr uint32_t kK = 77;

// One call with a ciphertext of exactly the bytes given and 120 guarded bytes of output.
struct Decryption {
    Decryption(const ByteString &key, const ByteString &bytes) : d(key), cipher(bytes) {}
    Decryption(uint32_t key, const ByteString &bytes) : Decryption(number_bytes(key, 32), bytes) {}

    int32_t run(uint32_t length) {
        const ByteString before = cipher;
        int32_t written = Eces_Decry(d.get(), cipher.data(), length, out.data());
        EXPECT_TRUE(d.intact() && cipher == before);
        return written;
    }
    // The prefix is not counted.
    int32_t run() { return run(static_cast<uint32_t>(cipher.size() - 1)); }

    // The plaintext, one zero byte, and nothing else.
    void expect_plain(const ByteString &plain) {
        EXPECT_EQ(to_hex(out.first(plain.size() + 1)), to_hex(plain) + "00");
        EXPECT_TRUE(out.untouched_from(plain.size() + 1));
    }
    void expect_decrypts_to(const ByteString &plain) {
        EXPECT_EQ(run(), static_cast<int32_t>(plain.size()));
        expect_plain(plain);
    }
    void expect_refused(uint32_t length) {
        EXPECT_EQ(run(length), -1);
        EXPECT_TRUE(out.untouched());
    }

    Scalar d;
    ByteString cipher;
    GuardedBuffer out{120};
};

// The shortest form.
ByteString shortest(uint32_t value) {
    return value == 0 ? ByteString() : number_bytes(value, value < 256 ? 1 : 2);
}

// A curve with the same p and a that holds the point.
TinyCurve curve_through(uint32_t x, uint32_t y) {
    uint32_t b = product_modulo(y, y, kSmallP) + 2 * kSmallP -
                 product_modulo(product_modulo(x, x, kSmallP), x, kSmallP) - 2 * x % kSmallP;
    return TinyCurve(kSmallP, 2, b % kSmallP);
}

}  // namespace

TEST(EcesDecry, EveryMessageBelowThePrime) {
    install_small(32);
    for (uint32_t M = 0; M < kSmallP; ++M) {
        SCOPED_TRACE(M);
        Decryption(kD, small_cipher(kD, M, kK)).expect_decrypts_to(shortest(M));
    }
}

TEST(EcesDecry, RoundTripOn192To256BitCurves) {
    for (const std::string &name : legacy_curve_names()) {
        SCOPED_TRACE(name);
        install(name);
        const size_t L = global_curve.byte_len;
        FakeEntropy entropy;
        GuardedRecord<ecc_point_bytes> Q;
        ByteString key = test_bytes(L - 1);
        Scalar d(key);
        ASSERT_EQ(Ecc_GenPubKey(d.get(), Q.get()), 0);
        ByteString text = test_bytes(L - 1, 5);
        text[0] = 1;
        EcesEncryption encryption(PointBytes(ByteString(Q->x, Q->x + L), ByteString(Q->y, Q->y + L)), text);
        ASSERT_EQ(encryption.run(static_cast<int32_t>(3 * L)), static_cast<int32_t>(3 * L));
        Decryption(key, encryption.out.first(3 * L + 1)).expect_decrypts_to(text);
    }
}

TEST(EcesDecry, KeptLeadingZeroBytesAreLost) {
    install("sm2p256v1");
    GuardedRecord<ecc_point_bytes> Q;
    Scalar d(number_bytes(kD, 32));
    ASSERT_EQ(Ecc_GenPubKey(d.get(), Q.get()), 0);
    PointBytes recipient(ByteString(Q->x, Q->x + 32), ByteString(Q->y, Q->y + 32));
    for (size_t zeros = 0; zeros <= 30; zeros += 5) {
        FakeEntropy entropy;
        ByteString text = text_bytes("x");
        EcesEncryption encryption(recipient, joined({ByteString(zeros, 0), text}));
        ASSERT_EQ(encryption.run(96), 96);
        Decryption(kD, encryption.out.first(97)).expect_decrypts_to(text);
    }
    FakeEntropy entropy;
    EcesEncryption encryption(recipient, ByteString(20, 0));
    ASSERT_EQ(encryption.run(96), 96);
    Decryption(kD, encryption.out.first(97)).expect_decrypts_to(ByteString());
}

TEST(EcesDecry, KeyOneBelowTheOrderDecrypts) {
    install_small(32);
    Decryption(kSmallN - 1, small_cipher(kSmallN - 1, 500, kK)).expect_decrypts_to(shortest(500));
}

TEST(EcesDecry, KeyMayHave76Bytes) {
    install_small(32);
    Decryption(number_bytes(kD, 76), small_cipher(kD, 5, kK)).expect_decrypts_to(shortest(5));
}

TEST(EcesDecry, NumbersAreAThirdOfTheLengthEach) {
    install_small(32);
    for (size_t width = 2; width <= 76; ++width) {
        for (uint32_t more : {0u, 1u, 2u}) {
            SCOPED_TRACE(std::to_string(width) + " and " + std::to_string(more));
            Decryption call(kD, small_cipher(kD, 700, kK, width));
            EXPECT_EQ(call.run(static_cast<uint32_t>(3 * width) + more), 2);
            call.expect_plain(shortest(700));
        }
    }
}

TEST(EcesDecry, OneByteShortReadsNarrowerNumbers) {
    // 11 bytes hold three numbers of 3 bytes; numbers of 4 bytes are split in the wrong places.
    install_small(32);
    const ByteString cipher = joined({ByteString(1, 4), number_bytes(31, 3), number_bytes(239, 3),
                                      number_bytes(300, 3), ByteString(2, 0xEE)});
    TinyPoint S = small_group().library_window(small(kD), {false, 31, 239});
    ASSERT_FALSE(S.infinite || S.x == 0);
    Decryption(kD, cipher)
        .expect_decrypts_to(shortest(product_modulo(300, inverse_modulo(S.x, kSmallP), kSmallP)));
}

TEST(EcesDecry, OneByteNumbers) {
    install_small(32);
    TinyPoint S = small_group().library_window(small(kD), {false, 31, 239});
    Decryption(kD, {4, 31, 239, 9})
        .expect_decrypts_to(shortest(product_modulo(9, inverse_modulo(S.x, kSmallP), kSmallP)));
}

TEST(EcesDecry, LengthBelowThreeGivesNothing) {
    // All numbers are 0, and so is the inverse's product.
    install_small(32);
    for (uint32_t length : {0u, 1u, 2u}) {
        Decryption call(kD, ByteString(length + 1, 4));
        EXPECT_EQ(call.run(length), 0);
        call.expect_plain(ByteString());
    }
}

TEST(EcesDecry, WideMaskedMessageIsReduced) {
    install_small(32);
    const ByteString c = test_bytes(76);
    const TinyPoint C1 = small_multiple(kK);
    const uint32_t mask = small_multiple(product_modulo(kK, kD, kSmallN)).x;
    Decryption(kD, joined({ByteString(1, 4), number_bytes(C1.x, 76), number_bytes(C1.y, 76), c}))
        .expect_decrypts_to(
            shortest(product_modulo(residue(c, kSmallP), inverse_modulo(mask, kSmallP), kSmallP)));
}

TEST(EcesDecry, SharedPointWithXZeroGivesNothing) {
    install_small(32);
    Decryption(1, small_cipher_image({false, 0, 5}, 77)).expect_decrypts_to(ByteString());
}

TEST(EcesDecry, KeptZeroKeyGivesNothing) {
    install_small(32);
    Decryption(0, small_cipher(kD, 700, kK)).expect_decrypts_to(ByteString());
    Decryption(ByteString(), small_cipher(kD, 700, kK)).expect_decrypts_to(ByteString());
}

TEST(EcesDecry, KeptPointOffTheCurveIsUsed) {
    install_small(32);
    for (uint32_t d : {2u, 3u, kD}) {
        TinyPoint S = curve_through(500, 77).library_window(small(d), {false, 500, 77});
        ASSERT_FALSE(S.infinite || S.x == 0);
        Decryption(d, small_cipher_image({false, 500, 77}, 900))
            .expect_decrypts_to(shortest(product_modulo(900, inverse_modulo(S.x, kSmallP), kSmallP)));
    }
}

TEST(EcesDecry, KeptDigitBufferStaysAllocated) {
    install_small(32);
    Decryption call(kD, small_cipher(kD, 700, kK));
    FailingAlloc counter;
    EXPECT_EQ(call.run(), 2);
    EXPECT_EQ(counter.allocations, 1u);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(1));
}

TEST(EcesDecry, PublishedSecretsUnmaskTheMessage) {
    auto test = [number = 0u](const VectorBlock &block) mutable {
        install(block.text("Curve"));
        const size_t size = block.bytes("Z").size();
        ByteString text = test_bytes(size - 1, number++);
        text[0] |= 1;
        Natural c = mod_mul(Natural::from_hex(to_hex(text)), Natural::from_hex(block.text("Z")),
                            Natural(global_curve.p));
        Decryption(block.bytes("d"), joined({ByteString(1, 4), block.bytes("Px"), block.bytes("Py"),
                                             fixed_bytes(c.to_mint(), size)}))
            .expect_decrypts_to(text);
    };
    EXPECT_EQ(on_blocks("ecdh.rsp", is_legacy, test), 93u);
}

}  // namespace zokecc_test::eces_decry_test
