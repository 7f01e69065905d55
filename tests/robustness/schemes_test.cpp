// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Bad inputs of the calls on the process-wide curve: null, lengths beyond the fields, scalars of
// 0, n, n + 1 and all ones, signature values out of range, truncated ciphertexts, no curve.
#include "tests/robustness/bad_inputs.h"
#include "tests/robustness/scheme_arguments.h"

namespace zokecc_test::schemes_test {

using robustness::bad;

namespace {

using Spoil = std::function<void(SchemeArguments &)>;
using Run = std::function<int32_t(SchemeArguments &)>;
using Hashes = std::vector<uint32_t>;

const Hashes kEveryHash = {HASH_ALG_SM3, HASH_ALG_SHA256, kUnknownHash};

// Refused with the code for any hash; nothing written, drawn or allocated.
struct Target {
    const char *name;
    int32_t failure;
    Run run;

    void refuses(const std::string &input, const Spoil &spoil, const Hashes &hashes = kEveryHash) const {
        answers(input, failure, spoil, hashes);
    }
    void answers(const std::string &input, int32_t status, const Spoil &spoil,
                 const Hashes &hashes = kEveryHash) const {
        const Run call = run;
        bad(name, input, [=] {
            for (uint32_t hash : hashes) {
                install_small(32);
                SchemeArguments arguments;
                arguments.hash = hash;
                spoil(arguments);
                FakeEntropy entropy;
                FailingAlloc counter;
                EXPECT_EQ(call(arguments), status) << "hash " << hash;
                EXPECT_TRUE(arguments.outputs_untouched());
                EXPECT_EQ(entropy.calls() + entropy.number_calls, 0u);
                EXPECT_EQ(counter.allocations, 0u);
            }
        });
    }
    template <class Pointer>
    void null(const char *what, Pointer SchemeArguments::*argument) const {
        refuses(std::string("no ") + what, [=](SchemeArguments &a) { a.*argument = nullptr; });
    }
};

Target target(const char *name, SchemeCall call, int32_t failure) {
    return {name, failure, [=](SchemeArguments &a) { return (a.*call)(); }};
}

// No curve, or one without order or field prime, also as one zero word.
void without_curve(const Target &call, uint32_t mode = 0) {
    call.refuses("no curve", [=](SchemeArguments &a) {
        uninstall();
        a.mode = mode;
    });
    for (mint GlobalCurve::*number : {&GlobalCurve::n, &GlobalCurve::p})
        for (const mint &zero : {mint{}, zero_in_one_word()})
            call.refuses(number == &GlobalCurve::n ? "no order" : "no prime", [=](SchemeArguments &a) {
                global_curve.*number = zero;
                a.mode = mode;
            });
}

// Every scalar that is not below n, or cannot be read.
void scalars(const Target &call, uint32_t mode = 0) {
    call.refuses("no scalar", [=](SchemeArguments &a) {
        a.d = nullptr;
        a.mode = mode;
    });
    call.refuses("no bytes of a scalar", [=](SchemeArguments &a) {
        a.scalar.bytes = nullptr;
        a.mode = mode;
    });
    for (uint32_t length : {77u, 0x80000000u, 0xFFFFFFFFu})
        call.refuses("a scalar of " + std::to_string(length) + " bytes", [=](SchemeArguments &a) {
            a.scalar.length = length;
            a.mode = mode;
        });
    for (const ByteString &bytes :
         {number_bytes(kSmallN, 32), number_bytes(kSmallN + 1, 32), number_bytes(kSmallN + 1, 2),
          number_bytes(0xFFFFFFFFu, 32), number_bytes(5, 77), ByteString(32, 0xFF), ByteString(76, 0xFF)})
        call.refuses("the scalar " + to_hex(bytes), [=](SchemeArguments &a) {
            a.set_scalar(bytes);
            a.mode = mode;
        });
    for (size_t size : {size_t{32}, size_t{76}})
        call.refuses("the order of the SM2 curve", [=](SchemeArguments &a) {
            install("sm2p256v1");
            a.set_scalar(fixed_bytes(global_curve.n, size));
            a.mode = mode;
        });
}

void record_lengths(const Target &call, PointBytes SchemeArguments::*record) {
    for (uint32_t length : {66u, 0x80000000u, 0xFFFFFFFFu})
        call.refuses("a record of " + std::to_string(length) + " bytes",
                     [=](SchemeArguments &a) { (a.*record).set_length(length); });
}

void numbers(const Target &call, int32_t status, uint32_t r, uint32_t s) {
    for (size_t size : {size_t{32}, size_t{65}})
        call.answers("r = " + std::to_string(r) + ", s = " + std::to_string(s), status,
                     [=](SchemeArguments &a) { a.numbers = PointBytes(r, s, size); });
}

void add_keys() {
    const Target gen = target("Ecc_GenPubKey", &SchemeArguments::public_key, -1);
    scalars(gen);
    gen.null("output", &SchemeArguments::point);
    without_curve(gen);
    const Target pair = target("Ecc_KeyPair_Gen", &SchemeArguments::key_pair, -1);
    scalars(pair, 1);
    for (uint32_t mode : {0u, 1u, 2u}) {
        const auto null = [&](const char *input, const Spoil &spoil) {
            pair.refuses(input, [=](SchemeArguments &a) {
                a.mode = mode;
                spoil(a);
            });
        };
        null("no output", [](SchemeArguments &a) { a.point = nullptr; });
        if (mode == 2) continue;
        without_curve(pair, mode);
        null("no scalar", [](SchemeArguments &a) { a.d = nullptr; });
        null("no bytes of a scalar", [](SchemeArguments &a) { a.scalar.bytes = nullptr; });
    }
    for (uint32_t mode : {2u, 0xFFFFFFFFu})
        bad("Ecc_KeyPair_Gen", "mode " + std::to_string(mode), [=] {
            install_small(32);
            SchemeArguments a;
            a.d = nullptr;
            a.mode = mode;
            EXPECT_EQ(a.key_pair(), 0);
            expect_record(a.written, 0, 0, 32);
        });
    const Target ecdh = target("Ecdh_KeyExChg", &SchemeArguments::exchange, -1);
    scalars(ecdh);
    ecdh.null("peer", &SchemeArguments::Q);
    ecdh.null("output", &SchemeArguments::area);
    record_lengths(ecdh, &SchemeArguments::key);
    without_curve(ecdh);
    for (unsigned byte_len : {24u, 28u, 32u})
        for (uint32_t room : {0u, 1u, 2u, byte_len - 1}) {
            const Target small_room{"Ecdh_KeyExChg", -1, [=](SchemeArguments &a) {
                                        return Ecdh_KeyExChg(a.d, a.Q, a.area, room);
                                    }};
            const std::string input = "room for " + std::to_string(room) + " bytes";
            small_room.refuses(input, [=](SchemeArguments &) { install_small(byte_len); });
            small_room.refuses(input + ", d = n", [=](SchemeArguments &a) {
                install_small(byte_len);
                a.set_scalar(number_bytes(kSmallN, 32));
            });
        }
}

// Without SM3 ECDSA treats a message without data as empty.
Hashes hashes_of(const Target &call) {
    return std::string(call.name) == "Ecdsa_DigitalSign" || std::string(call.name) == "Ecdsa_DigitalVeriy"
               ? Hashes{HASH_ALG_SM3}
               : kEveryHash;
}

void add_signatures() {
    const Target ecdsa = target("Ecdsa_DigitalSign", &SchemeArguments::ecdsa_sign, -1);
    const Target sm2 = target("sm2_DigitalSign", &SchemeArguments::sm2_sign, -1);
    for (const Target &call : {ecdsa, sm2}) {
        scalars(call);
        call.null("message", &SchemeArguments::message);
        call.null("output", &SchemeArguments::point);
        call.refuses(
            "no data", [](SchemeArguments &a) { a.msg.data = nullptr; }, hashes_of(call));
        without_curve(call);
    }
    for (size_t size : {size_t{0}, size_t{1}, size_t{32}, size_t{76}})
        ecdsa.refuses("the scalar 0", [=](SchemeArguments &a) { a.set_scalar(ByteString(size, 0)); });
    sm2.refuses("the scalar n - 1", [](SchemeArguments &a) { a.set_scalar(number_bytes(kSmallN - 1, 32)); });
    sm2.refuses("n - 1 of the SM2 curve", [](SchemeArguments &a) {
        install("sm2p256v1");
        mint d = global_curve.n;
        d.words[0] -= 1;
        a.set_scalar(fixed_bytes(d, 32));
    });
    sm2.null("Z", &SchemeArguments::Z);
    for (uint32_t size : {0xFFFFFFDFu, 0xFFFFFFE0u, 0xFFFFFFFFu})
        sm2.answers("a message of " + std::to_string(size) + " bytes", 1,
                    [=](SchemeArguments &a) { a.msg.len_low = size; });

    const Target ecdsa_verify = target("Ecdsa_DigitalVeriy", &SchemeArguments::ecdsa_verify, 0);
    const Target sm2_verify = target("sm2_DigitalVeriy", &SchemeArguments::sm2_verify, -1);
    for (const Target &call : {ecdsa_verify, sm2_verify}) {
        call.null("key", &SchemeArguments::Q);
        call.null("signature", &SchemeArguments::sig);
        call.null("message", &SchemeArguments::message);
        call.refuses(
            "no data", [](SchemeArguments &a) { a.msg.data = nullptr; }, hashes_of(call));
        record_lengths(call, &SchemeArguments::key);
        record_lengths(call, &SchemeArguments::numbers);
        without_curve(call);
        numbers(call, call.failure, 5, 0);
        numbers(call, call.failure, 0, 0);
    }
    // Without an inverse both products would vanish, and r = 0 would be valid for every message.
    const uint32_t good_r = small_multiple(77).x % kSmallN;
    for (uint32_t s : {0u, 1u, 2u, 7u, 1000u})
        for (uint32_t r : {0u, 5u, good_r}) numbers(ecdsa_verify, 0, r, s * kSmallN);
    for (size_t size : {size_t{0}, size_t{32}})  // every number is a multiple of an order of zero
        ecdsa_verify.refuses("r = 0 and s = 0 without a curve", [=](SchemeArguments &a) {
            uninstall();
            a.numbers = PointBytes(0, 0, size);
        });
    numbers(sm2_verify, -1, 0, 5);
    numbers(sm2_verify, -1, kSmallP, 5);
    numbers(sm2_verify, -1, kSmallP + 1, 5);
    numbers(sm2_verify, -1, 0xFFFFFFFFu, 5);
    sm2_verify.refuses("r of 65 bytes of ones", [](SchemeArguments &a) {
        a.numbers = PointBytes(ByteString(65, 0xFF), number_bytes(5, 65));
    });
    sm2_verify.null("Z", &SchemeArguments::Z);
    for (uint32_t size : {0xFFFFFFDFu, 0xFFFFFFE0u, 0xFFFFFFFFu})
        sm2_verify.refuses("a message of " + std::to_string(size) + " bytes",
                           [=](SchemeArguments &a) { a.msg.len_low = size; });
}

void add_encryption() {
    const Target seal = target("sm2_Encry", &SchemeArguments::encrypt, -1);
    seal.null("key", &SchemeArguments::Q);
    seal.null("message", &SchemeArguments::message);
    seal.null("output", &SchemeArguments::descriptor);
    seal.refuses("no data", [](SchemeArguments &a) { a.msg.data = nullptr; });
    seal.refuses("no output buffer", [](SchemeArguments &a) { a.out_msg.data = nullptr; });
    record_lengths(seal, &SchemeArguments::key);
    for (unsigned byte_len : {24u, 28u, 32u})
        for (uint32_t size : {0u, 0x80000000u, 0xFFFFFFFEu, 0xFFFFFFFFu})
            seal.refuses("a message of " + std::to_string(size) + " bytes", [=](SchemeArguments &a) {
                install_small(byte_len);
                a.key = PointBytes(small_multiple(123).x, small_multiple(123).y, byte_len);
                a.msg.len_low = size;
            });
    for (uint32_t hash : {2u, 0x80000000u, 0xFFFFFFFFu})
        seal.refuses("selector " + std::to_string(hash), [=](SchemeArguments &) {}, {hash});
    without_curve(seal);

    const Target open = target("sm2_Decry", &SchemeArguments::decrypt, -1);
    scalars(open);
    open.null("ciphertext", &SchemeArguments::ciphertext);
    open.null("output", &SchemeArguments::descriptor);
    open.refuses("no data", [](SchemeArguments &a) { a.cipher.data = nullptr; });
    open.refuses("no output buffer", [](SchemeArguments &a) { a.out_msg.data = nullptr; });
    for (uint32_t size : {0u, 1u, 65u, 96u, 97u, 0x80000061u, 0xC0000000u, 0xFFFFFFFFu})
        open.refuses("a ciphertext of " + std::to_string(size) + " bytes",
                     [=](SchemeArguments &a) { a.cipher.len_low = size; });
    for (unsigned first : {0u, 1u, 2u, 3u, 5u, 6u, 7u, 0x84u, 0xFFu})
        open.refuses("first byte " + std::to_string(first),
                     [=](SchemeArguments &a) { a.cipher_bytes[0] = static_cast<uint8_t>(first); });
    without_curve(open);
}

void add_eces() {
    const Target seal = target("Eces_Encry", &SchemeArguments::eces_encry, -1);
    seal.null("recipient", &SchemeArguments::Q);
    seal.null("message", &SchemeArguments::bytes);
    seal.null("output", &SchemeArguments::area);
    record_lengths(seal, &SchemeArguments::key);
    without_curve(seal);
    const Target open = target("Eces_Decry", &SchemeArguments::eces_decry, -1);
    scalars(open);
    open.null("ciphertext", &SchemeArguments::eces);
    open.null("output", &SchemeArguments::area);
    for (unsigned first = 0; first < 256; ++first)
        if (first != 4)
            open.refuses("first byte " + std::to_string(first),
                         [=](SchemeArguments &a) { a.eces_bytes[0] = static_cast<uint8_t>(first); });
    without_curve(open);
    // The prefix is not counted, but required nevertheless.
    const Target empty{"Eces_Decry", -1,
                       [](SchemeArguments &a) { return Eces_Decry(a.d, nullptr, 0, a.area); }};
    empty.refuses("no ciphertext of no bytes", [](SchemeArguments &) {});
    for (uint32_t size : {231u, 232u, 233u, 300u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        const Target wide{"Eces_Decry", -1,
                          [=](SchemeArguments &a) { return Eces_Decry(a.d, a.eces, size, a.area); }};
        wide.refuses("a ciphertext of " + std::to_string(size) + " bytes", [](SchemeArguments &) {});
    }
    const Target format = target("eces_format", &SchemeArguments::format, 1);
    const Target deformat = target("eces_deformat", &SchemeArguments::deformat, 1);
    for (const Target &call : {format, deformat}) {
        call.null("bytes", &SchemeArguments::bytes);
        call.null("area", &SchemeArguments::area);
        call.null("length", &SchemeArguments::length);
    }
    for (uint32_t size : {0u, 1u, 9u}) {
        const Target block{"eces_deformat", 1, [=](SchemeArguments &a) {
                               return eces_deformat(a.bytes, size, a.area, a.length);
                           }};
        block.refuses("no curve, " + std::to_string(size) + " bytes", [](SchemeArguments &) { uninstall(); });
        for (uint32_t byte_len : {0u, 1u})
            block.refuses("a curve of " + std::to_string(byte_len) + " bytes",
                          [=](SchemeArguments &) { global_curve.byte_len = byte_len; });
    }
    for (const Target &null :
         {Target{"eces_format", 1,
                 [](SchemeArguments &a) { return eces_format(32, nullptr, 1, a.area, a.length); }},
          Target{"eces_deformat", 1,
                 [](SchemeArguments &a) { return eces_deformat(nullptr, 1, a.area, a.length); }}})
        null.refuses("no message of one byte", [](SchemeArguments &) {});
    const Target no_area{"eces_deformat", 1, [](SchemeArguments &a) {
                             a.text.assign(31, 1);
                             a.text[3] = 0;
                             return eces_deformat(a.text.data(), 31, nullptr, a.length);
                         }};
    no_area.refuses("no output buffer for the bytes after a separator", [](SchemeArguments &) {});
    for (uint32_t k : {0u, 1u, 31u, 0xFFFFFFFEu, 0xFFFFFFFFu})
        for (uint32_t m : {0xFFFFFFFEu, 0xFFFFFFFFu}) {
            const Target block{"eces_format", 1, [=](SchemeArguments &a) {
                                   return eces_format(k, a.bytes, m, a.area, a.length);
                               }};
            block.refuses("a message of " + std::to_string(m) + " bytes", [](SchemeArguments &) {});
        }
    for (uint32_t size : {0u, 1u, 2u, 10u}) {
        const Target block{"eces_format", 1, [=](SchemeArguments &a) {
                               return eces_format(size, a.bytes, 9, a.area, a.length);
                           }};
        block.refuses("a block of " + std::to_string(size) + " bytes", [](SchemeArguments &) {});
    }
    for (uint32_t size : {31u, 32u, 33u, 52u, 0x80000000u, 0xFFFFFFFFu}) {
        const Target block{"eces_deformat", 1, [=](SchemeArguments &a) {
                               return eces_deformat(a.bytes, size, a.area, a.length);
                           }};
        block.refuses("a block of " + std::to_string(size) + " bytes", [](SchemeArguments &a) {
            a.text.assign(60, 1);
            a.bytes = a.text.data();
        });
    }
}

const robustness::Rows keys(add_keys), signatures(add_signatures), encryption(add_encryption), eces(add_eces);

}  // namespace

TEST(SchemeCalls, WorkWithAllArguments) {
    install_small(32);
    EXPECT_EQ(SchemeArguments().ecdsa_sign(), 0);
    EXPECT_EQ(SchemeArguments().ecdsa_verify(), 0);  // a signature that does not fit
    EXPECT_EQ(SchemeArguments().exchange(), 32);
    EXPECT_EQ(SchemeArguments().eces_encry(), 12);
    EXPECT_EQ(SchemeArguments().eces_decry(), 2);
    EXPECT_EQ(SchemeArguments().public_key(), 0);
    EXPECT_EQ(SchemeArguments().key_pair(), 0);
    EXPECT_EQ(SchemeArguments().format(), 0);
    EXPECT_EQ(SchemeArguments().deformat(), 0);
    EXPECT_EQ(SchemeArguments().sm2_sign(), 0);
    EXPECT_EQ(SchemeArguments().sm2_verify(), 1);  // here, too
    EXPECT_EQ(SchemeArguments().encrypt(), 0);
    SchemeArguments decryption;
    EXPECT_EQ(decryption.decrypt(), -1);
    EXPECT_EQ(decryption.out_msg.len_low, 4u);
}

}  // namespace zokecc_test::schemes_test
