// Every pointer of the key, signature and user information calls null in turn, the null
// session before everything else, and the null pointers before everything but the session.
#include "tests/sdf/fixtures.h"

namespace zokecc_test::null_arguments_test {

namespace {

// Arguments that make every call succeed; a test takes one away, or spoils others as well.
struct Arguments {
    void *session = small_session();
    uint32_t key_algorithm = ZOK_ALG_SM2_KEY;
    uint32_t algorithm = ZOK_ALG_SM2_SIGN;
    uint32_t key_bits = 160;
    ByteString e_bytes = small_bytes(456);
    ByteString text = text_bytes("hello");
    ByteString name = text_bytes("ALICE");
    ECCrefPrivateKey private_record = small_private_key();
    ECCrefPublicKey public_record = small_public_key();
    ECCSignature signature_record = small_signature(226, 216);
    GuardedRecord<ECCrefPublicKey> pub_written;
    GuardedRecord<ECCrefPrivateKey> priv_written;
    GuardedRecord<ECCSignature> sig_written;
    GuardedBuffer z_written{32};
    GuardedRecord<uint32_t> z_len_written;

    const ECCrefPrivateKey *priv = &private_record;
    const ECCrefPublicKey *pub = &public_record;
    const ECCSignature *sig = &signature_record;
    ECCrefPublicKey *pub_out = pub_written.get();
    ECCrefPrivateKey *priv_out = priv_written.get();
    ECCSignature *sig_out = sig_written.get();
    uint8_t *z_out = z_written.data();
    uint32_t *z_len_out = z_len_written.get();
    const uint8_t *e = e_bytes.data();
    uint32_t e_len = 20;
    const uint8_t *message = text.data();
    uint32_t message_len = 5;
    const uint8_t *id = name.data();
    uint32_t id_len = 5;

    Arguments() = default;
    Arguments(const Arguments &) = delete;
    Arguments &operator=(const Arguments &) = delete;

