// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Key streams and check values of the published SM2 encryption examples.
#include <gtest/gtest.h>
#include <zokecc/hash.h>

#include "hash/sm2_digests.h"
#include "hash/sm2_kdf.h"
#include "tests/support/kdf_model.h"
#include "tests/support/vector_file.h"

namespace zokecc_test::sm2_kdf_vectors_test {

namespace {

// True if the block contains the shared point.
bool is_complete(const VectorBlock &block) { return block.has("x2") && block.text("Result") == "valid"; }

uint32_t hash_of(const VectorBlock &block) {
    return block.text("Hash") == "SM3" ? HASH_ALG_SM3 : HASH_ALG_SHA256;
}

}  // namespace

TEST(Sm2Kdf, KeyStreamsOfTheEncryptionVectors) {
    unsigned seen = 0;
    for (const VectorBlock &block : read_vectors("sm2_encrypt.rsp")) {
        if (!is_complete(block)) continue;
        ++seen;
        const ByteString x2 = block.bytes("x2"), want = block.bytes("t");
        const ByteString z = joined({x2, block.bytes("y2")});
        for (auto call : {sm2_kdf, sm2_kdf_session}) {
            // Whole digests in steps of 20 to 32 bytes do not exceed this.
            GuardedBuffer out(2 * want.size() + 32);
            ASSERT_EQ(call(z.data(), static_cast<int32_t>(z.size()), static_cast<int32_t>(want.size()),
                           static_cast<int32_t>(x2.size()), hash_of(block), out.data()),
                      0);
            EXPECT_EQ(to_hex(out.first(want.size())), to_hex(want)) << block.text("Source");
        }
    }
    EXPECT_EQ(seen, 77u);
}

TEST(Sm2CheckValue, CheckValuesOfTheEncryptionVectors) {
    unsigned seen = 0;
    for (const VectorBlock &block : read_vectors("sm2_encrypt.rsp")) {
        if (!is_complete(block)) continue;
        ++seen;
        const ByteString x2 = block.bytes("x2"), y2 = block.bytes("y2"), message = block.bytes("M");
        zokecc::PointBytes point{};
        point.len = static_cast<uint32_t>(x2.size());
        std::copy(x2.begin(), x2.end(), point.xy);
        std::copy(y2.begin(), y2.end(), point.xy + point.len);
        ByteString work(message.size() + 2 * x2.size());
        GuardedBuffer out(32);
        EXPECT_EQ(zokecc::sm2_check_value(hash_of(block), point, message.data(),
                                          static_cast<uint32_t>(message.size()), work.data(), out.data()),
                  32);
        EXPECT_EQ(to_hex(out.all()), block.text("C3")) << block.text("Source");
    }
    EXPECT_EQ(seen, 77u);
}

}  // namespace zokecc_test::sm2_kdf_vectors_test
