// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM3, GB/T 32905-2016 (GM/T 0004-2012), of a message that is entirely in memory.
#include "hash/sm3.h"

#include <zokecc/hash.h>

#include <bit>
#include <cstring>

#include "base/burn.h"
#include "base/config.h"
#include "base/cpu_x86_64.h"
#include "base/declassify.h"
#include "base/linkage.h"
#include "base/wipe.h"
#include "hash/bytes.h"

using namespace zokecc;

namespace {

constexpr uint32_t kInitialState[8] = {0x7380166f, 0x4914b2b9, 0x172442d7, 0xda8a0600,
                                       0xa96f30bc, 0x163138aa, 0xe38dee4d, 0xb0fb0e4e};

constexpr uint32_t kEarlyConstant = 0x79cc4519;  // rounds 0 to 15, rotated by one more bit each round
constexpr uint32_t kLateConstant = 0x7a879d8a;

constexpr uint32_t p0(uint32_t x) { return x ^ std::rotl(x ^ std::rotl(x, 8), 9); }   // x, x <<< 9, x <<< 17
constexpr uint32_t p1(uint32_t x) { return x ^ std::rotl(x ^ std::rotl(x, 8), 15); }  // x, x <<< 15, x <<< 23

// Computes W[16 + i]; the second expansion W' is W[j] ^ W[j + 4].
ZOKECC_INLINE uint32_t expand(uint32_t *w, int i)
{
    uint32_t x = w[i] ^ w[7 + i];
    x ^= std::rotl(w[13 + i], 15);
    x = p1(x);
    x ^= std::rotl(w[3 + i], 7);
    x ^= w[10 + i];
    w[16 + i] = x;
    return x;
}

// c and d are stored without their rotation by 9, g and h without theirs by 19: on ARM a rotated operand is
// free.
struct State {
    uint32_t a, b, c, d, e, f, g, h;
};

// Keeps the compiler from sharing one rotation of x between several uses.
ZOKECC_INLINE void rotate_anew(uint32_t &x)
{
    if constexpr (!kMemorySanitizer) __asm__("" : "+r"(x));
}

// One round on fixed registers: the callers rotate the names instead. The sums are written in the order
// that needs the fewest registers.
template <bool early, int j>
ZOKECC_INLINE void round(uint32_t a, uint32_t b, uint32_t &c, uint32_t &d, uint32_t e, uint32_t f,
                         uint32_t &g, uint32_t &h, uint32_t constant, uint32_t w, uint32_t fourth)
{
    d = (w ^ fourth) + std::rotl(d, 9);
    h = w + std::rotl(h, 19);
    uint32_t ss1 = e + std::rotl(constant, j);
    ss1 += std::rotl(a, 12);  // SS1 before its rotation by 7, which is done at each use
    h += std::rotl(ss1, 7);
    ss1 ^= std::rotl(a, 5);
    d += std::rotl(ss1, 7);  // SS2
    if constexpr (early) {
        h += e ^ f ^ std::rotl(g, 19);
        d += a ^ b ^ std::rotl(c, 9);
    } else {
        uint32_t choice = (f ^ std::rotl(g, 19)) & e;
        rotate_anew(g);
        choice ^= std::rotl(g, 19);
        h += choice;
        d += (a & b) | ((a | b) & std::rotl(c, 9));
    }
    rotate_anew(c);
    rotate_anew(g);
    h = p0(h);
}

ZOKECC_INLINE void four_early_rounds(State &s, uint32_t constant, const uint32_t *w)
{
    round<true, 0>(s.a, s.b, s.c, s.d, s.e, s.f, s.g, s.h, constant, w[0], w[4]);
    round<true, 1>(s.d, s.a, s.b, s.c, s.h, s.e, s.f, s.g, constant, w[1], w[5]);
    round<true, 2>(s.c, s.d, s.a, s.b, s.g, s.h, s.e, s.f, constant, w[2], w[6]);
    round<true, 3>(s.b, s.c, s.d, s.a, s.f, s.g, s.h, s.e, constant, w[3], w[7]);
}

// Interleaved with the expansion of W[j + 4], which these rounds are the first to use.
ZOKECC_INLINE void four_late_rounds(State &s, uint32_t constant, uint32_t *w)
{
    round<false, 0>(s.a, s.b, s.c, s.d, s.e, s.f, s.g, s.h, constant, w[12], expand(w, 0));
    round<false, 1>(s.d, s.a, s.b, s.c, s.h, s.e, s.f, s.g, constant, w[13], expand(w, 1));
    round<false, 2>(s.c, s.d, s.a, s.b, s.g, s.h, s.e, s.f, constant, w[14], expand(w, 2));
    round<false, 3>(s.b, s.c, s.d, s.a, s.f, s.g, s.h, s.e, constant, w[15], expand(w, 3));
}

}  // namespace

ZOKECC_OWN_FRAME void sm3_compress(uint32_t *state, const uint8_t *block)
{
    uint32_t w[68];
    load_block(block, w);
    for (int i = 0; i < 4; ++i) expand(w, i);
    State s = {state[0], state[1], std::rotr(state[2], 9),  std::rotr(state[3], 9),
               state[4], state[5], std::rotr(state[6], 19), std::rotr(state[7], 19)};
    uint32_t constant = kEarlyConstant;
    uint32_t *p = w;
    for (; p < w + 16; p += 4) {
        four_early_rounds(s, constant, p);
        constant = std::rotl(constant, 4);
    }
    constant = std::rotl(kLateConstant, 16);
    for (p = w + 4; p < w + 52; p += 4) {
        four_late_rounds(s, constant, p);
        constant = std::rotl(constant, 4);
    }
    state[0] ^= s.a;
    state[1] ^= s.b;
    state[2] ^= std::rotl(s.c, 9);
    state[3] ^= std::rotl(s.d, 9);
    state[4] ^= s.e;
    state[5] ^= s.f;
    state[6] ^= std::rotl(s.g, 19);
    state[7] ^= std::rotl(s.h, 19);
}

namespace zokecc {

void sm3_blocks_portable(uint32_t *state, const uint8_t *data, uint64_t count)
{
    for (; count > 0; --count) {
        sm3_compress(state, data);
        data += kHashBlockBytes;
    }
}

namespace {

// The fastest routine for this processor.
inline auto *best_routine()
{
    if constexpr (kShaInstructions) {
        if (has_rotating_vectors()) return sm3_blocks_avx512;
        if (has_vector_instructions()) return sm3_blocks_avx;
    }
    return sm3_blocks_portable;
}

}  // namespace

}  // namespace zokecc

uint32_t sm3_hash(const sm3_msg *msg, uint8_t *out)
{
    const DigestBurn burn;
    const uint64_t length = uint64_t{msg->len_high} << 32 | msg->len_low;
    DigestWork work;
    std::memcpy(work.state, kInitialState, sizeof work.state);

    const uint64_t blocks = length / kHashBlockBytes;
    // Early, because wide loads right after narrow stores to the same bytes stall.
    const uint32_t end_blocks = pad_end(msg->data + kHashBlockBytes * blocks, length, work.end);
    const auto routine = best_routine();
    routine(work.state, msg->data, blocks);
    routine(work.state, work.end, end_blocks);
    work.write_digest(out);
    wipe(&work, sizeof work);
    return 0;
}
