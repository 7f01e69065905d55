// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The block transformation of SHA-256 with the processor's SHA instructions.
#include <immintrin.h>

#include "hash/sha256_blocks.h"

namespace zokecc {

namespace {

// Four rounds: an instruction computes two of them, from the state's halves ABEF and CDGH and two words W +
// K, and returns the half that changes.
__attribute__((target("sha,sse4.1"))) inline void four_rounds(__m128i &abef, __m128i &cdgh, __m128i w,
                                                              const uint32_t *constants)
{
    const __m128i sums = _mm_add_epi32(w, _mm_loadu_si128(reinterpret_cast<const __m128i *>(constants)));
    cdgh = _mm_sha256rnds2_epu32(cdgh, abef, sums);
    abef = _mm_sha256rnds2_epu32(abef, cdgh, _mm_shuffle_epi32(sums, 0x0E));
}

}  // namespace

__attribute__((target("sha,sse4.1"))) void sha256_blocks_x86(uint32_t *hash, const uint8_t *data,
                                                             uint32_t count)
{
    const __m128i swap_bytes = _mm_set_epi64x(0x0C0D0E0F08090A0B, 0x0405060700010203);
    __m128i *const halves = reinterpret_cast<__m128i *>(hash);
    // From ABCD and EFGH, highest lane last, to ABEF and CDGH with A and C in the highest lane.
    const __m128i cdab = _mm_shuffle_epi32(_mm_loadu_si128(halves), 0xB1);
    const __m128i efgh = _mm_shuffle_epi32(_mm_loadu_si128(halves + 1), 0x1B);
    __m128i abef = _mm_alignr_epi8(cdab, efgh, 8);
    __m128i cdgh = _mm_blend_epi16(efgh, cdab, 0xF0);
    for (; count > 0; --count) {
        const __m128i abef_before = abef;
        const __m128i cdgh_before = cdgh;
        __m128i w[4];
        const __m128i *const block = reinterpret_cast<const __m128i *>(data);
#pragma GCC unroll 4
        for (int i = 0; i < 4; ++i) {
            w[i] = _mm_shuffle_epi8(_mm_loadu_si128(block + i), swap_bytes);
            four_rounds(abef, cdgh, w[i], kSha256Constants + 4 * i);
        }
#pragma GCC unroll 12
        for (int i = 4; i < 16; ++i) {
            const __m128i newest = w[(i + 3) % 4];
            const __m128i seventh = _mm_alignr_epi8(newest, w[(i + 2) % 4], 4);  // W[t - 7] in each lane
            const __m128i sums = _mm_add_epi32(_mm_sha256msg1_epu32(w[i % 4], w[(i + 1) % 4]), seventh);
            w[i % 4] = _mm_sha256msg2_epu32(sums, newest);
            four_rounds(abef, cdgh, w[i % 4], kSha256Constants + 4 * i);
        }
        abef = _mm_add_epi32(abef, abef_before);
        cdgh = _mm_add_epi32(cdgh, cdgh_before);
        data += 64;
    }
    const __m128i feba = _mm_shuffle_epi32(abef, 0x1B);
    const __m128i dchg = _mm_shuffle_epi32(cdgh, 0xB1);
    _mm_storeu_si128(halves, _mm_blend_epi16(feba, dchg, 0xF0));
    _mm_storeu_si128(halves + 1, _mm_alignr_epi8(dchg, feba, 8));
}

}  // namespace zokecc
