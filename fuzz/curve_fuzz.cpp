// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Unchecked curves: any record is installed, in a session and for the process, and every
// call is made on it. Each call must terminate, return one of its documented codes, and write no further
// than documented.
#include "fuzz/both_curves.h"

using namespace zokecc_fuzz;

namespace {

// Field primes are usually short: the table of an eight-word prime takes longer than everything else.
void fill_field(FuzzInput &input, uint8_t *field, size_t L) {
    const size_t used = input.below(16) == 15 ? L : input.below(9);
    const ByteString bytes = input.bytes(used);
    std::copy(bytes.begin(), bytes.end(), field + L - used);
}

template <class Record>
void fill_record(FuzzInput &input, Record &record, size_t L) {
    if (input.flag()) {  // the small curve, with one field replaced
        const CurvePara small = small_of(32, 4).record(0);
        const uint8_t *from[] = {small.p, small.a, small.b, small.Gx, small.Gy, small.n};
        uint8_t *to[] = {record.p, record.a, record.b, record.Gx, record.Gy, record.n};
        for (size_t i = 0; i < 6; ++i) std::copy(from[i] + 32 - L, from[i] + 32, to[i]);
        const uint32_t replaced = input.below(7);
        if (replaced < 6) fill_field(input, to[replaced], L);
        return;
    }
    for (uint8_t *field : {record.p, record.a, record.b, record.Gx, record.Gy, record.n})
        fill_field(input, field, L);
}

bool known_status(uint32_t status) {
    return status == ZOK_OK || status == ZOK_ERR_ARGUMENT || status == ZOK_ERR_INTERNAL ||
           status == ZOK_ERR_SIGN || status == ZOK_ERR_VERIFY;
}

struct SessionCase {
    void *session;
    ECCrefPrivateKey d, r;
    ECCrefPublicKey P, R;
    ByteString text;
    size_t L;
};

void signing_calls(const SessionCase &x, uint32_t algorithm) {
    GuardedRecord<ECCSignature> sig;
    const uint8_t *text = x.text.data();
    const uint32_t size = length_of(x.text);
    check(known_status(SDF_ExternalSign_ECC(x.session, algorithm, &x.d, text, size, sig.get())), "signing");
    check(
        known_status(ZOK_ExternalSignHash_ECC(x.session, algorithm, &x.d, text, size, text, size, sig.get())),
        "hashing and signing");
    check(sig.guards_intact(), "nothing outside a signature");
    check(known_status(SDF_ExternalVerify_ECC(x.session, algorithm, &x.P, text, size, sig.get())),
          "verifying");
    check(known_status(
              ZOK_ExternalVerifyHash_ECC(x.session, algorithm, &x.P, text, size, text, size, sig.get())),
          "hashing and verifying");
}

void encryption_calls(const SessionCase &x, uint32_t algorithm) {
    const ByteString message(x.L, 0x42);
    GuardedRecord<ECCCipher> cipher;
    GuardedBuffer plain(64), flat(2 * x.L + 33 + x.text.size()), flat_plain(x.text.size());
    uint32_t length = 0;
    const uint32_t status =
        SDF_ExternalEncrytp_ECC(x.session, algorithm, &x.P, message.data(), length_of(message), cipher.get());
    check(known_status(status) && cipher.guards_intact(), "encrypting a record");
    check(known_status(
              SDF_ExternalDecrypt_ECC(x.session, algorithm, &x.d, cipher.get(), plain.data(), &length)),
          "decrypting a record");
    check(plain.untouched_from(x.L), "nothing outside the plaintext");
    check(known_status(ZOK_ExternalEncrytp_ECC(x.session, &x.P, x.text.data(),
                                               static_cast<int32_t>(x.text.size()), flat.data(), &length)),
          "encrypting a string");
    *flat.data() = 4;
    check(known_status(ZOK_ExternalDecrypt_ECC(
              x.session, &x.d, flat.data(), static_cast<uint32_t>(flat.size()), flat_plain.data(), &length)),
          "decrypting a string");
    check(flat.untouched_from(flat.size()) && flat_plain.untouched_from(flat_plain.size()), "their areas");
}

void key_calls(const SessionCase &x) {
    GuardedRecord<ECCrefPublicKey> pub;
    GuardedRecord<ECCrefPrivateKey> priv;
    GuardedBuffer secret(x.L), Z(32);
    uint32_t length = 0;
    const uint32_t bits = static_cast<uint32_t>(8 * x.L);
    check(known_status(SDF_GenerateKeyPair_ECC(x.session, ZOK_ALG_SM2_KEY, bits, pub.get(), priv.get())),
          "keys");
    check(known_status(ZOK_GenerateResponseTmpKeyWithECC(x.session, priv.get(), pub.get())),
          "temporary keys");
    check(pub.guards_intact() && priv.guards_intact(), "nothing outside the keys");
    check(known_status(ZOK_ExternalEcdhKeyAgreement(x.session, &x.d, &x.P, secret.data())), "ECDH");
    check(known_status(
              ZOK_GenerateUserInfo(x.session, &x.P, x.text.data(), length_of(x.text), Z.data(), &length)),
          "Z");
    check(secret.untouched_from(x.L) && Z.untouched_from(32), "nothing outside secret and Z");
}

void agreement_calls(const SessionCase &x, uint32_t bits) {
    GuardedBuffer key(bits / 8);
    GuardedRecord<KeyAgreementResult> result;
    result->key = key.data();
    ECCrefPublicKey R = x.R;
    const uint8_t *text = x.text.data();
    const uint32_t size = length_of(x.text);
    check(known_status(ZOK_SM2_GenerateKeyWithECC(x.session, bits, text, size, text, size, &x.d, &x.r, &R,
                                                  &x.P, &x.R, result.get())),
          "the initiator with identities");
    check(known_status(ZOK_SM2_GenerateResponseWithECC(x.session, bits, text, size, text, size, &x.d, &x.P,
                                                       &x.R, &x.r, &R, result.get())),
          "the responder with identities");
    check(known_status(ZOK_SM2_GenerateAgreementDataAndKeyWithECC(x.session, bits, text, size, text, size,
                                                                  &x.d, &x.P, &x.R, &R, result.get())),
          "the same in one call");
    check(known_status(ZOK_GenerateKeyWithECC(x.session, bits, text, size, text, size, &x.d, &x.r, &x.P, &x.R,
                                              result.get())),
          "the initiator with Z");
    check(known_status(ZOK_GenerateAgreementDataAndKeyWithECC(x.session, bits, text, size, text, size, &x.d,
                                                              &x.P, &x.R, &R, result.get())),
          "the responder with Z");
    check(key.untouched_from(bits / 8) && result.guards_intact(), "nothing outside the key");
}

template <class T>
T any_record(FuzzInput &input) {
    T out;
    const ByteString bytes = input.bytes(sizeof(T) / 2);
    std::memset(&out, 0, sizeof out);
    std::memcpy(static_cast<void *>(&out), bytes.data(), bytes.size());
    out.bits = input.flag() ? 8 * input.below(65) : 256;
    return out;
}

void check_session(FuzzInput &input) {
    static const uint32_t lengths[] = {32, 20, 24, 28, 32, 32, 32, 32};
    const uint32_t type = input.below(8);
    const size_t L = lengths[type];
    CurvePara record{};
    fill_record(input, record, L);
    record.type = type;
    record.hash_selector = input.below(3);
    const uint32_t verdict = ZOK_CurveVerify(type, &record);
    check(verdict == ZOK_OK || verdict == ZOK_ERR_ARGUMENT || verdict == ZOK_ERR_INTERNAL,
          "checking a curve");
    void *session = nullptr;
    check(ZOK_OpenSession(&session, &record) == ZOK_OK, "a session opens with any curve");
    const uint32_t again = ZOK_CurveParaCfg(session, type, &record);
    check(verdict != ZOK_OK || again == ZOK_OK, "a curve that passes the check can be installed");
    check((type == 0 || type == 7) == (again == ZOK_ERR_ARGUMENT), "the type decides");

    const SessionCase x{session,
                        any_record<ECCrefPrivateKey>(input),
                        any_record<ECCrefPrivateKey>(input),
                        any_record<ECCrefPublicKey>(input),
                        any_record<ECCrefPublicKey>(input),
                        input.bytes(1 + input.below(60)),
                        L};
    const uint32_t bits = input.below(256) * 4;
    switch (input.below(6)) {
    case 0: signing_calls(x, ZOK_ALG_SM2_SIGN); break;
    case 1: signing_calls(x, ZOK_ALG_ECDSA_SIGN); break;
    case 2: encryption_calls(x, ZOK_ALG_SM2_ENCRYPT); break;
    case 3: encryption_calls(x, ZOK_ALG_MULTIPLICATIVE); break;
    case 4: agreement_calls(x, bits); break;
    default: key_calls(x); break;
    }
    check(ZOK_CloseSession(session) == ZOK_OK, "and closes");
}

void legacy_keys(FuzzInput &input, ecc_scalar d, const ecc_point_bytes &P, size_t L) {
    GuardedRecord<ecc_point_bytes> out;
    GuardedBuffer secret(L), block(L), cipher(1 + 3 * L), plain(L + 1);
    uint32_t length = 0;
    check(Ecc_GenPubKey(&d, out.get()) <= 0, "a public key");
    check(Ecdh_KeyExChg(&d, &P, secret.data(), static_cast<uint32_t>(L)) <= static_cast<int32_t>(L), "ECDH");
    check(eces_format(static_cast<uint32_t>(L), d.bytes, std::min<uint32_t>(d.length, 9), block.data(),
                      &length) >= 0,
          "a block");
    const int32_t size = Eces_Encry(&P, d.bytes, d.length, cipher.data(), static_cast<int32_t>(3 * L));
    check(size <= static_cast<int32_t>(3 * L) && cipher.untouched_from(cipher.size()), "an ECES ciphertext");
    check(Eces_Decry(&d, cipher.data(), input.below(100), plain.data()) <= static_cast<int32_t>(L),
          "its text");
    check(plain.untouched_from(plain.size()) && out.guards_intact() && secret.untouched_from(L),
          "their areas");
}

void legacy_schemes(FuzzInput &input, const ecc_scalar &d, const ecc_point_bytes &P, size_t L) {
    ByteString text = input.bytes(1 + input.below(40)), cipher(text.size() + 2 * L + 33), plain(text.size());
    const uint32_t hash = input.below(3);
    const sm3_msg message{text.data(), 0, length_of(text)};
    sm3_msg sealed{cipher.data(), 0, 0}, opened{plain.data(), 0, 0};
    ecc_point_bytes sig{};
    const ByteString Z(32, 0x5A);
    if (input.flag()) {
        check(Ecdsa_DigitalSign(&d, &message, &sig, hash) <= 0, "ECDSA");
        check(Ecdsa_DigitalVeriy(&P, &message, &sig, hash) >= 0, "its verdict");
        check(sm2_DigitalSign(&d, &message, Z.data(), &sig, hash) <= 0, "SM2");
        check(sm2_DigitalVeriy(&P, &message, &sig, Z.data(), hash) <= 1, "its verdict");
        return;
    }
    check(sm2_Encry(&P, &message, &sealed, hash) <= 0, "SM2 encryption");
    sealed.len_low = length_of(cipher);
    cipher[0] = 4;
    check(sm2_Decry(&d, &sealed, &opened, hash) <= 0, "SM2 decryption");
    GuardedBuffer s1(32), s2(32), key(48);
    ecc_point_bytes R{};
    check(sm2_KeyExChg_B1_10(&d, &P, &P, Z.data(), Z.data(), 48, &R, s1.data(), s2.data(), key.data(),
                             hash) <= 0,
          "the responder");
    check(sm2_KeyExChg(1, &d, &P, &P, &d, &P, Z.data(), Z.data(), 48, s1.data(), s2.data(), key.data(),
                       hash) <= 0,
          "both roles");
    check(s1.untouched_from(32) && s2.untouched_from(32) && key.untouched_from(48), "their areas");
}

void check_process(FuzzInput &input) {
    static const uint32_t lengths[] = {24, 32, 32, 32, 28, 32};
    ecc_curve_bytes record{};
    record.type = input.below(6);
    const size_t L = lengths[record.type];
    fill_record(input, record, L);
    uninstall();
    const int32_t status = Curve_Init(&record);
    check((status == 1) == (record.type == 2 || record.type == 3 || record.type == 5), "the type decides");
    ByteString scalar = input.bytes(input.below(70));
    const ecc_scalar d{scalar.data(), length_of(scalar)};
    const Coordinates given{input.bytes(L), input.bytes(L)};
    const ecc_point_bytes P = point_record(given);
    if (input.flag())
        legacy_keys(input, d, P, L);
    else
        legacy_schemes(input, d, P, L);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    AllocLedger ledger(20000);  // up to 1,024 unusable nonces, with a product or two each
    FakeEntropy entropy;
    entropy.stuck = input.below(4) == 3;
    if (input.flag())
        check_session(input);
    else
        check_process(input);
    return 0;
}
