// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The source of randomness in the hardened build.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "base/wipe.h"
#include "hash/entropy.h"

// glibc has had the call and the header since 2.25, musl since 1.1.20.
#if __has_include(<sys/random.h>)
#include <sys/random.h>
#else
static ssize_t getrandom(void *, size_t, unsigned)
{
    errno = ENOSYS;
    return -1;
}
#endif

using namespace zokecc;

namespace zokecc {

namespace {

constexpr dev_t kRandomDevice = 1 << 8 | 9;  // major 1, minor 9, on every Linux

enum class Outcome { filled, failed, no_such_call };

// Calls take(bytes, count) until size bytes are read; a call may deliver fewer than requested or be
// interrupted by a signal.
template <class Take>
Outcome fill(uint8_t *out, size_t size, const Take &take)
{
    while (size > 0) {
        const ssize_t got = take(out, size);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 && errno == ENOSYS) return Outcome::no_such_call;
        if (got <= 0 || static_cast<size_t>(got) > size) return Outcome::failed;
        out += got;
        size -= static_cast<size_t>(got);
    }
    return Outcome::filled;
}

Outcome fill_by_call(uint8_t *out, size_t size)
{
    return fill(out, size, [](uint8_t *bytes, size_t count) { return getrandom(bytes, count, 0); });
}

// A regular file of that name, left from before the devices were created, would return the same bytes for
// ever.
bool is_random_device(int descriptor)
{
    struct stat file;
    return fstat(descriptor, &file) == 0 && S_ISCHR(file.st_mode) && file.st_rdev == kRandomDevice;
}

bool fill_from_device(uint8_t *out, size_t size)
{
    int device = -1;
    do {
        device = open("/dev/urandom", O_RDONLY | O_CLOEXEC);
    } while (device < 0 && errno == EINTR);
    if (device < 0) return false;
    Outcome outcome = Outcome::failed;
    if (is_random_device(device))
        outcome =
            fill(out, size, [device](uint8_t *bytes, size_t count) { return read(device, bytes, count); });
    close(device);
    return outcome == Outcome::filled;
}

}  // namespace

bool kernel_random(uint8_t *out, size_t size)
{
    const Outcome outcome = fill_by_call(out, size);
    if (outcome == Outcome::filled) return true;
    if (outcome == Outcome::no_such_call && fill_from_device(out, size)) return true;
    wipe(out, size);
    return false;
}

}  // namespace zokecc

int32_t gen_random_seed(uint32_t *words)
{
    return kernel_random(reinterpret_cast<uint8_t *>(words), 4 * kSeedWords) ? 0 : -1;
}
