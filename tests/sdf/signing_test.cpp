// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Signing and verifying with ECDSA and SM2 in both generations of calls, on the small curve, where plain
// integers predict every signature: the output, the rejected nonces, and what a signature depends
// on.
#include "tests/support/give_up.h"
#include "tests/support/signing_generations.h"

namespace zokecc_test::signing_test {

using namespace signing;

namespace {

constexpr uint32_t kD = 123;

const ByteString kText = text_bytes("message digest");

template <class S>
class Signing : public testing::Test {};
TYPED_TEST_SUITE(Signing, Calls, CallName);

template <class S>
class Verifying : public testing::Test {};
TYPED_TEST_SUITE(Verifying, Calls, CallName);

// All nonces are drawn and the last one is used.
template <class S>
void expect_signs(const ByteString &d_bytes, const ByteString &text, uint32_t hash, unsigned L,
                  std::vector<uint32_t> nonces = {}) {
    const uint32_t d = residue(d_bytes, kSmallN), e = S::e(text, hash, d);
    if (nonces.empty()) nonces.push_back(S::good_nonce(e, d));
    FakeEntropy entropy;
    for (uint32_t k : nonces) queue_number(entropy, k);
    const Made made = S::sign(d_bytes, text, hash, L);
    const auto [r, s] = S::pair(e, d, nonces.back());
    EXPECT_EQ(made.status, 0u);
    EXPECT_EQ(to_hex(made.r), to_hex(number_bytes(r, L)));
    EXPECT_EQ(to_hex(made.s), to_hex(number_bytes(s, L)));
    EXPECT_EQ(entropy.number_calls, nonces.size());
}

// A text whose e satisfies the condition, with its nonce.
template <class S, class Condition>
std::pair<ByteString, uint32_t> find_text(Condition condition) {
    for (uint32_t number = 0; number < 100; ++number) {
        const ByteString text = number_bytes(number, 4);
        const uint32_t e = S::e(text, HASH_ALG_SM3, kD);
        for (uint32_t k = 1; k < kSmallN; ++k)
            if (condition(e, k)) return {text, k};
    }
    give_up("no such text");
}

// An unusable nonce and its text: s is 0; or r is 0 with ECDSA, r + k the order with SM2.
template <class S>
std::pair<ByteString, uint32_t> fruitless(bool s_is_zero) {
    return find_text<S>([=](uint32_t e, uint32_t k) {
        return S::is_fruitless(e, kD, k) && (S::pair(e, kD, k).s == 0) == s_is_zero;
    });
}

// One valid signature, to be changed.
template <class S>
struct Good {
    Good(uint32_t d, uint32_t hash_selector, unsigned L, const ByteString &signed_text = kText)
        : text(signed_text), hash(hash_selector) {
        const uint32_t e = S::e(text, hash, d);
        const SmallSignature made = S::pair(e, d, S::good_nonce(e, d));
        r = made.r;
        s = made.s;
        Q = small_multiple(d);
        size = key_size = L;
    }
    bool verifies() const {
        return S::verify(number_bytes(Q.x, key_size), number_bytes(Q.y, key_size), text, hash,
                         number_bytes(r, size), number_bytes(s, size));
    }
    ByteString text;
    uint32_t hash, r, s;
    TinyPoint Q;
    size_t size, key_size;
};

}  // namespace

TYPED_TEST(Signing, WritesRAndSAtTheCurveLengthAndNothingElse) {
    for (unsigned L : TypeParam::kLengths)
        for (uint32_t hash : kHashes)
            for (uint32_t d : {1u, kD, TypeParam::kLargestKey})
                expect_signs<TypeParam>(number_bytes(d, L), kText, hash, L);
}

TYPED_TEST(Signing, TextsOfEveryLength) {
    const ByteString text = test_bytes(65536);
    for (uint32_t hash : kHashes)
        for (size_t length = 0; length <= TypeParam::kMostText; length += length < 200 ? 1 : 65336) {
            SCOPED_TRACE(length);
            const unsigned L = TypeParam::kLengths[std::size(TypeParam::kLengths) - 1];
            expect_signs<TypeParam>(
                number_bytes(kD, L),
                ByteString(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length)), hash, L);
        }
}

TYPED_TEST(Signing, KeyLengthIsItsOwn) {
    for (size_t length : {size_t{1}, size_t{2}, size_t{19}, size_t{31}, size_t{33}, TypeParam::kMostKeyBytes})
        expect_signs<TypeParam>(number_bytes(kD, length), kText, HASH_ALG_SM3, TypeParam::kLengths[0]);
}

