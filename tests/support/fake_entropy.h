// A deterministic clock and generator in place of the C library's, while an object lives.
//
// The test programs are linked with --wrap=rand, --wrap=srand, --wrap=time and
// --wrap=gen_random_number; without a living FakeEntropy the real functions are called.
#ifndef ZOKECC_TESTS_SUPPORT_FAKE_ENTROPY_H
#define ZOKECC_TESTS_SUPPORT_FAKE_ENTROPY_H

#include <zokecc/mint.h>

#include <cstdint>
#include <deque>
#include <vector>

namespace zokecc_test {

class FakeEntropy {
public:
    // Also sets the library's seed counter, so that a run does not depend on earlier tests.
    explicit FakeEntropy(uint32_t now = 0x65432100u, uint32_t seed_counter_start = 0);
    ~FakeEntropy();
    FakeEntropy(const FakeEntropy &) = delete;
    FakeEntropy &operator=(const FakeEntropy &) = delete;

    // What the next rand() calls answer; when the script runs out, a small generator restarted
    // by every srand() answers.
    std::deque<int> scripted_rand;
    // When set, every rand() answers stuck_value.
    bool stuck = false;
    int stuck_value = 0;
    // Values that the next gen_random_number() calls hand out instead of drawing.
    std::deque<mint> queued_numbers;

    uint32_t now;  // what time() answers
    unsigned rand_calls = 0;
    unsigned srand_calls = 0;
    unsigned time_calls = 0;
    unsigned number_calls = 0;          // gen_random_number() calls, queued or not
    std::vector<unsigned> srand_seeds;  // the argument of every srand()
    std::vector<char> call_order;       // 't', 's' or 'r' per call

    // The answer of the small generator: state starts at the seed of the last srand();
    // state = state * 1103515245 + 12345, answer = (state >> 1) & 0x7FFFFFFF.
    uint32_t generator_state = 1;
};

}  // namespace zokecc_test

#endif
