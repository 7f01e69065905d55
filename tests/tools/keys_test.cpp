// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Keys in their three forms: what is written can be read back, and nothing else is accepted. Curves
// embedded in a key are accepted only if they are known ones, number for number.
#include <gtest/gtest.h>

#include <cstring>

#include "der.h"
#include "ec_key.h"
#include "ec_parameters.h"
#include "key_math.h"
#include "tests/support/hex.h"

namespace {

using zokecc_test::ByteString;
using zokecc_test::from_hex;
using zokecc_test::to_hex;

const key_form kForms[] = {KEY_SEC1, KEY_PKCS8, KEY_SPKI};

// d = 02 03 04 ... and its public key, from the library.
ec_key key_on(const named_curve &curve) {
    ec_key key{};
    ECCrefPublicKey pub{};
    key.curve = &curve;
    key.has_private = 1;
    for (size_t i = 0; i < curve.size; ++i) key.d[i] = static_cast<uint8_t>(i + 2);
    EXPECT_EQ(nullptr, public_to_record(&key, &pub)) << curve.name;
    key.point_size = record_to_point(&curve, &pub, 0, key.point);
    return key;
}

ByteString der_of(const ec_key &key, key_form form) {
    ByteString der(MAX_KEY_DER);
    der.resize(ec_key_to_der(&key, form, der.data(), der.size()));
    return der;
}

const char *read(ec_key &key, const ByteString &der) {
    key = {};
    return ec_key_from_der(&key, der.data(), der.size());
}

TEST(EcKey, EveryFormIsReadAgainOnEveryCurve) {
    for (size_t i = 0; i < named_curve_count; ++i) {
        const ec_key key = key_on(named_curves[i]);
        for (key_form form : kForms) {
            ec_key want = key, got{};
            if (form == KEY_SPKI) {
                want.has_private = 0;
                std::memset(want.d, 0, sizeof want.d);
            }
            ASSERT_EQ(nullptr, read(got, der_of(key, form))) << key.curve->name;
            EXPECT_EQ(0, std::memcmp(&want, &got, sizeof got)) << key.curve->name;
            char pem[MAX_KEY_PEM];
            const size_t size = ec_key_to_pem(&key, form, pem, sizeof pem);
            got = {};
            ASSERT_EQ(nullptr, ec_key_from_file(&got, reinterpret_cast<uint8_t *>(pem), size));
            EXPECT_EQ(0, std::memcmp(&want, &got, sizeof got)) << key.curve->name;
            EXPECT_EQ(0u, ec_key_to_pem(&key, form, pem, size - 1));
        }
    }
}

TEST(EcKey, NoBeginningOfAKeyIsAKeyAndNothingMayFollow) {
    for (key_form form : kForms) {
        const ByteString der = der_of(key_on(named_curves[0]), form);
        ec_key key;
        for (size_t size = 0; size < der.size(); ++size) {
            const ByteString part(der.begin(), der.begin() + static_cast<std::ptrdiff_t>(size));
            ASSERT_NE(nullptr, read(key, part)) << size;
            ASSERT_EQ(0, key.has_private) << "not cleared";
        }
        ByteString longer = der;
        longer.push_back(0);
        EXPECT_NE(nullptr, read(key, longer));
    }
}

// A changed bit is detected, unless it is in the number or the point, or yields the name of another curve.
TEST(EcKey, EveryChangedBitOutsideTheNumbersIsRefused) {
    for (key_form form : kForms) {
        const ec_key good = key_on(named_curves[5]);
        const ByteString der = der_of(good, form);
        for (size_t bit = 0; bit < 8 * der.size(); ++bit) {
            ByteString changed = der;
            changed[bit / 8] = static_cast<uint8_t>(changed[bit / 8] ^ 1u << bit % 8);
            ec_key key;
            if (read(key, changed) != nullptr) {
                const ec_key nothing{};
                ASSERT_EQ(0, std::memcmp(&nothing, &key, sizeof key)) << bit;
                continue;
            }
            const bool other_number = std::memcmp(key.d, good.d, sizeof key.d) != 0;
            const bool other_point = std::memcmp(key.point, good.point, sizeof key.point) != 0;
            ASSERT_TRUE(other_number || other_point || key.curve != good.curve) << bit;
            // On another curve the number has a different number of leading zero bytes.
            if (key.curve != good.curve) continue;
            ASSERT_EQ(to_hex(changed), to_hex(der_of(key, form))) << bit;
        }
    }
}

TEST(EcKey, TakesNumbersWithoutTheirLeadingZeroBytesOrWithMore) {
    const named_curve *curve = curve_by_name("sm2");
    for (const char *d : {"30070201010402aabb", "302902010104240000"
                                                "0000"
                                                "0000000000000000000000000000000000000000"
                                                "00000000000000000000aabb"}) {
        const ByteString der = from_hex(d);
        ec_key key{};
        key.curve = curve;
        ASSERT_EQ(nullptr, ec_key_from_der(&key, der.data(), der.size())) << d;
        EXPECT_EQ(0xaa, key.d[30]);
        EXPECT_EQ(0xbb, key.d[31]);
    }
}

struct Explicit {
    ByteString p, a, b, G, n, cofactor{1};
};

Explicit numbers_of(const named_curve &curve) {
    const auto bytes = [&](const uint8_t *from) { return ByteString(from, from + curve.size); };
    const CurvePara &r = *curve.record;
    ByteString G{4};
    for (const uint8_t *half : {r.Gx, r.Gy}) G.insert(G.end(), half, half + curve.size);
    return {bytes(r.p), bytes(r.a), bytes(r.b), G, bytes(r.n)};
}

const named_curve *read_explicit(const Explicit &e) {
    static const uint8_t prime_field[] = {0x2a, 0x86, 0x48, 0xce, 0x3d, 1, 1}, version = 1;
    uint8_t buffer[512];
    der_writer w;
    der_begin(&w, buffer, sizeof buffer);
    der_put_uint(&w, e.cofactor.data(), e.cofactor.size());
    der_put_uint(&w, e.n.data(), e.n.size());
    der_put_value(&w, DER_OCTET_STRING, e.G.data(), e.G.size());
    size_t before = der_length(&w);
    der_put_value(&w, DER_OCTET_STRING, e.b.data(), e.b.size());
    der_put_value(&w, DER_OCTET_STRING, e.a.data(), e.a.size());
    der_wrap(&w, DER_SEQUENCE, before);
    before = der_length(&w);
    der_put_uint(&w, e.p.data(), e.p.size());
    der_put_value(&w, DER_OID, prime_field, sizeof prime_field);
    der_wrap(&w, DER_SEQUENCE, before);
    der_put_uint(&w, &version, 1);
    der_wrap(&w, DER_SEQUENCE, 0);
    der_reader in{buffer, der_finish(&w)};
    const named_curve *curve = nullptr;
    const char *fault = read_parameters(&in, &curve);
    EXPECT_EQ(fault == nullptr, curve != nullptr);
    return curve;
}

TEST(ExplicitParameters, AreTakenIfTheyAreThoseOfAKnownCurve) {
    for (size_t i = 0; i < named_curve_count; ++i) {
        const named_curve &curve = named_curves[i];
        EXPECT_EQ(&curve, read_explicit(numbers_of(curve)));
        Explicit compressed = numbers_of(curve);
        compressed.G.resize(1 + curve.size);
        compressed.G[0] = static_cast<uint8_t>(2 + (curve.record->Gy[curve.size - 1] & 1));
        EXPECT_EQ(&curve, read_explicit(compressed));
        compressed.G[0] ^= 1;
        EXPECT_EQ(nullptr, read_explicit(compressed));
    }
}

// With a base point of its choice a key could pass for anybody's.
TEST(ExplicitParameters, WithOneOtherNumberAreRefused) {
    for (size_t i = 0; i < named_curve_count; ++i) {
        for (ByteString Explicit::*field :
             {&Explicit::p, &Explicit::a, &Explicit::b, &Explicit::G, &Explicit::n, &Explicit::cofactor}) {
            for (bool last : {false, true}) {
                Explicit e = numbers_of(named_curves[i]);
                uint8_t &byte = last ? (e.*field).back() : (e.*field)[(e.*field).size() / 2];
                byte = static_cast<uint8_t>(byte ^ 4);
                EXPECT_EQ(nullptr, read_explicit(e)) << named_curves[i].name;
            }
        }
    }
}

TEST(PublicOfPrivate, IsThatOfRfc6979) {
    const named_curve *curve = curve_by_name("P-256");
    ec_key key{};
    ECCrefPublicKey pub{};
    key.curve = curve;
    key.has_private = 1;
    const ByteString d = from_hex("c9afa9d845ba75166b5c215767b1d6934e50c3db36e89b127b8a622b120f6721");
    std::memcpy(key.d, d.data(), d.size());
    ASSERT_EQ(nullptr, public_to_record(&key, &pub));
    EXPECT_EQ("60fed4ba255a9d31c961eb74c6356d68c049b8923b61fa6ce669622e60f29fb6", to_hex(pub.x, 32));
    EXPECT_EQ("7903fe1008b8bc99a41ae9e95628bc64f2f1b20c2d7e9f5177a3c294d4462299", to_hex(pub.y, 32));
}

TEST(PrivateToRecord, TakesNumbersBelowTheOrderAndForSm2BelowOneLess) {
    for (const char *name : {"sm2", "P-256"}) {
        ec_key key{};
        ECCrefPrivateKey priv{};
        key.curve = curve_by_name(name);
        key.has_private = 1;
        EXPECT_NE(nullptr, private_to_record(&key, &priv)) << "0";
        std::memcpy(key.d, key.curve->record->n, 32);
        EXPECT_NE(nullptr, private_to_record(&key, &priv)) << "n";
        --key.d[31];
        EXPECT_EQ(key.curve->is_sm2 != 0, private_to_record(&key, &priv) != nullptr) << "n - 1";
        --key.d[31];
        EXPECT_EQ(nullptr, private_to_record(&key, &priv)) << "n - 2";
    }
}

TEST(PointToRecord, TakesEveryFormOfAPointOnEveryCurve) {
    for (size_t i = 0; i < named_curve_count; ++i) {
        const named_curve &curve = named_curves[i];
        ec_key key = key_on(curve);
        ECCrefPublicKey pub{}, again{};
        uint8_t compressed[MAX_POINT];
        ASSERT_EQ(nullptr, point_to_record(&curve, key.point, key.point_size, &pub));
        ASSERT_EQ(1u + curve.size, record_to_point(&curve, &pub, 1, compressed));
        ASSERT_EQ(nullptr, point_to_record(&curve, compressed, 1u + curve.size, &again)) << curve.name;
        EXPECT_EQ(0, std::memcmp(&pub, &again, sizeof pub)) << curve.name;
        key.point[0] = static_cast<uint8_t>(6 + (pub.y[curve.size - 1] & 1));
        EXPECT_EQ(nullptr, point_to_record(&curve, key.point, key.point_size, &again));
        key.point[0] ^= 1;
        EXPECT_NE(nullptr, point_to_record(&curve, key.point, key.point_size, &again));
        key.point[0] = 4;
        key.point[5] ^= 1;
        EXPECT_NE(nullptr, point_to_record(&curve, key.point, key.point_size, &again)) << "off the curve";
        EXPECT_NE(nullptr, point_to_record(&curve, key.point, key.point_size - 1, &again)) << "too short";
        key = key_on(curve);
        std::memset(key.point + 1, 0xff, curve.size);
        EXPECT_STREQ("the point's x is not below p",
                     point_to_record(&curve, key.point, key.point_size, &again));
        key = key_on(curve);
        std::memset(key.point + 1 + curve.size, 0xff, curve.size);
        EXPECT_STREQ("the point's y is not below p",
                     point_to_record(&curve, key.point, key.point_size, &again));
        const uint8_t infinity = 0;
        EXPECT_NE(nullptr, point_to_record(&curve, &infinity, 1, &again));
    }
}

}  // namespace
