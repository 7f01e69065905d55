#include "tests/support/fake_entropy.h"

#include <zokecc/hash.h>

#include <ctime>

#include "hash/entropy.h"

namespace {
zokecc_test::FakeEntropy *active = nullptr;
}

namespace zokecc_test {

FakeEntropy::FakeEntropy(uint32_t now_, uint32_t seed_counter_start) : now(now_) {
    seed_counter = seed_counter_start;
    active = this;
}

FakeEntropy::~FakeEntropy() { active = nullptr; }

}  // namespace zokecc_test

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
    if (active == nullptr) return __real_rand();
    ++active->rand_calls;
    active->call_order.push_back('r');
    if (active->stuck) return active->stuck_value;
    if (!active->scripted_rand.empty()) {
        int value = active->scripted_rand.front();
        active->scripted_rand.pop_front();
        return value;
    }
    active->generator_state = active->generator_state * 1103515245u + 12345u;
    return static_cast<int>(active->generator_state >> 1 & 0x7FFFFFFFu);
}

void __wrap_srand(unsigned seed) {
    if (active == nullptr) return __real_srand(seed);
    ++active->srand_calls;
    active->srand_seeds.push_back(seed);
    active->call_order.push_back('s');
    active->generator_state = seed;
}

time_t __wrap_time(time_t *out) {
    if (active == nullptr) return __real_time(out);
    ++active->time_calls;
    active->call_order.push_back('t');
    time_t value = static_cast<time_t>(active->now);
    if (out != nullptr) *out = value;
    return value;
}

int32_t __wrap_gen_random_number(mint *out, const mint *bound) {
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
