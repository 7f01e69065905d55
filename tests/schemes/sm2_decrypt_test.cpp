// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// sm2_Decry: the plaintext for every short length, refusals with nothing written, and the
// check value, which is expected at the start of C2.
#include "tests/schemes/sm2_encrypt_calls.h"
#include "tests/support/emulated.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/give_up.h"

namespace zokecc_test::sm2_decrypt_test {

namespace {

constexpr uint32_t kD = 123;
constexpr uint32_t kK = 77;

const ByteString kText = text_bytes("ten bytes.");

ByteString good_cipher(size_t L = 32, uint32_t hash = HASH_ALG_SM3, const ByteString &text = kText) {
    return small_sm2_cipher(kD, kK, L, text, hash);
}

// The check value is not where it is expected, so the result is -1; the plaintext is written.
template <class Key>
void expect_decrypted(const Key &d, const ByteString &cipher, const ByteString &plain,
                      uint32_t hash = HASH_ALG_SM3, int32_t status = -1) {
    Sm2Decryption call(d, cipher);
    EXPECT_EQ(call.run(hash), status);
    call.expect_plain(plain);
}

// A ciphertext of one byte that passes the check: the 32 bytes from C2 on are C2 itself and the
// first 31 bytes of C3, so that C3 can be chosen as soon as C2 is the first byte of the check
// value, which is true for one in 256 nonces and values of C2.
struct Passing {
    Passing(uint32_t d, uint32_t hash) {
        for (uint32_t k = 1; k < kSmallN; ++k) {
            const Coordinates secret(small_multiple(product_modulo(k, d, kSmallN)), 32);
            const uint8_t t = first_stream_byte(d, k, 32, hash);
            for (unsigned c = 0; t != 0 && c < 256; ++c) {
                plain = ByteString(1, static_cast<uint8_t>(c ^ t));
                const ByteString check = selected_digest(hash, joined({secret.x, plain, secret.y}));
                if (check[0] != c) continue;
                cipher = joined(
                    {ByteString(1, 4), Coordinates(small_multiple(k), 32).both(), check, ByteString(1, 0)});
                return;
            }
        }
        give_up("no such ciphertext");
    }
    ByteString plain, cipher;
};

}  // namespace

TEST(Sm2Decry, EveryLengthUpTo200AndOf64KiBOnEveryCurveLengthWithBothHashes) {
    const ByteString text = test_bytes(65536);
    for (unsigned L : kLegacyLengths) {
        install_small(L);
        for (uint32_t hash : kHashes)
            for (const size_t length : message_lengths()) {
                SCOPED_TRACE("L " + std::to_string(L) + " length " + std::to_string(length));
                const ByteString part(text.data(), text.data() + length);
                expect_decrypted(kD, good_cipher(L, hash, part), part, hash);
            }
    }
}

TEST(Sm2Decry, KeptCheckReadAtStartOfC2) {
    install_small(32);
    for (uint32_t hash : kHashes) {
        Passing passing(kD, hash);
        expect_decrypted(kD, passing.cipher, passing.plain, hash, 0);
    }
}

TEST(Sm2Decry, KeptCheckCovers32BytesFromC2On) {
    install_small(32);
    Passing passing(kD, HASH_ALG_SM3);
    for (size_t offset = 65; offset < passing.cipher.size(); ++offset) {
        SCOPED_TRACE(offset);
        ByteString changed = passing.cipher;
        changed[offset] ^= 0x10;
        expect_decrypted(kD, changed,
                         ByteString(1, static_cast<uint8_t>(passing.plain[0] ^ (offset == 65 ? 0x10 : 0))),
                         HASH_ALG_SM3, offset == 97 ? 0 : -1);
    }
}

TEST(Sm2Decry, KeptGoodCiphertextReturnsMinusOneWithThePlaintextWritten) {
    install("sm2p256v1");
    Scalar d(test_bytes(31, 4));
    GuardedRecord<ecc_point_bytes> Q;
    ASSERT_EQ(Ecc_GenPubKey(d.get(), Q.get()), 0);
    for (uint32_t hash : kHashes) {
        FakeEntropy entropy;
        Sm2Encryption encryption(PointBytes(ByteString(Q->x, Q->x + 32), ByteString(Q->y, Q->y + 32)), kText);
        ASSERT_EQ(encryption.run(hash), 0);
        expect_decrypted(test_bytes(31, 4), encryption.area.first(107), kText, hash);
    }
}

TEST(Sm2Decry, KeptChangedCiphertextLeavesItsPlaintextWritten) {
    install_small(32);
    ByteString changed = good_cipher();
    changed[65] ^= 1;                  // C2
    changed[changed.size() - 1] ^= 1;  // C3
    ByteString expected = kText;
    expected[0] ^= 1;
    expect_decrypted(kD, changed, expected);
}

TEST(Sm2Decry, KeptZeroKeyIsNotRefused) {
    // The shared point is infinite and counts as zeros.
    install_small(32);
    const ByteString cipher = sm2_cipher(small_multiple(kK), TinyPoint{}, 32, kText, HASH_ALG_SM3);
    for (const ByteString &zero : {ByteString(), ByteString(32, 0)}) {
        expect_decrypted(zero, cipher, kText);
    }
}

TEST(Sm2Decry, KeyOneBelowTheOrderDecrypts) {
    install_small(32);
    expect_decrypted(kSmallN - 1, small_sm2_cipher(kSmallN - 1, kK, 32, kText, HASH_ALG_SM3), kText);
}

TEST(Sm2Decry, KeyMayHave76Bytes) {
    install_small(32);
    expect_decrypted(number_bytes(kD, 76), good_cipher(), kText);
}

TEST(Sm2Decry, EveryLengthWithoutAMessageByteReturnsMinusOneUnread) {
    // The buffers end where the ciphertext does, even before C1 is complete.
    for (unsigned L : kLegacyLengths) {
        install_small(L);
        const ByteString cipher = good_cipher(L);
        for (size_t length = 0; length <= 1 + 2 * L + 32; ++length) {
            SCOPED_TRACE(length);
            const ByteString part(cipher.begin(), cipher.begin() + static_cast<std::ptrdiff_t>(length));
            Sm2Decryption call(kD, part);
            uint8_t nowhere = 4;
            if (part.empty()) call.cipher.get()->data = &nowhere;
            FailingAlloc counter;
            EXPECT_EQ(sm2_Decry(call.priv.get(), call.cipher.get(), &call.plain, HASH_ALG_SM3), -1);
            call.expect_nothing_written();
            EXPECT_EQ(counter.allocations, 0u);
        }
        const ByteString shortest(cipher.begin(), cipher.begin() + 1 + 2 * static_cast<int>(L) + 33);
        expect_decrypted(kD, shortest, ByteString(1, kText[0]));
    }
}

TEST(Sm2Decry, KeyStreamBufferHoldsAWholeDigestPerStepOfTheCurveLength) {
    struct Case {
        unsigned L;
        size_t m, largest;
    };
    for (const Case &row : {Case{24, 1000, 41 * 32 + 1}, Case{28, 1000, 35 * 32 + 1}, Case{32, 1000, 1065}}) {
        install_small(row.L);
        Sm2Decryption call(kD, good_cipher(row.L, HASH_ALG_SM3, test_bytes(row.m)));
        FailingAlloc counter;
        EXPECT_EQ(call.run(HASH_ALG_SM3), -1);
        EXPECT_EQ(counter.largest_size, row.largest);
    }
}

TEST(Sm2Decry, KeptDigitBuffersStayAllocated) {
    install_small(32);
    Sm2Decryption call(kD, good_cipher());
    FailingAlloc counter;
    EXPECT_EQ(call.run(HASH_ALG_SM3), -1);
    call.expect_plain(kText);
    EXPECT_EQ(counter.allocations, 4u);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(2));
}

