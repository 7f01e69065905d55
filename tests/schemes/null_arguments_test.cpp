// Every call with each pointer that it needs null in turn, and lengths beyond their fields.
#include "tests/schemes/scheme_arguments.h"

namespace zokecc_test::null_arguments_test {

namespace {

template <class Spoil>
void expect_refused(SchemeCall call, int32_t status, Spoil spoil) {
    for (uint32_t hash : kHashes) {
        install_small(32);
        expect_scheme_refuses(call, status, [&](SchemeArguments &a) {
            a.hash = hash;
            spoil(a);
        });
    }
}

// Null in place of the argument.
template <class Pointer>
void expect_null_refused(SchemeCall call, int32_t status, Pointer SchemeArguments::*argument) {
    expect_refused(call, status, [=](SchemeArguments &a) { a.*argument = nullptr; });
}

// A scalar without its record, without its bytes, and with too many of them.
void expect_bad_scalars_refused(SchemeCall call, int32_t status, uint32_t mode = 0) {
    auto spoilt = [=](auto change) {
        expect_refused(call, status, [=](SchemeArguments &a) {
            a.mode = mode;
            change(a);
        });
    };
    spoilt([](SchemeArguments &a) { a.d = nullptr; });
    spoilt([](SchemeArguments &a) { a.scalar.bytes = nullptr; });
    for (uint32_t length : {77u, 0x80000000u, 0xFFFFFFFFu})
        spoilt([length](SchemeArguments &a) { a.scalar.length = length; });
}

// A point or signature without its record, and with lengths beyond its fields.
void expect_bad_point_refused(SchemeCall call, int32_t status,
                              const ecc_point_bytes *SchemeArguments::*argument,
                              PointBytes SchemeArguments::*record) {
    expect_null_refused(call, status, argument);
    for (uint32_t length : {66u, 0x80000000u, 0xFFFFFFFFu})
        expect_refused(call, status, [=](SchemeArguments &a) { (a.*record).set_length(length); });
}

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
    EXPECT_EQ(SchemeArguments().sm2_verify(), 1);  // here as well
    EXPECT_EQ(SchemeArguments().encrypt(), 0);
    SchemeArguments decryption;
    EXPECT_EQ(decryption.decrypt(), -1);
    EXPECT_EQ(decryption.out_msg.len_low, 4u);
}

TEST(EcdsaDigitalSign, NullArgumentReturnsMinusOne) {
    expect_bad_scalars_refused(&SchemeArguments::ecdsa_sign, -1);
    expect_null_refused(&SchemeArguments::ecdsa_sign, -1, &SchemeArguments::message);
    expect_null_refused(&SchemeArguments::ecdsa_sign, -1, &SchemeArguments::point);
}

TEST(EcdsaDigitalSign, NullMessageBytesReturnMinusOneForSm3) {
    install_small(32);
    expect_scheme_refuses(&SchemeArguments::ecdsa_sign, -1, [](SchemeArguments &a) { a.msg.data = nullptr; });
}

TEST(EcdsaDigitalVeriy, NullArgumentReturnsZero) {
    expect_bad_point_refused(&SchemeArguments::ecdsa_verify, 0, &SchemeArguments::Q, &SchemeArguments::key);
    expect_bad_point_refused(&SchemeArguments::ecdsa_verify, 0, &SchemeArguments::sig,
                             &SchemeArguments::numbers);
    expect_null_refused(&SchemeArguments::ecdsa_verify, 0, &SchemeArguments::message);
}

TEST(EcdsaDigitalVeriy, NullMessageBytesReturnZeroForSm3) {
    install_small(32);
    expect_scheme_refuses(&SchemeArguments::ecdsa_verify, 0,
                          [](SchemeArguments &a) { a.msg.data = nullptr; });
}

TEST(EcdhKeyExChg, NullArgumentReturnsMinusOne) {
    expect_bad_scalars_refused(&SchemeArguments::exchange, -1);
    expect_bad_point_refused(&SchemeArguments::exchange, -1, &SchemeArguments::Q, &SchemeArguments::key);
    expect_null_refused(&SchemeArguments::exchange, -1, &SchemeArguments::area);
}

TEST(EcesEncry, NullArgumentReturnsMinusOne) {
    expect_bad_point_refused(&SchemeArguments::eces_encry, -1, &SchemeArguments::Q, &SchemeArguments::key);
    expect_null_refused(&SchemeArguments::eces_encry, -1, &SchemeArguments::bytes);
    expect_null_refused(&SchemeArguments::eces_encry, -1, &SchemeArguments::area);
}

TEST(EcesDecry, NullArgumentReturnsMinusOne) {
    expect_bad_scalars_refused(&SchemeArguments::eces_decry, -1);
    expect_null_refused(&SchemeArguments::eces_decry, -1, &SchemeArguments::eces);
    expect_null_refused(&SchemeArguments::eces_decry, -1, &SchemeArguments::area);
}

TEST(EcesDecry, NullCiphertextOfLengthZeroReturnsMinusOne) {
    // The prefix is not counted, and has to be there all the same.
    install_small(32);
    SchemeArguments a;
    EXPECT_EQ(Eces_Decry(a.d, nullptr, 0, a.area), -1);
    EXPECT_TRUE(a.outputs_untouched());
}

TEST(EccGenPubKey, NullArgumentReturnsMinusOne) {
    expect_bad_scalars_refused(&SchemeArguments::public_key, -1);
    expect_null_refused(&SchemeArguments::public_key, -1, &SchemeArguments::point);
}

TEST(EccKeyPairGen, NullArgumentReturnsMinusOne) {
    for (uint32_t mode : {0u, 1u, 2u}) {
        expect_refused(&SchemeArguments::key_pair, -1, [mode](SchemeArguments &a) {
            a.mode = mode;
            a.point = nullptr;
        });
    }
    for (uint32_t mode : {0u, 1u}) {
        expect_refused(&SchemeArguments::key_pair, -1, [mode](SchemeArguments &a) {
            a.mode = mode;
            a.d = nullptr;
        });
        expect_refused(&SchemeArguments::key_pair, -1, [mode](SchemeArguments &a) {
            a.mode = mode;
            a.scalar.bytes = nullptr;
        });
    }
    expect_bad_scalars_refused(&SchemeArguments::key_pair, -1, 1);
}

TEST(EcesFormat, NullArgumentReturnsOne) {
    expect_null_refused(&SchemeArguments::format, 1, &SchemeArguments::bytes);
    expect_null_refused(&SchemeArguments::format, 1, &SchemeArguments::area);
    expect_null_refused(&SchemeArguments::format, 1, &SchemeArguments::length);
}

TEST(EcesDeformat, NullArgumentReturnsOne) {
    expect_null_refused(&SchemeArguments::deformat, 1, &SchemeArguments::bytes);
    expect_null_refused(&SchemeArguments::deformat, 1, &SchemeArguments::area);
    expect_null_refused(&SchemeArguments::deformat, 1, &SchemeArguments::length);
}

TEST(Sm2DigitalSign, NullArgumentReturnsMinusOne) {
    expect_bad_scalars_refused(&SchemeArguments::sm2_sign, -1);
    expect_null_refused(&SchemeArguments::sm2_sign, -1, &SchemeArguments::message);
    expect_null_refused(&SchemeArguments::sm2_sign, -1, &SchemeArguments::Z);
    expect_null_refused(&SchemeArguments::sm2_sign, -1, &SchemeArguments::point);
    expect_refused(&SchemeArguments::sm2_sign, -1, [](SchemeArguments &a) { a.msg.data = nullptr; });
}

TEST(Sm2DigitalVeriy, NullArgumentReturnsMinusOne) {
    expect_bad_point_refused(&SchemeArguments::sm2_verify, -1, &SchemeArguments::Q, &SchemeArguments::key);
    expect_bad_point_refused(&SchemeArguments::sm2_verify, -1, &SchemeArguments::sig,
                             &SchemeArguments::numbers);
    expect_null_refused(&SchemeArguments::sm2_verify, -1, &SchemeArguments::message);
    expect_null_refused(&SchemeArguments::sm2_verify, -1, &SchemeArguments::Z);
    expect_refused(&SchemeArguments::sm2_verify, -1, [](SchemeArguments &a) { a.msg.data = nullptr; });
}

TEST(Sm2Encry, NullArgumentReturnsMinusOne) {
    expect_bad_point_refused(&SchemeArguments::encrypt, -1, &SchemeArguments::Q, &SchemeArguments::key);
    expect_null_refused(&SchemeArguments::encrypt, -1, &SchemeArguments::message);
    expect_null_refused(&SchemeArguments::encrypt, -1, &SchemeArguments::descriptor);
    expect_refused(&SchemeArguments::encrypt, -1, [](SchemeArguments &a) { a.msg.data = nullptr; });
    expect_refused(&SchemeArguments::encrypt, -1, [](SchemeArguments &a) { a.out_msg.data = nullptr; });
}

TEST(Sm2Decry, NullArgumentReturnsMinusOne) {
    expect_bad_scalars_refused(&SchemeArguments::decrypt, -1);
    expect_null_refused(&SchemeArguments::decrypt, -1, &SchemeArguments::ciphertext);
    expect_null_refused(&SchemeArguments::decrypt, -1, &SchemeArguments::descriptor);
    expect_refused(&SchemeArguments::decrypt, -1, [](SchemeArguments &a) { a.cipher.data = nullptr; });
    expect_refused(&SchemeArguments::decrypt, -1, [](SchemeArguments &a) { a.out_msg.data = nullptr; });
}

}  // namespace zokecc_test::null_arguments_test
