// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Secret numbers from the kernel.
#include <zokecc/hash.h>

#include <cstring>

#include "base/burn.h"
#include "ct/choice.h"
#include "ct/scalars.h"
#include "hash/bytes.h"
#include "hash/digest.h"
#include "hash/entropy.h"
#include "mint/value.h"

using namespace zokecc;

namespace {

constexpr uint32_t kMoreBytes = 8;  // than the order has
constexpr uint32_t kMaxDrawn = 4 * kMaxSecretWords + kMoreBytes;
constexpr uint32_t kMaxDraws = 1024;

// The whole hash input.
struct Input {
    uint8_t kernel[kMaxDrawn];
    uint8_t key[4 * kMaxSecretWords];
    uint8_t digest[4 * kMintWords];
    uint8_t counter[4];
};

struct Drawn {
    uint8_t bytes[(kMaxDrawn + kDigestBytes - 1) / kDigestBytes * kDigestBytes];
};

// Writes the words of a wide or trimmed number, at fixed offsets.
void put(const mint *number, uint8_t *out)
{
    if (number == nullptr) return;
    for (uint32_t i = 0; i < number->len; ++i) store_little_endian(number->words[i], out + 4 * i);
}

void spread(Input &input, uint32_t count, Drawn &out)
{
    for (uint32_t done = 0; done < count; done += kDigestBytes) {
        store_big_endian(done, input.counter);
        const hash_msg message = {HASH_ALG_SHA256, reinterpret_cast<const uint8_t *>(&input), 0,
                                  sizeof input};
        hash_byte(&message, out.bytes + done);
    }
}

}  // namespace

void draw_blinding(uint32_t *words, uint32_t count)
{
    if (!kernel_random(reinterpret_cast<uint8_t *>(words), 4 * count)) wipe(words, 4 * count);
    words[0] |= 1;
}

int32_t draw_secret_number(mint *out, const mint *n, const mint *key, const mint *digest)
{
    const HashBurn burn;
    if (!has_secret_field(*n)) return -1;
    const uint32_t count = 4 * n->len + kMoreBytes;
    Wiping<Input> input;
    Wiping<Drawn> drawn;
    put(key, input->key);
    put(digest, input->digest);
    for (uint32_t i = 0; i < kMaxDraws; ++i) {
        if (!kernel_random(input->kernel, count)) return -1;
        spread(*input, count, *drawn);
        reduce_secret(*n, drawn->bytes, count, *out);
        const bool is_last = key == nullptr && sums_to_order(*n, *out, nullptr);
        if (!is_zero_secret(*out) && !is_last) return 0;
    }
    return -1;
}
