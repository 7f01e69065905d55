// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// FakeEntropy's kernel generator for the hardened build: getrandom and /dev/urandom.
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstring>

#include "tests/support/fake_entropy.h"

namespace {

using zokecc_test::FakeEntropy;
using zokecc_test::FakeKernel;

constexpr const char *kDevice = "/dev/urandom";
constexpr int kDescriptor = 0x7EED;  // the device's, while a FakeEntropy is alive

// The next answer in the list, or `otherwise` at its end.
FakeKernel::Answer take(std::deque<FakeKernel::Answer> &answers, FakeKernel::Answer otherwise) {
    if (answers.empty()) return otherwise;
    const FakeKernel::Answer out = answers.front();
    answers.pop_front();
    return out;
}

long fail(int error) {
    errno = error;
    return -1;
}

long give(FakeEntropy &entropy, uint8_t *out, size_t size, const FakeKernel::Answer &answer) {
    if (answer.count < 0) return fail(answer.error);
    const size_t count = std::min(size, static_cast<size_t>(answer.count));
    FakeKernel &kernel = entropy.kernel;
    for (size_t i = 0; i < count; ++i) {
        const unsigned place = kernel.bytes_given++ % 4;
        if (place == 0)
            entropy.kernel_word =
                entropy.stuck ? static_cast<uint32_t>(entropy.stuck_value) : entropy.kernel_words.next();
        std::memcpy(out + i, reinterpret_cast<const uint8_t *>(&entropy.kernel_word) + place, 1);
    }
    return static_cast<long>(count);
}

}  // namespace

extern "C" {

using zokecc_test::active_entropy;

ssize_t __real_getrandom(void *out, size_t size, unsigned flags);
int __real_open(const char *path, int flags, ...);
ssize_t __real_read(int descriptor, void *out, size_t size);
int __real_close(int descriptor);
int __real_fstat(int descriptor, struct stat *out);
ssize_t __wrap_getrandom(void *out, size_t size, unsigned flags);
int __wrap_open(const char *path, int flags, ...);
ssize_t __wrap_read(int descriptor, void *out, size_t size);
int __wrap_close(int descriptor);
int __wrap_fstat(int descriptor, struct stat *out);

ssize_t __wrap_getrandom(void *out, size_t size, unsigned flags) {
    FakeEntropy *const entropy = active_entropy();
    if (entropy == nullptr) return __real_getrandom(out, size, flags);
    FakeKernel &kernel = entropy->kernel;
    ++kernel.getrandom_calls;
    kernel.flags |= flags;
    entropy->call_order.push_back('g');
    const int error = kernel.getrandom_error;
    const FakeKernel::Answer whole = {error == 0 ? static_cast<long>(size) : -1, error};
    return give(*entropy, static_cast<uint8_t *>(out), size, take(kernel.getrandom_answers, whole));
}

int __wrap_open(const char *path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = (flags & O_CREAT) != 0 ? va_arg(arguments, unsigned) : 0;
    va_end(arguments);
    FakeEntropy *const entropy = active_entropy();
    if (entropy == nullptr || std::strcmp(path, kDevice) != 0) return __real_open(path, flags, mode);
    FakeKernel &kernel = entropy->kernel;
    ++kernel.open_calls;
    entropy->call_order.push_back('o');
    const FakeKernel::Answer answer =
        take(kernel.open_answers, {kernel.open_error == 0 ? 0 : -1, kernel.open_error});
    return answer.count < 0 ? static_cast<int>(fail(answer.error)) : kDescriptor;
}

int __wrap_fstat(int descriptor, struct stat *out) {
    FakeEntropy *const entropy = active_entropy();
    if (entropy == nullptr || descriptor != kDescriptor) return __real_fstat(descriptor, out);
    FakeKernel &kernel = entropy->kernel;
    ++kernel.stat_calls;
    if (kernel.stat_error != 0) return static_cast<int>(fail(kernel.stat_error));
    *out = {};
    out->st_mode = kernel.file_type | 0666;
    out->st_rdev = kernel.device;
    return 0;
}

ssize_t __wrap_read(int descriptor, void *out, size_t size) {
    FakeEntropy *const entropy = active_entropy();
    if (entropy == nullptr || descriptor != kDescriptor) return __real_read(descriptor, out, size);
    ++entropy->kernel.read_calls;
    entropy->call_order.push_back('d');
    return give(*entropy, static_cast<uint8_t *>(out), size,
                take(entropy->kernel.read_answers, {static_cast<long>(size), 0}));
}

int __wrap_close(int descriptor) {
    FakeEntropy *const entropy = active_entropy();
    if (entropy == nullptr || descriptor != kDescriptor) return __real_close(descriptor);
    ++entropy->kernel.close_calls;
    entropy->call_order.push_back('c');
    return 0;
}

// Secret numbers are those that the default build would draw, in a record as wide as the order, and
// blinding takes nothing from the sequence, unless a test wants the real ones.
int32_t __real_draw_secret_number(mint *out, const mint *n, const mint *key, const mint *digest);
int32_t __wrap_draw_secret_number(mint *out, const mint *n, const mint *key, const mint *digest);
void __real_draw_blinding(uint32_t *words, uint32_t count);
void __wrap_draw_blinding(uint32_t *words, uint32_t count);
int32_t __wrap_gen_random_number(mint *out, const mint *bound);

int32_t __wrap_draw_secret_number(mint *out, const mint *n, const mint *key, const mint *digest) {
    FakeEntropy *const entropy = active_entropy();
    if (entropy == nullptr || entropy->draws_secrets) return __real_draw_secret_number(out, n, key, digest);
    mint drawn{};
    if (__wrap_gen_random_number(&drawn, n) != 0) return -1;
    *out = mint{};
    std::copy(drawn.words, drawn.words + drawn.len, out->words);
    out->len = n->len;
    return 0;
}

void __wrap_draw_blinding(uint32_t *words, uint32_t count) {
    FakeEntropy *const entropy = active_entropy();
    if (entropy == nullptr || entropy->draws_secrets) return __real_draw_blinding(words, count);
    for (uint32_t i = 0; i < count; ++i) words[i] = ++entropy->blinding * 0x9E3779B9u;
    words[0] |= 1;
}

}  // extern "C"
