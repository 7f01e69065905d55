// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/secrets/scene.h"

#include <cstdio>
#include <cstring>

#include "tests/secrets/stand_ins.h"

namespace zokecc_test::secrets {

namespace {

struct CurveText {
    uint32_t L, session_type, legacy_type, secret_bytes;
    const char *p, *a, *b, *Gx, *Gy, *n;
};

// GB/T 32918.5; SEC 2 version 2, section 2.2.2; SEC 2 version 1, sections 2.3.2 and 2.4.2, both in records of
// 24 bytes.
const CurveText curves[4] = {
    {32, 4, 1, 32, "FFFFFFFEFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF00000000FFFFFFFFFFFFFFFF",
     "FFFFFFFEFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF00000000FFFFFFFFFFFFFFFC",
     "28E9FA9E9D9F5E344D5A9E4BCF6509A7F39789F515AB8F92DDBCBD414D940E93",
     "32C4AE2C1F1981195F9904466A39C9948FE30BBFF2660BE1715A4589334C74C7",
     "BC3736A2F4F6779C59BDCEE36B692153D0A9877CC62A474002DF32E52139F0A0",
     "FFFFFFFEFFFFFFFFFFFFFFFFFFFFFFFF7203DF6B21C6052B53BBF40939D54123"},
    {24, 2, 0, 24, "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFEFFFFFFFFFFFFFFFF",
     "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFEFFFFFFFFFFFFFFFC", "64210519E59C80E70FA7E9AB72243049FEB8DEECC146B9B1",
     "188DA80EB03090F67CBF20EB43A18800F4FF0AFD82FF1012", "07192B95FFC8DA78631011ED6B24CDD573F977A11E794811",
     "FFFFFFFFFFFFFFFFFFFFFFFF99DEF836146BC9B1B4D22831"},
    {24, 2, 0, 16, "FFFFFFFDFFFFFFFFFFFFFFFFFFFFFFFF", "D6031998D1B3BBFEBF59CC9BBFF9AEE1",
     "5EEEFCA380D02919DC2C6558BB6D8A5D", "7B6AA5D85E572983E6FB32A7CDEBC140",
     "27B6916A894D3AEE7106FE805FC34B44", "3FFFFFFF7FFFFFFFBE0024720613B5A3"},
    {24, 2, 0, 20, "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF7FFFFFFF", "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF7FFFFFFC",
     "1C97BEFC54BD7A8B65ACF89F81D4D4ADC565FA45", "4A96B5688EF573284664698968C38BB913CBFC82",
     "23A628553168947D59DCC912042351377AC5FB32", "0100000000000000000001F4C8F927AED3CA752257"},
};

const CurveText *curve = nullptr;

unsigned nibble(char digit) { return static_cast<unsigned>(digit <= '9' ? digit - '0' : digit - 'A' + 10); }

void put_hex(const char *text, uint8_t *field) {
    std::memset(field, 0, curve->L);
    const size_t size = std::strlen(text) / 2;
    for (size_t i = 0; i < size; ++i)
        field[curve->L - size + i] = static_cast<uint8_t>(nibble(text[2 * i]) << 4 | nibble(text[2 * i + 1]));
}

template <class Record>
void put_curve(Record &record) {
    put_hex(curve->p, record.p);
    put_hex(curve->a, record.a);
    put_hex(curve->b, record.b);
    put_hex(curve->Gx, record.Gx);
    put_hex(curve->Gy, record.Gy);
    put_hex(curve->n, record.n);
}

void fill(uint32_t seed, uint8_t *out, uint32_t size) {
    uint8_t digest[32] = {};
    for (uint32_t i = 0; i < size; ++i) {
        if (i % 32 == 0) {
            const uint32_t input[2] = {seed, i};
            mhash_sha256(reinterpret_cast<const uint8_t *>(input), sizeof input, digest);
        }
        out[i] = digest[i % 32];
    }
}

bool make_party(Party &party, bool above_order = false) {
    const uint32_t L = curve->L;
    party.scalar = {party.bytes, L};
    octetstring_to_mint(party.bytes, L, &party.number);
    std::memcpy(party.private_record.K, party.bytes, L);
    party.private_record.bits = 8 * L;
    if (above_order) return true;
    if (Ecc_GenPubKey(&party.scalar, &party.point) != 0) return false;
    std::memcpy(party.public_record.x, party.point.x, L);
    std::memcpy(party.public_record.y, party.point.y, L);
    party.public_record.bits = 8 * L;
    return true;
}

bool make_random_party(Party &party, uint32_t seed) {
    std::memset(&party, 0, sizeof party);
    uint8_t *const digits = party.bytes + curve->L - curve->secret_bytes;
    fill(seed, digits, curve->secret_bytes);
    digits[0] = static_cast<uint8_t>((digits[0] & 0x1F) | 0x10);
    return make_party(party);
}

bool encrypt_by_products() {
    Scene &s = scene;
    const int32_t length = Eces_Encry(&s.own.point, s.message, 12, s.legacy_product, sizeof s.legacy_product);
    s.product_length = static_cast<uint32_t>(length);
    return length > 0 && SDF_ExternalEncrytp_ECC(s.session, ZOK_ALG_MULTIPLICATIVE, &s.own.public_record,
                                                 s.message, s.L, &s.product_record) == ZOK_OK;
}

bool encrypt_by_sm2() {
    Scene &s = scene;
    sm3_msg message = {s.message, 0, kMessageBytes};
    s.legacy_cipher = {s.legacy_sm2, 0, 0};
    if (sm2_Encry(&s.own.point, &message, &s.legacy_cipher, HASH_ALG_SM3) != 0) return false;
    if (ZOK_ExternalEncrytp_ECC(s.session, &s.own.public_record, s.message, kMessageBytes, s.flat_sm2,
                                &s.flat_length) != ZOK_OK)
        return false;
    std::memcpy(s.changed_flat, s.flat_sm2, sizeof s.changed_flat);
    s.changed_flat[s.flat_length - 1] ^= 1;
    if (SDF_ExternalEncrytp_ECC(s.session, ZOK_ALG_SM2_ENCRYPT, &s.own.public_record, s.message, s.L,
                                &s.sm2_record) != ZOK_OK)
        return false;
    s.changed_record = s.sm2_record;
    s.changed_record.M[0] ^= 1;
    return true;
}

}  // namespace

Scene scene;

std::vector<Area> public_areas(const Scene &s) {
    const auto area = [](const auto &record) {
        return Area{reinterpret_cast<const uint8_t *>(&record), sizeof record};
    };
    return {area(s.out),
            area(s.own.point),
            area(s.own_temporary.point),
            area(s.legacy_sm2),
            area(s.flat_sm2),
            area(s.changed_flat),
            area(s.legacy_product),
            area(s.sm2_record),
            area(s.product_record),
            area(s.changed_record)};
}

const char *const curve_names[4] = {"sm2p256v1", "secp192r1", "secp128r2", "secp160r1"};

bool install_curve(unsigned number) {
    curve = &curves[number];
    ecc_curve_bytes legacy{};
    put_curve(legacy);
    legacy.type = curve->legacy_type;
    CurvePara record{};
    put_curve(record);
    record.type = curve->session_type;
    record.hash_selector = HASH_ALG_SM3;

    if (scene.session != nullptr) ZOK_CloseSession(scene.session);
    clear_heap();
    std::memset(&scene, 0, sizeof scene);
    scene.L = curve->L;
    use_heap(true);
    const bool opened = ZOK_OpenSession(&scene.session, &record) == ZOK_OK;
    use_heap(false);
    octetstring_to_mint(record.p, scene.L, &scene.p);
    octetstring_to_mint(record.a, scene.L, &scene.a);
    octetstring_to_mint(record.b, scene.L, &scene.b);
    octetstring_to_mint(record.n, scene.L, &scene.n);
    octetstring_to_mint(record.Gx, scene.L, &scene.G.x);
    octetstring_to_mint(record.Gy, scene.L, &scene.G.y);
    return opened && Curve_Init(&legacy) == 0 && make_random_party(scene.peer, 1) &&
           make_random_party(scene.peer_temporary, 2);
}

bool make_secrets(uint32_t number) {
    Scene &s = scene;
    const uint32_t seed = 1000 * (number + 1);
    if (!make_random_party(s.own, seed) || !make_random_party(s.own_temporary, seed + 1)) return false;
    fill(seed + 2, s.message, sizeof s.message);
    s.message[0] |= 0x10;  // so that no encoding gets shorter
    s.message[0] &= 0x1F;
    fill(seed + 3, s.long_key, sizeof s.long_key);
    std::memset(s.text, 'a', sizeof s.text);

    std::memset(&s.above, 0, sizeof s.above);
    fill(seed + 4, s.above.bytes, s.L);
    std::memset(s.above.bytes, 0xFF, s.L - 6);
    make_party(s.above, true);
    if (curve != &curves[kWideOrderCurve] && !encrypt_by_sm2()) return false;
    if (!encrypt_by_products()) return false;

    std::memset(&s.out, 0, sizeof s.out);
    std::memset(&s.hidden, 0, sizeof s.hidden);
    s.out.message.data = s.out.bytes;
    s.hidden.message.data = s.hidden.bytes;
    s.hidden.agreement.key = s.hidden.key;
    s.hidden.scalar = {s.hidden.bytes, s.L};
    return true;
}

}  // namespace zokecc_test::secrets
