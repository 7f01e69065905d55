// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The block transformation of SM3. The message is expanded four words at a time in vector registers,
// interleaved with the rounds and twelve rounds ahead of them.
#include <bit>
#include <cstring>

#include "base/linkage.h"
#include "hash/sm3.h"

namespace zokecc {

namespace {

// Always-inlined functions are compiled for the instruction set of their caller, at the end of this file.
using Vector = uint32_t __attribute__((vector_size(16)));
using Bytes = uint8_t __attribute__((vector_size(16)));

ZOKECC_INLINE Vector rotate(Vector x, int bits) { return x << bits | x >> (32 - bits); }
ZOKECC_INLINE Vector p1(Vector x) { return x ^ rotate(x, 15) ^ rotate(x, 23); }
ZOKECC_INLINE uint32_t p0(uint32_t x) { return x ^ std::rotl(x, 9) ^ std::rotl(x, 17); }

ZOKECC_INLINE Vector load_words(const uint8_t *block)
{
    Bytes bytes;
    std::memcpy(&bytes, block, sizeof bytes);
    bytes = __builtin_shufflevector(bytes, bytes, 3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12);
    Vector words;
    std::memcpy(&words, &bytes, sizeof words);
    return words;
}

// W and W'.
struct Schedule {
    alignas(16) uint32_t w[68];
    alignas(16) uint32_t w_prime[64];

