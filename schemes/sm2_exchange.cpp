// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM2 key exchange on the process-wide curve (GB/T 32918.3).
#include <cstring>

#include "base/burn.h"
#include "base/wipe.h"
#include "ecc/secret_rounds.h"
#include "hash/key_sink.h"
#include "hash/sm2_digests.h"
#include "mint/value.h"
#include "schemes/peer_image.h"
#include "schemes/records.h"

using namespace zokecc;

namespace {

constexpr uint32_t kZBytes = 32;

// One side's outputs, and the parameters that decide what is written to them.
struct Results {
    uint8_t *out02;
    uint8_t *out03;
    uint8_t *key;
    int32_t klen;
    uint32_t alg;

    bool are_there() const
    {
        if (is_known_hash(alg) && (out02 == nullptr || out03 == nullptr)) return false;
        return key != nullptr || !derivation_writes(klen, global_curve.byte_len, alg);
    }
};

bool has_zero_coordinate(const ecc_point &point) { return is_zero(point.x) || is_zero(point.y); }

bool is_on_curve(const ecc_point &point)
{
    const GlobalCurve &g = global_curve;
    return ecc_test_point(&point, &g.a, &g.b, &g.p) == 0;
}

// The default build accepts every point here.
bool is_accepted(const ecc_point &point) { return may_meet_secrets(global_view(), point); }

bool read_temporary(const ecc_scalar &scalar, mint &r)
{
    return read_temporary(global_view(), scalar.bytes, scalar.length, r);
}

ZOKECC_ONE_COPY bool shared_point(const ExchangeSide &side, PointBytes &U)
{
    const GlobalCurve &g = global_curve;
    return compute_shared_point(view_of(g), g.byte_len, g.w, side, U);
}

// Key and confirmation values of the split calls.
void write_results(const Results &results, const PointBytes &U, const ExchangePublics &publics, KeySink &sink)
{
    sink.derive(U, publics.ZA, publics.ZB);
    sm2_exchange_confirmations(results.alg, U, publics, results.out02, results.out03);
}

// KEPT: the confirmation values cover the digest's working area and the peer's key after it, not
// only the digest, so the two sides never agree on them. Deployed pairs compare each side's values
// with the result of this layout. Held by
// Sm2KeyExChg.KeptConfirmationCoversThePeerKeyInMemory.
ZOKECC_OWN_FRAME void confirm_over_memory(const Results &results, const PointBytes &U,
                                          const ExchangePublics &publics, const ecc_point &peer_key)
{
    Wiping<PeerImage> image;
    sm2_exchange_hash(results.alg, U, publics, image->digest_area);
    write_peer_image(peer_key, *image);
    const Bytes tail = bytes_of(*image, 5 * U.len + 2 * kZBytes);
    sm2_confirmations(results.alg, U, tail, results.out02, results.out03);
}

ExchangePublics publics_of(const uint8_t *ZA, const uint8_t *ZB, const ecc_point_bytes &RA,
                           const ecc_point_bytes &RB)
{
    return {Bytes{ZA, kZBytes}, Bytes{ZB, kZBytes}, RA.x, RA.y, RB.x, RB.y};
}

}  // namespace

int32_t sm2_x_bar(const ecc_point_bytes *point, uint32_t w, uint8_t *out)
{
    write_x_bar(point->x, global_curve.byte_len, w, out);
    return 0;
}

int32_t sm2_KeyExChg_A1_3(const ecc_scalar *rA, ecc_point_bytes *RA_out)
{
    const CallBurn burn;
    if (!is_readable(rA) || RA_out == nullptr || !curve_is_installed()) return kFailed;
    Wiping<mint> r;
    if (!read_scalar(*rA, *r)) return kFailed;
    ecc_point R{};
    if (!public_point(global_view(), *r, R)) return kFailed;
    write_point_record(R, *RA_out);
    return 0;
}

// Here the 02 value comes before the 03 value; in the other two calls it comes after it.
int32_t sm2_KeyExChg_A4_10(const ecc_scalar *rA, const ecc_point_bytes *RA, const ecc_scalar *dA,
                           const ecc_point_bytes *PB, const ecc_point_bytes *RB, const uint8_t *ZA,
                           const uint8_t *ZB, int32_t klen, uint8_t *S1_out, uint8_t *SA_out, uint8_t *K_out,
                           uint32_t hash_sel)
{
    const CallBurn burn;
    if (!curve_is_installed() || ZA == nullptr || ZB == nullptr) return kFailed;
    if (!is_readable(rA) || !is_readable(RA) || !is_readable(dA) || !is_readable(PB) || !is_readable(RB))
        return kFailed;
    const Results results = {S1_out, SA_out, K_out, klen, hash_sel};
    if (!results.are_there()) return kFailed;

    Wiping<ecc_point> point;
    ecc_point peer_key{};
    Wiping<mint> d;
    Wiping<mint> r;
    read_point(*PB, peer_key);
    if (has_zero_coordinate(peer_key) || !is_accepted(peer_key)) return kFailed;
    if (!read_scalar(*dA, *d)) return kFailed;
    read_point(*RA, *point);
    if (has_zero_coordinate(*point) || !is_accepted(*point)) return kFailed;
    read_point(*RB, *point);
    if (!is_on_curve(*point) || !is_accepted(*point)) return kFailed;
    if (!read_temporary(*rA, *r)) return kFailed;

    KeySink sink(K_out, klen, global_curve.byte_len, hash_sel);
    Wiping<PointBytes> U;
    if (!sink.is_ready() || !shared_point({*d, *r, RA->x, RB->x, peer_key, *point}, *U)) return kFailed;
    write_results(results, *U, publics_of(ZA, ZB, *RA, *RB), sink);
    return 0;
}

