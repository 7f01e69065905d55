// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Bad inputs of the hash, MAC, derivation and random calls: null sessions and pointers, lengths of
// 0, below 0 and beyond the bound, unknown selectors.
#include <zokecc/hash.h>

#include "tests/robustness/bad_inputs.h"
#include "tests/support/failing_alloc.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/hex.h"
#include "tests/support/model_hash.h"

namespace zokecc_test::hashes_test {

using robustness::bad;

namespace {

int any_session = 0;
const ByteString kText = {'t', 'e', 'x', 't'};
const ByteString kNothing;

// Refused: the code, and neither the buffer nor the length written.
template <class Call>
void refused(const std::string &name, const std::string &input, uint32_t code, Call call) {
    bad(name, input, [=] {
        GuardedBuffer out(64);
        GuardedRecord<uint32_t> length;
        FakeEntropy entropy;
        EXPECT_EQ(static_cast<uint32_t>(call(out.data(), length.get())), code);
        EXPECT_TRUE(out.untouched() && length.unchanged());
        EXPECT_EQ(entropy.calls(), 0u);
    });
}

// Not refused: exactly these bytes.
template <class Call>
void answers(const std::string &name, const std::string &input, uint32_t code, const ByteString &want,
             Call call) {
    bad(name, input, [=] {
        GuardedBuffer out(80);
        EXPECT_EQ(static_cast<uint32_t>(call(out.data())), code);
        EXPECT_EQ(to_hex(out.first(want.size())), to_hex(want));
        EXPECT_TRUE(out.untouched_from(want.size()));
    });
}

ByteString zero_filled(ByteString code, size_t size) {
    code.resize(size);
    return code;
}

void add_sha256() {
    const uint8_t *text = kText.data();
    static uint32_t ignored = 0;
    refused("ZOK_Sha256", "no session", ZOK_ERR_SESSION,
            [=](uint8_t *out, uint32_t *len) { return ZOK_Sha256(nullptr, text, 4, out, len); });
    refused("ZOK_Sha256", "no length", ZOK_ERR_ARGUMENT,
            [=](uint8_t *out, uint32_t *) { return ZOK_Sha256(&any_session, text, 4, out, nullptr); });
    answers("ZOK_Sha256", "no data but a length", ZOK_OK, model_sha256(kNothing),
            [](uint8_t *out) { return ZOK_Sha256(&any_session, nullptr, 9, out, &ignored); });
    bad("ZOK_Sha256", "no output",
        [=] { EXPECT_EQ(ZOK_Sha256(&any_session, text, 4, nullptr, &ignored), ZOK_OK); });
    answers("mhash_sha256", "no data but a length", 0, model_sha256(kNothing),
            [](uint8_t *out) { return mhash_sha256(nullptr, 9, out); });
    answers("mhash_sha256", "data of length 0", 0, model_sha256(kNothing),
            [=](uint8_t *out) { return mhash_sha256(text, 0, out); });
    bad("mhash_sha256", "no output", [=] { EXPECT_EQ(mhash_sha256(text, 4, nullptr), 0u); });
}

void add_hmac_sha256() {
    const uint8_t *text = kText.data();
    const ByteString code = model_hmac_sha256(kNothing, kText);
    refused("mhmac_sha256", "text of length -1", 1,
            [=](uint8_t *out, uint32_t *) { return mhmac_sha256(text, -1, text, 4, out, 32); });
    refused("mhmac_sha256", "no text but a length", 1,
            [=](uint8_t *out, uint32_t *) { return mhmac_sha256(nullptr, 4, text, 4, out, 32); });
    refused("mhmac_sha256", "no key but a length", 1,
            [=](uint8_t *out, uint32_t *) { return mhmac_sha256(text, 4, nullptr, 4, out, 32); });
    refused("mhmac_sha256", "no long key but a length", 1,
            [=](uint8_t *out, uint32_t *) { return mhmac_sha256(text, 4, nullptr, 65, out, 32); });
    answers("mhmac_sha256", "key of length -1", 0, code,
            [=](uint8_t *out) { return mhmac_sha256(text, 4, nullptr, -1, out, 32); });
    answers("mhmac_sha256", "output of length 0", 0, kNothing,
            [=](uint8_t *out) { return mhmac_sha256(text, 4, nullptr, 0, out, 0); });
    answers("mhmac_sha256", "output of length 70", 0, zero_filled(code, 70),
            [=](uint8_t *out) { return mhmac_sha256(text, 4, nullptr, 0, out, 70); });
    refused("ZOK_HmacSha256", "no session", ZOK_ERR_SESSION,
            [=](uint8_t *out, uint32_t *) { return ZOK_HmacSha256(nullptr, text, 4, text, 4, out, 32); });
    refused("ZOK_HmacSha256", "data of length -1", ZOK_OK, [=](uint8_t *out, uint32_t *) {
        return ZOK_HmacSha256(&any_session, text, 4, text, -1, out, 32);
    });
    answers("ZOK_HmacSha256", "key of length INT32_MIN", ZOK_OK, code,
            [=](uint8_t *out) { return ZOK_HmacSha256(&any_session, nullptr, INT32_MIN, text, 4, out, 32); });

    static uint32_t zero = 0;
    refused("KD_hmac_sha256", "output of length 0", 0,
            [=](uint8_t *out, uint32_t *) { return KD_hmac_sha256(text, 4, text, 4, out, 0); });
    refused("KD_hmac_sha256", "text of length -1", 0,
            [=](uint8_t *out, uint32_t *) { return KD_hmac_sha256(text, -1, text, 4, out, 20); });
    refused("ZOK_KdHmacSha256", "no session", ZOK_ERR_SESSION, [=](uint8_t *out, uint32_t *len) {
        return ZOK_KdHmacSha256(nullptr, text, 4, text, 4, out, len);
    });
    refused("ZOK_KdHmacSha256", "no length", ZOK_ERR_ARGUMENT, [=](uint8_t *out, uint32_t *) {
        return ZOK_KdHmacSha256(&any_session, text, 4, text, 4, out, nullptr);
    });
    refused("ZOK_KdHmacSha256", "length 0", ZOK_OK, [=](uint8_t *out, uint32_t *) {
        return ZOK_KdHmacSha256(&any_session, text, 4, text, 4, out, &zero);
    });
}

void add_sm3() {
    const uint8_t *text = kText.data();
    static uint32_t ignored = 0;
    answers("sm3_hash", "no data of length 0", 0, model_sm3(kNothing), [](uint8_t *out) {
        const sm3_msg empty{nullptr, 0, 0};
        return sm3_hash(&empty, out);
    });
    refused("ZOK_SM3", "no session", ZOK_ERR_SESSION,
            [=](uint8_t *out, uint32_t *len) { return ZOK_SM3(nullptr, text, 4, out, len); });
    refused("ZOK_SM3", "no length", ZOK_ERR_ARGUMENT,
            [=](uint8_t *out, uint32_t *) { return ZOK_SM3(&any_session, text, 4, out, nullptr); });
    answers("ZOK_SM3", "no data of length 0", ZOK_OK, model_sm3(kNothing),
            [](uint8_t *out) { return ZOK_SM3(&any_session, nullptr, 0, out, &ignored); });

    refused("ZOK_HMAC_SM3", "no session", ZOK_ERR_SESSION,
            [=](uint8_t *out, uint32_t *) { return ZOK_HMAC_SM3(nullptr, text, 4, text, 4, out, 32); });
    for (uint32_t size : {33u, 64u, 0xFFFFFFFFu})
        refused("ZOK_HMAC_SM3", "output of length " + std::to_string(size), ZOK_ERR_ARGUMENT,
                [=](uint8_t *out, uint32_t *) {
                    return ZOK_HMAC_SM3(&any_session, text, 4, text, 4, out, size);
                });
    for (uint32_t size : {0xFFFFFF7Fu, 0xFFFFFFFFu})
        refused("ZOK_HMAC_SM3", "data of length " + std::to_string(size), ZOK_ERR_INTERNAL,
                [=](uint8_t *out, uint32_t *) {
                    return ZOK_HMAC_SM3(&any_session, text, size, text, 4, out, 32);
                });
    refused("ZOK_HMAC_SM3", "no memory", ZOK_ERR_INTERNAL, [=](uint8_t *out, uint32_t *) {
        FailingAlloc failing(1);
        return ZOK_HMAC_SM3(&any_session, text, 4, text, 4, out, 32);
    });
    answers("ZOK_HMAC_SM3", "nothing at all, of length 0", ZOK_OK, model_hmac_sm3(kNothing, kNothing),
            [](uint8_t *out) { return ZOK_HMAC_SM3(&any_session, nullptr, 0, nullptr, 0, out, 32); });

    refused("ZOK_KD_HMAC_SM3", "no session", ZOK_ERR_SESSION,
            [=](uint8_t *out, uint32_t *) { return ZOK_KD_HMAC_SM3(nullptr, text, 4, text, 4, out, 40); });
    refused("ZOK_KD_HMAC_SM3", "output of length 0", ZOK_OK, [=](uint8_t *out, uint32_t *) {
        return ZOK_KD_HMAC_SM3(&any_session, text, 4, text, 4, out, 0);
    });
    refused("ZOK_KD_HMAC_SM3", "data of length 2^32 - 1", ZOK_OK, [=](uint8_t *out, uint32_t *) {
        return ZOK_KD_HMAC_SM3(&any_session, text, 0xFFFFFFFFu, text, 4, out, 20);
    });
}

void add_selection() {
    const uint8_t *text = kText.data();
    for (uint32_t selector : {2u, 0x80000000u, 0xFFFFFFFFu}) {
        const std::string what = "selector " + std::to_string(selector);
        refused("hash_byte", what, 0, [=](uint8_t *out, uint32_t *) {
            const hash_msg message{selector, text, 0, 4};
            return hash_byte(&message, out);
        });
        bad("hash_mint_value", what, [=] {
            const hash_msg message{selector, text, 0, 4};
            GuardedRecord<mint> out;
            EXPECT_EQ(hash_mint_value(&message, nullptr, out.get()), -1);
            EXPECT_TRUE(out.unchanged());
        });
    }
    for (uint32_t selector : {HASH_ALG_SM3, HASH_ALG_SHA256})
        answers("hash_byte", "no data of length 0", 32,
                selector == HASH_ALG_SM3 ? model_sm3(kNothing) : model_sha256(kNothing), [=](uint8_t *out) {
                    const hash_msg message{selector, nullptr, 0, 0};
                    return hash_byte(&message, out);
                });
    bad("hash_mint_value", "modulus 0", [=] {
        const hash_msg message{HASH_ALG_SM3, text, 0, 4};
        const mint zero{};
        mint out{};
        EXPECT_EQ(hash_mint_value(&message, &zero, &out), 0);
        EXPECT_EQ(mint_to_hex(out), to_hex(model_sm3(kText)));
    });
}

void add_random() {
    bad("ecc_time", "no output", [] {
        FakeEntropy entropy(77);
        EXPECT_EQ(ecc_time(nullptr), 77u);
    });
    bad("gen_random", "no output of length 0", [] {
        FakeEntropy entropy;
        EXPECT_EQ(gen_random(nullptr, 0), 0);
        EXPECT_EQ(entropy.seedings(), 1u);
    });
    for (uint32_t len : {0u, 1u})
        bad("gen_random_number", "bound 0 as len " + std::to_string(len), [=] {
            mint bound{};
            bound.len = len;
            FakeEntropy entropy;
            GuardedRecord<mint> out;
            EXPECT_EQ(gen_random_number(out.get(), &bound), 0);
            EXPECT_TRUE(out.unchanged());
        });
    for (uint32_t len : {20u, 0x7FFFFFFFu, 0x80000000u})
        bad("gen_random_number", "bound of len " + std::to_string(len), [=] {
            mint bound{};
            for (uint32_t &word : bound.words) word = 3;
            bound.len = len;
            FakeEntropy entropy;
            GuardedRecord<mint> out;
            EXPECT_EQ(gen_random_number(out.get(), &bound), 0);
            EXPECT_TRUE(out.guards_intact());
            EXPECT_LE(entropy.seedings(), 1u + 3u);
        });
    refused("SDF_GenerateRandom", "no session", ZOK_ERR_SESSION,
            [](uint8_t *out, uint32_t *) { return SDF_GenerateRandom(nullptr, 32, out); });
    refused("SDF_GenerateRandom", "no output but a length", ZOK_ERR_ARGUMENT,
            [](uint8_t *, uint32_t *) { return SDF_GenerateRandom(&any_session, 1, nullptr); });
    bad("SDF_GenerateRandom", "no output of length 0", [] {
        FakeEntropy entropy;
        EXPECT_EQ(SDF_GenerateRandom(&any_session, 0, nullptr), ZOK_OK);
    });
}

const robustness::Rows sha256(add_sha256), hmac(add_hmac_sha256), sm3(add_sm3), selection(add_selection),
    random_calls(add_random);

}  // namespace

}  // namespace zokecc_test::hashes_test
