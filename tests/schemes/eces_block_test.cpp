// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// eces_format and eces_deformat: every small size, the bytes drawn, and the round trip.
#include <algorithm>

#include "tests/support/legacy_records.h"
#include "tests/support/model_hash.h"
#include "tests/support/small_group.h"

namespace zokecc_test::eces_block_test {

namespace {

constexpr uint32_t kUntouched = 0x5A5A5A5Au;

// The bytes of a draw of `count` with the clock at `now`.
ByteString drawn_bytes(uint32_t count, uint32_t now) {
    FakeEntropy entropy(now);
    ByteString out(count);
    gen_random(out.data(), count);
    return out;
}

// A clock for which one of them except the last is zero, or none is.
uint32_t clock_drawing(bool zero, uint32_t count) {
    for (uint32_t now = 1;; ++now) {
        const ByteString padding = drawn_bytes(count, now);
        if ((std::find(padding.begin(), padding.end() - 1, 0) != padding.end() - 1) == zero) return now;
    }
}

struct Format {
    int32_t run(uint32_t block_len, const ByteString &message) {
        const ByteString before = message;
        int32_t status = eces_format(block_len, message.data(), static_cast<uint32_t>(message.size()),
                                     out.data(), &out_len);
        EXPECT_EQ(message, before);
        return status;
    }
    GuardedBuffer out{64};
    uint32_t out_len = kUntouched;
};

struct Deformat {
    int32_t run(const ByteString &block) {
        const ByteString before = block;
        int32_t status =
            eces_deformat(block.data(), static_cast<uint32_t>(block.size()), out.data(), &out_len);
        EXPECT_EQ(block, before);
        return status;
    }
    void expect_message(const ByteString &block, const ByteString &message) {
        EXPECT_EQ(run(block), 0);
        EXPECT_EQ(out_len, message.size());
        EXPECT_EQ(to_hex(out.first(message.size())), to_hex(message));
        EXPECT_TRUE(out.untouched_from(message.size()));
    }
    void expect_refused(const ByteString &block) {
        EXPECT_EQ(run(block), 1);
        EXPECT_TRUE(out.untouched());
        EXPECT_EQ(out_len, kUntouched);
    }
    GuardedBuffer out{64};
    uint32_t out_len = kUntouched;
};

// L - 1 bytes without a zero, except the one at `separator`.
ByteString block_with_separator(uint32_t L, uint32_t separator) {
    ByteString block(L - 1);
    for (size_t i = 0; i < block.size(); ++i) block[i] = static_cast<uint8_t>(0x40 + i);
    if (separator < block.size()) block[separator] = 0;
    return block;
}

}  // namespace

TEST(EcesFormat, EverySizeUpTo40) {
    uninstall();
    const uint32_t now = 1700000000u;
    for (uint32_t k = 0; k <= 40; ++k) {
        for (uint32_t m = 0; m <= 40; ++m) {
            SCOPED_TRACE("block " + std::to_string(k) + " message " + std::to_string(m));
            const ByteString message = test_bytes(m, 9);
            FakeEntropy entropy(now);
            Format call;
            if (m + 2 > k) {
                EXPECT_EQ(call.run(k, message), 1);
                EXPECT_TRUE(call.out.untouched());
                EXPECT_EQ(call.out_len, kUntouched);
                EXPECT_EQ(entropy.calls(), 0u);
                continue;
            }
            const uint32_t drawn = k - m - 1;
            EXPECT_EQ(call.run(k, message), 0);
            EXPECT_EQ(call.out_len, k);
            // One seeding at the start, and one for every started 32 bytes.
            EXPECT_EQ(entropy.seedings(), 1 + (drawn + 31) / 32);
            ByteString expected = joined({ByteString(1, 0xA5), drawn_bytes(drawn, now), message});
            expected[drawn] = 0;
            EXPECT_EQ(to_hex(call.out.first(k)), to_hex(expected));
            EXPECT_TRUE(call.out.untouched_from(k));
        }
    }
}

TEST(EcesFormat, NullMessageOfLengthZeroIsEmpty) {
    FakeEntropy entropy(77);
    Format call;
    EXPECT_EQ(eces_format(4, nullptr, 0, call.out.data(), &call.out_len), 0);
    ByteString expected = joined({ByteString(1, 0xA5), drawn_bytes(3, 77)});
    expected[3] = 0;
    EXPECT_EQ(to_hex(call.out.first(4)), to_hex(expected));
}

TEST(EcesFormat, KeptZeroBytesAmongThePaddingAreNotReplaced) {
    // The reader mistakes the zero byte for the separator, and its message begins too early.
    install_small(32);
    const ByteString message = text_bytes("message");
    const uint32_t now = clock_drawing(true, 24);
    ByteString padding = drawn_bytes(24, now);
    const std::ptrdiff_t first_zero = std::find(padding.begin(), padding.end(), 0) - padding.begin();

    FakeEntropy entropy(now);
    Format format;
    ASSERT_EQ(format.run(32, message), 0);
    padding.back() = 0;
    EXPECT_EQ(to_hex(format.out.first(32)), "a5" + to_hex(padding) + to_hex(message));

    ByteString block = format.out.first(32);
    block.erase(block.begin());
    const ByteString found(block.begin() + first_zero + 1, block.end());
    EXPECT_GT(found.size(), message.size());
    Deformat().expect_message(block, found);
}

TEST(EcesDeformat, SeparatorAtEveryPlace) {
    for (unsigned L : kLegacyLengths) {
        install_small(L);
        for (uint32_t j = 0; j <= L - 2; ++j) {
            SCOPED_TRACE("L " + std::to_string(L) + " separator at " + std::to_string(j));
            const ByteString block = block_with_separator(L, j);
            const std::ptrdiff_t first = static_cast<std::ptrdiff_t>(j) + 1;
            Deformat().expect_message(block, ByteString(block.begin() + first, block.end()));
        }
    }
}

TEST(EcesDeformat, ThirtyOneBytesWithTheFirstZeroAtIndexFiveGive25) {
    install_small(32);
    ByteString block = block_with_separator(32, 5);
    block[6] = 0;  // later zeros belong to the message
    block[30] = 0;
    Deformat().expect_message(block, ByteString(block.begin() + 6, block.end()));
}

TEST(EcesDeformat, NoZeroByteReturnsOneAndWritesNothing) {
    for (unsigned L : kLegacyLengths) {
        install_small(L);
        Deformat().expect_refused(block_with_separator(L, L));
    }
}

TEST(EcesDeformat, ShorterInputIsCopiedRightAlignedIntoLMinus2Bytes) {
    for (unsigned L : kLegacyLengths) {
        install_small(L);
        for (uint32_t length = 0; length <= L - 2; ++length) {
            SCOPED_TRACE("L " + std::to_string(L) + " length " + std::to_string(length));
            ByteString block = test_bytes(length, 3);
            if (length > 0) block[0] = 0;  // zeros mean nothing here
            Deformat call;
            EXPECT_EQ(call.run(block), 0);
            EXPECT_EQ(call.out_len, L - 2);
            EXPECT_EQ(to_hex(call.out.first(L - 2)),
                      to_hex(ByteString(L - 2 - length, 0xA5)) + to_hex(block));
            EXPECT_TRUE(call.out.untouched_from(L - 2));
        }
    }
}

TEST(EcesDeformat, InputOfTheCurveLengthOrLongerReturnsOneUnread) {
    for (unsigned L : kLegacyLengths) {
        install_small(L);
        for (uint32_t length : {L, L + 1, L + 20}) Deformat().expect_refused(ByteString(length, 0));
        for (uint32_t length : {0x80000000u, 0xFFFFFFFFu}) {
            uint8_t byte = 0;
            Deformat call;
            EXPECT_EQ(eces_deformat(&byte, length, call.out.data(), &call.out_len), 1);
            EXPECT_TRUE(call.out.untouched());
            EXPECT_EQ(call.out_len, kUntouched);
        }
    }
}

TEST(EcesDeformat, NullInputOfLengthZeroIsEmpty) {
    install_small(24);
    Deformat call;
    EXPECT_EQ(eces_deformat(nullptr, 0, call.out.data(), &call.out_len), 0);
    EXPECT_EQ(call.out_len, 22u);
    EXPECT_TRUE(call.out.untouched());
}

TEST(EcesDeformat, NullOutputIsNotNeededWhereNoByteIsWritten) {
    install_small(24);
    uint32_t out_len = kUntouched;
    EXPECT_EQ(eces_deformat(nullptr, 0, nullptr, &out_len), 0);
    EXPECT_EQ(out_len, 22u);
    const ByteString block = block_with_separator(24, 22);
    EXPECT_EQ(eces_deformat(block.data(), 23, nullptr, &out_len), 0);
    EXPECT_EQ(out_len, 0u);
    // One byte of a block or of a short input is enough to need it.
    const ByteString one = block_with_separator(24, 21);
    for (uint32_t length : {23u, 1u}) EXPECT_EQ(eces_deformat(one.data(), length, nullptr, &out_len), 1);
    EXPECT_EQ(out_len, 0u);
}

TEST(EcesDeformat, GivesBackWhatWasFormatted) {
    for (unsigned L : kLegacyLengths) {
        install_small(L);
        for (uint32_t m = 0; m <= L - 2; ++m) {
            const ByteString message = test_bytes(m, L);
            FakeEntropy entropy(clock_drawing(false, L - m - 1));
            Format format;
            ASSERT_EQ(format.run(L, message), 0);
            ByteString block = format.out.first(L);
            block.erase(block.begin());
            Deformat().expect_message(block, message);
        }
    }
}

TEST(EcesDeformat, FormattedBlockThroughEncryption) {
    install("sm2p256v1");
    const ByteString message = text_bytes("twenty-five bytes of text");
    FakeEntropy entropy;
    uint8_t block[32] = {};
    uint32_t length = 0;
    ASSERT_EQ(eces_format(32, message.data(), 25, block, &length), 0);
    ASSERT_EQ(std::find(block + 1, block + 6, 0), block + 6);

    Scalar d(number_bytes(123, 32));
    ecc_point_bytes Q{};
    ASSERT_EQ(Ecc_GenPubKey(d.get(), &Q), 0);
    uint8_t cipher[97];
    ASSERT_EQ(Eces_Encry(&Q, block, length, cipher, 96), 96);
    uint8_t plain[100];
    ASSERT_EQ(Eces_Decry(d.get(), cipher, 96, plain), 31);
    Deformat deformat;
    EXPECT_EQ(eces_deformat(plain, 31, deformat.out.data(), &deformat.out_len), 0);
    EXPECT_EQ(deformat.out_len, 25u);
    EXPECT_EQ(to_hex(deformat.out.first(25)), to_hex(message));
}

}  // namespace zokecc_test::eces_block_test
