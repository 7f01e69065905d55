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
    explicit SecretEntropy(uint32_t time = kNow) : FakeEntropy(time, 0) { draws_secrets = true; }
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
    explicit Model(const mint &n, uint32_t now = kNow) : n_(n), words_(now, 0) {}
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
    KernelWords words_;
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

// Orders of five words that divide the first draw of a clock, or the number above it.
TEST(DrawSecretNumber, ZeroIsDrawnAgainAndForKeysTheOrderLessOne) {
    const mint key = small(5), digest = small(6);
    struct Row {
        uint32_t now;
        const char *n;
        bool has_key;
        int zeros, lasts;
    };
    for (const Row &row : {Row{343, "6dbbc68e39f2b94a2ccc3d6c4074f090703c097", false, 1, 0},
                           Row{583, "e0d085f46f36a492bb26771e1d7ac60c594c9ff7", false, 0, 1},
                           Row{211, "f09e5c71a5e0064cf80301dc25668aaa447ee8a3", true, 1, 0},
                           Row{730, "59b834ef902949ed5bbeccae8135d54398fd7fb5", true, 0, 1}}) {
        SCOPED_TRACE(row.now);
        const mint n = mint_from_hex(row.n);
        SecretEntropy entropy(row.now);
        Model model(n, row.now);
        const mint *const with = row.has_key ? &key : nullptr, *const of = row.has_key ? &digest : nullptr;
        for (int i = 0; i < 3; ++i) EXPECT_EQ(drawn(n, with, of), model.draw(with, of)) << i;
        EXPECT_EQ(row.zeros, model.zeros);
        EXPECT_EQ(row.lasts, model.lasts);
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
    const mint n = mint_from_hex("458940a73f07d27e03cef5ef35f5da0cf86e1827"), key = small(5);
    constexpr uint32_t kWord = 25;
    ASSERT_TRUE(reduced(std::vector<uint32_t>(7, kWord), n, &key, nullptr).is_zero());
    SecretEntropy entropy;
    entropy.stuck = true;
    entropy.stuck_value = kWord;
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
