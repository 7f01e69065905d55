// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Decryption of arbitrary input, by every call: both generations give the same bytes, those that the
// standard's key stream yields, and decryption inverts encryption.
#include "fuzz/both_curves.h"
#include "tests/mint/kept_rules.h"
#include "tests/support/kdf_model.h"

using namespace zokecc_fuzz;

namespace {

constexpr uint32_t kUntouched = 0xDECADE01u;

struct Answer {
    uint32_t status;
    bool written;
    ByteString plain;
};

Answer answer(uint32_t status, uint32_t length, const GuardedBuffer &out) {
    const bool written = length != kUntouched;
    check(!written || length <= out.size(), "a length within the buffer");
    check(out.untouched_from(written ? length : 0), "nothing outside the plaintext");
    return {status, written, out.first(written ? length : 0)};
}

// sm2_Decry and ZOK_ExternalDecrypt_ECC, in buffers of the exact size.
Answer flat_session(void *session, const ByteString &d, const ByteString &cipher) {
    const ECCrefPrivateKey key = private_record(d);
    GuardedBuffer out(cipher.size());
    uint32_t length = kUntouched;
    const uint32_t status =
        ZOK_ExternalDecrypt_ECC(session, &key, cipher.data(), length_of(cipher), out.data(), &length);
    return answer(status, length, out);
}
Answer flat_legacy(ByteString d, ByteString cipher, uint32_t selector) {
    const ecc_scalar key{d.data(), length_of(d)};
    const sm3_msg in{cipher.data(), 0, length_of(cipher)};
    GuardedBuffer out(cipher.size());
    sm3_msg plain{out.data(), kUntouched, kUntouched};
    const int32_t status = sm2_Decry(&key, &in, &plain, selector);
    return answer(static_cast<uint32_t>(status), plain.len_low, out);
}

ECCCipher cipher_record(const ByteString &flat, size_t L) {
    ECCCipher out{};
    auto part = [&flat](size_t from, size_t count, uint8_t *to) {
        std::copy_n(flat.begin() + static_cast<std::ptrdiff_t>(from), count, to);
    };
    part(1, L, out.x);
    part(1 + L, L, out.y);
    part(1 + 2 * L, L, out.C);
    part(1 + 3 * L, 32, out.M);
    return out;
}
Answer record_session(void *session, uint32_t algorithm, const ByteString &d, const ECCCipher &cipher) {
    const ECCrefPrivateKey key = private_record(d);
    GuardedBuffer out(64);
    uint32_t length = kUntouched;
    const uint32_t status = SDF_ExternalDecrypt_ECC(session, algorithm, &key, &cipher, out.data(), &length);
    return answer(status, length, out);
}

ByteString slice(const ByteString &bytes, size_t from, size_t count) {
    const auto first = bytes.begin() + static_cast<std::ptrdiff_t>(from);
    return {first, first + static_cast<std::ptrdiff_t>(count)};
}

void check_sm2(const Curve &c, uint32_t selector, const ByteString &d, const ByteString &cipher) {
    const size_t L = c.byte_len;
    void *session = session_of(c, selector);
    const Answer got = flat_session(session, d, cipher);
    const Answer legacy = flat_legacy(d, cipher, selector);
    check(got.written == legacy.written && got.plain == legacy.plain, "both generations write the same");
    check(legacy.written || legacy.status == 0xFFFFFFFFu, "the older call fails with -1");
    check(got.written || got.status == ZOK_ERR_ARGUMENT, "a session refuses an argument");
    if (!got.written) return;

    const size_t m = cipher.size() - 2 * L - 33;
    const Coordinates shared = product(c, d, {slice(cipher, 1, L), slice(cipher, 1 + L, L)});
    ByteString plain = standard_stream(selector, joined({shared.x, shared.y}), m);
    for (size_t i = 0; i < m; ++i) plain[i] = static_cast<uint8_t>(plain[i] ^ cipher[1 + 2 * L + i]);
    check_bytes(got.plain, plain, "the plaintext");
    const ByteString value = selected_digest(selector, joined({shared.x, plain, shared.y}));
    const bool fits = value == slice(cipher, 1 + 2 * L + m, 32);
    check(got.status == (fits ? ZOK_OK : ZOK_ERR_INTERNAL), "the check value decides");
    const bool legacy_fits = value == slice(cipher, 1 + 2 * L, 32);
    check(legacy.status == (legacy_fits ? 0 : 0xFFFFFFFFu), "KEPT: compared at the start of C2");
    if (m != L) return;
    const Answer record = record_session(session, ZOK_ALG_SM2_ENCRYPT, d, cipher_record(cipher, L));
    check(record.status == got.status && record.plain == got.plain, "the record form agrees");
}

// message * x2 modulo p, then divided by the deployed inverse.
void check_product(const Curve &c, const ByteString &d, const ByteString &numbers) {
    const size_t L = c.byte_len, W = 4 * c.p.len;
    const ECCCipher cipher = cipher_record(joined({{4}, numbers, ByteString(32)}), L);
    const Answer got = record_session(session_of(c, 0), ZOK_ALG_MULTIPLICATIVE, d, cipher);
    const Natural D(number_of(d)), P(c.p);
    check(got.status == (D < Natural(c.n) ? ZOK_OK : ZOK_ERR_ARGUMENT), "d decides");
    if (got.status != ZOK_OK) return;
    const Coordinates shared = product(c, d, {slice(numbers, 0, L), slice(numbers, L, L)});
    const Natural inverse = kept_inverse(Natural(number_of(shared.x)), P);
    const Natural message = mod_mul(Natural(number_of(slice(numbers, 2 * L, L))) % P, inverse % P, P);
    check(got.plain.empty() || got.plain[0] != 0, "no leading zero byte");
    check(Natural(number_of(got.plain)) == message, "the message of the multiplicative scheme");
    if (W != L) return;
    ByteString key = d, octets = joined({{4}, numbers});
    const ecc_scalar scalar{key.data(), length_of(key)};
    GuardedBuffer out(L + 1);
    const int32_t length = Eces_Decry(&scalar, octets.data(), static_cast<uint32_t>(3 * W), out.data());
    check(length >= 0 && out.first(static_cast<size_t>(length)) == got.plain, "Eces_Decry agrees");
}

// Any length in the record, even one that fits no curve.
void check_eces_lengths(FuzzInput &input, const Curve &c) {
    ByteString d = scalar_bytes(input, c);
    const uint32_t cipher_len = input.below(300);
    const ByteString octets = input.bytes(cipher_len + 1);
    const ecc_scalar scalar{d.data(), length_of(d)};
    GuardedBuffer out(c.byte_len + 1);
    const int32_t length = Eces_Decry(&scalar, octets.data(), cipher_len, out.data());
    check(length >= -1 && length <= static_cast<int32_t>(c.byte_len), "up to L bytes");
    check(out.untouched_from(length < 0 ? 0 : static_cast<size_t>(length) + 1), "and one zero byte");
    check(cipher_len / 3 <= 76 || length == -1, "numbers that are too wide are refused");
}

void check_deformat(FuzzInput &input, const Curve &c) {
    const size_t L = c.byte_len, size = input.below(40);
    const ByteString block = input.bytes(size);
    GuardedBuffer out(L - 2);
    uint32_t length = kUntouched;
    const int32_t status = eces_deformat(block.data(), length_of(block), out.data(), &length);
    const auto zero = std::find(block.begin(), block.end(), 0);
    const bool refused = size >= L || (size == L - 1 && zero == block.end());
    check(status == (refused ? 1 : 0), "eces_deformat");
    if (refused) {
        check(out.untouched() && length == kUntouched, "nothing written");
    } else if (size == L - 1) {
        const ByteString want(zero + 1, block.end());
        check(length == want.size() && out.first(length) == want, "the bytes after the zero");
        check(out.untouched_from(length), "and nothing else");
    } else {
        check(length == L - 2 && slice(out.all(), L - 2 - size, size) == block, "right-aligned");
    }
}

// A ciphertext of either call, intact or with some bytes changed.
void check_round_trip(FuzzInput &input, const Curve &c) {
    const uint32_t selector = input.below(2);
    const ByteString d = fixed_bytes(input.reduced(c.n), c.byte_len),
                     message = input.bytes(1 + input.below(70));
    const Coordinates Q = multiple_of_G(c, number_of(d));
    const mint k = input.reduced(c.n);
    FakeEntropy entropy;
    entropy.queued_numbers.assign(2, k);
    ByteString cipher(message.size() + 2 * c.byte_len + 33), again = cipher, text = message;
    uint32_t length = kUntouched;
    const ECCrefPublicKey pub = public_record(Q);
    const uint32_t status =
        ZOK_ExternalEncrytp_ECC(session_of(c, selector), &pub, message.data(),
                                static_cast<int32_t>(message.size()), cipher.data(), &length);
    if (entropy.number_calls > 1) return;  // a key stream of zeros: another nonce
    const ecc_point_bytes recipient = point_record(Q);
    const sm3_msg in{text.data(), 0, length_of(text)};
    sm3_msg out{again.data(), 0, 0};
    const int32_t legacy = sm2_Encry(&recipient, &in, &out, selector);
    check((status == ZOK_OK) == (legacy == 0), "both generations encrypt");
    if (status != ZOK_OK) return;
    check(length == cipher.size() && out.len_low == length, "the length of a ciphertext");
    check_bytes(again, cipher, "the same ciphertext for the same nonce");

    const Coordinates C1{slice(cipher, 1, c.byte_len), slice(cipher, 1 + c.byte_len, c.byte_len)};
    const Coordinates sent = product(c, fixed_bytes(k, c.byte_len), Q), received = product(c, d, C1);
    if (sent.x == received.x && sent.y == received.y) {
        const Answer back = flat_session(session_of(c, selector), d, cipher);
        check(back.status == ZOK_OK && back.plain == message, "decryption inverts encryption");
    }
    for (uint32_t changes = input.below(4); changes > 0; --changes) {
        uint8_t &changed = cipher[input.word() % cipher.size()];
        changed = static_cast<uint8_t>(changed ^ input.byte());
    }
    check_sm2(c, selector, d, cipher);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    const uint32_t what = input.below(5);
    const Curve &c = both_curve(input);
    AllocLedger ledger(16);
    if (what == 0) {
        const uint32_t selector = input.below(3);
        const ByteString d = scalar_bytes(input, c);
        const Coordinates C1 = point_bytes(input, c);
        const uint8_t first = input.below(8) == 7 ? input.byte() : 4;
        const ByteString tail = input.flag() ? input.bytes(c.byte_len + 32) : input.rest(200);
        check_sm2(c, selector, d, joined({{first}, C1.x, C1.y, tail}));
    } else if (what == 1) {
        const ByteString d = scalar_bytes(input, c);
        const Coordinates C1 = point_bytes(input, c);
        check_product(c, d, joined({C1.x, C1.y, input.bytes(c.byte_len)}));
    } else if (what == 2) {
        check_eces_lengths(input, c);
        check_deformat(input, c);
    } else if (what == 3) {
        const ByteString d = scalar_bytes(input, c);
        check_sm2(c, input.below(3), d, input.rest(200));
    } else {
        check_round_trip(input, c);
    }
    return 0;
}
