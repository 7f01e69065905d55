// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Replaces the C library's clock and generator, and for the hardened build the
// kernel's, by deterministic ones during an object's lifetime.
//
// The test programs are linked with --wrap=rand, --wrap=srand, --wrap=time and
// --wrap=gen_random_number, in the hardened build with --wrap=draw_secret_number, --wrap=draw_blinding,
// --wrap=getrandom, --wrap=open, --wrap=read, --wrap=close and --wrap=fstat, too; without a living
// FakeEntropy the real functions are called.
#ifndef ZOKECC_TESTS_SUPPORT_FAKE_ENTROPY_H
#define ZOKECC_TESTS_SUPPORT_FAKE_ENTROPY_H

#include <zokecc/mint.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace zokecc_test {

// The fake kernel delivers the words that the default build computes from the same clock,
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

// Which calls of the kernel's generator fail, and how often each was made. The answers of a list
// come first, one per call; then the fake's own.
struct FakeKernel {
    struct Answer {
        long count;  // bytes delivered, at most; -1 for an error
        int error;   // errno, for -1
    };
    std::deque<Answer> getrandom_answers, open_answers, read_answers;
    int getrandom_error = 0;            // if set, every getrandom fails with it
    int open_error = 0;                 // if set, every open of /dev/urandom fails with it
    int stat_error = 0;                 // if set, fstat of the opened file fails with it
    unsigned file_type = 0020000;       // type of /dev/urandom: a character device
    unsigned long device = 1 << 8 | 9;  // its number
    unsigned getrandom_calls = 0, open_calls = 0, stat_calls = 0, read_calls = 0, close_calls = 0;
    unsigned flags = 0;        // all flags passed to getrandom
    unsigned bytes_given = 0;  // by either source
};

class FakeEntropy {
public:
    // Also sets the library's seed counter, so that a run does not depend on earlier tests.
    explicit FakeEntropy(uint32_t now = 0x65432100u, uint32_t seed_counter_start = 0);
    ~FakeEntropy();
    FakeEntropy(const FakeEntropy &) = delete;
    FakeEntropy &operator=(const FakeEntropy &) = delete;

    // How often the library seeded. Gives up if it made calls that are not part of a seeding.
    unsigned seedings() const;
    // Calls of any of the fakes except gen_random_number.
    size_t calls() const { return call_order.size(); }

    // What the next rand() calls return; after the script, a small generator restarted
    // by every srand() delivers the numbers.
    std::deque<int> scripted_rand;
    // If set, every rand() returns stuck_value, and every word of the kernel is stuck_value.
    bool stuck = false;
    int stuck_value = 0;
    // Values that the next gen_random_number() calls return instead of drawing.
    std::deque<mint> queued_numbers;

    uint32_t now;  // returned by time()
    unsigned rand_calls = 0;
    unsigned srand_calls = 0;
    unsigned time_calls = 0;
    unsigned number_calls = 0;          // gen_random_number() calls, queued or not
    std::vector<unsigned> srand_seeds;  // the argument of every srand()
    std::vector<char> call_order;       // 't', 's' or 'r' per call, 'g', 'o', 'd' or 'c' for the kernel's

    // The small generator: state starts at the seed of the last srand();
    // state = state * 1103515245 + 12345, result = (state >> 1) & 0x7FFFFFFF.
    uint32_t generator_state = 1;

    bool draws_secrets = false;  // if set, the hardened build's secrets come from the kernel's words
    uint32_t blinding = 0;       // words of blinding delivered

    FakeKernel kernel;
    KernelWords kernel_words;
    uint32_t kernel_word = 0;  // the one being delivered, bytes in memory order
};

// The one alive, or null.
FakeEntropy *active_entropy();

}  // namespace zokecc_test

#endif
