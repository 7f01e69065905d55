// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Verification of arbitrary input, by every call: both generations give the same verdict, hashing inside
// the call equals hashing before it, and genuine signatures verify.
#include "fuzz/both_curves.h"
#include "tests/mint/kept_rules.h"
#include "tests/support/kdf_model.h"

using namespace zokecc_fuzz;

namespace {

struct Case {
    const Curve &c;
    uint32_t selector;
    Coordinates Q;
    ByteString r, s, Z, text;
};

bool in_range(const Case &given) {
    const Natural n(given.c.n), R(number_of(given.r)), S(number_of(given.s));
    return !R.is_zero() && !S.is_zero() && R < n && S < n;
}

uint32_t session_verdict(const Case &given, uint32_t algorithm, const ByteString &e) {
    const ECCrefPublicKey pub = public_record(given.Q);
    ECCSignature sig{};
    std::copy(given.r.begin(), given.r.end(), sig.r);
    std::copy(given.s.begin(), given.s.end(), sig.s);
    return SDF_ExternalVerify_ECC(session_of(given.c, given.selector), algorithm, &pub, e.data(),
                                  length_of(e), &sig);
}

void check_sm2(const Case &given) {
    const ByteString e = selected_digest(given.selector, joined({given.Z, given.text}));
    const uint32_t verdict = session_verdict(given, ZOK_ALG_SM2_SIGN, e);
    check(verdict == ZOK_OK || verdict == ZOK_ERR_VERIFY, "a verdict");
    check(in_range(given) || verdict == ZOK_ERR_VERIFY, "numbers out of range are refused");

    const ecc_point_bytes pub = point_record(given.Q), sig = point_record({given.r, given.s});
    ByteString text = given.text;
    const sm3_msg message{text.data(), 0, length_of(text)};
    const int32_t legacy = sm2_DigitalVeriy(&pub, &message, &sig, given.Z.data(), given.selector);
    check(legacy >= -1 && legacy <= 1, "a documented result");
    if (in_range(given)) check((legacy == 0) == (verdict == ZOK_OK), "both generations agree on SM2");
}

void check_ecdsa(const Case &given) {
    const ByteString e = selected_digest(given.selector, given.text);
    const uint32_t verdict = session_verdict(given, ZOK_ALG_ECDSA_SIGN, e);
    check(verdict == ZOK_OK || verdict == ZOK_ERR_VERIFY, "a verdict");
    check(in_range(given) || verdict == ZOK_ERR_VERIFY, "numbers out of range are refused");

    const ecc_point_bytes pub = point_record(given.Q), sig = point_record({given.r, given.s});
    ByteString text = given.text;
    const sm3_msg message{text.data(), 0, length_of(text)};
    const int32_t legacy = Ecdsa_DigitalVeriy(&pub, &message, &sig, given.selector);
    check(legacy == 0 || legacy == 1, "a documented result");
    if (in_range(given)) check((legacy == 1) == (verdict == ZOK_OK), "both generations agree on ECDSA");
    if ((Natural(number_of(given.s)) % Natural(given.c.n)).is_zero())
        check(legacy == 0, "a multiple of n is not a valid s");
}

// ZOK_ExternalVerifyHash_ECC, compared with Z, hash and SDF_ExternalVerify_ECC step by step.
void check_hashing(const Case &given, const ByteString &id) {
    void *session = session_of(given.c, given.selector);
    const ECCrefPublicKey pub = public_record(given.Q);
    ECCSignature sig{};
    std::copy(given.r.begin(), given.r.end(), sig.r);
    std::copy(given.s.begin(), given.s.end(), sig.s);
    ByteString Z(32);
    uint32_t length = 0;
    check(ZOK_GenerateUserInfo(session, &pub, id.data(), length_of(id), Z.data(), &length) == ZOK_OK, "Z");
    const ByteString e = selected_digest(given.selector, joined({Z, given.text}));
    check(ZOK_ExternalVerifyHash_ECC(session, ZOK_ALG_SM2_SIGN, &pub, given.text.data(),
                                     length_of(given.text), id.data(), length_of(id),
                                     &sig) == session_verdict(given, ZOK_ALG_SM2_SIGN, e),
          "hashing inside equals hashing before");
    check(ZOK_ExternalVerifyHash_ECC(session, ZOK_ALG_ECDSA_SIGN, &pub, given.text.data(),
                                     length_of(given.text), nullptr, 7, &sig) ==
              session_verdict(given, ZOK_ALG_ECDSA_SIGN, selected_digest(given.selector, given.text)),
          "for ECDSA, too");
}

// Records whose sizes have nothing to do with the curve.
void check_sizes(FuzzInput &input, const Curve &c) {
    ECCrefPublicKey pub{};
    pub.bits = input.flag() ? input.word() : input.below(600);
    const ByteString fields = input.bytes(256), e = input.bytes(input.below(90));
    std::copy_n(fields.begin(), 64, pub.x);
    std::copy_n(fields.begin() + 64, 64, pub.y);
    ECCSignature sig{};
    std::copy_n(fields.begin() + 128, 64, sig.r);
    std::copy_n(fields.begin() + 192, 64, sig.s);
    const uint32_t algorithms[] = {ZOK_ALG_SM2_SIGN, ZOK_ALG_ECDSA_SIGN, input.word()};
    const uint32_t status =
        SDF_ExternalVerify_ECC(session_of(c, 0), input.pick(algorithms), &pub, e.data(), length_of(e), &sig);
    const bool refused = pub.bits / 8 > 64 || e.size() > 76;
    check((status == ZOK_ERR_ARGUMENT) == refused, "sizes beyond the records are refused");

    ecc_point_bytes key{}, numbers{};
    std::copy_n(fields.begin(), 65, key.x);
    std::copy_n(fields.begin() + 65, 65, key.y);
    std::copy_n(fields.begin() + 130, 65, numbers.x);
    std::copy_n(fields.begin() + 191, 65, numbers.y);
    key.length = input.below(70);
    numbers.length = input.below(70);
    ByteString text = e;
    const sm3_msg message{text.data(), 0, length_of(text)};
    const uint32_t hash = input.below(3);
    const int32_t ecdsa = Ecdsa_DigitalVeriy(&key, &message, &numbers, hash);
    const int32_t sm2 = sm2_DigitalVeriy(&key, &message, &numbers, fields.data(), hash);
    const bool too_long = key.length > 65 || numbers.length > 65;
    check(!too_long || (ecdsa == 0 && sm2 == -1), "records that are too long are refused");
}

// KEPT: the signature verifies only if all its inverses are the true ones.
bool inverse_is_true(const Natural &x, const Natural &n) {
    return mod_mul(x % n, kept_inverse(x % n, n), n) == Natural(1);
}

void check_signing(FuzzInput &input, const Curve &c) {
    const uint32_t selector = input.below(2),
                   algorithm = input.flag() ? ZOK_ALG_SM2_SIGN : ZOK_ALG_ECDSA_SIGN;
    const mint d = input.reduced(c.n), k = input.reduced(c.n);
    const ByteString text = input.rest(60), key_bytes = fixed_bytes(d, c.byte_len);
    const ECCrefPrivateKey key = private_record(key_bytes);
    FakeEntropy entropy;
    entropy.queued_numbers.push_back(k);
    ECCSignature sig{};
    const uint32_t status = ZOK_ExternalSignHash_ECC(session_of(c, selector), algorithm, &key, text.data(),
                                                     length_of(text), nullptr, 0, &sig);
    const Natural n(c.n), D(d), K(k), one(1);
    const bool sm2 = algorithm == ZOK_ALG_SM2_SIGN;
    const bool usable = !D.is_zero() && !(sm2 && D + one == n);
    check(status == (usable ? ZOK_OK : ZOK_ERR_SIGN), "d decides");
    if (!usable || is_small(c) || entropy.number_calls != 1 || K.is_zero()) return;
    const ByteString r(sig.r, sig.r + c.byte_len), s(sig.s, sig.s + c.byte_len);
    const bool exact = sm2 ? inverse_is_true(D + one, n)
                           : inverse_is_true(K, n) && inverse_is_true(Natural(number_of(s)), n);
    if (!exact || all_zero(r)) return;
    const ECCrefPublicKey pub = public_record(multiple_of_G(c, d));
    check(ZOK_ExternalVerifyHash_ECC(session_of(c, selector), algorithm, &pub, text.data(), length_of(text),
                                     nullptr, 0, &sig) == ZOK_OK,
          "a genuine signature verifies");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    const uint32_t what = input.below(5);
    const Curve &c = both_curve(input);
    AllocLedger ledger(8);
    if (what == 3) {
        check_sizes(input, c);
        return 0;
    }
    if (what == 4) {
        check_signing(input, c);
        return 0;
    }
    const uint32_t selector = input.below(2);
    const Coordinates Q = point_bytes(input, c);
    const auto number = [&] {
        return input.flag() ? fixed_bytes(input.reduced(c.n), c.byte_len) : input.bytes(c.byte_len);
    };
    const ByteString r = number(), s = number(), Z = input.bytes(32);
    const Case given{c, selector, Q, r, s, Z, input.rest(100)};
    if (what == 0) check_sm2(given);
    if (what == 1) check_ecdsa(given);
    if (what == 2) check_hashing(given, Z);
    return 0;
}
