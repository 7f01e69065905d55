// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Bad inputs of the session calls except key agreement: null, records with wrong sizes, unknown
// algorithms, scalars of 0, n, n + 1 and all ones. Unusable sessions, and pairs of faults, are in
// session_order_test.cpp.
#include "tests/robustness/session_rows.h"

namespace zokecc_test::sessions_test {

using namespace robustness;

namespace {

// For any values.
template <class Pointer>
void null(const NamedSessionCall &call, const char *what, Pointer SessionArguments::*argument,
          Algorithms algorithms = kBoth) {
    const std::string input = std::string("no ") + what;
    refuses(
        call, ZOK_ERR_ARGUMENT, input, [=](SessionArguments &a) { a.*argument = nullptr; }, algorithms);
    // If the message is hashed, an unknown algorithm comes first.
    const bool hashes = call.call == kSignHash.call || call.call == kVerifyHash.call;
    const auto with_bad_values = [=](SessionArguments &a) {
        const uint32_t algorithm = a.algorithm;
        a.spoil_values();
        if (hashes) a.algorithm = algorithm;
        a.*argument = nullptr;
    };
    refuses(call, ZOK_ERR_ARGUMENT, input + " and bad values", with_bad_values, algorithms);
}

void add_pointers() {
    for (const NamedSessionCall &call : all_session_calls()) {
        refuses(call, ZOK_ERR_SESSION, "no session", [](SessionArguments &a) { a.session = nullptr; });
        refuses(call, ZOK_ERR_SESSION, "nothing at all", [](SessionArguments &a) { a.take_everything(); });
        refuses(call, ZOK_ERR_SESSION, "no session and bad values", [](SessionArguments &a) {
            a.spoil_values();
            a.public_record.bits = 520;
            a.session = nullptr;
        });
    }
    for (const NamedSessionCall &call :
         {kGenerate, kTemporary[0], kTemporary[1], kTemporary[2], kTemporary[3]}) {
        null(call, "public key", &SessionArguments::pub_out);
        null(call, "private key", &SessionArguments::priv_out);
    }
    for (const NamedSessionCall &call : {kSign, kSignHash, kDecrypt, kFlatDecrypt, kEcdh})
        null(call, "private key", &SessionArguments::priv);
    for (const NamedSessionCall &call : {kVerify, kUserInfo, kVerifyHash, kEncrypt, kFlatEncrypt, kEcdh})
        null(call, "public key", &SessionArguments::pub);
    for (const NamedSessionCall &call : {kSign, kVerify}) null(call, "e", &SessionArguments::e);
    for (const NamedSessionCall &call : {kSign, kSignHash}) null(call, "output", &SessionArguments::sig_out);
    for (const NamedSessionCall &call : {kVerify, kVerifyHash})
        null(call, "signature", &SessionArguments::sig);
    null(kUserInfo, "identity", &SessionArguments::id);
    for (const NamedSessionCall &call : {kSignHash, kVerifyHash})
        null(call, "identity", &SessionArguments::id, kSm2Only);
    for (const NamedSessionCall &call : {kSignHash, kVerifyHash, kEncrypt, kFlatEncrypt})
        null(call, "message", &SessionArguments::message);
    for (const NamedSessionCall &call : {kUserInfo, kFlatEncrypt, kFlatDecrypt, kEcdh})
        null(call, "output", &SessionArguments::out);
    for (const NamedSessionCall &call : {kUserInfo, kFlatEncrypt, kFlatDecrypt})
        null(call, "length", &SessionArguments::out_len);
    null(kFlatDecrypt, "ciphertext", &SessionArguments::flat);
    null(kEncrypt, "output", &SessionArguments::cipher_out);
    null(kDecrypt, "ciphertext", &SessionArguments::cipher);
    null(kDecrypt, "output", &SessionArguments::out);
    null(kDecrypt, "length", &SessionArguments::out_len);
}

void add_sizes() {
    for (uint32_t bits : {520u, 521u, 527u, 1024u, 0x80000000u, 0xFFFFFFFFu}) {
        const std::string what = std::to_string(bits) + " bits";
        for (const NamedSessionCall &call : {kSign, kSignHash, kDecrypt, kFlatDecrypt, kEcdh})
            refuses(call, ZOK_ERR_ARGUMENT, what, [=](SessionArguments &a) { a.private_record.bits = bits; });
        for (const NamedSessionCall &call : {kVerify, kVerifyHash, kEncrypt, kFlatEncrypt, kEcdh})
            refuses(call, ZOK_ERR_ARGUMENT, what, [=](SessionArguments &a) { a.public_record.bits = bits; });
    }
    for (uint32_t bits : {0u, 1u, 159u, 161u, 168u, 256u, 0xFFFFFFFFu})
        for (uint32_t algorithm : {ZOK_ALG_SM2_KEY, ZOK_ALG_ECDSA_KEY, ZOK_ALG_SM2_SIGN, kUnknownAlgorithm})
            refuses(kGenerate, ZOK_ERR_ARGUMENT, std::to_string(bits) + " bits", [=](SessionArguments &a) {
                a.key_bits = bits;
                a.key_algorithm = algorithm;
            });
    refuses(kGenerate, ZOK_ERR_ARGUMENT, "255 bits on a curve of 256", [](SessionArguments &a) {
        a.session = sm2_session();
        a.key_bits = 255;
    });
    for (uint32_t size : {77u, 0x80000000u, 0xFFFFFFFFu})
        for (const NamedSessionCall &call : {kSign, kVerify})
            for (bool bad_values : {false, true})
                refuses(call, ZOK_ERR_ARGUMENT, "e of " + std::to_string(size) + " bytes",
                        [=](SessionArguments &a) {
                            if (bad_values) a.spoil_values();
                            a.e_len = size;
                        });
    for (uint32_t size : {0u, 1u, 19u, 21u, 32u, 64u, 0xFFFFFFFFu})
        refuses(kEncrypt, ZOK_ERR_ARGUMENT, "a message of " + std::to_string(size) + " bytes",
                [=](SessionArguments &a) { a.message_len = size; });
    refuses(kEncrypt, ZOK_ERR_ARGUMENT, "a message of 16 bytes on a curve of 32", [](SessionArguments &a) {
        a.session = sm2_session();
        a.public_record = base_point_key(curve("sm2p256v1"));
        a.message_len = 16;
    });
    for (uint32_t size : {0u, 0x80000000u, 0xFFFFFFEBu, 0xFFFFFFFFu})
        refuses(kFlatEncrypt, ZOK_ERR_ARGUMENT, "a message of " + std::to_string(size) + " bytes",
                [=](SessionArguments &a) { a.message_len = size; });
    for (uint32_t size : {0u, 1u, 41u, 72u, 73u, 0x80000049u, 0xFFFFFFFEu, 0xFFFFFFFFu})
        refuses(kFlatDecrypt, ZOK_ERR_ARGUMENT, "a ciphertext of " + std::to_string(size) + " bytes",
                [=](SessionArguments &a) { a.flat_len = size; });
    for (uint32_t size : {0xFFFFFFFFu, 0xFFFFFF86u, 0xFFFFFF85u})
        refuses(kUserInfo, ZOK_ERR_INTERNAL, "an identity of " + std::to_string(size) + " bytes",
                [=](SessionArguments &a) { a.id_len = size; });
    for (const NamedSessionCall &call : {kSignHash, kVerifyHash})
        refuses(call, ZOK_ERR_INTERNAL, "a message of 2^32 - 1 bytes",
                [](SessionArguments &a) { a.message_len = 0xFFFFFFFFu; }, kSm2Only, {.allocations = 1});
}

void add_scalars() {
    for (const ByteString &d :
         {small_bytes(kSmallN), small_bytes(kSmallN + 1), small_bytes(kSmallN + kSmallD),
          small_bytes(2 * kSmallN), small_bytes(0xFFFFFFFFu), ByteString(20, 0xFF), ByteString(64, 0xFF)}) {
        const Spoil spoil = [=](SessionArguments &a) { a.private_record = private_key(d); };
        for (const NamedSessionCall &call : {kDecrypt, kFlatDecrypt, kEcdh})
            refuses(call, ZOK_ERR_ARGUMENT, "d = " + to_hex(d), spoil);
        refuses(kSign, ZOK_ERR_SIGN, "d = " + to_hex(d), spoil);
        // The public key of a d wider than the table needs a digit buffer; without one it is infinity. The
        // hardened build refuses d first.
        const bool fits = (d.size() == 20 && d[0] == 0) || kHardened;
        const Memory memory = {.allocations = fits ? 2u : 3u, .digit_buffers = fits ? 0 : 1};
        refuses(kSignHash, ZOK_ERR_SIGN, "d = " + to_hex(d), spoil, kSm2Only, memory);
        refuses(kSignHash, ZOK_ERR_SIGN, "d = " + to_hex(d), spoil, kOtherOnly);
    }
    refuses(kSignHash, ZOK_ERR_SIGN, "64 bytes on the SM2 curve",
            [](SessionArguments &a) {
                a.session = sm2_session();
                a.private_record = private_key(ByteString(64, 0xFF));
            },
            kSm2Only, {.allocations = kHardened ? 2u : 3u, .digit_buffers = 1});
    refuses(kEcdh, ZOK_ERR_ARGUMENT, "the order of the SM2 curve", [](SessionArguments &a) {
        const Curve &c = curve("sm2p256v1");
        a.session = sm2_session();
        a.private_record = private_key(fixed_bytes(c.n, 32));
        a.public_record = base_point_key(c);
    });
    for (const NamedSessionCall &call : {kSign, kSignHash}) {
        refuses(
            call, ZOK_ERR_SIGN, "d = 0", [](SessionArguments &a) { a.private_record = small_private_key(0); },
            kBoth, kAnyMemory);
        refuses(
            call, ZOK_ERR_SIGN, "d = n - 1",
            [](SessionArguments &a) { a.private_record = small_private_key(kSmallN - 1); }, kSm2Only,
            kAnyMemory);
    }
}

// A signature valid except for one of its numbers: (226, 216) by SM2, (761, 681) by ECDSA.
void add_signatures() {
    auto numbers = [](std::string input, const ByteString *r, const ByteString *s) {
        const Spoil spoil = [=, r = r ? *r : ByteString(), s = s ? *s : ByteString()](SessionArguments &a) {
            const bool sm2 = a.algorithm == ZOK_ALG_SM2_SIGN;
            a.numbers = signature(r.empty() ? small_bytes(sm2 ? 226 : 761) : r,
                                  s.empty() ? small_bytes(sm2 ? 216 : 681) : s);
        };
        refuses(kVerify, ZOK_ERR_VERIFY, input, spoil);
        refuses(kVerifyHash, ZOK_ERR_VERIFY, input, spoil, kBoth, kAnyMemory);
        refuses(kVerify, ZOK_ERR_VERIFY, input + ", unknown algorithm", [=](SessionArguments &a) {
            spoil(a);
            a.algorithm = kUnknownAlgorithm;
        });
    };
    for (const ByteString &number :
         {small_bytes(0), small_bytes(kSmallN), small_bytes(kSmallN + 1), small_bytes(kSmallN + 226),
          small_bytes(kSmallN + 761), small_bytes(kSmallN + 216), small_bytes(kSmallN + 681),
          small_bytes(0xFFFFFFFFu), ByteString(20, 0xFF)}) {
        numbers("r = " + to_hex(number), &number, nullptr);
        numbers("s = " + to_hex(number), nullptr, &number);
    }
    const ByteString n = small_bytes(kSmallN);
    refuses(kVerify, ZOK_ERR_VERIFY, "e and r of n", [=](SessionArguments &a) {
        a.use_digest(n);
        a.numbers = signature(n, small_bytes(216));
    });
    // With t = 0 the sum would be s G alone: x of 300 G is 272, and 691 + 300 = n, with e = 419.
    for (uint32_t r : {1u, 2u, 5u, 490u, 691u, 990u})
        for (const NamedSessionCall &call : {kVerify, kVerifyHash})
            refuses(
                call, ZOK_ERR_VERIFY, "r + s = n, r = " + std::to_string(r),
                [=](SessionArguments &a) {
                    a.use_digest(small_bytes(r == 691 ? 419 : 456));
                    a.numbers = small_signature(r, kSmallN - r);
                },
                kSm2Only, kAnyMemory);
}

void add_points() {
    for (auto [x, y] : {std::pair{0u, 0u}, {0u, 763u}, {346u, 0u}}) {
        const Spoil spoil = [x = x, y = y](SessionArguments &a) { a.public_record = small_public_key(x, y); };
        const std::string what = "the point (" + std::to_string(x) + ", " + std::to_string(y) + ")";
        refuses(kEncrypt, ZOK_ERR_ARGUMENT, what, spoil);
        refuses(kFlatEncrypt, ZOK_ERR_ARGUMENT, what, spoil, kBoth, {.allocations = 2});
    }
    for (uint32_t bits : {0u, 7u}) {
        const Spoil spoil = [=](SessionArguments &a) { a.public_record.bits = bits; };
        refuses(kEncrypt, ZOK_ERR_ARGUMENT, "a key of no bytes", spoil);
        refuses(kFlatEncrypt, ZOK_ERR_ARGUMENT, "a key of no bytes", spoil, kBoth, {.allocations = 2});
    }
    for (unsigned first : {0u, 2u, 3u, 5u, 0xFFu})
        refuses(kFlatDecrypt, ZOK_ERR_ARGUMENT, "first byte " + std::to_string(first),
                [=](SessionArguments &a) { a.flat_bytes[0] = static_cast<uint8_t>(first); });
}

void add_algorithms() {
    for (uint32_t algorithm :
         {0u, 1u, 0x20000u, 0x40000u, 0x20100u, 0x40100u, 0x20101u, 0x20200u, 0x20300u, 0x40400u, 0x60000u,
          0x20400u, 0x20401u, 0x40401u, 0x2040000u, 0x80000000u, 0xFFFFFFFFu}) {
        const std::string what = "algorithm " + std::to_string(algorithm);
        const bool signs = algorithm == ZOK_ALG_SM2_SIGN || algorithm == ZOK_ALG_ECDSA_SIGN;
        const bool generates = algorithm == ZOK_ALG_SM2_KEY || algorithm == ZOK_ALG_ECDSA_KEY;
        const bool encrypts = algorithm == ZOK_ALG_SM2_ENCRYPT || algorithm == ZOK_ALG_MULTIPLICATIVE;
        for (const NamedSessionCall &call : {kSign, kVerify, kSignHash, kVerifyHash})
            if (!signs)
                refuses(call, ZOK_ERR_INTERNAL, what, [=](SessionArguments &a) { a.algorithm = algorithm; });
        for (const NamedSessionCall &call : {kEncrypt, kDecrypt})
            if (!encrypts)
                refuses(call, ZOK_ERR_INTERNAL, what, [=](SessionArguments &a) { a.encryption = algorithm; });
        if (!generates)
            refuses(kGenerate, ZOK_ERR_INTERNAL, what,
                    [=](SessionArguments &a) { a.key_algorithm = algorithm; });
    }
}

const Rows pointers(add_pointers), sizes(add_sizes), scalars(add_scalars), signatures(add_signatures),
    points(add_points), algorithms(add_algorithms);

}  // namespace

TEST(SessionCalls, WorkWithAllArguments) {
    for (const NamedSessionCall &named : all_session_calls())
        for (bool other : {false, true}) {
            SessionArguments arguments;
            if (other) arguments.use_other_algorithms();
            if (named.call == kVerify.call && other) arguments.numbers = small_signature(761, 681);
            if (named.call == kVerifyHash.call) {
                EXPECT_EQ(arguments.sign_hash(), ZOK_OK);
                arguments.numbers = *arguments.sig_written.get();
            }
            FakeEntropy entropy;
            queue_numbers(entropy, {77});
            EXPECT_EQ((arguments.*named.call)(), ZOK_OK) << named.name;
        }
}

}  // namespace zokecc_test::sessions_test
