// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// What the encryption, decryption and ECDH calls allocate and free, and what
// they return and have written if any one of the allocations fails.
//
// KEPT: every multiplication of a point other than G keeps its digit buffer, which stays
// outstanding here, except in the hardened build. Nothing else ever is.
#include "tests/support/encryption_case.h"
#include "tests/support/failing_alloc.h"

namespace zokecc_test::encrypt_allocation_test {

namespace {

constexpr unsigned kNone = 0;
constexpr size_t kC1Bytes = 1 + 2 * kSmallL;

const ByteString kMessage = test_bytes(kSmallL, 91);

// One run: the result, the allocations tried and those never freed.
struct Outcome {
    uint32_t status;
    unsigned allocations;
    int outstanding;
    bool operator==(const Outcome &) const = default;
};
// The same, with the digit buffers left by the call, which are among the allocations.
Outcome with_digits(uint32_t status, unsigned allocations, int digit_buffers) {
    const unsigned buffers = static_cast<unsigned>(digit_buffers);
    return {status, allocations - buffers + digit_allocations(buffers), kept_digit_buffers(digit_buffers)};
}
std::ostream &operator<<(std::ostream &out, const Outcome &o) {
    return out << "status " << std::hex << o.status << std::dec << ", " << o.allocations << " allocations, "
               << o.outstanding << " outstanding";
}

// The outputs and arguments of a call, made before the counting starts.
struct Call {
    void *session = small_session();
    ECCrefPublicKey pub = small_public_key();
    ECCrefPrivateKey priv = small_private_key();
    GuardedRecord<ECCCipher> record;
    GuardedBuffer flat{256};
    GuardedBuffer plain{256};
    GuardedBuffer secret{64};
    uint32_t length = kUntouchedLength;

