// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The inputs of the watched calls: two parties on one curve, in static records, so that each run finds
// them at the same addresses. Where a call allows it, the public inputs are the same for every secret.
#ifndef ZOKECC_TESTS_SECRETS_SCENE_H
#define ZOKECC_TESTS_SECRETS_SCENE_H

#include <zokecc/zokecc.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zokecc_test::secrets {

inline constexpr uint32_t kMaxBytes = 32;       // of a coordinate
inline constexpr uint32_t kMessageBytes = 70;   // more than a block of either hash
inline constexpr uint32_t kLongKeyBytes = 100;  // hashed before use as a key
inline constexpr int32_t kKeyBytes = 48;

// A private number and its point, in every form that calls need.
struct Party {
    uint8_t bytes[kMaxBytes];
    mint number;
    ecc_scalar scalar;
    ecc_point_bytes point;
    ECCrefPrivateKey private_record;
    ECCrefPublicKey public_record;
};

struct Scene {
    uint32_t L;
    void *session;
    mint p, a, b, n;
    ecc_point G;

    Party own, own_temporary;    // secret
    Party peer, peer_temporary;  // their points are public inputs
    Party above;                 // a private number above n

    uint8_t message[kMessageBytes], long_key[kLongKeyBytes];  // secret
    uint8_t text[kMessageBytes];                              // the signed message

    // Ciphertexts for our own key.
    uint8_t legacy_sm2[200], flat_sm2[200], legacy_product[200];
    sm3_msg legacy_cipher;
    uint32_t flat_length, product_length;
    ECCCipher sm2_record, product_record, changed_record;
    uint8_t changed_flat[200];

    // Outputs of calls: public and secret ones.
    struct Public {
        uint8_t bytes[256];
        sm3_msg message;
        uint32_t length;
        ecc_point_bytes point;
        ECCSignature signature;
        ECCrefPublicKey public_record;
        ECCCipher cipher;
    } out;
    struct Secret {
        uint8_t bytes[256], more_bytes[64], key[kKeyBytes + 32];
        sm3_msg message;
        uint32_t length;
        mint number;
        ecc_scalar scalar;
        ECCrefPrivateKey private_record;
        KeyAgreementResult agreement;
    } hidden;
};

// The memory whose content is public: the outputs, and the inputs that belong to our own key.
struct Area {
    const uint8_t *begin;
    size_t size;
};
std::vector<Area> public_areas(const Scene &scene);

extern Scene scene;

// The names of the curves: two with a fast field, one without, and one whose n has more words
// than p. There h is 0, so SM2 encryption and agreement refuse it, and the scene has none of its ciphertexts.
extern const char *const curve_names[4];
constexpr unsigned kWideOrderCurve = 3;

// Installs the curve process-wide and for scene.session, and makes the peer. False if a call fails.
bool install_curve(unsigned curve);

// Derives all secrets from the number, and clears the outputs.
bool make_secrets(uint32_t number);

}  // namespace zokecc_test::secrets

#endif
