// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/support/fake_entropy.h"

#include "tests/support/give_up.h"

#include <zokecc/hash.h>

#include <ctime>

#include "hash/entropy.h"

namespace zokecc_test {

namespace {

FakeEntropy *active = nullptr;

constexpr unsigned kRandsOfASeeding = 24;
constexpr unsigned kBytesOfASeeding = 32;

// The small generator.
uint32_t next_rand(uint32_t &state) {
    state = state * 1103515245u + 12345u;
    return state >> 1 & 0x7FFFFFFFu;
}

}  // namespace

FakeEntropy *active_entropy() { return active; }

uint32_t KernelWords::next() {
    if (given_++ % (kBytesOfASeeding / 4) == 0) state_ = now_;
    uint32_t word = 1;
    for (unsigned shift : {0u, 11u, 22u}) {
        const uint32_t half = counter_ >> 1 | (counter_ & 0x80000000u);
        word |= (next_rand(state_) + 3 * counter_ + half) << shift;
        ++counter_;
    }
    return word;
}

FakeEntropy::FakeEntropy(uint32_t now_, uint32_t seed_counter_start)
    : now(now_), kernel_words(now_, seed_counter_start) {
#ifndef ZOKECC_HARDENED
    seed_counter = seed_counter_start;
#endif
    active = this;
}

unsigned FakeEntropy::seedings() const {
    const bool as_foreseen = kernel.bytes_given % kBytesOfASeeding == 0 && time_calls == srand_calls &&
                             rand_calls == kRandsOfASeeding * srand_calls;
    if (!as_foreseen) give_up("a seeding makes other calls");
    return srand_calls + kernel.bytes_given / kBytesOfASeeding;
}

FakeEntropy::~FakeEntropy() { active = nullptr; }

}  // namespace zokecc_test

using zokecc_test::active_entropy;
using zokecc_test::FakeEntropy;

extern "C" {

int __real_rand(void);
void __real_srand(unsigned seed);
time_t __real_time(time_t *out);
int32_t __real_gen_random_number(mint *out, const mint *bound);
int __wrap_rand(void);
void __wrap_srand(unsigned seed);
time_t __wrap_time(time_t *out);
int32_t __wrap_gen_random_number(mint *out, const mint *bound);

int __wrap_rand(void) {
    FakeEntropy *const active = active_entropy();
    if (active == nullptr) return __real_rand();
    ++active->rand_calls;
    active->call_order.push_back('r');
    if (active->stuck) return active->stuck_value;
    if (!active->scripted_rand.empty()) {
        int value = active->scripted_rand.front();
        active->scripted_rand.pop_front();
        return value;
    }
    return static_cast<int>(zokecc_test::next_rand(active->generator_state));
}

void __wrap_srand(unsigned seed) {
    FakeEntropy *const active = active_entropy();
    if (active == nullptr) return __real_srand(seed);
    ++active->srand_calls;
    active->srand_seeds.push_back(seed);
    active->call_order.push_back('s');
    active->generator_state = seed;
}

time_t __wrap_time(time_t *out) {
    FakeEntropy *const active = active_entropy();
    if (active == nullptr) return __real_time(out);
    ++active->time_calls;
    active->call_order.push_back('t');
    time_t value = static_cast<time_t>(active->now);
    if (out != nullptr) *out = value;
    return value;
}

int32_t __wrap_gen_random_number(mint *out, const mint *bound) {
    FakeEntropy *const active = active_entropy();
    if (active != nullptr) {
        ++active->number_calls;
        if (!active->queued_numbers.empty()) {
            *out = active->queued_numbers.front();
            active->queued_numbers.pop_front();
            return 0;
        }
    }
    return __real_gen_random_number(out, bound);
}

}  // extern "C"