TYPED_TEST(Signing, FruitlessNoncesAreDrawnAgain) {
    const unsigned L = TypeParam::kLengths[0];
    for (bool s_is_zero : {false, true}) {
        const auto [text, k] = fruitless<TypeParam>(s_is_zero);
        const uint32_t good = TypeParam::good_nonce(TypeParam::e(text, HASH_ALG_SM3, kD), kD);
        expect_signs<TypeParam>(number_bytes(kD, L), text, HASH_ALG_SM3, L, {k, good});
        expect_signs<TypeParam>(number_bytes(kD, L), text, HASH_ALG_SM3, L, {k, k, k, good});
        if (!TypeParam::kIsSm2)
            expect_signs<TypeParam>(number_bytes(kD, L), text, HASH_ALG_SM3, L, {0, k, kSmallN - k, good});
    }
}

TYPED_TEST(Signing, SucceedsInTheLastOf1024RoundsAndFailsBehindIt) {
    const unsigned L = TypeParam::kLengths[0];
    for (bool s_is_zero : {false, true}) {
        const auto [text, k] = fruitless<TypeParam>(s_is_zero);
        std::vector<uint32_t> nonces(1023, k);
        nonces.push_back(TypeParam::good_nonce(TypeParam::e(text, HASH_ALG_SM3, kD), kD));
        expect_signs<TypeParam>(number_bytes(kD, L), text, HASH_ALG_SM3, L, nonces);
        FakeEntropy entropy;
        queue_number(entropy, k, 1024);
        queue_number(entropy, nonces.back());
        const Made made = TypeParam::sign(number_bytes(kD, L), text, HASH_ALG_SM3, L);
        EXPECT_EQ(made.status, TypeParam::kFailed);
        EXPECT_TRUE(made.r.empty());
        EXPECT_EQ(entropy.number_calls, 1024u);
    }
}

TYPED_TEST(Signing, DrawsItsNonceBelowTheOrder) {
    // The same clock and the same rand give the generator's own nonce.
    const mint n = small(kSmallN);
    mint k{};
    {
        FakeEntropy entropy;
        gen_random_number(&k, &n);
    }
    const unsigned L = TypeParam::kLengths[0];
    FakeEntropy entropy;
    const Made made = TypeParam::sign(number_bytes(kD, L), kText, HASH_ALG_SM3, L);
    const auto [r, s] = TypeParam::pair(TypeParam::e(kText, HASH_ALG_SM3, kD), kD, k.words[0]);
    EXPECT_EQ(to_hex(made.r), to_hex(number_bytes(r, L)));
    EXPECT_EQ(to_hex(made.s), to_hex(number_bytes(s, L)));
    EXPECT_EQ(entropy.number_calls, 1u);
    EXPECT_EQ(entropy.seedings(), 2u);
}

TYPED_TEST(Verifying, AcceptsAGoodSignatureAndDrawsNothing) {
    FakeEntropy entropy;
    for (unsigned L : TypeParam::kLengths)
        for (uint32_t hash : kHashes)
            for (uint32_t d : {1u, 2u, kD, 500u, TypeParam::kLargestKey})
                EXPECT_TRUE(Good<TypeParam>(d, hash, L).verifies()) << d;
    EXPECT_EQ(entropy.calls() + entropy.number_calls, 0u);
}

TYPED_TEST(Verifying, TextsAroundTheBlockBorders) {
    for (uint32_t hash : kHashes)
        for (size_t size : {0u, 1u, 23u, 24u, 31u, 32u, 55u, 56u, 64u, 76u, 119u, 120u, 200u}) {
            if (size > TypeParam::kMostText) continue;
            EXPECT_TRUE(Good<TypeParam>(kD, hash, TypeParam::kLengths[0], test_bytes(size)).verifies());
        }
}

TYPED_TEST(Verifying, RefusesEveryOtherTextKeyHashOrNumber) {
    for (uint32_t hash : kHashes) {
        const Good<TypeParam> good(kD, hash, TypeParam::kLengths[0]);
        ASSERT_TRUE(good.verifies());
        for (int change = 0; change < 8; ++change) {
            Good<TypeParam> bad = good;
            switch (change) {
            case 0: bad.text.back() ^= 1; break;
            case 1: bad.text.pop_back(); break;
            case 2: bad.text.push_back(' '); break;
            case 3: bad.Q = small_multiple(kD + 1); break;
            case 4: bad.r += 1; break;
            case 5: bad.s += 1; break;
            case 6: std::swap(bad.r, bad.s); break;
            default: bad.hash = 1 - hash;
            }
            // A digest does not tell which hash computed it.
            const bool same_e = change == 7 && TypeParam::kMostText == 76;
            EXPECT_EQ(bad.verifies(), same_e) << change;
        }
    }
}

TYPED_TEST(Verifying, KeyLengthIsItsOwn) {
    for (size_t length : {size_t{2}, size_t{21}, size_t{31}, size_t{33}, TypeParam::kMostCoordinateBytes}) {
        Good<TypeParam> good(kD, HASH_ALG_SM3, TypeParam::kLengths[0]);
        good.key_size = length;
        EXPECT_EQ(good.verifies(), !TypeParam::kHashesKeyFields) << length;
    }
}

}  // namespace zokecc_test::signing_test
