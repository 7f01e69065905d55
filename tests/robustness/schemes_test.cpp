// Bad inputs of the calls over the curve of the process: null, lengths beyond the fields, scalars of
// 0, n, n + 1 and all ones, numbers of signatures out of range, ciphertexts cut short, no curve.
#include "tests/robustness/bad_inputs.h"
#include "tests/schemes/scheme_arguments.h"

namespace zokecc_test::schemes_test {

using robustness::bad;

namespace {

using Spoil = std::function<void(SchemeArguments &)>;
using Run = std::function<int32_t(SchemeArguments &)>;

// Refused with the code; nothing written, drawn or allocated.
struct Target {
    const char *name;
    int32_t failure;
    Run run;

    void refuses(const std::string &input, const Spoil &spoil) const { answers(input, failure, spoil); }
    void answers(const std::string &input, int32_t status, const Spoil &spoil) const {
        const Run call = run;
        bad(name, input, [=] {
            install_small(32);
            SchemeArguments arguments;
            spoil(arguments);
            FakeEntropy entropy;
            FailingAlloc counter;
            EXPECT_EQ(call(arguments), status);
            EXPECT_TRUE(arguments.outputs_untouched());
            EXPECT_EQ(entropy.calls() + entropy.number_calls, 0u);
            EXPECT_EQ(counter.allocations, 0u);
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

// uninstall() after the arguments, which need the curve.
void without_curve(const Target &call) {
    call.refuses("no curve", [](SchemeArguments &) { uninstall(); });
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
    for (const ByteString &bytes : {number_bytes(kSmallN, 32), number_bytes(kSmallN + 1, 32),
                                    ByteString(32, 0xFF), ByteString(76, 0xFF)})
        call.refuses("the scalar " + to_hex(bytes), [=](SchemeArguments &a) {
            a.scalar_bytes = bytes;
            a.scalar = {a.scalar_bytes.data(), static_cast<uint32_t>(bytes.size())};
            a.mode = mode;
        });
}

void record_lengths(const Target &call, PointBytes SchemeArguments::*record) {
    for (uint32_t length : {66u, 0x80000000u, 0xFFFFFFFFu})
        call.refuses("a record of " + std::to_string(length) + " bytes",
                     [=](SchemeArguments &a) { (a.*record).set_length(length); });
}

void numbers(const Target &call, int32_t status, uint32_t r, uint32_t s) {
    call.answers("r = " + std::to_string(r) + ", s = " + std::to_string(s), status,
                 [=](SchemeArguments &a) { a.numbers = PointBytes(r, s, 32); });
}

void add_keys() {
    const Target gen = target("Ecc_GenPubKey", &SchemeArguments::public_key, -1);
    scalars(gen);
    gen.null("output", &SchemeArguments::point);
    without_curve(gen);
    const Target pair = target("Ecc_KeyPair_Gen", &SchemeArguments::key_pair, -1);
    scalars(pair, 1);
    pair.null("output", &SchemeArguments::point);
    without_curve(pair);
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
    for (uint32_t room : {0u, 1u, 31u}) {
        const Target small_room{"Ecdh_KeyExChg", -1,
                                [=](SchemeArguments &a) { return Ecdh_KeyExChg(a.d, a.Q, a.area, room); }};
        small_room.refuses("room for " + std::to_string(room) + " bytes", [](SchemeArguments &) {});
    }
}

void add_signatures() {
    const Target ecdsa = target("Ecdsa_DigitalSign", &SchemeArguments::ecdsa_sign, -1);
    const Target sm2 = target("sm2_DigitalSign", &SchemeArguments::sm2_sign, -1);
    for (const Target &call : {ecdsa, sm2}) {
        scalars(call);
        call.null("message", &SchemeArguments::message);
        call.null("output", &SchemeArguments::point);
        call.refuses("no data", [](SchemeArguments &a) { a.msg.data = nullptr; });
        without_curve(call);
    }
    ecdsa.refuses("the scalar 0", [](SchemeArguments &a) { a.scalar_bytes.assign(32, 0); });
    ecdsa.refuses("a scalar of no bytes", [](SchemeArguments &a) { a.scalar.length = 0; });
    sm2.refuses("the scalar n - 1", [](SchemeArguments &a) {
        a.scalar_bytes = number_bytes(kSmallN - 1, 32);
        a.scalar.bytes = a.scalar_bytes.data();
    });
    sm2.null("Z", &SchemeArguments::Z);
    for (uint32_t size : {0xFFFFFFDFu, 0xFFFFFFFFu})
        sm2.answers("a message of " + std::to_string(size) + " bytes", 1,
                    [=](SchemeArguments &a) { a.msg.len_low = size; });

    const Target ecdsa_verify = target("Ecdsa_DigitalVeriy", &SchemeArguments::ecdsa_verify, 0);
    const Target sm2_verify = target("sm2_DigitalVeriy", &SchemeArguments::sm2_verify, -1);
    for (const Target &call : {ecdsa_verify, sm2_verify}) {
        call.null("key", &SchemeArguments::Q);
        call.null("signature", &SchemeArguments::sig);
        call.null("message", &SchemeArguments::message);
        call.refuses("no data", [](SchemeArguments &a) { a.msg.data = nullptr; });
        record_lengths(call, &SchemeArguments::key);
        record_lengths(call, &SchemeArguments::numbers);
        without_curve(call);
        numbers(call, call.failure, 5, 0);
        numbers(call, call.failure, 0, 0);
    }
    numbers(ecdsa_verify, 0, 5, kSmallN);
    numbers(ecdsa_verify, 0, 5, 7 * kSmallN);
    numbers(sm2_verify, -1, 0, 5);
    numbers(sm2_verify, -1, kSmallP, 5);
    numbers(sm2_verify, -1, kSmallP + 1, 5);
    numbers(sm2_verify, -1, 0xFFFFFFFFu, 5);
    sm2_verify.null("Z", &SchemeArguments::Z);
    sm2_verify.refuses("a message of 2^32 - 1 bytes",
                       [](SchemeArguments &a) { a.msg.len_low = 0xFFFFFFFFu; });
}

void add_encryption() {
    const Target seal = target("sm2_Encry", &SchemeArguments::encrypt, -1);
    seal.null("key", &SchemeArguments::Q);
    seal.null("message", &SchemeArguments::message);
    seal.null("output", &SchemeArguments::descriptor);
    seal.refuses("no data", [](SchemeArguments &a) { a.msg.data = nullptr; });
    seal.refuses("no area", [](SchemeArguments &a) { a.out_msg.data = nullptr; });
    record_lengths(seal, &SchemeArguments::key);
    for (uint32_t size : {0u, 0x80000000u, 0xFFFFFFFFu})
        seal.refuses("a message of " + std::to_string(size) + " bytes",
                     [=](SchemeArguments &a) { a.msg.len_low = size; });
    for (uint32_t hash : {2u, 0x80000000u, 0xFFFFFFFFu})
        seal.refuses("selector " + std::to_string(hash), [=](SchemeArguments &a) { a.hash = hash; });
    without_curve(seal);

    const Target open = target("sm2_Decry", &SchemeArguments::decrypt, -1);
    scalars(open);
    open.null("ciphertext", &SchemeArguments::ciphertext);
    open.null("output", &SchemeArguments::descriptor);
    open.refuses("no data", [](SchemeArguments &a) { a.cipher.data = nullptr; });
    open.refuses("no area", [](SchemeArguments &a) { a.out_msg.data = nullptr; });
    for (uint32_t size : {0u, 1u, 65u, 96u, 97u, 0x80000061u, 0xFFFFFFFFu})
        open.refuses("a ciphertext of " + std::to_string(size) + " bytes",
                     [=](SchemeArguments &a) { a.cipher.len_low = size; });
    for (unsigned first : {0u, 2u, 3u, 5u, 6u, 7u, 0xFFu})
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
    open.refuses("first byte 0", [](SchemeArguments &a) { a.eces_bytes[0] = 0; });
    without_curve(open);
    for (uint32_t size : {231u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
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
    without_curve(deformat);
    for (uint32_t size : {0u, 1u, 2u, 10u}) {
        const Target block{"eces_format", 1, [=](SchemeArguments &a) {
                               return eces_format(size, a.bytes, 9, a.area, a.length);
                           }};
        block.refuses("a block of " + std::to_string(size) + " bytes", [](SchemeArguments &) {});
    }
    for (uint32_t size : {31u, 32u, 33u, 0xFFFFFFFFu}) {
        const Target block{"eces_deformat", 1, [=](SchemeArguments &a) {
                               return eces_deformat(a.bytes, size, a.area, a.length);
                           }};
        block.refuses("a block of " + std::to_string(size) + " bytes", [](SchemeArguments &a) {
            a.text.assign(40, 1);
            a.bytes = a.text.data();
        });
    }
}

const robustness::Rows keys(add_keys), signatures(add_signatures), encryption(add_encryption), eces(add_eces);

}  // namespace

}  // namespace zokecc_test::schemes_test
