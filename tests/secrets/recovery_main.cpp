// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Tries to recover the private key from what a signature leaves on the stack: every piece of it is tried as
// a number in the signing equations, as an attacker with the stack and the signature would do.
#include <cstdio>
#include <cstring>

#include "base/config.h"
#include "tests/secrets/calls.h"
#include "tests/secrets/planted.h"
#include "tests/secrets/scene.h"

namespace {

using namespace zokecc_test::secrets;

Scene &s = scene;

struct Signature {
    mint r, s, e;
    mint divisor;   // 1 / (r + s) with SM2, 1 / r with ECDSA
    mint inverted;  // the inverted number in the equations: 1 + d with SM2, k with ECDSA
};

mint zero_or_number(const uint8_t *bytes, uint32_t size) {
    mint out{};
    octetstring_to_mint(bytes, size, &out);
    return out;
}

mint product(const mint &a, const mint &b) {
    mint out{};
    mint_mod_mul(&a, &b, &s.n, &out);
    return out;
}

mint sum(mint a, mint b) {
    mint out{};
    mint_mod_add(&a, &b, &s.n, &out);
    return out;
}

mint difference(mint a, mint b) {
    mint out{};
    mint_mod_sub(&a, &b, &s.n, &out);
    return out;
}

mint inverse(const mint &a) {
    mint out{};
    mint_EEA_algo(&a, &s.n, &out);
    return out;
}

mint one() {
    mint out{};
    out.words[0] = out.len = 1;
    return out;
}

// d of an SM2 signature with the nonce k: s (1 + d) = k - r d.
mint sm2_key(const Signature &sig, const mint &k) { return product(difference(k, sig.s), sig.divisor); }

// d of an ECDSA signature: s k = e + r d.
mint ecdsa_key(const Signature &sig, const mint &k) {
    return product(difference(product(sig.s, k), sig.e), sig.divisor);
}

bool is_key(const mint &d) { return mint_compare(&d, &s.own.number) == 0; }

// A number on the stack may be: d, d + 1, k, r + k, 1 / (1 + d), 1 / k. The last two are recognised by their
// product: an inverse for every word of the memory would take minutes.
bool gives_key(const Signature &sig, const mint &found, bool is_sm2) {
    mint number{};
    mint_mod(&found, &s.n, &number);
    if (number.len < 2) return false;
    if (is_key(number) || is_key(difference(number, one()))) return true;
    const mint unit = product(number, sig.inverted), expected = one();
    if (mint_compare(&unit, &expected) == 0) return true;
    if (!is_sm2) return is_key(ecdsa_key(sig, number));
    return is_key(sm2_key(sig, number)) || is_key(sm2_key(sig, difference(number, sig.r)));
}

// Whether some piece of the memory gives the key, as a big-endian or little-endian number.
bool search(const std::vector<uint8_t> &memory, const Signature &sig, bool is_sm2) {
    const uint32_t size = 4 * s.n.len;
    for (size_t at = 0; at + size <= memory.size(); at += 4) {
        mint number{};
        if (memory[at] == memory[at + 4] && std::memcmp(&memory[at], &memory[at + 1], size - 1) == 0)
            continue;
        std::memcpy(number.words, &memory[at], size);
        number.len = s.n.len;
        if (gives_key(sig, number, is_sm2)) return true;
        if (gives_key(sig, zero_or_number(&memory[at], size), is_sm2)) return true;
    }
    return false;
}

uint8_t digest[32];
const uint8_t Z[32] = {1, 2, 3};

uint32_t sign_sm2() {
    const sm3_msg text = {s.text, 0, kMessageBytes};
    return static_cast<uint32_t>(sm2_DigitalSign(&s.own.scalar, &text, Z, &s.out.point, HASH_ALG_SM3));
}

uint32_t sign_ecdsa() {
    const sm3_msg text = {s.text, 0, kMessageBytes};
    return static_cast<uint32_t>(Ecdsa_DigitalSign(&s.own.scalar, &text, &s.out.point, HASH_ALG_SHA256));
}

template <uint32_t algorithm>
uint32_t sign_in_session() {
    return SDF_ExternalSign_ECC(s.session, algorithm, &s.own.private_record, digest, sizeof digest,
                                &s.out.signature);
}

// Like the session's call with SM2, except that r + k is computed again and left behind.
uint32_t sign_and_leave_sum() {
    const uint32_t status = sign_in_session<ZOK_ALG_SM2_SIGN>();
    const mint r = zero_or_number(s.out.signature.r, s.L), half = zero_or_number(s.out.signature.s, s.L);
    // k = s (1 + d) + r d
    const mint k = sum(product(half, sum(s.own.number, one())), product(r, s.own.number));
    mint left{};
    planted_sum(r.words, k.words, s.n.len, left.words);
    return status;
}

// And 1 / (1 + d).
uint32_t sign_and_leave_inverse() {
    const uint32_t status = sign_in_session<ZOK_ALG_SM2_SIGN>();
    const mint number = inverse(sum(s.own.number, one())), zero{};
    mint left{};
    planted_sum(number.words, zero.words, s.n.len, left.words);
    return status;
}

struct Attack {
    const char *name;
    Work sign;
    bool is_sm2, in_session, succeeds;
};

// The digest signed with ECDSA on the process-wide curve.
mint digest_number(bool in_session) {
    mint out{};
    const hash_msg text = {HASH_ALG_SHA256, s.text, 0, kMessageBytes};
    if (in_session)
        octetstring_to_mint(digest, sizeof digest, &out);
    else
        hash_mint_value(&text, nullptr, &out);
    mint_mod(&out, &s.n, &out);
    return out;
}

bool attack_as_expected(const Attack &attack) {
    const Remains &remains = run(attack.sign, {});
    const uint8_t *const r = attack.in_session ? s.out.signature.r : s.out.point.x;
    const uint8_t *const half = attack.in_session ? s.out.signature.s : s.out.point.y;
    Signature sig{};
    sig.r = zero_or_number(r, s.L);
    sig.s = zero_or_number(half, s.L);
    sig.e = digest_number(attack.in_session);
    sig.divisor = inverse(attack.is_sm2 ? sum(sig.r, sig.s) : sig.r);
    const mint k = product(sum(sig.e, product(s.own.number, sig.r)), inverse(sig.s));
    sig.inverted = attack.is_sm2 ? sum(s.own.number, one()) : k;
    bool found = false;
    for (const std::vector<uint8_t> *memory : {&remains.stack, &remains.heap, &remains.variables})
        found = found || search(*memory, sig, attack.is_sm2);
    std::printf("%s: the private key is %s\n", attack.name, found ? "found" : "not found");
    return remains.status == 0 && sig.r.len > 0 && found == attack.succeeds;
}

}  // namespace