    template <int i>
    ZOKECC_INLINE void set_w(Vector words)
    {
        // cppcheck-suppress pointerOutOfBounds ; only in branches that the template discards
        std::memcpy(w + 4 * i, &words, sizeof words);
    }
    template <int i>
    ZOKECC_INLINE void set_w_prime(Vector words)
    {
        // cppcheck-suppress pointerOutOfBounds ; likewise
        std::memcpy(w_prime + 4 * i, &words, sizeof words);
    }
};

// From W[4 i - 16] on in a, b, c and d: a becomes W[4 i] to W[4 i + 3].
template <int i>
ZOKECC_INLINE void expand(Schedule &schedule, Vector &a, Vector b, Vector c, Vector d)
{
    const Vector zero = {};
    const Vector third = __builtin_shufflevector(a, b, 3, 4, 5, 6);          // W[t - 13] in each lane
    const Vector seventh = __builtin_shufflevector(b, c, 3, 4, 5, 6);        // W[t - 9]
    const Vector tenth = __builtin_shufflevector(c, d, 2, 3, 4, 5);          // W[t - 6]
    const Vector thirteenth = __builtin_shufflevector(d, zero, 1, 2, 3, 4);  // W[t - 3], 0 in the last lane
    const Vector words = p1(a ^ seventh ^ rotate(thirteenth, 15)) ^ (rotate(third, 7) ^ tenth);
    // The last lane still lacks the newest word, which is in the first lane; p1 is linear over xor.
    const Vector newest = __builtin_shufflevector(words, zero, 4, 4, 4, 0);
    a = words ^ p1(rotate(newest, 15));
    schedule.set_w<i>(a);
    schedule.set_w_prime<i - 1>(d ^ a);
    // The rounds read the words from memory: extracting them from the vectors costs more.
    __asm__("" : "+m"(schedule));
}

struct State {
    uint32_t a, b, c, d, e, f, g, h;
};

// One round on fixed registers: the callers rotate the names instead. Terms that depend on e come last in
// each sum.
template <int j>
ZOKECC_INLINE void round(uint32_t a, uint32_t &b, uint32_t c, uint32_t &d, uint32_t e, uint32_t &f,
                         uint32_t g, uint32_t &h, const Schedule &schedule)
{
    constexpr uint32_t kConstant = std::rotl(j < 16 ? 0x79cc4519u : 0x7a879d8au, j % 32);
    h += schedule.w[j];
    d += schedule.w_prime[j];
    const uint32_t rotated = std::rotl(a, 12);
    uint32_t early = rotated + kConstant;
    __asm__("" : "+r"(early));  // otherwise one lea adds all three, three cycles after e is known
    const uint32_t ss1 = std::rotl(early + e, 7);
    if constexpr (j < 16) {
        h += e ^ (f ^ g);
        d += (b ^ c) ^ a;
    } else {
        h += g & ~e;
        h += f & e;  // no bits in common: the sum is the choice
        d += b & c;
        d += (b ^ c) & a;  // no bits in common with b & c: the sum is the majority
    }
    d += ss1 ^ rotated;
    h = p0(h + ss1);
    b = std::rotl(b, 9);
    f = std::rotl(f, 19);
}

template <int j>
ZOKECC_INLINE void four_rounds(State &s, const Schedule &schedule)
{
    round<j>(s.a, s.b, s.c, s.d, s.e, s.f, s.g, s.h, schedule);
    round<j + 1>(s.d, s.a, s.b, s.c, s.h, s.e, s.f, s.g, schedule);
    round<j + 2>(s.c, s.d, s.a, s.b, s.g, s.h, s.e, s.f, schedule);
    round<j + 3>(s.b, s.c, s.d, s.a, s.f, s.g, s.h, s.e, schedule);
}

// Four rounds, interleaved with expanding the words for those 16 rounds later.
template <int j>
ZOKECC_INLINE void step(State &s, Schedule &schedule, Vector &a, Vector b, Vector c, Vector d)
{
    if constexpr (j <= 48) expand<j / 4 + 4>(schedule, a, b, c, d);
    four_rounds<j>(s, schedule);
}

template <int j>
ZOKECC_INLINE void sixteen_rounds(State &s, Schedule &schedule, Vector &a, Vector &b, Vector &c, Vector &d)
{
    step<j>(s, schedule, a, b, c, d);
    step<j + 4>(s, schedule, b, c, d, a);
    step<j + 8>(s, schedule, c, d, a, b);
    step<j + 12>(s, schedule, d, a, b, c);
}

ZOKECC_INLINE void compress(State &state, const uint8_t *block)
{
    Vector a = load_words(block);
    Vector b = load_words(block + 16);
    Vector c = load_words(block + 32);
    Vector d = load_words(block + 48);
    Schedule schedule;
    schedule.set_w<0>(a);
    schedule.set_w<1>(b);
    schedule.set_w<2>(c);
    schedule.set_w<3>(d);
    schedule.set_w_prime<0>(a ^ b);
    schedule.set_w_prime<1>(b ^ c);
    schedule.set_w_prime<2>(c ^ d);
    State s = state;
    sixteen_rounds<0>(s, schedule, a, b, c, d);
    sixteen_rounds<16>(s, schedule, a, b, c, d);
    sixteen_rounds<32>(s, schedule, a, b, c, d);
    sixteen_rounds<48>(s, schedule, a, b, c, d);
    state.a ^= s.a;
    state.b ^= s.b;
    state.c ^= s.c;
    state.d ^= s.d;
    state.e ^= s.e;
    state.f ^= s.f;
    state.g ^= s.g;
    state.h ^= s.h;
}

ZOKECC_INLINE void compress_all(uint32_t *state, const uint8_t *data, uint64_t count)
{
    State s;  // stays in registers from one block to the next
    std::memcpy(&s, state, sizeof s);
    for (; count > 0; --count) {
        compress(s, data);
        data += 64;
    }
    std::memcpy(state, &s, sizeof s);
}

}  // namespace

__attribute__((target("avx,bmi,bmi2"))) void sm3_blocks_avx(uint32_t *state, const uint8_t *data,
                                                            uint64_t count)
{
    compress_all(state, data, count);
}

__attribute__((target("avx512vl,bmi,bmi2"))) void sm3_blocks_avx512(uint32_t *state, const uint8_t *data,
                                                                    uint64_t count)
{
    compress_all(state, data, count);
}

}  // namespace zokecc
