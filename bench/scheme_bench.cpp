// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The calls on the process-wide curve, which is installed before each of them, unmeasured. The
// yardsticks for key exchange and multiplicative encryption are those of session_bench.cpp.
#include <zokecc/schemes.h>

#include <algorithm>

#include "bench/peer_schemes.h"

namespace zokecc_bench {

namespace {

constexpr uint32_t kMessageSize = 100;
constexpr int32_t kKeySize = 16;
constexpr uint32_t kNewKey = 0;

// A key pair on the process-wide curve, inputs, and buffers for the results.
struct Work {
    explicit Work(const std::string &curve_name)
        : key(key_on(curve_name)),
          scalar(key->scalar()),
          pub(key->point()),
          hash(key->on.hash()),
          message(fixed_bytes("message", kMessageSize)),
          Z(fixed_bytes("Z", 32)),
          block(fixed_bytes("block", 32)),
          text{message.data(), 0, kMessageSize},
          short_text{block.data(), 0, 32}
    {
        block[0] = 0;
        install(curve_name);
    }

    bool sm2_sign() { return sm2_DigitalSign(&scalar, &text, Z.data(), &sig, hash) == 0; }
    bool sm2_verify() const { return sm2_DigitalVeriy(&pub, &text, &sig, Z.data(), hash) == 0; }
    bool ecdsa_sign() { return Ecdsa_DigitalSign(&scalar, &text, &sig, hash) == 0; }
    bool ecdsa_verify() const { return Ecdsa_DigitalVeriy(&pub, &text, &sig, hash) == 1; }
    bool encrypt() { return sm2_Encry(&pub, &short_text, &sealed, hash) == 0; }
    // The length shows success; the return value does not.
    bool decrypt()
    {
        opened.len_low = 0;
        sm2_Decry(&scalar, &sealed, &opened, hash);
        return opened.len_low == 32;
    }
    bool multiply_encrypt() { return Eces_Encry(&pub, block.data(), 32, cipher.data(), 96) == 96; }
    bool multiply_decrypt() { return Eces_Decry(&scalar, cipher.data(), 96, out.data()) > 0; }

    SharedKey key;
    ecc_scalar scalar;
    ecc_point_bytes pub, sig{};
    uint32_t hash;
    Bytes message, Z, block, cipher = Bytes(256), out = Bytes(100);
    sm3_msg text, short_text;
    sm3_msg sealed = {cipher.data(), 0, 0}, opened = {out.data(), 0, 0};
};
using SharedWork = std::shared_ptr<Work>;

// On the work's curve, after one call of `first` unless that is null.
Sides measured(const SharedWork &w, bool (Work::*first)(), Loop ours, Loop peer)
{
    require(first == nullptr || (w.get()->*first)(), "prepare the call");
    return {std::move(ours), std::move(peer), [name = w->key->on.name] { install(name); }};
}

Sides install_curve()
{
    const auto record = std::make_shared<const ecc_curve_bytes>(curve("SM2").process_record());
    return {repeat([record] { return Curve_Init(record.get()) == 0; }), {}, [] { install("SM2"); }};
}

Sides make_key()
{
    const auto w = std::make_shared<Work>("SM2");
    return measured(w, nullptr, repeat([] {
                        uint8_t bytes[32];
                        ecc_scalar made = {bytes, sizeof bytes};
                        ecc_point_bytes pub;
                        return Ecc_KeyPair_Gen(&made, &pub, kNewKey) == 0;
                    }),
                    peer_make_key("SM2"));
}

Sides sm2_sign()
{
    const auto w = std::make_shared<Work>("SM2");
    return measured(w, nullptr, repeat([w] { return w->sm2_sign(); }),
                    peer_hash_and_sign(w->key, w->Z, w->message));
}

Sides sm2_verify()
{
    const auto w = std::make_shared<Work>("SM2");
    return measured(w, &Work::sm2_sign, repeat([w] { return w->sm2_verify(); }),
                    peer_hash_and_verify(w->key, w->Z, w->message));
}

Sides ecdsa_sign(const std::string &curve_name)
{
    const auto w = std::make_shared<Work>(curve_name);
    return measured(w, nullptr, repeat([w] { return w->ecdsa_sign(); }),
                    peer_hash_and_sign(w->key, {}, w->message));
}

Sides ecdsa_verify(const std::string &curve_name)
{
    const auto w = std::make_shared<Work>(curve_name);
    return measured(w, &Work::ecdsa_sign, repeat([w] { return w->ecdsa_verify(); }),
                    peer_hash_and_verify(w->key, {}, w->message));
}

Sides sm2_encrypt()
{
    const auto w = std::make_shared<Work>("SM2");
    return measured(w, nullptr, repeat([w] { return w->encrypt(); }), peer_encrypt(w->key, w->block));
}

Sides sm2_decrypt()
{
    const auto w = std::make_shared<Work>("SM2");
    return measured(w, &Work::encrypt, repeat([w] { return w->decrypt(); }), peer_decrypt(w->key, w->block));
}

Sides eces_encrypt()
{
    const auto w = std::make_shared<Work>("SM2");
    return measured(w, nullptr, repeat([w] { return w->multiply_encrypt(); }),
                    peer_multiply_encrypt(w->key, w->block));
}

Sides eces_decrypt()
{
    const auto w = std::make_shared<Work>("SM2");
    return measured(w, &Work::multiply_encrypt, repeat([w] { return w->multiply_decrypt(); }),
                    peer_multiply_decrypt(w->key, w->block));
}

Sides diffie_hellman(const std::string &curve_name)
{
    const auto w = std::make_shared<Work>(curve_name);
    const SharedKey other = key_on(curve_name, "other");
    const auto secret = std::make_shared<Bytes>();
    const ecc_point_bytes other_pub = other->point();
    Sides sides = measured(w, nullptr, repeat([w, other_pub] {
                               return Ecdh_KeyExChg(&w->scalar, &other_pub, w->out.data(), 32) == 32;
                           }),
                           peer_agree(w->key, other, secret));
    sides.ours(1);
    sides.peer(1);
    require(std::equal(secret->begin(), secret->end(), w->out.begin()), "the two sides differ");
    return sides;
}

// Both sides of an exchange. The initiator's temporary key is made once.
struct Exchange {
    Exchange()
        : own(key_on("SM2")),
          other(key_on("SM2", "other")),
          temporary(key_on("SM2", "temporary")),
          dA(own->scalar()),
          dB(other->scalar()),
          rA(temporary->scalar()),
          PA(own->point()),
          PB(other->point()),
          ZA(fixed_bytes("ZA", 32)),
          ZB(fixed_bytes("ZB", 32))
    {
        install("SM2");
        require(begin() && respond(), "exchange");
    }

