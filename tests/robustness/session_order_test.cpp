// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Unusable sessions: no curve, no order or modulus, an order above the modulus, an unknown
// hash. And pairs of faults, with the one that takes precedence.
#include <map>

#include "tests/robustness/session_rows.h"

namespace zokecc_test::session_order_test {

using namespace robustness;

namespace {

// From a device, with a record of an unknown type, and without memory for the record.
void *session_without_curve(int kind) {
    AllocPause prepares_the_row;
    static const CurvelessSession device;
    static const CurvePara good = small_curve().record(HASH_ALG_SM3), unknown = [] {
        CurvePara out = good;
        out.type = 9;
        return out;
    }();
    static const AnySession unknown_type(unknown);
    static const std::unique_ptr<AnySession> no_memory = [] {
        FailingAlloc second(2);
        return std::make_unique<AnySession>(good);
    }();
    EXPECT_TRUE(unknown_type.handle() != nullptr && no_memory->handle() != nullptr);
    return kind == 0 ? device.handle() : kind == 1 ? unknown_type.handle() : no_memory->handle();
}

// The small curve with another order and modulus.
void *session_with(uint32_t n, uint32_t p, uint32_t selector = HASH_ALG_SM3) {
    AllocPause prepares_the_row;
    static std::map<std::vector<uint32_t>, std::unique_ptr<Session>> sessions;
    std::unique_ptr<Session> &slot = sessions[{n, p, selector}];
    if (!slot) slot = std::make_unique<Session>(small_variant(p, 2, 25, {false, 2, 365}, n), selector);
    return slot->handle();
}
void *session_without_order() { return session_with(0, kSmallP); }
void *session_without_h() { return session_with(kSmallP + 1, kSmallP); }  // p / n is zero

Spoil both(const Spoil &first, const Spoil &second) {
    return [=](SessionArguments &a) {
        first(a);
        second(a);
    };
}
Spoil in(void *(*session)()) {
    return [=](SessionArguments &a) { a.session = session(); };
}
Spoil key_of(uint32_t d) {
    return [=](SessionArguments &a) { a.private_record = small_private_key(d); };
}
template <class Field, class Value>
Spoil set(Field SessionArguments::*field, Value value) {
    return [=](SessionArguments &a) { a.*field = value; };
}

void unknown_algorithms(SessionArguments &a) {
    a.key_algorithm = a.algorithm = kUnknownAlgorithm;
    a.encryption = 0x20100;
}
void wide_keys(SessionArguments &a) { a.public_record.bits = a.private_record.bits = 520; }
void no_check(SessionArguments &a) {
    a.cipher_record.M[0] ^= 1;
    a.flat_bytes.back() ^= 1;
}
void unknown_hash(SessionArguments &a) { a.session = small_session(kUnknownSelector); }

// A call's result in a session without a curve.
void without_curve(const NamedSessionCall &call, const std::string &input, const Spoil &spoil) {
    uint32_t sm2 = ZOK_ERR_ARGUMENT, other = ZOK_ERR_ARGUMENT;
    if (call.call == kSign.call) sm2 = other = ZOK_ERR_SIGN;
    if (call.call == kVerify.call) sm2 = other = ZOK_ERR_VERIFY;
    if (call.call == kSignHash.call) other = ZOK_ERR_SIGN;
    if (call.call == kVerifyHash.call) other = ZOK_ERR_VERIFY;
    for (int kind : {0, 1, 2}) {
        const Spoil there =
            both(spoil, [=](SessionArguments &a) { a.session = session_without_curve(kind); });
        refuses(call, sm2, input, there, kSm2Only, kAnyMemory);
        refuses(call, other, input, there, kOtherOnly, kAnyMemory);
    }
}

void add_without_curve() {
    for (const NamedSessionCall &call : all_session_calls())
        for (uint32_t d : {0u, 1u, kSmallD})
            without_curve(call, "no curve, d = " + std::to_string(d), key_of(d));
    for (uint32_t bits : {0u, 256u})
        without_curve(kGenerate, "no curve, size", set(&SessionArguments::key_bits, bits));
    without_curve(kVerify, "no curve, r and s of zero",
                  set(&SessionArguments::numbers, small_signature(0, 0)));
    for (uint32_t size : {0u, 1u}) {
        without_curve(kEncrypt, "no curve, message", set(&SessionArguments::message_len, size));
        if (size > 0)
            without_curve(kFlatEncrypt, "no curve, message", set(&SessionArguments::message_len, size));
    }
    without_curve(kEncrypt, "no curve, no message of no bytes", [](SessionArguments &a) {
        a.message = nullptr;
        a.message_len = 0;
    });
    refuses(kEncrypt, ZOK_ERR_INTERNAL, "no curve, unknown identifier",
            both([](SessionArguments &a) { a.session = session_without_curve(0); }, unknown_algorithms));
}

void add_order_zero() {
    const Spoil there = in(session_without_order);
    for (const NamedSessionCall &call :
         {kGenerate, kTemporary[0], kTemporary[1], kTemporary[2], kTemporary[3]})
        refuses(call, ZOK_ERR_ARGUMENT, "order zero", there);
    refuses(kGenerate, ZOK_ERR_ARGUMENT, "order zero, unknown algorithm", both(there, unknown_algorithms));
    refuses(kGenerate, ZOK_ERR_ARGUMENT, "order zero, size",
            both(there, set(&SessionArguments::key_bits, 152u)));
    for (uint32_t d : {0u, 1u, kSmallD}) refuses(kSign, ZOK_ERR_SIGN, "order zero", both(there, key_of(d)));
    for (uint32_t r : {0u, 1u, 2u})
        for (uint32_t s : {0u, 1u, 2u})
            refuses(kVerify, ZOK_ERR_VERIFY, "order zero", both(there, [=](SessionArguments &a) {
                        a.numbers = small_signature(r, s);
                        a.use_digest(small_bytes(r));
                    }));
    for (const NamedSessionCall &call : {kEncrypt, kFlatEncrypt})
        refuses(call, ZOK_ERR_ARGUMENT, "order zero", there, kBoth, kAnyMemory);
    for (const NamedSessionCall &call : {kDecrypt, kFlatDecrypt, kEcdh})
        refuses(call, ZOK_ERR_ARGUMENT, "order zero", both(there, key_of(0)));
}

void add_modulus_zero() {
    const Spoil there = [](SessionArguments &a) { a.session = session_with(kSmallN, 0); };
    for (const NamedSessionCall &call :
         {kGenerate, kTemporary[0], kTemporary[1], kTemporary[2], kTemporary[3]})
        refuses(call, ZOK_ERR_ARGUMENT, "modulus zero", there);
    for (const NamedSessionCall &call : {kEncrypt, kFlatEncrypt})
        refuses(call, ZOK_ERR_ARGUMENT, "modulus zero", there, kBoth, kAnyMemory);
}

void add_unknown_hash() {
    for (const NamedSessionCall &call : {kSignHash, kVerifyHash, kEncrypt})
        refuses(call, ZOK_ERR_ARGUMENT, "an unknown hash", unknown_hash, kSm2Only, kAnyMemory);
    refuses(kFlatEncrypt, ZOK_ERR_ARGUMENT, "an unknown hash", unknown_hash, kBoth, {.allocations = 2});
    refuses(kFlatEncrypt, ZOK_ERR_ARGUMENT, "an unknown hash, 19 bytes",
            both(unknown_hash, set(&SessionArguments::message_len, 19u)), kBoth, {.allocations = 2});
    for (const NamedSessionCall &call : {kSignHash, kVerifyHash})
        refuses(call, ZOK_ERR_INTERNAL, "an unknown hash for ECDSA", unknown_hash, kOtherOnly);
    for (uint32_t selector : {kUnknownSelector, 0xFFFFFFFFu})
        refuses(kUserInfo, ZOK_ERR_INTERNAL, "an unknown hash",
                [=](SessionArguments &a) { a.session = small_session(selector); }, kBoth, {.allocations = 1});
    // With and without a remainder step of the derivation, whose zero key stream is refused.
    for (const NamedSessionCall &call : {kDecrypt, kFlatDecrypt})
        for (size_t size : {kSmallL, size_t{1}, size_t{19}, size_t{21}, size_t{40}, size_t{70}}) {
            if (call.call == kDecrypt.call && size != kSmallL) continue;
            bad(call.name, "an unknown hash", [=, run = call.call] {
                SessionArguments arguments;
                arguments.flat_bytes = small_encryption(HASH_ALG_SM3, 77, test_bytes(size)).flat();
                arguments.flat = arguments.flat_bytes.data();
                arguments.flat_len = static_cast<uint32_t>(arguments.flat_bytes.size());
                unknown_hash(arguments);
                EXPECT_EQ((arguments.*run)(), ZOK_ERR_ARGUMENT);
                EXPECT_TRUE(arguments.nothing_written());
            });
        }
}

// Of two faults the first takes precedence.
void add_pairs() {
    auto encryption = [](uint32_t status, const char *input, const Spoil &spoil) {
        refuses(kEncrypt, status, input, both(spoil, unknown_algorithms));
    };
    encryption(ZOK_ERR_ARGUMENT, "no key, unknown identifier", set(&SessionArguments::pub, nullptr));
    encryption(ZOK_ERR_ARGUMENT, "a wide key, unknown identifier", wide_keys);
    for (auto [x, y] : {std::pair{0u, 763u}, {346u, 0u}})
        encryption(ZOK_ERR_ARGUMENT, "zero coordinate, unknown identifier",
                   set(&SessionArguments::public_record, small_public_key(x, y)));
    encryption(ZOK_ERR_INTERNAL, "unknown identifier, length", set(&SessionArguments::message_len, 16u));
    encryption(ZOK_ERR_INTERNAL, "unknown identifier, no message", set(&SessionArguments::message, nullptr));
    encryption(ZOK_ERR_INTERNAL, "unknown identifier, no output",
               set(&SessionArguments::cipher_out, nullptr));
    encryption(ZOK_ERR_INTERNAL, "unknown identifier, no pointer and a length", [](SessionArguments &a) {
        a.message = nullptr;
        a.message_len = 3;
        a.cipher_out = nullptr;
    });
    encryption(ZOK_ERR_INTERNAL, "unknown identifier, no order", in(session_without_order));
    encryption(ZOK_ERR_INTERNAL, "unknown identifier, no h", in(session_without_h));
    encryption(ZOK_ERR_INTERNAL, "unknown identifier, unknown hash", unknown_hash);
    // Also with a quotient h of zero, which is detected only after C1 was written.
    const Spoil no_h_no_hash = [](SessionArguments &a) {
        a.session = session_with(kSmallP + 1, kSmallP, kUnknownSelector);
    };
    refuses(kEncrypt, ZOK_ERR_ARGUMENT, "unknown hash, no h", no_h_no_hash, kSm2Only);
    refuses(kEncrypt, ZOK_ERR_ARGUMENT, "length, no h",
            both(in(session_without_h), set(&SessionArguments::message_len, 16u)));
    refuses(kFlatEncrypt, ZOK_ERR_ARGUMENT, "unknown hash, no h", no_h_no_hash, kBoth, kAnyMemory);
    refuses(kFlatEncrypt, ZOK_ERR_ARGUMENT, "zero coordinate, no h",
            both(in(session_without_h), set(&SessionArguments::public_record, small_public_key(0, 763))),
            kBoth, kAnyMemory);

    auto decryption = [](uint32_t status, const char *input, const Spoil &spoil) {
        refuses(kDecrypt, status, input, both(spoil, unknown_algorithms));
    };
    decryption(ZOK_ERR_ARGUMENT, "no key, unknown identifier", set(&SessionArguments::priv, nullptr));
    decryption(ZOK_ERR_ARGUMENT, "a wide key, unknown identifier", wide_keys);
    decryption(ZOK_ERR_ARGUMENT, "d = n, unknown identifier", key_of(kSmallN));
    decryption(ZOK_ERR_INTERNAL, "unknown identifier, no ciphertext",
               set(&SessionArguments::cipher, nullptr));
    decryption(ZOK_ERR_INTERNAL, "unknown identifier, no output", set(&SessionArguments::out, nullptr));
    decryption(ZOK_ERR_INTERNAL, "unknown identifier, no length", set(&SessionArguments::out_len, nullptr));
    // Its order is even: in the hardened build there are no private numbers.
    decryption(kHardened ? ZOK_ERR_ARGUMENT : ZOK_ERR_INTERNAL, "unknown identifier, no h",
               in(session_without_h));
    for (const NamedSessionCall &call : {kDecrypt, kFlatDecrypt})
        for (const Spoil &first : {in(session_without_h), Spoil(unknown_hash)})
            bad(call.name, "curve or hash, wrong check value", [=, run = call.call] {
                SessionArguments arguments;
                no_check(arguments);
                first(arguments);
                EXPECT_EQ((arguments.*run)(), ZOK_ERR_ARGUMENT);
                EXPECT_TRUE(arguments.nothing_written());
            });
}

void add_signing_pairs() {
    for (uint32_t d : {0u, kSmallN})
        refuses(kSign, ZOK_ERR_SIGN, "d out of range, unknown algorithm",
                both(key_of(d), unknown_algorithms));
    refuses(kSign, ZOK_ERR_INTERNAL, "unknown algorithm, d = n - 1",
            both(key_of(kSmallN - 1), unknown_algorithms));
    refuses(kVerify, ZOK_ERR_INTERNAL, "unknown algorithm, r + s = n",
            both(set(&SessionArguments::numbers, small_signature(226, kSmallN - 226)), unknown_algorithms));
    refuses(kVerify, ZOK_ERR_ARGUMENT, "long e, r = 0", [](SessionArguments &a) {
        a.e_len = 77;
        a.numbers = small_signature(0, 216);
    });
    refuses(kVerify, ZOK_ERR_ARGUMENT, "a wide key, s = 0", [](SessionArguments &a) {
        a.public_record.bits = 520;
        a.numbers = small_signature(226, 0);
    });
}

// If the message is hashed, an unknown algorithm comes before everything but the session, and the hash
// before the range of the key or signature.
void add_message_pairs() {
    for (const NamedSessionCall &call : {kSignHash, kVerifyHash}) {
        for (const Spoil &spoil : {Spoil(wide_keys), key_of(0), Spoil([](SessionArguments &a) {
                                       void *const session = a.session;
                                       a.take_everything();
                                       a.session = session;
                                   })})
            refuses(call, ZOK_ERR_INTERNAL, "unknown algorithm, all else", both(spoil, unknown_algorithms));
        for (uint32_t d : {0u, kSmallN}) {
            const Spoil range = both(key_of(d), set(&SessionArguments::numbers, small_signature(0, 216)));
            refuses(call, ZOK_ERR_ARGUMENT, "unknown hash, range", both(range, unknown_hash), kSm2Only,
                    kAnyMemory);
            refuses(call, ZOK_ERR_INTERNAL, "unknown hash, range", both(range, unknown_hash), kOtherOnly);
        }
        refuses(call, ZOK_ERR_ARGUMENT, "a wide key, unknown hash", both(wide_keys, unknown_hash));
        refuses(
            call, ZOK_ERR_ARGUMENT, "identity and message of 2^32 - 1 bytes",
            [](SessionArguments &a) { a.id_len = a.message_len = 0xFFFFFFFFu; }, kSm2Only);
        for (uint32_t size : {0xFFFFFFFFu - 32, 0xFFFFFFFFu})
            for (uint32_t d : {0u, kSmallD})
                refuses(call, ZOK_ERR_INTERNAL, "a message of " + std::to_string(size) + " bytes",
                        both(both(key_of(d), set(&SessionArguments::numbers, small_signature(d, 216))),
                             set(&SessionArguments::message_len, size)),
                        kSm2Only, {.allocations = 1});
    }
}

// The first allocation fails, if there is one.
void add_missing_memory() {
    auto loses = [](const NamedSessionCall &call, const char *input, const Spoil &spoil) {
        refuses(call, ZOK_ERR_ARGUMENT, input, spoil, kBoth, {.fail_at = 1, .allocations = 0});
    };
    loses(kFlatEncrypt, "no key, no memory", set(&SessionArguments::pub, nullptr));
    loses(kFlatEncrypt, "a wide key, no memory", wide_keys);
    loses(kFlatEncrypt, "no message, no memory", set(&SessionArguments::message, nullptr));
    loses(kFlatEncrypt, "no output, no memory", set(&SessionArguments::out, nullptr));
    loses(kFlatEncrypt, "no length, no memory", set(&SessionArguments::out_len, nullptr));
    loses(kFlatEncrypt, "no bytes, no memory", set(&SessionArguments::message_len, 0u));
    loses(kFlatDecrypt, "a wide key, no memory", wide_keys);
    loses(kFlatDecrypt, "d = n, no memory", key_of(kSmallN));
    loses(kFlatDecrypt, "first byte, no memory", [](SessionArguments &a) { a.flat_bytes[0] = 2; });
    loses(kFlatDecrypt, "no ciphertext of no bytes, no memory", [](SessionArguments &a) {
        a.flat = nullptr;
        a.flat_len = 0;
    });
    loses(kFlatDecrypt, "no message byte, no memory", set(&SessionArguments::flat_len, 73u));

    auto wins = [](const NamedSessionCall &call, const char *input, const Spoil &spoil) {
        refuses(call, ZOK_ERR_INTERNAL, input, spoil, kBoth,
                {.fail_at = 1, .allocations = kAnyMemory.allocations});
    };
    wins(kFlatEncrypt, "no memory, zero coordinate",
         set(&SessionArguments::public_record, small_public_key(0, 763)));
    wins(kFlatEncrypt, "no memory, no order", in(session_without_order));
    wins(kFlatEncrypt, "no memory, unknown hash", unknown_hash);
    if (kHardened)
        loses(kFlatDecrypt, "no h, no memory", in(session_without_h));
    else
        wins(kFlatDecrypt, "no memory, no h", in(session_without_h));
    wins(kFlatDecrypt, "no memory, unknown hash", unknown_hash);
    wins(kFlatDecrypt, "no memory, wrong check value", no_check);
}

const Rows without_a_curve(add_without_curve), order_zero(add_order_zero), modulus_zero(add_modulus_zero),
    hashes(add_unknown_hash), pairs(add_pairs), signing_pairs(add_signing_pairs),
    message_pairs(add_message_pairs), memory(add_missing_memory);

}  // namespace

TEST(SessionWithoutCurve, DeviceInformationAndRandomBytesWork) {
    for (int kind : {0, 1, 2}) {
        GuardedRecord<DEVICEINFO> info;
        EXPECT_EQ(SDF_GetDeviceInfo(session_without_curve(kind), info.get()), ZOK_OK);
        GuardedBuffer random(16);
        EXPECT_EQ(SDF_GenerateRandom(session_without_curve(kind), 16, random.data()), ZOK_OK);
        EXPECT_TRUE(random.untouched_from(16));
    }
}

}  // namespace zokecc_test::session_order_test
