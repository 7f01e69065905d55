// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/secrets/machine.h"

#include <link.h>
#include <ucontext.h>

#include <cstring>
#include <string>

#include "tests/secrets/stand_ins.h"

namespace zokecc_test::secrets {

namespace {

constexpr size_t kStackBytes = 64 * 1024;
constexpr uint8_t kPaint = 0xA7;
constexpr size_t kWordBytes = 4;

// Static, and at the same address in every run.
constexpr size_t kStackWords = kStackBytes / kWordBytes;
alignas(64) uint32_t stack_words[kStackWords];
alignas(64) uint32_t words_afterwards[kStackWords];
uint8_t *const stack = reinterpret_cast<uint8_t *>(stack_words);
const uint8_t *const stack_afterwards = reinterpret_cast<const uint8_t *>(words_afterwards);
const uint8_t *entry_frame = nullptr;
ucontext_t own_context, watched_context;
Work current = nullptr;
uint32_t status = 0;

struct Region {
    uint8_t *begin;
    size_t size;
    std::vector<uint8_t> start;
};
std::vector<Region> variables;
std::vector<uint8_t> heap_at_start;

struct Search {
    const std::vector<std::string> &libraries;
};

bool is_searched(const char *path, const Search &search) {
    const std::string name = path;
    for (const std::string &library : search.libraries)
        if (name.find("/" + library + ".so") != std::string::npos) return true;
    return false;
}

void add_region(uintptr_t begin, uintptr_t end) {
    if (end <= begin) return;
    uint8_t *const bytes = reinterpret_cast<uint8_t *>(begin);
    variables.push_back({bytes, end - begin, std::vector<uint8_t>(bytes, bytes + (end - begin))});
}

// The writable segments, without the part that is read-only once the library has been loaded.
int note_library(dl_phdr_info *info, size_t, void *search) {
    if (!is_searched(info->dlpi_name, *static_cast<const Search *>(search))) return 0;
    constexpr uintptr_t kPage = 4096;
    uintptr_t fixed_begin = 0, fixed_end = 0;
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const auto &header = info->dlpi_phdr[i];
        if (header.p_type != PT_GNU_RELRO) continue;
        fixed_begin = info->dlpi_addr + header.p_vaddr;
        fixed_end = (fixed_begin + header.p_memsz) & ~(kPage - 1);
    }
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const auto &header = info->dlpi_phdr[i];
        if (header.p_type != PT_LOAD || (header.p_flags & PF_W) == 0) continue;
        const uintptr_t begin = info->dlpi_addr + header.p_vaddr, end = begin + header.p_memsz;
        const bool has_fixed = fixed_end > begin && fixed_begin < end;
        add_region(has_fixed ? fixed_end : begin, end);
    }
    return 0;
}

void enter() {
    entry_frame = static_cast<const uint8_t *>(__builtin_frame_address(0));
    status = current();
    // Immediately and without a call: switching back to the other stack would overwrite what is here.
    for (size_t i = 0; i < kStackWords; ++i) {
        words_afterwards[i] = stack_words[i];
        __asm__ __volatile__("" : : : "memory");
    }
}

void restore_start() {
    for (const Region &region : variables) std::memcpy(region.begin, region.start.data(), region.size);
    std::memset(heap.begin, 0, heap.size);
    std::memcpy(heap.begin, heap_at_start.data(), heap_at_start.size());
    std::memset(stack, kPaint, kStackBytes);
}

size_t depth() {
    const uint8_t *deepest = stack_afterwards;
    while (*deepest == kPaint) ++deepest;
    return static_cast<size_t>(entry_frame - stack) - static_cast<size_t>(deepest - stack_afterwards);
}

uint32_t word_at(const std::vector<uint8_t> &bytes, size_t offset) {
    uint32_t word = 0;
    std::memcpy(&word, bytes.data() + offset, kWordBytes);
    return word;
}

template <class Name>
void compare(const std::vector<uint8_t> &first, const std::vector<uint8_t> &second, Name name,
             std::vector<Finding> &out) {
    for (size_t i = 0; i + kWordBytes <= first.size(); i += kWordBytes) {
        const uint32_t a = word_at(first, i), b = word_at(second, i);
        if (a == b) continue;
        Finding finding = name(i);
        finding.first = a;
        finding.second = b;
        out.push_back(finding);
    }
}

}  // namespace

void note_start(const std::vector<std::string> &libraries) {
    getcontext(&watched_context);  // only once: every run starts with the same registers
    variables.clear();
    Search search{libraries};
    dl_iterate_phdr(note_library, &search);
    heap_at_start.assign(heap.begin, heap.begin + heap.used);
    keep_blocks();
}

size_t bytes_of_variables() {
    size_t out = 0;
    for (const Region &region : variables) out += region.size;
    return out;
}

const Remains &run(Work work, const Conditions &conditions) {
    restore_start();
    current = work;
    watched_context.uc_stack.ss_sp = stack;
    watched_context.uc_stack.ss_size = kStackBytes;
    watched_context.uc_link = &own_context;
    makecontext(&watched_context, enter, 0);
    start_watching(conditions);
    swapcontext(&own_context, &watched_context);
    static Remains places[2];
    static unsigned turn = 0;
    Remains &out = places[turn++ % 2];
    out.counts = stop_watching();
    out.counts.stack = depth();
    out.status = status;
    out.stack.assign(stack_afterwards, stack_afterwards + kStackBytes);
    out.heap.assign(heap.begin, heap.begin + heap.size);
    out.variables.clear();
    for (const Region &region : variables)
        out.variables.insert(out.variables.end(), region.begin, region.begin + region.size);
    return out;
}

std::vector<Finding> differences(const Remains &first, const Remains &second) {
    std::vector<Finding> out;
    compare(
        first.stack, second.stack,
        [](size_t i) {
            return Finding{"stack", static_cast<size_t>(entry_frame - (stack + i)), 0, 0};
        },
        out);
    compare(
        first.heap, second.heap,
        [](size_t i) {
            const Block block = block_at(i);
            return Finding{block.freed ? "freed heap" : "kept heap", i - block.offset, 0, 0};
        },
        out);
    compare(
        first.variables, second.variables,
        [](size_t i) {
            return Finding{"variable", i, 0, 0};
        },
        out);
    return out;
}

}  // namespace zokecc_test::secrets