    uint32_t generate() {
        return SDF_GenerateKeyPair_ECC(session, key_algorithm, key_bits, pub_out, priv_out);
    }
    uint32_t sign() { return SDF_ExternalSign_ECC(session, algorithm, priv, e, e_len, sig_out); }
    uint32_t verify() { return SDF_ExternalVerify_ECC(session, algorithm, pub, e, e_len, sig); }
    uint32_t user_info() { return ZOK_GenerateUserInfo(session, pub, id, id_len, z_out, z_len_out); }
    uint32_t sign_hash() {
        return ZOK_ExternalSignHash_ECC(session, algorithm, priv, message, message_len, id, id_len, sig_out);
    }
    uint32_t verify_hash() {
        return ZOK_ExternalVerifyHash_ECC(session, algorithm, pub, message, message_len, id, id_len, sig);
    }
    bool nothing_written() const {
        return pub_written.unchanged() && priv_written.unchanged() && sig_written.unchanged() &&
               z_written.untouched() && z_len_written.unchanged();
    }
    void spoil_values() {
        key_algorithm = kUnknownAlgorithm;
        key_bits = 159;
        private_record = small_private_key(0);
        signature_record = small_signature(0, 0);
    }
};

// Runs a call with changed arguments: the status, nothing written and nothing drawn.
template <class Change>
void expect_refused(uint32_t (Arguments::*call)(), uint32_t status, Change change) {
    Arguments arguments;
    change(arguments);
    FakeEntropy entropy;
    EXPECT_EQ((arguments.*call)(), status);
    EXPECT_TRUE(arguments.nothing_written());
    EXPECT_EQ(entropy.number_calls, 0u);
}

// Refused with 0x1000027, also when the values are bad as well.
template <class Change>
void expect_null_refused(uint32_t (Arguments::*call)(), Change change) {
    expect_refused(call, ZOK_ERR_ARGUMENT, change);
    expect_refused(call, ZOK_ERR_ARGUMENT, [&](Arguments &a) {
        a.spoil_values();
        change(a);
    });
}

void take_everything(Arguments &a) {
    a.spoil_values();
    a.session = nullptr;
    a.algorithm = kUnknownAlgorithm;
    a.priv = nullptr;
    a.pub = nullptr;
    a.sig = nullptr;
    a.pub_out = nullptr;
    a.priv_out = nullptr;
    a.sig_out = nullptr;
    a.z_out = nullptr;
    a.z_len_out = nullptr;
    a.e = nullptr;
    a.e_len = 77;
    a.message = nullptr;
    a.id = nullptr;
}

void take_session(Arguments &a) { a.session = nullptr; }

}  // namespace

TEST(SessionCalls, WorkWithAllArguments) {
    for (uint32_t (Arguments::*call)() : {&Arguments::generate, &Arguments::sign, &Arguments::verify,
                                          &Arguments::user_info, &Arguments::sign_hash}) {
        Arguments arguments;
        EXPECT_EQ((arguments.*call)(), ZOK_OK);
    }
    Arguments arguments;
    ASSERT_EQ(arguments.sign_hash(), ZOK_OK);
    arguments.signature_record = *arguments.sig_written.get();
    EXPECT_EQ(arguments.verify_hash(), ZOK_OK);
}

TEST(SessionCalls, NullSessionReturns1000026WhateverElseIsWrong) {
    for (uint32_t (Arguments::*call)() :
         {&Arguments::generate, &Arguments::sign, &Arguments::verify, &Arguments::user_info,
          &Arguments::sign_hash, &Arguments::verify_hash}) {
        expect_refused(call, ZOK_ERR_SESSION, take_session);
        expect_refused(call, ZOK_ERR_SESSION, take_everything);
    }
}

TEST(SdfGenerateKeyPairEcc, NullOutputReturns1000027) {
    expect_null_refused(&Arguments::generate, [](Arguments &a) { a.pub_out = nullptr; });
    expect_null_refused(&Arguments::generate, [](Arguments &a) { a.priv_out = nullptr; });
}

TEST(SdfGenerateKeyPairEcc, NullOutputWinsOverUnknownAlgorithm) {
    expect_refused(&Arguments::generate, ZOK_ERR_ARGUMENT, [](Arguments &a) {
        a.key_algorithm = kUnknownAlgorithm;
        a.pub_out = nullptr;
    });
}

TEST(SdfExternalSignEcc, NullKeyEOrOutputReturns1000027) {
    expect_null_refused(&Arguments::sign, [](Arguments &a) { a.priv = nullptr; });
    expect_null_refused(&Arguments::sign, [](Arguments &a) { a.e = nullptr; });
    expect_null_refused(&Arguments::sign, [](Arguments &a) { a.sig_out = nullptr; });
}

TEST(SdfExternalSignEcc, NullKeyWinsOverUnknownAlgorithm) {
    expect_refused(&Arguments::sign, ZOK_ERR_ARGUMENT, [](Arguments &a) {
        a.algorithm = kUnknownAlgorithm;
        a.priv = nullptr;
    });
}

TEST(SdfExternalSignEcc, NullEOfLengthZeroIsZero) {
    Arguments arguments;
    arguments.e = nullptr;
    arguments.e_len = 0;
    FakeEntropy entropy;
    queue_numbers(entropy, {77});
    EXPECT_EQ(arguments.sign(), ZOK_OK);
    expect_small_signature(arguments.sig_written, 761, 988);
}

TEST(SdfExternalVerifyEcc, NullKeyEOrSignatureReturns1000027) {
    expect_null_refused(&Arguments::verify, [](Arguments &a) { a.pub = nullptr; });
    expect_null_refused(&Arguments::verify, [](Arguments &a) { a.e = nullptr; });
    expect_null_refused(&Arguments::verify, [](Arguments &a) { a.sig = nullptr; });
}

TEST(SdfExternalVerifyEcc, NullSignatureWinsOverUnknownAlgorithm) {
    expect_refused(&Arguments::verify, ZOK_ERR_ARGUMENT, [](Arguments &a) {
        a.algorithm = kUnknownAlgorithm;
        a.sig = nullptr;
    });
}

TEST(SdfExternalVerifyEcc, NullEOfLengthZeroIsZero) {
    Arguments arguments;
    arguments.e = nullptr;
    arguments.e_len = 0;
    arguments.signature_record = small_signature(761, 988);
    EXPECT_EQ(arguments.verify(), ZOK_OK);
}

TEST(ZokGenerateUserInfo, NullKeyIdentityOrOutputReturns1000027) {
    expect_null_refused(&Arguments::user_info, [](Arguments &a) { a.pub = nullptr; });
    expect_null_refused(&Arguments::user_info, [](Arguments &a) { a.id = nullptr; });
    expect_null_refused(&Arguments::user_info, [](Arguments &a) { a.z_out = nullptr; });
    expect_null_refused(&Arguments::user_info, [](Arguments &a) { a.z_len_out = nullptr; });
}

TEST(ZokGenerateUserInfo, NullPointerWinsOverASizeAbove32Bits) {
    expect_refused(&Arguments::user_info, ZOK_ERR_ARGUMENT, [](Arguments &a) {
        a.id_len = 0xFFFFFFFF;
        a.z_out = nullptr;
    });
    expect_refused(&Arguments::user_info, ZOK_ERR_ARGUMENT, [](Arguments &a) {
        a.id_len = 0xFFFFFFFF;
        a.id = nullptr;
    });
}

TEST(ZokExternalSignHashEcc, NullPointerReturns1000027ForBothAlgorithms) {
    for (uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN}) {
        auto spoil = [algorithm](auto member) {
            expect_null_refused(&Arguments::sign_hash, [=](Arguments &a) {
                a.algorithm = algorithm;
                a.*member = nullptr;
            });
        };
        spoil(&Arguments::priv);
        spoil(&Arguments::message);
        spoil(&Arguments::sig_out);
    }
}