    bool nothing_written() const {
        return record.unchanged() && flat.untouched() && plain.untouched() && secret.untouched() &&
               length == kUntouchedLength;
    }
    // C1 of the nonce 77 and nothing after it.
    void expect_only_c1_in_the_record() {
        const TinyPoint C1 = small_multiple(77);
        expect_cipher(record, {small_bytes(C1.x), small_bytes(C1.y), {}, {}});
        EXPECT_EQ(length, kUntouchedLength);
    }
    void expect_only_c1_in_the_flat_area() const {
        const TinyPoint C1 = small_multiple(77);
        EXPECT_EQ(to_hex(flat.first(kC1Bytes)), to_hex(joined({{4}, small_bytes(C1.x), small_bytes(C1.y)})));
        EXPECT_TRUE(flat.untouched_from(kC1Bytes));
        EXPECT_EQ(length, kUntouchedLength);
    }
};

template <class Function>
Outcome run(Call &call, unsigned fail_at, Function function) {
    FakeEntropy entropy;
    queue_numbers(entropy, {77});
    FailingAlloc counter(fail_at);
    const uint32_t status = function(call);
    return {status, counter.allocations, counter.outstanding};
}

template <uint32_t Algorithm>
uint32_t encrypt_record(Call &call) {
    return encrypt(call.session, Algorithm, call.pub, kMessage, call.record.get());
}

uint32_t encrypt_flat(Call &call) {
    return flat_encrypt(call.session, call.pub, kMessage, call.flat.data(), &call.length);
}

template <uint32_t Algorithm>
uint32_t decrypt_record(Call &call) {
    const TinyPoint C1 = small_multiple(77);
    const ECCCipher cipher = Algorithm == kSm2
                                 ? cipher_record(small_encryption(HASH_ALG_SM3, 77, kMessage))
                                 : cipher_record(small_bytes(C1.x), small_bytes(C1.y), small_bytes(400), {});
    return SDF_ExternalDecrypt_ECC(call.session, Algorithm, &call.priv, &cipher, call.plain.data(),
                                   &call.length);
}

uint32_t decrypt_flat(Call &call) {
    const ByteString cipher = small_encryption(HASH_ALG_SM3, 77, kMessage).flat();
    return ZOK_ExternalDecrypt_ECC(call.session, &call.priv, cipher.data(),
                                   static_cast<uint32_t>(cipher.size()), call.plain.data(), &call.length);
}

uint32_t agree(Call &call) {
    return ZOK_ExternalEcdhKeyAgreement(call.session, &call.priv, &call.pub, call.secret.data());
}

// The larger of the two buffers that an encryption of `length` bytes on the small curve allocates.
size_t larger_buffer(int32_t length) {
    Call call;
    const uint8_t message = 0;
    FakeEntropy entropy;
    FailingAlloc failing(2);
    // The message is not read before both are allocated.
    EXPECT_EQ(
        ZOK_ExternalEncrytp_ECC(call.session, &call.pub, &message, length, call.flat.data(), &call.length),
        ZOK_ERR_INTERNAL);
    EXPECT_EQ(failing.allocations, 2u);
    EXPECT_EQ(failing.outstanding, 0);
    EXPECT_EQ(entropy.number_calls, 0u);
    EXPECT_TRUE(call.nothing_written());
    return failing.largest_size;
}

}  // namespace

TEST(SdfExternalEncrytpEccMemory, KeptSm2KeepsTheDigitsOfBothMultiplications) {
    Call call;
    EXPECT_EQ(run(call, kNone, encrypt_record<kSm2>), with_digits(ZOK_OK, 2, 2));
}

TEST(SdfExternalEncrytpEccMemory, Sm2WithoutMemoryReturnsMinusOneAfterC1) {
    for (unsigned fail_at : {1u, 2u}) {
        Call call;
        EXPECT_EQ(run(call, fail_at, encrypt_record<kSm2>),
                  with_digits(ZOK_ERR_INTERNAL, fail_at, static_cast<int>(fail_at) - 1));
        call.expect_only_c1_in_the_record();
    }
}

TEST(SdfExternalEncrytpEccMemory, KeptProductKeepsTheDigitsOfItsMultiplication) {
    Call call;
    EXPECT_EQ(run(call, kNone, encrypt_record<kProduct>), with_digits(ZOK_OK, 1, 1));
}

TEST(SdfExternalDecryptEccMemory, KeptSm2KeepsTheDigitsOfBothMultiplications) {
    Call call;
    EXPECT_EQ(run(call, kNone, decrypt_record<kSm2>), with_digits(ZOK_OK, 2, 2));
}

TEST(ZokExternalEncrytpEccMemory, KeptOnlyTheDigitsStayBehind) {
    Call call;
    EXPECT_EQ(run(call, kNone, encrypt_flat), with_digits(ZOK_OK, 4, 2));
}

TEST(ZokExternalEncrytpEccMemory, WithoutDigitsReturnsMinusOneAfterC1AndFreesTheBuffers) {
    for (unsigned fail_at : {3u, 4u}) {
        Call call;
        EXPECT_EQ(run(call, fail_at, encrypt_flat),
                  with_digits(ZOK_ERR_INTERNAL, fail_at, static_cast<int>(fail_at) - 3));
        call.expect_only_c1_in_the_flat_area();
    }
}

TEST(ZokExternalEncrytpEccMemory, BuffersAreFreedOnEveryRefusal) {
    Call call;
    call.pub = small_public_key(346, 0);
    EXPECT_EQ(run(call, kNone, encrypt_flat), with_digits(ZOK_ERR_ARGUMENT, 2, 0));
    call.pub = small_public_key();
    call.session = small_session(kUnknownSelector);
    EXPECT_EQ(run(call, kNone, encrypt_flat), with_digits(ZOK_ERR_ARGUMENT, 2, 0));
    Session without_h(small_curve_with_order(kSmallP + 2));
    call.session = without_h.handle();
    // The one digit of h = 0 is never freed, either.
    EXPECT_EQ(run(call, kNone, encrypt_flat), with_digits(ZOK_ERR_ARGUMENT, 3, 1));
}

TEST(ZokExternalEncrytpEccMemory, KeptEveryRoundKeepsItsDigits) {
    const uint32_t zero = nonce_of_zero_stream(HASH_ALG_SM3), good = nonce_of_nonzero_stream(HASH_ALG_SM3);
    Call call;
    const ByteString message = {0x3C};
    FakeEntropy entropy;
    queue_numbers(entropy, {zero, zero, good});
    FailingAlloc counter;
    EXPECT_EQ(flat_encrypt(call.session, call.pub, message, call.flat.data(), &call.length), ZOK_OK);
    EXPECT_EQ(counter.allocations, 2u + 3 * 2);
    EXPECT_EQ(counter.outstanding, kept_digit_buffers(3 * 2));
}

TEST(ZokExternalEncrytpEccMemory, BuffersHoldTheWholeDigestsOfEveryStepOrTheCheckInput) {
    // Steps of 20 bytes are filled with digests of 32, and one byte more is allocated: more than
    // the 40 bytes of two coordinates, the message and one byte from 80 bytes on.
    EXPECT_EQ(larger_buffer(100), 160u + 1);
    EXPECT_EQ(larger_buffer(119), 160u + 1);
    EXPECT_EQ(larger_buffer(200), 320u + 1);
    EXPECT_EQ(larger_buffer(65536), 3276u * 32 + 1);
    EXPECT_EQ(larger_buffer(19), 19u + 40 + 1);
    EXPECT_EQ(larger_buffer(60), 60u + 40 + 1);
}

TEST(ZokExternalDecryptEccMemory, KeptOnlyTheDigitsStayBehind) {
    Call call;
    EXPECT_EQ(run(call, kNone, decrypt_flat), with_digits(ZOK_OK, 4, 2));
}

TEST(ZokExternalDecryptEccMemory, BuffersAreFreedOnEveryRefusalAndMismatch) {
    Call call;
    call.session = small_session(kUnknownSelector);
    EXPECT_EQ(run(call, kNone, decrypt_flat), with_digits(ZOK_ERR_ARGUMENT, 4, 2));
    call.session = small_session(HASH_ALG_SHA256);
    EXPECT_EQ(run(call, kNone, decrypt_flat), with_digits(ZOK_ERR_INTERNAL, 4, 2));
    Session without_h(small_curve_with_order(kSmallP + 2));
    call.session = without_h.handle();
    EXPECT_EQ(run(call, kNone, decrypt_flat), with_digits(ZOK_ERR_ARGUMENT, 3, 1));
    call.session = small_session();
    call.priv = small_private_key(kSmallN);
    EXPECT_EQ(run(call, kNone, decrypt_flat), with_digits(ZOK_ERR_ARGUMENT, 0, 0));
}

TEST(ZokExternalEcdhKeyAgreementMemory, KeptEveryCallKeepsItsDigits) {
    Call call;
    EXPECT_EQ(run(call, kNone, agree), with_digits(ZOK_OK, 1, 1));
}

}  // namespace zokecc_test::encrypt_allocation_test
