// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Published ECDSA and SM2 signatures on the curves that Curve_Init supports, including the examples of GB/T
// 32918.2 and GM/T 0003.5. Z is the published one. On 256-bit curves the ECDSA calls follow the
// standard. On shorter ones the standard truncates the digest to the size of the order and these calls do
// not: there the signatures are checked with the equation s k = e + d r with the whole digest as e.
#include "tests/schemes/ecdsa_calls.h"
#include "tests/schemes/sm2_sign_calls.h"
#include "tests/support/legacy_records.h"
#include "tests/support/naive_int.h"

namespace zokecc_test::sign_vectors_test {

namespace {

Natural natural(const ByteString &bytes) { return Natural::from_hex(to_hex(bytes)); }

PointBytes pair_of(const VectorBlock &block) { return PointBytes(block.bytes("r"), block.bytes("s")); }

// One signature with the nonce of the block.
template <class Call>
struct Signed {
    template <class... Arguments>
    explicit Signed(const VectorBlock &block, const Arguments &...arguments)
        : call(block.bytes("d"), arguments...) {
        install(block.text("Curve"));
        queue_number(entropy, block.number("k"));
        EXPECT_EQ(call.run(block.hash()), 0);
        EXPECT_EQ(entropy.number_calls, 1u);
    }
    ByteString s() { return ByteString(call.sig->y, call.sig->y + call.sig->length); }
    FakeEntropy entropy;
    Call call;
};
struct EcdsaSigned : Signed<EcdsaSigning> {
    explicit EcdsaSigned(const VectorBlock &block) : Signed(block, block.bytes("Msg")) {}
};
struct Sm2Signed : Signed<Sm2Signing> {
    explicit Sm2Signed(const VectorBlock &block) : Signed(block, block.bytes("M"), block.bytes("Z")) {}
};

int32_t verify_ecdsa(const VectorBlock &block, const PointBytes &sig) {
    install(block.text("Curve"));
    return EcdsaVerification(PointBytes(block.bytes("Qx"), block.bytes("Qy")), sig, block.bytes("Msg"))
        .run(block.hash());
}
int32_t verify_sm2(const VectorBlock &block, const PointBytes &sig) {
    install(block.text("Curve"));
    return Sm2Verification(PointBytes(block.bytes("Px"), block.bytes("Py")), block.bytes("M"), sig,
                           block.bytes("Z"))
        .run(block.hash());
}

// Decided by the numbers alone: a zero, or an r not below the field prime.
int32_t expected_sm2(const VectorBlock &block) {
    if (block.is_valid()) return 0;
    const Natural r = natural(block.bytes("r")), s = natural(block.bytes("s"));
    return r.is_zero() || s.is_zero() || r >= Natural(global_curve.p) ? -1 : 1;
}

bool is_256_bit_signing(const VectorBlock &block) { return is_legacy_of_256_bits(block) && block.has("k"); }
bool is_shorter_signing(const VectorBlock &block) { return is_shorter_legacy(block) && block.has("k"); }
bool is_s_plus_n(const VectorBlock &block) {
    return is_legacy(block) && block.has("Reason") &&
           block.text("Reason") == "s + n (congruent, out of range)";
}
// Keys 1 and n - 2: 1 / (1 + d) is wrong for this order, which is full of equal words.
bool is_key_of_the_kept_inverse(const VectorBlock &block) {
    if (!is_legacy(block) || !block.has("k")) return false;
    const std::string &d = block.text("d");
    return d == "0000000000000000000000000000000000000000000000000000000000000001" ||
           d == "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54121";
}

}  // namespace

TEST(EcdsaVectors, SigningOn256BitCurves) {
    EXPECT_EQ(on_blocks("ecdsa.rsp", is_256_bit_signing,
                        [](const VectorBlock &block) {
                            EcdsaSigned made(block);
                            expect_record(made.call.sig, block.bytes("r"), block.bytes("s"));
                        }),
              32u);
}

TEST(EcdsaVectors, VerifyingOn256BitCurves) {
    EXPECT_EQ(on_blocks("ecdsa.rsp", is_legacy_of_256_bits,
                        [](const VectorBlock &block) {
                            EXPECT_EQ(verify_ecdsa(block, pair_of(block)), block.is_valid() ? 1 : 0);
                        }),
              88u);
}

TEST(EcdsaVectors, KeptWholeDigestIsSignedOnShorterCurves) {
    auto test = [](const VectorBlock &block) {
        EcdsaSigned made(block);
        const ByteString s = made.s();
        expect_record(made.call.sig, block.bytes("r"), s);
        const Natural n(global_curve.n);
        const Natural e = natural(selected_digest(block.hash(), block.bytes("Msg"))) % n;
        EXPECT_EQ(mod_mul(natural(s), natural(block.bytes("k")), n),
                  (e + mod_mul(natural(block.bytes("d")), natural(block.bytes("r")), n)) % n);
        EXPECT_LT(natural(s), n);
        EXPECT_NE(to_hex(s), block.text("s"));
        EXPECT_EQ(verify_ecdsa(block, PointBytes(block.bytes("r"), s)), 1);
    };
    EXPECT_EQ(on_blocks("ecdsa.rsp", is_shorter_signing, test), 44u);
}

TEST(EcdsaVectors, KeptWholeDigestRefusesStandardSignaturesOnShorterCurves) {
    EXPECT_EQ(on_blocks("ecdsa.rsp", is_shorter_legacy,
                        [](const VectorBlock &block) { EXPECT_EQ(verify_ecdsa(block, pair_of(block)), 0); }),
              78u);
}

TEST(EcdsaDigitalSign, DigestWithALeadingZeroWord) {
    // Both digests begin with four zero bytes, found by search. s k = e + d r and the signature
    // verifies, although the value of the SHA-256 digest is not trimmed.
    install("secp256r1");
    const Natural n(global_curve.n);
    const ByteString d = test_bytes(31, 2), k = test_bytes(32, 3);
    ecc_point_bytes Q{};
    Scalar key(d);
    ASSERT_EQ(Ecc_GenPubKey(key.get(), &Q), 0);
    for (uint32_t hash : kHashes) {
        const ByteString text =
            text_bytes(hash == HASH_ALG_SHA256 ? "zero digest fff22752" : "zero digest cca5dd2d");
        FakeEntropy entropy;
        queue_number(entropy, mint_from_hex(to_hex(k)));
        EcdsaSigning call(d, text);
        ASSERT_EQ(call.run(hash), 0);
        const ByteString digest = selected_digest(hash, text);
        ASSERT_EQ(to_hex(digest.data(), 4), "00000000");
        const Natural r = Natural::from_hex(to_hex(call.sig->x, 32));
        const Natural s = Natural::from_hex(to_hex(call.sig->y, 32));
        EXPECT_EQ(mod_mul(s, natural(k), n), (natural(digest) + mod_mul(natural(d), r, n)) % n);
        EXPECT_EQ(Ecdsa_DigitalVeriy(&Q, call.msg.get(), call.sig.get(), hash), 1);
    }
}

TEST(Sm2SignVectors, Signing) {
    EXPECT_EQ(on_blocks(
                  "sm2_sign.rsp",
                  [](const VectorBlock &block) {
                      return is_legacy(block) && block.has("k") && !is_key_of_the_kept_inverse(block);
                  },
                  [](const VectorBlock &block) {
                      Sm2Signed made(block);
                      expect_record(made.call.sig, block.bytes("r"), block.bytes("s"));
                  }),
              31u);
}

TEST(Sm2SignVectors, Verifying) {
    auto test = [](const VectorBlock &block) {
        const int32_t status = verify_sm2(block, pair_of(block));
        EXPECT_EQ(status, is_s_plus_n(block) ? 0 : expected_sm2(block));
    };
    EXPECT_EQ(on_blocks("sm2_sign.rsp", is_legacy, test), 77u);
}

TEST(Sm2SignVectors, KeptSPlusTheOrderIsAccepted) {
    EXPECT_EQ(on_blocks("sm2_sign.rsp", is_s_plus_n,
                        [](const VectorBlock &block) { EXPECT_EQ(verify_sm2(block, pair_of(block)), 0); }),
              1u);
}

TEST(Sm2SignVectors, KeptInverseChangesTheSignaturesOfTwoKeys) {
    auto test = [](const VectorBlock &block) {
        Sm2Signed made(block);
        expect_record(made.call.sig, block.bytes("r"), made.s());
        EXPECT_NE(to_hex(made.s()), block.text("s"));
        EXPECT_EQ(verify_sm2(block, PointBytes(block.bytes("r"), made.s())), 1);
    };
    EXPECT_EQ(on_blocks("sm2_sign.rsp", is_key_of_the_kept_inverse, test), 2u);
}

TEST(Sm2SignVectors, KeptInverseOfTwoSignsForTheKeyOne) {
    // 1 / 2 is computed as the number below; the true inverse has all ones in its words 4 and 5.
    const Natural half =
        Natural::from_hex("7fffffff7ffffffffffffffefffffffeb901efb590e30295a9ddfa049ceaa092");
    auto test = [&](const VectorBlock &block) {
        Sm2Signed made(block);
        const Natural n(global_curve.n);
        const Natural difference = (natural(block.bytes("k")) + n - natural(block.bytes("r"))) % n;
        EXPECT_EQ(natural(made.s()), mod_mul(half, difference, n));
    };
    auto of_key_one = [](const VectorBlock &block) {
        return is_key_of_the_kept_inverse(block) && natural(block.bytes("d")) == Natural(1);
    };
    EXPECT_EQ(on_blocks("sm2_sign.rsp", of_key_one, test), 1u);
}

}  // namespace zokecc_test::sign_vectors_test
