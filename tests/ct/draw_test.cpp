// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Secret numbers of the hardened build: how they are derived, which are redrawn, and a failing kernel.
#include <gtest/gtest.h>

#include <cerrno>

#include "ct/scalars.h"
#include "tests/support/curves.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/model_hash.h"
#include "tests/support/naive_int.h"
#include "tests/support/points.h"

namespace zokecc_test::ct_draw_test {

namespace {

constexpr uint32_t kNow = 0x65432100u;
// The kernel's bytes, the key, the digest and a counter, each in a field of fixed size.
constexpr size_t kKey = 44, kDigest = kKey + 36, kCounter = kDigest + 76, kInput = kCounter + 4;

struct SecretEntropy : FakeEntropy {
    SecretEntropy() : FakeEntropy(kNow, 0) { draws_secrets = true; }
};

void put_words(const mint &number, uint8_t *out) {
    for (uint32_t i = 0; i < 4 * number.len; ++i)
        out[i] = static_cast<uint8_t>(number.words[i / 4] >> (8 * (i % 4)));
}

// The number from the kernel's words, before the range check.
Natural reduced(const std::vector<uint32_t> &kernel, const mint &n, const mint *key, const mint *digest) {
    ByteString input(kInput), spread;
    for (size_t i = 0; i < 4 * kernel.size(); ++i)
        input[i] = static_cast<uint8_t>(kernel[i / 4] >> (8 * (i % 4)));
    if (key != nullptr) put_words(*key, &input[kKey]);
    if (digest != nullptr) put_words(*digest, &input[kDigest]);
    while (spread.size() < 4 * kernel.size()) {
        input[kCounter + 3] = static_cast<uint8_t>(spread.size());
        const ByteString block = model_sha256(input);
        spread.insert(spread.end(), block.begin(), block.end());
    }
    spread.resize(4 * kernel.size());
    return Natural::from_hex(to_hex(spread)) % Natural(n);
}

// The library's sequence of draws, without the library.
class Model {
public:
    explicit Model(const mint &n) : n_(n) {}
    Natural draw(const mint *key, const mint *digest) {
        const Natural n(n_), last = n - Natural(1);
        for (;;) {
            std::vector<uint32_t> kernel(n_.len + 2);
            for (uint32_t &word : kernel) word = words_.next();
            const Natural out = reduced(kernel, n_, key, digest);
            zeros += out.is_zero() ? 1 : 0;
            lasts += out == last ? 1 : 0;
            if (!out.is_zero() && (key != nullptr || out != last)) return out;
        }
    }
    int zeros = 0, lasts = 0;

private:
    mint n_;
    KernelWords words_{kNow, 0};
};

Natural drawn(const mint &n, const mint *key, const mint *digest) {
    GuardedRecord<mint> out;
    EXPECT_EQ(draw_secret_number(out.get(), &n, key, digest), 0);
    EXPECT_EQ(out->len, n.len);
    EXPECT_TRUE(out.guards_intact());
    mint number = *out.get();
    while (number.len > 0 && number.words[number.len - 1] == 0) --number.len;
    return Natural(number);
}

const char *const kCurves[] = {"secp192r1",       "secp224r1",       "secp256r1",
                               "secp256k1",       "brainpoolP160r1", "brainpoolP192r1",
                               "brainpoolP224r1", "brainpoolP256r1", "sm2p256v1"};

}  // namespace

TEST(DrawSecretNumber, IsTheHashOfKernelKeyAndDigestReducedFromSixtyFourMoreBits) {
    for (const char *name : kCurves) {
        SCOPED_TRACE(name);
        const Curve &c = curve(name);
        const mint digest = mint_from_hex(std::string(60, '7') + "f00d");
        SecretEntropy entropy;
        Model model(c.n);
        for (int i = 0; i < 10; ++i) {
            EXPECT_EQ(drawn(c.n, nullptr, nullptr), model.draw(nullptr, nullptr));
            EXPECT_EQ(drawn(c.n, &c.G.x, &digest), model.draw(&c.G.x, &digest));
        }
        EXPECT_EQ(entropy.kernel.getrandom_calls, 20u);
        EXPECT_EQ(entropy.kernel.bytes_given, 20 * (4 * c.n.len + 8));
    }
}

TEST(DrawSecretNumber, StuckKernelGivesAnotherNonceForAnotherKeyOrDigest) {
    const Curve &c = curve("sm2p256v1");
    const mint first = small(77), second = small(78);
    SecretEntropy entropy;
    entropy.stuck = true;
    const Natural nonce = drawn(c.n, &first, &first);
    EXPECT_EQ(drawn(c.n, &first, &first), nonce);
    EXPECT_NE(drawn(c.n, &second, &first), nonce);
    EXPECT_NE(drawn(c.n, &first, &second), nonce);
    EXPECT_NE(drawn(c.n, nullptr, nullptr), nonce);
}

// With a small order both ends of the range occur.
TEST(DrawSecretNumber, ZeroIsDrawnAgainAndForKeysTheOrderLessOne) {
    const mint n = small(1009), key = small(5), digest = small(6);
    for (const mint *with : {static_cast<const mint *>(nullptr), &key}) {
        SecretEntropy entropy;
        Model model(n);
        for (int i = 0; i < 4000 && !testing::Test::HasFailure(); ++i)
            ASSERT_EQ(drawn(n, with, &digest), model.draw(with, &digest)) << i;
        EXPECT_GT(model.zeros, 0);
        EXPECT_GT(model.lasts, 0);
    }
}

TEST(DrawSecretNumber, SilentKernelGivesMinusOneAndNothingIsWritten) {
    const Curve &c = curve("sm2p256v1");
    SecretEntropy entropy;
    entropy.kernel.getrandom_error = EIO;
    GuardedRecord<mint> out;
    EXPECT_EQ(draw_secret_number(out.get(), &c.n, nullptr, nullptr), -1);
    EXPECT_EQ(draw_secret_number(out.get(), &c.n, &c.G.x, &c.G.y), -1);
    EXPECT_EQ(entropy.kernel.getrandom_calls, 2u);
    EXPECT_TRUE(out.unchanged());
}

TEST(DrawSecretNumber, EndsAfter1024Zeros) {
    const mint n = small(1009), key = small(5);
    uint32_t word = 0;
    while (!reduced({word, word, word}, n, &key, nullptr).is_zero()) ++word;
    SecretEntropy entropy;
    entropy.stuck = true;
    entropy.stuck_value = static_cast<int>(word);
    mint out{};
    EXPECT_EQ(draw_secret_number(&out, &n, &key, nullptr), -1);
    EXPECT_EQ(entropy.kernel.getrandom_calls, 1024u);
}

TEST(DrawSecretNumber, OrderThatNoFieldServesGivesMinusOne) {
    SecretEntropy entropy;
    mint even = curve("sm2p256v1").n, out{};
    even.words[0] ^= 1;
    EXPECT_EQ(draw_secret_number(&out, &even, nullptr, nullptr), -1);
    EXPECT_EQ(entropy.calls(), 0u);
}

TEST(DrawBlinding, IsTheKernelsAndNeverZero) {
    SecretEntropy entropy;
    KernelWords words(kNow, 0);
    for (int i = 0; i < 50; ++i) {
        uint32_t out[3];
        draw_blinding(out, 3);
        const uint32_t lowest = words.next() | 1;
        EXPECT_EQ(out[0], lowest);
        for (uint32_t j = 1; j < 3; ++j) EXPECT_EQ(out[j], words.next());
    }
    entropy.kernel.getrandom_error = EIO;
    uint32_t one[3] = {9, 9, 9};
    draw_blinding(one, 3);
    EXPECT_EQ(one[0], 1u);
    EXPECT_EQ(one[1] | one[2], 0u);
}

}  // namespace zokecc_test::ct_draw_test