int32_t sm2_KeyExChg_B1_10(const ecc_scalar *dB, const ecc_point_bytes *PA, const ecc_point_bytes *RA,
                           const uint8_t *ZA, const uint8_t *ZB, int32_t klen, ecc_point_bytes *RB_out,
                           uint8_t *S2_out, uint8_t *SB_out, uint8_t *K_out, uint32_t hash_sel)
{
    const CallBurn burn;
    if (!curve_is_installed() || ZA == nullptr || ZB == nullptr || RB_out == nullptr) return kFailed;
    if (!is_readable(dB) || !is_readable(PA) || !is_readable(RA)) return kFailed;
    const Results results = {SB_out, S2_out, K_out, klen, hash_sel};
    if (!results.are_there()) return kFailed;

    Wiping<ecc_point> point;
    ecc_point peer_key{};
    Wiping<mint> d;
    Wiping<mint> r;
    read_point(*PA, peer_key);
    if (has_zero_coordinate(peer_key) || !is_accepted(peer_key)) return kFailed;
    if (!read_scalar(*dB, *d)) return kFailed;
    read_point(*RA, *point);
    if (!is_on_curve(*point) || !is_accepted(*point)) return kFailed;
    KeySink sink(K_out, klen, global_curve.byte_len, hash_sel);
    if (!sink.is_ready()) return kFailed;

    if (!draw_private(global_view(), *r)) return kFailed;
    if (!public_point(global_view(), *r, *point)) return kFailed;
    write_point_record(*point, *RB_out);
    Wiping<PointBytes> V;
    read_point(*RA, *point);
    if (!shared_point({*d, *r, RB_out->x, RA->x, peer_key, *point}, *V)) return kFailed;
    write_results(results, *V, publics_of(ZA, ZB, *RA, *RB_out), sink);
    return 0;
}

int32_t sm2_KeyExChg(uint32_t role, const ecc_scalar *r, const ecc_point_bytes *R,
                     const ecc_point_bytes *peerR, const ecc_scalar *d, const ecc_point_bytes *peerP,
                     const uint8_t *ZA, const uint8_t *ZB, int32_t klen, uint8_t *out03, uint8_t *out02,
                     uint8_t *K_out, uint32_t hash_sel)
{
    const CallBurn burn;
    if (!curve_is_installed() || ZA == nullptr || ZB == nullptr) return kFailed;
    if (!is_readable(r) || !is_readable(R) || !is_readable(peerR) || !is_readable(d) || !is_readable(peerP))
        return kFailed;
    const Results results = {out02, out03, K_out, klen, hash_sel};
    if (!results.are_there()) return kFailed;

    Wiping<ecc_point> point;
    ecc_point peer_key{};
    Wiping<mint> own_d;
    Wiping<mint> own_r;
    read_point(*peerP, peer_key);
    if (has_zero_coordinate(peer_key) || !is_accepted(peer_key)) return kFailed;
    if (!read_scalar(*d, *own_d)) return kFailed;
    read_point(*R, *point);
    if (has_zero_coordinate(*point) || !is_on_curve(*point) || !is_accepted(*point)) return kFailed;
    read_point(*peerR, *point);
    if (!is_on_curve(*point) || !is_accepted(*point)) return kFailed;
    if (!read_temporary(*r, *own_r)) return kFailed;

    KeySink sink(K_out, klen, global_curve.byte_len, hash_sel);
    Wiping<PointBytes> U;
    if (!sink.is_ready() || !shared_point({*own_d, *own_r, R->x, peerR->x, peer_key, *point}, *U))
        return kFailed;
    const bool is_initiator = role == 1;
    const ExchangePublics publics =
        is_initiator ? publics_of(ZA, ZB, *R, *peerR) : publics_of(ZA, ZB, *peerR, *R);
    sink.derive(*U, publics.ZA, publics.ZB);
    confirm_over_memory(results, *U, publics, peer_key);
    return 0;
}

// KEPT: the scalar is never read and counts as zero; x and y are both written to the y field, which
// ends up as zero bytes, while the x field is left unchanged. Held by
// Sm2RPoint.KeptWritesZeroBytesToYOnly.
int32_t sm2_RPoint(const uint8_t *scalar_bytes, uint32_t, ecc_point_bytes *R_out)
{
    if (scalar_bytes == nullptr || R_out == nullptr) return 1;
    const uint32_t L = global_curve.byte_len;
    const mint zero{};
    ecc_point R{};
    multiply_base(global_view(), zero, R);
    mint_to_fixedlen_os(&R.x, L, kPointFieldBytes, &R_out->length, R_out->y);
    mint_to_fixedlen_os(&R.y, L, kPointFieldBytes, &R_out->length, R_out->y);
    return 0;
}
