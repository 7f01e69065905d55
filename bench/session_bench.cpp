// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The calls on a session's curve. Key agreement has no counterpart in OpenSSL: its yardstick is
// one ECDH on the same curve. That of multiplicative encryption is composed of the same
// steps.
#include <zokecc/sdf.h>

#include "bench/peer_schemes.h"

namespace zokecc_bench {

namespace {

const std::string kIdText = "1234567812345678";
const Bytes kId(kIdText.begin(), kIdText.end());
constexpr uint32_t kMessageSize = 100, kKeyBits = 128;
constexpr uint32_t kBits = 256;  // of the keys and curves used here

// A session with a key pair, inputs, and buffers for the results.
struct Work {
    explicit Work(const std::string &curve_name)
        : key(key_on(curve_name)),
          session(session_on(curve_name)),
          priv(key->session_private()),
          pub(key->session_public()),
          message(fixed_bytes("message", kMessageSize)),
          digest(fixed_bytes("digest", 32)),
          algorithm(curve_name == "SM2" ? ZOK_ALG_SM2_SIGN : ZOK_ALG_ECDSA_SIGN)
    {
    }

    bool sign_digest()
    {
        return SDF_ExternalSign_ECC(session, algorithm, &priv, digest.data(), 32, &sig) == ZOK_OK;
    }
    bool verify_digest() const
    {
        return SDF_ExternalVerify_ECC(session, algorithm, &pub, digest.data(), 32, &sig) == ZOK_OK;
    }
    bool sign_message()
    {
        return ZOK_ExternalSignHash_ECC(session, algorithm, &priv, message.data(), kMessageSize, kId.data(),
                                        static_cast<uint32_t>(kId.size()), &sig) == ZOK_OK;
    }
    bool verify_message() const
    {
        return ZOK_ExternalVerifyHash_ECC(session, algorithm, &pub, message.data(), kMessageSize, kId.data(),
                                          static_cast<uint32_t>(kId.size()), &sig) == ZOK_OK;
    }
    bool encrypt()
    {
        return ZOK_ExternalEncrytp_ECC(session, &pub, digest.data(), 32, flat.data(), &size) == ZOK_OK;
    }
    bool decrypt()
    {
        uint32_t plain_size = 0;
        return ZOK_ExternalDecrypt_ECC(session, &priv, flat.data(), size, out.data(), &plain_size) == ZOK_OK;
    }
    bool encrypt_record(uint32_t scheme)
    {
        return SDF_ExternalEncrytp_ECC(session, scheme, &pub, digest.data(), 32, &cipher) == ZOK_OK;
    }
    bool decrypt_record(uint32_t scheme)
    {
        return SDF_ExternalDecrypt_ECC(session, scheme, &priv, &cipher, out.data(), &size) == ZOK_OK;
    }

