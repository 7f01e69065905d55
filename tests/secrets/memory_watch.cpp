#include "tests/secrets/memory_watch.h"

#include <malloc.h>
#include <ucontext.h>
#include <zokecc/hash.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace zokecc_test::secrets {

namespace {

constexpr size_t kStackBytes = 256 * 1024;
constexpr uint8_t kPaint = 0xA7;
constexpr size_t kMaxBlocks = 64;
constexpr size_t kMaxDraws = 16;

// Static, and written without a call wherever the watched code runs: what the watching itself
// leaves on the watched stack would be found there.
alignas(64) uint8_t stack[kStackBytes];
const uint8_t *entry_frame = nullptr;
ucontext_t own_context, watched_context;
const std::function<void()> *current = nullptr;

bool watching = false;
struct Block {
    uint8_t *bytes;
    size_t size;
    bool freed;
};
Block blocks[kMaxBlocks];
size_t block_count = 0;
mint draws[kMaxDraws];
size_t draw_count = 0;
bool overrun = false;

void enter() {
    entry_frame = static_cast<const uint8_t *>(__builtin_frame_address(0));
    (*current)();
}

void run_on_painted_stack(const std::function<void()> &call) {
    std::memset(stack, kPaint, sizeof stack);
    current = &call;
    getcontext(&watched_context);
    watched_context.uc_stack.ss_sp = stack;
    watched_context.uc_stack.ss_size = sizeof stack;
    watched_context.uc_link = &own_context;
    makecontext(&watched_context, enter, 0);
    swapcontext(&own_context, &watched_context);
}

const uint8_t *deepest_byte() {
    return std::find_if(stack, stack + kStackBytes, [](uint8_t byte) { return byte != kPaint; });
}

bool is_part(const Image &image, size_t from, const uint8_t *at) {
    return std::memcmp(image.bytes.data() + from, at, kPartBytes) == 0;
}

// How many bytes at `at` are those of the image from `from` on; 0 below the size of a part.
size_t common_bytes(const Image &image, size_t from, const uint8_t *at, const uint8_t *end) {
    if (!is_part(image, from, at)) return 0;
    size_t count = kPartBytes;
    while (from + count < image.bytes.size() && at + count < end && image.bytes[from + count] == at[count])
        ++count;
    return count;
}

// Reports every piece of the image between begin and end; place tells where a byte is.
void search(const Image &image, const uint8_t *begin, const uint8_t *end,
            const std::function<std::string(const uint8_t *)> &place, std::vector<std::string> &out) {
    for (const uint8_t *at = begin; at + kPartBytes <= end; ++at) {
        for (size_t from = 0; from + kPartBytes <= image.bytes.size(); from += kWordBytes) {
            const size_t count = common_bytes(image, from, at, end);
            if (count == 0) continue;
            out.push_back(place(at) + ": " + std::to_string(count) + " bytes of " + image.name +
                          ", from byte " + std::to_string(from));
            at += count - kWordBytes;
            break;
        }
    }
}

uint8_t *note_block(void *block) {
    if (!watching || block == nullptr) return static_cast<uint8_t *>(block);
    if (block_count == kMaxBlocks) {
        overrun = true;
        return static_cast<uint8_t *>(block);
    }
    blocks[block_count++] = {static_cast<uint8_t *>(block), malloc_usable_size(block), false};
    return static_cast<uint8_t *>(block);
}

}  // namespace

MemoryWatch::MemoryWatch(const std::function<void()> &call) {
    block_count = draw_count = 0;
    overrun = false;
    watching = true;
    run_on_painted_stack(call);
    watching = false;
    if (overrun) throw std::length_error("more blocks or draws than the watch has room for");
    drawn_.assign(draws, draws + draw_count);
}

// Blocks that the call itself left allocated stay so.
MemoryWatch::~MemoryWatch() {
    for (size_t i = 0; i < block_count; ++i)
        if (blocks[i].freed) std::free(blocks[i].bytes);
    block_count = 0;
}

std::vector<std::string> MemoryWatch::find(const std::vector<Secret> &secrets) const {
    std::vector<std::string> out;
    for (const Image &image : images_of(secrets)) {
        search(
            image, deepest_byte(), stack + kStackBytes,
            [](const uint8_t *at) { return "stack, " + std::to_string(entry_frame - at) + " bytes down"; },
            out);
        for (size_t i = 0; i < block_count; ++i) {
            const Block &block = blocks[i];
            const auto place = [&](const uint8_t *at) {
                return std::string(block.freed ? "freed" : "kept") + " block of " +
                       std::to_string(block.size) + " bytes, at " + std::to_string(at - block.bytes);
            };
            search(image, block.bytes, block.bytes + block.size, place, out);
        }
    }
    return out;
}

size_t MemoryWatch::stack_depth() const { return static_cast<size_t>(entry_frame - deepest_byte()); }

}  // namespace zokecc_test::secrets

extern "C" {

using namespace zokecc_test::secrets;

void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void __real_free(void *block);
int32_t __real_gen_random_number(mint *out, const mint *bound);
void *__wrap_malloc(size_t size);
void *__wrap_calloc(size_t count, size_t size);
void __wrap_free(void *block);
int32_t __wrap_gen_random_number(mint *out, const mint *bound);

void *__wrap_malloc(size_t size) { return note_block(__real_malloc(size)); }
void *__wrap_calloc(size_t count, size_t size) { return note_block(__real_calloc(count, size)); }

// A watched block is only marked, and freed when the watch ends.
void __wrap_free(void *block) {
    for (size_t i = 0; watching && i < block_count; ++i) {
        if (blocks[i].bytes != block) continue;
        blocks[i].freed = true;
        return;
    }
    __real_free(block);
}

int32_t __wrap_gen_random_number(mint *out, const mint *bound) {
    const int32_t status = __real_gen_random_number(out, bound);
    if (!watching) return status;
    if (draw_count == kMaxDraws) {
        overrun = true;
        return status;
    }
    // Word by word: a copy of the record could leave one on the stack.
    mint &noted = draws[draw_count++];
    noted.len = out->len;
    for (uint32_t i = 0; i < MINT_WORDS; ++i) noted.words[i] = out->words[i];
    return status;
}

}  // extern "C"
