// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Eight threads that start together.
#ifndef ZOKECC_TESTS_THREADS_SUPPORT_H
#define ZOKECC_TESTS_THREADS_SUPPORT_H

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace zokecc_test::threads {

inline constexpr unsigned kThreads = 8;

// Runs body(0) to body(7), each on its own thread, none before all are ready.
inline void on_eight_threads(const std::function<void(unsigned)> &body) {
    std::atomic<unsigned> ready{0};
    std::vector<std::thread> all;
    for (unsigned index = 0; index < kThreads; ++index)
        all.emplace_back([&, index] {
            ++ready;
            while (ready < kThreads) std::this_thread::yield();
            body(index);
        });
    for (std::thread &each : all) each.join();
}

}  // namespace zokecc_test::threads

#endif
