// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Written without calls while the library is watched: otherwise the watching code's own traces on the watched
// stack would be found.
#include "tests/secrets/stand_ins.h"

#include <sys/types.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace zokecc_test::secrets {

namespace {

constexpr size_t kHeapBytes = 128 * 1024;
constexpr size_t kOwnBytes = 64 * 1024 * 1024;  // for everything else of this program
constexpr size_t kMaxBlocks = 64;
constexpr size_t kAlignment = 16;

alignas(kAlignment) uint8_t heap_bytes[kHeapBytes];
alignas(kAlignment) uint8_t own_bytes[kOwnBytes];
size_t own_used = 0;

Block blocks[kMaxBlocks];
size_t block_count = 0;
size_t blocks_at_start = 0, heap_used_at_start = 0;

bool uses_heap = false;
Conditions conditions;
Counts counts;

void give_up(const char *reason) {
    std::fputs(reason, stderr);
    std::abort();
}

size_t aligned(size_t size) { return (size + kAlignment - 1) / kAlignment * kAlignment; }

void *take_block(size_t size) {
    ++counts.allocations;
    if (counts.allocations == conditions.allocation) return nullptr;
    if (block_count == kMaxBlocks || aligned(size) > kHeapBytes - heap.used) give_up("heap too small\n");
    blocks[block_count++] = {heap.used, size, false};
    uint8_t *const out = heap_bytes + heap.used;
    heap.used += aligned(size);
    return out;
}

// The size of a block precedes it; freed memory is not reused, except for the
// last block.
void *take_own(size_t size) {
    size = aligned(size);
    if (size + kAlignment > kOwnBytes - own_used) give_up("no memory\n");
    uint8_t *const out = own_bytes + own_used + kAlignment;
    std::memcpy(out - kAlignment, &size, sizeof size);
    own_used += size + kAlignment;
    return out;
}

size_t own_size(const void *block) {
    size_t size = 0;
    std::memcpy(&size, static_cast<const uint8_t *>(block) - kAlignment, sizeof size);
    return size;
}

void free_own(void *block) {
    uint8_t *const bytes = static_cast<uint8_t *>(block);
    const size_t size = own_size(block);
    if (bytes + size == own_bytes + own_used) own_used -= size + kAlignment;
}

bool is_of_heap(const void *block) {
    const uint8_t *const bytes = static_cast<const uint8_t *>(block);
    return bytes >= heap_bytes && bytes < heap_bytes + kHeapBytes;
}

// A well-mixing permutation of the stream's number and the number of draws.
uint32_t random_state = 0;
uint32_t next_random() {
    uint32_t x = random_state += 0x9E3779B9u;
    x = (x ^ x >> 16) * 0x85EBCA6Bu;
    x = (x ^ x >> 13) * 0xC2B2AE35u;
    return x ^ x >> 16;
}

}  // namespace

Heap heap = {heap_bytes, kHeapBytes, 0};

void clear_heap() {
    block_count = 0;
    heap.used = 0;
}

void use_heap(bool on) { uses_heap = on; }

void keep_blocks() {
    blocks_at_start = block_count;
    heap_used_at_start = heap.used;
}

Block block_at(size_t offset) {
    for (size_t i = block_count; i > 0; --i)
        if (blocks[i - 1].offset <= offset) return blocks[i - 1];
    return {0, 0, false};
}

void (*note_random)(void *bytes, size_t size) = nullptr;

void start_watching(const Conditions &wanted) {
    conditions = wanted;
    counts = {};
    block_count = blocks_at_start;
    heap.used = heap_used_at_start;
    random_state = 0x1234567u * (wanted.stream + 1);
    use_heap(true);
}

Counts stop_watching() {
    use_heap(false);
    return counts;
}

}  // namespace zokecc_test::secrets

extern "C" {

using namespace zokecc_test::secrets;

ssize_t getrandom(void *out, size_t size, unsigned flags);

void *malloc(size_t size) { return uses_heap ? take_block(size) : take_own(size); }

void *calloc(size_t count, size_t size) {
    void *const out = malloc(count * size);
    if (out != nullptr) std::memset(out, 0, count * size);
    return out;
}

void free(void *block) {
    if (block == nullptr) return;
    if (!is_of_heap(block)) return free_own(block);
    const size_t offset = static_cast<size_t>(static_cast<uint8_t *>(block) - heap_bytes);
    for (size_t i = 0; i < block_count; ++i)
        if (blocks[i].offset == offset) blocks[i].freed = true;
}

void *realloc(void *block, size_t size) {
    void *const out = malloc(size);
    if (block == nullptr || out == nullptr) return out;
    const size_t before = own_size(block);
    std::memcpy(out, block, before < size ? before : size);
    free(block);
    return out;
}

int rand() noexcept { return static_cast<int>(next_random() >> 1); }
void srand(unsigned) noexcept {}
time_t time(time_t *out) noexcept {
    if (out != nullptr) *out = 1700000000;
    return 1700000000;
}

ssize_t getrandom(void *out, size_t size, unsigned) {
    ++counts.draws;
    if (counts.draws == conditions.draw) {
        errno = EIO;
        return -1;
    }
    for (size_t i = 0; i < size; ++i)
        static_cast<volatile uint8_t *>(out)[i] = static_cast<uint8_t>(next_random());
    if (note_random != nullptr) note_random(out, size);
    return static_cast<ssize_t>(size);
}

}  // extern "C"
