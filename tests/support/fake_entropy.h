// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// A deterministic clock and generator in place of the C library's, and for the hardened build of the
// kernel's, while an object lives.
//
// The test programs are linked with --wrap=rand, --wrap=srand, --wrap=time and
// --wrap=gen_random_number, in the hardened build with --wrap=draw_secret_number, --wrap=draw_blinding,
// --wrap=getrandom, --wrap=open, --wrap=read, --wrap=close and --wrap=fstat as well; without a living
// FakeEntropy the real functions are called.
#ifndef ZOKECC_TESTS_SUPPORT_FAKE_ENTROPY_H
#define ZOKECC_TESTS_SUPPORT_FAKE_ENTROPY_H

#include <zokecc/mint.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace zokecc_test {

// What the stand-in for the kernel hands out: the words that the default build makes of the same clock,
// counter and rand. So both builds draw the same numbers in the tests.
class KernelWords {
public:
    KernelWords(uint32_t now, uint32_t counter) : now_(now), counter_(counter) {}
    uint32_t next();

private:
    uint32_t now_, counter_;
    uint32_t state_ = 0;
    unsigned given_ = 0;
};

// Which calls of the kernel's generator go wrong, and how often each was made. The answers of a list
// come first, one per call; then those of the stand-in itself.
struct FakeKernel {
    struct Answer {
        long count;  // bytes that are given, at most; -1 for an error
        int error;   // errno, for -1
    };
    std::deque<Answer> getrandom_answers, open_answers, read_answers;
    int getrandom_error = 0;            // when set, what every getrandom fails with
    int open_error = 0;                 // when set, what every open of /dev/urandom fails with
    int stat_error = 0;                 // when set, what looking at the opened file fails with
    unsigned file_type = 0020000;       // of what is at /dev/urandom: a character device
    unsigned long device = 1 << 8 | 9;  // its number
    unsigned getrandom_calls = 0, open_calls = 0, stat_calls = 0, read_calls = 0, close_calls = 0;
    unsigned flags = 0;        // all that getrandom was given
    unsigned bytes_given = 0;  // by either way
};

class FakeEntropy {
public:
    // Also sets the library's seed counter, so that a run does not depend on earlier tests.
    explicit FakeEntropy(uint32_t now = 0x65432100u, uint32_t seed_counter_start = 0);
    ~FakeEntropy();
    FakeEntropy(const FakeEntropy &) = delete;
    FakeEntropy &operator=(const FakeEntropy &) = delete;

    // How often the library seeded. Throws if it made other calls than a seeding has.
    unsigned seedings() const;
    // Calls of any of the stand-ins but gen_random_number.
    size_t calls() const { return call_order.size(); }

    // What the next rand() calls answer; when the script runs out, a small generator restarted
    // by every srand() answers.
    std::deque<int> scripted_rand;
    // When set, every rand() answers stuck_value, and every word of the kernel is stuck_value.
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
    std::vector<char> call_order;       // 't', 's' or 'r' per call, 'g', 'o', 'd' or 'c' for the kernel's

    // The answer of the small generator: state starts at the seed of the last srand();
    // state = state * 1103515245 + 12345, answer = (state >> 1) & 0x7FFFFFFF.
    uint32_t generator_state = 1;

    bool draws_secrets = false;  // when set, the hardened build's secrets come from the kernel's words
    uint32_t blinding = 0;       // how many words of blinding were given

    FakeKernel kernel;
    KernelWords kernel_words;
    uint32_t kernel_word = 0;  // the one that is being given, its bytes in the order of memory
};

// The living one, or null.
FakeEntropy *active_entropy();

}  // namespace zokecc_test

#endif