TEST(ZokExternalSignHashEcc, NullIdentityReturns1000027ForSm2) {
    expect_null_refused(&Arguments::sign_hash, [](Arguments &a) { a.id = nullptr; });
}

TEST(ZokExternalSignHashEcc, NullPointerWinsOverASizeAbove32Bits) {
    expect_refused(&Arguments::sign_hash, ZOK_ERR_ARGUMENT, [](Arguments &a) {
        a.message_len = 0xFFFFFFFF;
        a.sig_out = nullptr;
    });
    expect_refused(&Arguments::sign_hash, ZOK_ERR_ARGUMENT, [](Arguments &a) {
        a.message_len = 0xFFFFFFFF;
        a.message = nullptr;
    });
}

TEST(ZokExternalVerifyHashEcc, NullPointerReturns1000027ForBothAlgorithms) {
    for (uint32_t algorithm : {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN}) {
        auto spoil = [algorithm](auto member) {
            expect_null_refused(&Arguments::verify_hash, [=](Arguments &a) {
                a.algorithm = algorithm;
                a.*member = nullptr;
            });
        };
        spoil(&Arguments::pub);
        spoil(&Arguments::message);
        spoil(&Arguments::sig);
    }
}

TEST(ZokExternalVerifyHashEcc, NullIdentityReturns1000027ForSm2) {
    expect_null_refused(&Arguments::verify_hash, [](Arguments &a) { a.id = nullptr; });
}

TEST(ZokExternalVerifyHashEcc, NullPointerWinsOverASizeAbove32Bits) {
    expect_refused(&Arguments::verify_hash, ZOK_ERR_ARGUMENT, [](Arguments &a) {
        a.message_len = 0xFFFFFFFF;
        a.sig = nullptr;
    });
    expect_refused(&Arguments::verify_hash, ZOK_ERR_ARGUMENT, [](Arguments &a) {
        a.message_len = 0xFFFFFFFF;
        a.message = nullptr;
    });
}

}  // namespace zokecc_test::null_arguments_test