    SharedKey key;
    void *session;
    ECCrefPrivateKey priv;
    ECCrefPublicKey pub;
    Bytes message, digest;
    uint32_t algorithm;
    ECCSignature sig{};
    ECCCipher cipher{};
    Bytes flat = Bytes(256), out = Bytes(64);
    uint32_t size = 0;
};

std::shared_ptr<Work> work_on(const std::string &curve_name) { return std::make_shared<Work>(curve_name); }

Sides open()
{
    const auto record = std::make_shared<const CurvePara>(curve("SM2").session_record());
    return {repeat([record] {
        void *session = nullptr;
        return ZOK_OpenSession(&session, record.get()) == ZOK_OK && ZOK_CloseSession(session) == ZOK_OK;
    })};
}

Sides make_key()
{
    const auto w = work_on("SM2");
    return {repeat([w] {
                ECCrefPublicKey pub;
                ECCrefPrivateKey priv;
                return SDF_GenerateKeyPair_ECC(w->session, ZOK_ALG_SM2_KEY, kBits, &pub, &priv) == ZOK_OK;
            }),
            peer_make_key("SM2")};
}

Sides sign_digest(const std::string &curve_name)
{
    const auto w = work_on(curve_name);
    return {repeat([w] { return w->sign_digest(); }), peer_sign(w->key, w->digest)};
}

Sides verify_digest(const std::string &curve_name)
{
    const auto w = work_on(curve_name);
    require(w->sign_digest(), "sign");
    return {repeat([w] { return w->verify_digest(); }), peer_verify(w->key, w->digest)};
}

Sides sign_message()
{
    const auto w = work_on("SM2");
    return {repeat([w] { return w->sign_message(); }), peer_sign_for(w->key, kId, w->message)};
}

Sides verify_message()
{
    const auto w = work_on("SM2");
    require(w->sign_message(), "sign");
    return {repeat([w] { return w->verify_message(); }), peer_verify_for(w->key, kId, w->message)};
}

Sides encrypt()
{
    const auto w = work_on("SM2");
    return {repeat([w] { return w->encrypt(); }), peer_encrypt(w->key, w->digest)};
}

Sides decrypt()
{
    const auto w = work_on("SM2");
    require(w->encrypt(), "encrypt");
    return {repeat([w] { return w->decrypt(); }), peer_decrypt(w->key, w->digest)};
}

Sides encrypt_record(uint32_t scheme)
{
    const auto w = work_on("SM2");
    return {repeat([w, scheme] { return w->encrypt_record(scheme); }),
            scheme == ZOK_ALG_SM2_ENCRYPT ? peer_encrypt(w->key, w->digest)
                                          : peer_multiply_encrypt(w->key, w->digest)};
}

Sides decrypt_record(uint32_t scheme)
{
    const auto w = work_on("SM2");
    require(w->encrypt_record(scheme), "encrypt");
    return {repeat([w, scheme] { return w->decrypt_record(scheme); }),
            scheme == ZOK_ALG_SM2_ENCRYPT ? peer_decrypt(w->key, w->digest)
                                          : peer_multiply_decrypt(w->key, w->digest)};
}

Sides diffie_hellman()
{
    const auto w = work_on("SM2");
    const SharedKey other = key_on("SM2", "other");
    const auto secret = std::make_shared<Bytes>();
    const ECCrefPublicKey other_pub = other->session_public();
    Sides sides{repeat([w, other_pub] {
                    return ZOK_ExternalEcdhKeyAgreement(w->session, &w->priv, &other_pub, w->out.data()) ==
                           ZOK_OK;
                }),
                peer_agree(w->key, other, secret)};
    sides.ours(1);
    sides.peer(1);
    require(std::equal(secret->begin(), secret->end(), w->out.begin()), "the two sides differ");
    return sides;
}

// Both sides of a key agreement, with identities.
struct Agreement {
    Agreement()
        : session(session_on("SM2")),
          own(key_on("SM2")),
          other(key_on("SM2", "other")),
          dA(own->session_private()),
          dB(other->session_private()),
          PA(own->session_public()),
          PB(other->session_public()),
          id_size(static_cast<uint32_t>(kId.size()))
    {
        result.key = key;
        require(begin() && respond(), "agree");
    }

    bool begin() { return ZOK_SM2_GenerateAgreementDataWithECC(session, &rA, &RA) == ZOK_OK; }
    bool respond()
    {
        return ZOK_SM2_GenerateAgreementDataAndKeyWithECC(session, kKeyBits, kId.data(), id_size, kId.data(),
                                                          id_size, &dB, &PA, &RA, &RB, &result) == ZOK_OK;
    }
    bool complete()
    {
        return ZOK_SM2_GenerateKeyWithECC(session, kKeyBits, kId.data(), id_size, kId.data(), id_size, &dA,
                                          &rA, &RA, &PB, &RB, &result) == ZOK_OK;
    }
    Loop yardstick() const { return peer_agree(own, other, std::make_shared<Bytes>()); }

    void *session;
    SharedKey own, other;
    ECCrefPrivateKey dA, dB, rA{};
    ECCrefPublicKey PA, PB, RA{}, RB{};
    uint32_t id_size;
    uint8_t key[kKeyBits / 8] = {};
    KeyAgreementResult result{};
};

Sides agree(bool (Agreement::*step)())
{
    const auto agreement = std::make_shared<Agreement>();
    return {repeat([agreement, step] { return (agreement.get()->*step)(); }), agreement->yardstick()};
}

const Register session_operations{
    {"session_open", open, 1, false},
    {"sm2_make_key", make_key},
    {"sm2_sign_digest", [] { return sign_digest("SM2"); }},
    {"sm2_verify_digest", [] { return verify_digest("SM2"); }},
    {"sm2_sign_message", sign_message},
    {"sm2_verify_message", verify_message},
    {"sm2_encrypt_32", encrypt},
    {"sm2_decrypt_32", decrypt},
    {"sm2_encrypt_record", [] { return encrypt_record(ZOK_ALG_SM2_ENCRYPT); }},
    {"sm2_decrypt_record", [] { return decrypt_record(ZOK_ALG_SM2_ENCRYPT); }},
    {"session_ecdsa_sign_p256", [] { return sign_digest("P-256"); }},
    {"session_ecdsa_verify_p256", [] { return verify_digest("P-256"); }},
    {"session_ecdh_sm2", diffie_hellman},
    {"multiply_encrypt_record", [] { return encrypt_record(ZOK_ALG_MULTIPLICATIVE); }},
    {"multiply_decrypt_record", [] { return decrypt_record(ZOK_ALG_MULTIPLICATIVE); }},
    {"agreement_respond", [] { return agree(&Agreement::respond); }},
    {"agreement_complete", [] { return agree(&Agreement::complete); }},
};

}  // namespace

}  // namespace zokecc_bench