int main() {
    const Attack attacks[] = {
        {"sm2_DigitalSign", sign_sm2, true, false, false},
        {"Ecdsa_DigitalSign", sign_ecdsa, false, false, false},
        {"SDF_ExternalSign_ECC, SM2", sign_in_session<ZOK_ALG_SM2_SIGN>, true, true, false},
        {"SDF_ExternalSign_ECC, ECDSA", sign_in_session<ZOK_ALG_ECDSA_SIGN>, false, true, false},
        {"SM2, r + k planted", sign_and_leave_sum, true, true, true},
        {"SM2, 1 / (1 + d) planted", sign_and_leave_inverse, true, true, true},
    };
    for (uint8_t i = 0; i < sizeof digest; ++i) digest[i] = static_cast<uint8_t>(17 * i + 1);
    unsigned faults = 0;
    // In the hardened build the last one has no secrets: it is too short.
    for (unsigned curve = 0; curve < (zokecc::kHardened ? 2 : 3); ++curve) {
        std::printf("%s\n", curve_names[curve]);
        if (!install_curve(curve) || !make_secrets(7)) return 1;
        note_start({"libzokecc", "libplanted"});
        for (const Attack &attack : attacks)
            if (!attack_as_expected(attack)) ++faults;
    }
    std::printf("%u faults\n", faults);
    return faults == 0 ? 0 : 1;
}
