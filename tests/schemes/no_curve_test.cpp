// Every call while the process has no curve, or one whose order or field prime is zero.
#include "tests/schemes/scheme_arguments.h"

namespace zokecc_test::no_curve_test {

namespace {

void remove_order() { global_curve.n = mint{}; }
void remove_prime() { global_curve.p = mint{}; }

// Zero held in one word.
void order_of_one_zero_word() { global_curve.n = zero_in_one_word(); }
void prime_of_one_zero_word() { global_curve.p = zero_in_one_word(); }

void expect_refused(SchemeCall call, int32_t status, uint32_t mode = 0) {
    for (uint32_t hash : {HASH_ALG_SM3, HASH_ALG_SHA256, kUnknownHash}) {
        auto set = [=](SchemeArguments &a) {
            a.hash = hash;
            a.mode = mode;
        };
        uninstall();
        expect_scheme_refuses(call, status, set);
        for (void (*spoil)() : {remove_order, remove_prime, order_of_one_zero_word, prime_of_one_zero_word}) {
            install_small(32);
            spoil();
            expect_scheme_refuses(call, status, set);
        }
    }
    uninstall();
}

}  // namespace

TEST(EcdsaDigitalSign, WithoutACurveReturnsMinusOne) { expect_refused(&SchemeArguments::ecdsa_sign, -1); }
TEST(EcdsaDigitalVeriy, WithoutACurveReturnsZero) { expect_refused(&SchemeArguments::ecdsa_verify, 0); }
TEST(EcdhKeyExChg, WithoutACurveReturnsMinusOne) { expect_refused(&SchemeArguments::exchange, -1); }
TEST(EcesEncry, WithoutACurveReturnsMinusOne) { expect_refused(&SchemeArguments::eces_encry, -1); }
TEST(EcesDecry, WithoutACurveReturnsMinusOne) { expect_refused(&SchemeArguments::eces_decry, -1); }
TEST(EccGenPubKey, WithoutACurveReturnsMinusOne) { expect_refused(&SchemeArguments::public_key, -1); }
TEST(Sm2DigitalSign, WithoutACurveReturnsMinusOne) { expect_refused(&SchemeArguments::sm2_sign, -1); }
TEST(Sm2DigitalVeriy, WithoutACurveReturnsMinusOne) { expect_refused(&SchemeArguments::sm2_verify, -1); }
TEST(Sm2Encry, WithoutACurveReturnsMinusOne) { expect_refused(&SchemeArguments::encrypt, -1); }
TEST(Sm2Decry, WithoutACurveReturnsMinusOne) { expect_refused(&SchemeArguments::decrypt, -1); }

TEST(EccKeyPairGen, WithoutACurveReturnsMinusOneInBothModes) {
    expect_refused(&SchemeArguments::key_pair, -1, 0);
    expect_refused(&SchemeArguments::key_pair, -1, 1);
}

TEST(EccKeyPairGen, KeptUnknownModeWithoutACurveWritesTheLengthOnly) {
    uninstall();
    SchemeArguments a;
    a.mode = 2;
    EXPECT_EQ(a.key_pair(), 0);
    expect_record(a.written, ByteString(), ByteString());
}

TEST(EccKeyPairGen, KeptUnknownModeWithoutOrderOrPrimeGivesZeroBytes) {
    for (void (*spoil)() : {remove_order, remove_prime}) {
        install_small(28);
        spoil();
        SchemeArguments a;
        a.mode = 7;
        EXPECT_EQ(a.key_pair(), 0);
        expect_record(a.written, 0, 0, 28);
    }
    uninstall();
}

TEST(EcdsaDigitalVeriy, WithoutACurveRZeroAndSZeroReturnZero) {
    // Every number is a multiple of an order of zero.
    uninstall();
    SchemeArguments a;
    PointBytes zeros(0, 0, 32);
    PointBytes nothing{ByteString(), ByteString()};
    for (PointBytes *sig : {&zeros, &nothing}) {
        a.sig = sig->get();
        EXPECT_EQ(a.ecdsa_verify(), 0);
        a.hash = kUnknownHash;
        EXPECT_EQ(a.ecdsa_verify(), 0);
    }
}

TEST(EcesFormat, WorksWithoutACurve) {
    uninstall();
    SchemeArguments a;
    EXPECT_EQ(a.format(), 0);
    EXPECT_EQ(a.out_len, 32u);
}

TEST(EcesDeformat, WithoutACurveReturnsOneForEveryLength) {
    uninstall();
    for (uint32_t length : {0u, 1u, 9u}) {
        SchemeArguments a;
        EXPECT_EQ(eces_deformat(a.bytes, length, a.area, a.length), 1);
        EXPECT_TRUE(a.outputs_untouched());
    }
}

TEST(EcesDeformat, CurveLengthBelowTwoReturnsOne) {
    install_small(32);
    for (uint32_t L : {0u, 1u}) {
        global_curve.byte_len = L;
        for (uint32_t length : {0u, 1u, 0xFFFFFFFFu}) {
            SchemeArguments a;
            EXPECT_EQ(eces_deformat(a.bytes, length, a.area, a.length), 1);
            EXPECT_TRUE(a.outputs_untouched());
        }
    }
    uninstall();
}

}  // namespace zokecc_test::no_curve_test