TEST(Sm2Decry, CofactorZeroReturnsMinusOneAndWritesNothing) {
    install_with_order(1013);
    Sm2Decryption(kD, good_cipher()).expect_refused(HASH_ALG_SM3);
}

TEST(Sm2Decry, CofactorMultipleAtInfinityReturnsMinusOneAndWritesNothing) {
    install_with_order(500);
    Sm2Decryption(kD, sm2_cipher({false, 5, 0}, TinyPoint{}, 32, kText, HASH_ALG_SM3))
        .expect_refused(HASH_ALG_SM3);
    install_with_order(336);
    Sm2Decryption(kD, sm2_cipher({false, 841, 163}, TinyPoint{}, 32, kText, HASH_ALG_SM3))
        .expect_refused(HASH_ALG_SM3);
}

TEST(Sm2Decry, CofactorMultipleWithAZeroCoordinateIsNotRefused) {
    // Unlike encryption: (243, 140) doubles to (0, 5).
    install_with_order(501);
    const TinyPoint C1{false, 243, 140};
    const TinyPoint shared = small_group().library_window(small(kD), C1);
    expect_decrypted(kD, sm2_cipher(C1, shared, 32, kText, HASH_ALG_SM3), kText);
}

TEST(Sm2Decry, KeptC1OffTheCurveIsUsed) {
    install_small(32);
    const TinyCurve other(kSmallP, 2, 26);
    const TinyPoint C1 = other.points().at(50);
    expect_decrypted(kD, sm2_cipher(C1, other.library_window(small(kD), C1), 32, kText, HASH_ALG_SM3), kText);
}

TEST(Sm2Decry, KeptC1ZeroZeroIsUsed) {
    install_small(32);
    expect_decrypted(kD, sm2_cipher({false, 0, 0}, {false, 0, 0}, 32, kText, HASH_ALG_SM3), kText);
}

TEST(Sm2Decry, ZeroKeyStreamReturnsMinusOneAndWritesNothing) {
    install_small(32);
    for (uint32_t hash : kHashes) {
        const uint32_t k =
            first_scalar([=](uint32_t of) { return first_stream_byte(kD, of, 32, hash) == 0; });
        Sm2Decryption(kD, small_sm2_cipher(kD, k, 32, ByteString(1, 0x5A), hash)).expect_refused(hash);
    }
}

TEST(Sm2Decry, UnknownSelectorReturnsMinusOneAndWritesNothing) {
    for (unsigned L : kLegacyLengths) {
        install_small(L);
        for (uint32_t hash : {2u, kUnknownHash, 0xFFFFFFFFu})
            for (size_t length : {size_t{1}, size_t{10}, size_t{L}, size_t{3 * L}, size_t{200}})
                Sm2Decryption(kD, good_cipher(L, HASH_ALG_SM3, test_bytes(length))).expect_refused(hash);
    }
}

TEST(Sm2Decry, DrawsNothing) {
    install_small(32);
    FakeEntropy entropy;
    Sm2Decryption call(kD, good_cipher());
    EXPECT_EQ(call.run(HASH_ALG_SM3), -1);
    EXPECT_EQ(entropy.calls() + entropy.number_calls, 0u);
}

}  // namespace zokecc_test::sm2_decrypt_test