    bool begin() { return sm2_KeyExChg_A1_3(&rA, &RA) == 0; }
    bool respond()
    {
        return sm2_KeyExChg_B1_10(&dB, &PA, &RA, ZA.data(), ZB.data(), kKeySize, &RB, check, send, key,
                                  HASH_ALG_SM3) == 0;
    }
    bool complete()
    {
        return sm2_KeyExChg_A4_10(&rA, &RA, &dA, &PB, &RB, ZA.data(), ZB.data(), kKeySize, check, send, key,
                                  HASH_ALG_SM3) == 0;
    }
    bool whole()
    {
        return sm2_KeyExChg(1, &rA, &RA, &RB, &dA, &PB, ZA.data(), ZB.data(), kKeySize, check, send, key,
                            HASH_ALG_SM3) == 0;
    }

    SharedKey own, other, temporary;
    ecc_scalar dA, dB, rA;
    ecc_point_bytes PA, PB, RA{}, RB{};
    Bytes ZA, ZB;
    uint8_t check[32] = {}, send[32] = {}, key[kKeySize] = {};
};

Sides exchange(bool (Exchange::*step)())
{
    const auto e = std::make_shared<Exchange>();
    return {repeat([e, step] { return (e.get()->*step)(); }),
            peer_agree(e->own, e->other, std::make_shared<Bytes>()), [] { install("SM2"); }};
}

const Register scheme_operations{
    {"curve_init", install_curve, 1, false},
    {"legacy_make_key_sm2", make_key},
    {"legacy_sm2_sign", sm2_sign},
    {"legacy_sm2_verify", sm2_verify},
    {"legacy_sm2_encrypt_32", sm2_encrypt},
    {"legacy_sm2_decrypt_32", sm2_decrypt},
    {"eces_encrypt", eces_encrypt},
    {"eces_decrypt", eces_decrypt},
    {"exchange_begin", [] { return exchange(&Exchange::begin); }},
    {"exchange_respond", [] { return exchange(&Exchange::respond); }},
    {"exchange_complete", [] { return exchange(&Exchange::complete); }},
    {"exchange_whole", [] { return exchange(&Exchange::whole); }},
    {"ecdsa_sign_p256", [] { return ecdsa_sign("P-256"); }},
    {"ecdsa_verify_p256", [] { return ecdsa_verify("P-256"); }},
    {"ecdh_p256", [] { return diffie_hellman("P-256"); }},
    {"ecdsa_sign_p192", [] { return ecdsa_sign("P-192"); }},
    {"ecdsa_verify_p192", [] { return ecdsa_verify("P-192"); }},
    {"ecdsa_sign_p224", [] { return ecdsa_sign("P-224"); }},
    {"ecdsa_verify_p224", [] { return ecdsa_verify("P-224"); }},
    {"ecdsa_sign_brainpool", [] { return ecdsa_sign("brainpoolP256r1"); }},
    {"ecdsa_verify_brainpool", [] { return ecdsa_verify("brainpoolP256r1"); }},
};

}  // namespace

}  // namespace zokecc_bench
