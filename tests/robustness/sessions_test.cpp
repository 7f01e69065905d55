// Bad inputs of the session calls but those of key agreement: null, records with wrong sizes, unknown
// algorithms, scalars of 0, n, n + 1 and all ones, no curve, an unknown hash.
#include "tests/robustness/bad_inputs.h"
#include "tests/robustness/session_arguments.h"

namespace zokecc_test::sessions_test {

using namespace robustness;

namespace {

using Spoil = std::function<void(SessionArguments &)>;

void refuses(const NamedSessionCall &call, uint32_t status, const std::string &input, const Spoil &spoil) {
    const SessionCall run = call.call;
    bad(call.name, input, [=] {
        SessionArguments arguments;
        spoil(arguments);
        FakeEntropy entropy;
        FailingAlloc counter;
        EXPECT_EQ((arguments.*run)(), status);
        EXPECT_TRUE(arguments.nothing_written());
        EXPECT_EQ(entropy.number_calls + entropy.calls(), 0u);
        EXPECT_EQ(counter.outstanding, 0);
    });
}

template <class Pointer>
void null(const NamedSessionCall &call, const char *what, Pointer SessionArguments::*argument) {
    refuses(call, ZOK_ERR_ARGUMENT, std::string("no ") + what,
            [=](SessionArguments &a) { a.*argument = nullptr; });
}

void add_pointers() {
    for (const NamedSessionCall &call : all_session_calls())
        refuses(call, ZOK_ERR_SESSION, "no session", [](SessionArguments &a) { a.session = nullptr; });
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
    for (const NamedSessionCall &call : {kUserInfo, kSignHash, kVerifyHash})
        null(call, "identity", &SessionArguments::id);
    for (const NamedSessionCall &call : {kSignHash, kVerifyHash, kEncrypt, kFlatEncrypt})
        null(call, "message", &SessionArguments::message);
    for (const NamedSessionCall &call : {kUserInfo, kDecrypt, kFlatEncrypt, kFlatDecrypt, kEcdh})
        null(call, "output", &SessionArguments::out);
    for (const NamedSessionCall &call : {kUserInfo, kDecrypt, kFlatEncrypt, kFlatDecrypt})
        null(call, "length", &SessionArguments::out_len);
    null(kEncrypt, "output", &SessionArguments::cipher_out);
    null(kDecrypt, "ciphertext", &SessionArguments::cipher);
    null(kFlatDecrypt, "ciphertext", &SessionArguments::flat);
}

void add_sizes() {
    for (uint32_t bits : {520u, 527u, 0x80000000u, 0xFFFFFFFFu}) {
        const std::string what = std::to_string(bits) + " bits";
        for (const NamedSessionCall &call : {kSign, kSignHash, kDecrypt, kFlatDecrypt, kEcdh})
            refuses(call, ZOK_ERR_ARGUMENT, what, [=](SessionArguments &a) { a.private_record.bits = bits; });
        for (const NamedSessionCall &call : {kVerify, kVerifyHash, kEncrypt, kFlatEncrypt, kEcdh})
            refuses(call, ZOK_ERR_ARGUMENT, what, [=](SessionArguments &a) { a.public_record.bits = bits; });
    }
    for (uint32_t bits : {0u, 159u, 161u, 256u, 0xFFFFFFFFu})
        refuses(kGenerate, ZOK_ERR_ARGUMENT, std::to_string(bits) + " bits",
                [=](SessionArguments &a) { a.key_bits = bits; });
    for (uint32_t size : {77u, 0x80000000u, 0xFFFFFFFFu})
        for (const NamedSessionCall &call : {kSign, kVerify})
            refuses(call, ZOK_ERR_ARGUMENT, "e of " + std::to_string(size) + " bytes",
                    [=](SessionArguments &a) { a.e_len = size; });
    for (uint32_t size : {0u, 1u, 19u, 21u, 0xFFFFFFFFu})
        refuses(kEncrypt, ZOK_ERR_ARGUMENT, "a message of " + std::to_string(size) + " bytes",
                [=](SessionArguments &a) { a.message_len = size; });
    for (uint32_t size : {0u, 0x80000000u, 0xFFFFFFFFu})
        refuses(kFlatEncrypt, ZOK_ERR_ARGUMENT, "a message of " + std::to_string(size) + " bytes",
                [=](SessionArguments &a) { a.message_len = size; });
    for (uint32_t size : {0u, 1u, 41u, 72u, 73u, 0x80000049u, 0xFFFFFFFFu})
        refuses(kFlatDecrypt, ZOK_ERR_ARGUMENT, "a ciphertext of " + std::to_string(size) + " bytes",
                [=](SessionArguments &a) { a.flat_len = size; });
    for (uint32_t size : {0xFFFFFFFFu, 0xFFFFFF86u})
        refuses(kUserInfo, ZOK_ERR_INTERNAL, "an identity of " + std::to_string(size) + " bytes",
                [=](SessionArguments &a) { a.id_len = size; });
    for (const NamedSessionCall &call : {kSignHash, kVerifyHash})
        refuses(call, ZOK_ERR_INTERNAL, "a message of 2^32 - 1 bytes",
                [](SessionArguments &a) { a.message_len = 0xFFFFFFFFu; });
}

void add_values() {
    for (const ByteString &d :
         {small_bytes(kSmallN), small_bytes(kSmallN + 1), ByteString(20, 0xFF), ByteString(64, 0xFF)}) {
        const Spoil spoil = [=](SessionArguments &a) { a.private_record = private_key(d); };
        for (const NamedSessionCall &call : {kDecrypt, kFlatDecrypt, kEcdh})
            refuses(call, ZOK_ERR_ARGUMENT, "d = " + to_hex(d), spoil);
        refuses(kSign, ZOK_ERR_SIGN, "d = " + to_hex(d), spoil);
        // A d wider than the table leaves a digit buffer behind: it has a row among the allocations.
        if (d.size() == 20 && d[0] == 0) refuses(kSignHash, ZOK_ERR_SIGN, "d = " + to_hex(d), spoil);
    }
    for (uint32_t d : {0u, kSmallN - 1})
        for (const NamedSessionCall &call : {kSign, kSignHash})
            refuses(call, ZOK_ERR_SIGN, "d = " + std::to_string(d),
                    [=](SessionArguments &a) { a.private_record = small_private_key(d); });
    for (auto [r, s] : {std::pair{0u, 5u},
                        {5u, 0u},
                        {kSmallN, 5u},
                        {5u, kSmallN},
                        {kSmallN + 1, 5u},
                        {5u, kSmallN + 1},
                        {0xFFFFFFFFu, 5u},
                        {5u, kSmallN - 5}})
        for (const NamedSessionCall &call : {kVerify, kVerifyHash})
            refuses(call, ZOK_ERR_VERIFY, "r = " + std::to_string(r) + ", s = " + std::to_string(s),
                    [r = r, s = s](SessionArguments &a) { a.numbers = small_signature(r, s); });
    for (auto [x, y] : {std::pair{0u, 0u}, {0u, 763u}, {346u, 0u}})
        for (const NamedSessionCall &call : {kEncrypt, kFlatEncrypt})
            refuses(call, ZOK_ERR_ARGUMENT,
                    "the point (" + std::to_string(x) + ", " + std::to_string(y) + ")",
                    [x = x, y = y](SessionArguments &a) { a.public_record = small_public_key(x, y); });
    for (unsigned first : {0u, 2u, 3u, 5u, 0xFFu})
        refuses(kFlatDecrypt, ZOK_ERR_ARGUMENT, "first byte " + std::to_string(first),
                [=](SessionArguments &a) { a.flat_bytes[0] = static_cast<uint8_t>(first); });
}

void add_algorithms() {
    for (uint32_t algorithm : {0u, 1u, 0x20000u, 0x20101u, 0x20200u, 0x40400u, 0x80000000u, 0xFFFFFFFFu}) {
        const std::string what = "algorithm " + std::to_string(algorithm);
        const Spoil spoil = [=](SessionArguments &a) { a.algorithm = algorithm; };
        for (const NamedSessionCall &call : {kSign, kVerify, kSignHash, kVerifyHash})
            refuses(call, ZOK_ERR_INTERNAL, what, spoil);
        if (algorithm != ZOK_ALG_MULTIPLICATIVE)
            for (const NamedSessionCall &call : {kEncrypt, kDecrypt})
                refuses(call, ZOK_ERR_INTERNAL, what, [=](SessionArguments &a) { a.encryption = algorithm; });
        if (algorithm != ZOK_ALG_SM2_KEY)
            refuses(kGenerate, ZOK_ERR_INTERNAL, what,
                    [=](SessionArguments &a) { a.key_algorithm = algorithm; });
    }
}

// A session without a curve, and one whose hash selector names nothing.
void add_sessions() {
    const Spoil no_curve = [](SessionArguments &a) {
        static const CurvelessSession session;
        a.session = session.handle();
    };
    for (const NamedSessionCall &call : all_session_calls()) {
        uint32_t status = ZOK_ERR_ARGUMENT;
        if (call.call == kSign.call) status = ZOK_ERR_SIGN;
        if (call.call == kVerify.call) status = ZOK_ERR_VERIFY;
        refuses(call, status, "no curve", no_curve);
    }
    const Spoil no_hash = [](SessionArguments &a) { a.session = small_session(kUnknownSelector); };
    for (const NamedSessionCall &call : {kSignHash, kVerifyHash, kEncrypt, kFlatEncrypt})
        refuses(call, ZOK_ERR_ARGUMENT, "an unknown hash", no_hash);
    refuses(kUserInfo, ZOK_ERR_INTERNAL, "an unknown hash", no_hash);
    for (const NamedSessionCall &call : {kSignHash, kVerifyHash})
        refuses(call, ZOK_ERR_INTERNAL, "an unknown hash for ECDSA", [=](SessionArguments &a) {
            no_hash(a);
            a.algorithm = ZOK_ALG_ECDSA_SIGN;
        });
    for (const NamedSessionCall &call : {kDecrypt, kFlatDecrypt}) {
        const SessionCall run = call.call;
        bad(call.name, "an unknown hash", [=] {
            SessionArguments arguments;
            no_hash(arguments);
            EXPECT_EQ((arguments.*run)(), ZOK_ERR_ARGUMENT);
            EXPECT_TRUE(arguments.nothing_written());
        });
    }
}

const Rows pointers(add_pointers), sizes(add_sizes), values(add_values), algorithms(add_algorithms),
    sessions(add_sessions);

}  // namespace

}  // namespace zokecc_test::sessions_test
