// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Digests, MACs and derived keys, compared with a second, simple implementation of the hashes; exactly
// the documented bytes are written.
#include <zokecc/hash.h>

#include "fuzz/alloc_ledger.h"
#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_input.h"
#include "tests/support/fake_entropy.h"
#include "tests/support/model_hash.h"

using namespace zokecc_fuzz;

namespace {

int any_session = 0;  // the hash calls only test the handle for null

uint32_t length_of(const ByteString &bytes) { return static_cast<uint32_t>(bytes.size()); }

void check_output(const GuardedBuffer &out, const ByteString &want, const char *what) {
    check_bytes(out.first(want.size()), want, what);
    check(out.untouched_from(want.size()), what);
}

void check_digests(FuzzInput &input) {
    const uint32_t selector = input.below(3);
    const ByteString text = input.rest(400);
    const ByteString digests[] = {model_sm3(text), model_sha256(text)};
    GuardedBuffer sha(32), sm3(32), selected(32);
    check(mhash_sha256(text.data(), length_of(text), sha.data()) == 0, "mhash_sha256");
    check_output(sha, digests[1], "mhash_sha256");
    ByteString copy = text;
    const sm3_msg message{copy.data(), 0, length_of(copy)};
    check(sm3_hash(&message, sm3.data()) == 0, "sm3_hash");
    check_output(sm3, digests[0], "sm3_hash");

    const hash_msg choice{selector, text.data(), 0, length_of(text)};
    check(hash_byte(&choice, selected.data()) == (selector < 2 ? 32 : 0), "hash_byte");
    if (selector == 2) {
        check(selected.untouched(), "an unknown hash writes nothing");
        return;
    }
    check_output(selected, digests[selector], "hash_byte");
    mint modulus = input.trimmed(10), value{};
    if (Natural(modulus).is_zero()) modulus = Natural(1).to_mint();
    check(hash_mint_value(&choice, &modulus, &value) == 0, "hash_mint_value");
    check(Natural(value) == Natural::from_hex(to_hex(digests[selector])) % Natural(modulus), "its value");
}

// The chain of MACs: each over the 32 bytes before it.
ByteString chain(bool sm3, const ByteString &key, ByteString text, size_t length) {
    ByteString out;
    while (out.size() < length) {
        text = sm3 ? model_hmac_sm3(key, text) : model_hmac_sha256(key, text);
        out.insert(out.end(), text.begin(), text.end());
    }
    return out;
}

void check_codes(FuzzInput &input) {
    const ByteString key = input.bytes(input.below(200));
    const uint32_t length = input.below(100);
    const ByteString text = input.rest(300);
    const int32_t key_len = static_cast<int32_t>(key.size()), text_len = static_cast<int32_t>(text.size());

    GuardedBuffer sha(length), sm3(length);
    ByteString want = model_hmac_sha256(key, text);
    want.resize(length);  // KEPT: zero bytes after the MAC
    check(mhmac_sha256(text.data(), text_len, key.data(), key_len, sha.data(), length) == 0, "mhmac_sha256");
    check_output(sha, want, "mhmac_sha256");

    const uint32_t status = ZOK_HMAC_SM3(&any_session, text.data(), length_of(text), key.data(),
                                         length_of(key), sm3.data(), length);
    check(status == (length > 32 ? ZOK_ERR_ARGUMENT : ZOK_OK), "ZOK_HMAC_SM3");
    ByteString code = model_hmac_sm3(key, text);
    if (length > 32) code.clear();
    code.resize(length > 32 ? 0 : length);
    check_output(sm3, code, "ZOK_HMAC_SM3");
}

void check_derivation(FuzzInput &input) {
    const ByteString key = input.bytes(input.below(80));
    const uint32_t length = input.below(200);
    const ByteString text = input.rest(150);
    // KEPT: with SHA-256 the last step writes the whole length if that is not a multiple of 32.
    const uint32_t whole = length / 32 * 32, rest = length - whole;
    ByteString want = chain(false, key, text, length);
    want.resize(rest == 0 ? length : std::min(length, whole + 32));
    if (rest != 0 && whole != 0) {
        want = chain(false, key, text, length);
        want.resize(whole + length);
    }
    GuardedBuffer sha(whole + length), sm3(length);
    uint32_t out_len = length;
    check(ZOK_KdHmacSha256(&any_session, key.data(), static_cast<int32_t>(key.size()), text.data(),
                           static_cast<int32_t>(text.size()), sha.data(), &out_len) == ZOK_OK,
          "ZOK_KdHmacSha256");
    check(out_len == length, "the length stays");
    check_output(sha, want, "ZOK_KdHmacSha256");

    check(ZOK_KD_HMAC_SM3(&any_session, text.data(), length_of(text), key.data(), length_of(key), sm3.data(),
                          length) == ZOK_OK,
          "ZOK_KD_HMAC_SM3");
    ByteString exact = chain(true, key, text, length);
    exact.resize(length);
    check_output(sm3, exact, "ZOK_KD_HMAC_SM3");
}

// Two runs from the same clock and counter give the same bytes; a number is below its bound.
void check_random(FuzzInput &input) {
    const uint32_t length = input.below(120), now = input.word();
    ByteString first(length), second(length);
    for (ByteString *out : {&first, &second}) {
        FakeEntropy entropy(now);
        gen_random(out->data(), length);
        check(entropy.seedings() == 1 + (length + 31) / 32, "one seeding per started block");
    }
    check_bytes(first, second, "the same bytes from the same seed");
    FakeEntropy entropy(now);
    const mint bound = input.trimmed(MINT_WORDS);
    mint out = input.number(3);
    const mint before = out;
    gen_random_number(&out, &bound);
    check(Natural(bound).is_zero() ? same_record(out, before) : Natural(out) < Natural(bound), "the bound");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    AllocLedger ledger;
    switch (input.below(4)) {
    case 0: check_digests(input); break;
    case 1: check_codes(input); break;
    case 2: check_derivation(input); break;
    default: check_random(input); break;
    }
    return 0;
}
