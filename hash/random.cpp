// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Random bytes and numbers: seed blocks whitened with SHA-256, with feedback as in ANSI X9.17.
#include <zokecc/hash.h>

#include <cstring>

#include "base/burn.h"
#include "base/linkage.h"
#include "base/wipe.h"
#include "hash/bytes.h"
#include "hash/entropy.h"
#include "mint/value.h"

using namespace zokecc;

namespace {

constexpr uint32_t kBlockBytes = 32;

struct Block {
    uint8_t bytes[kBlockBytes];
};

// Functions that compute on a block have their own frames, which gen_random clears.
//
// Functions here that return a bool fail only if gen_random_seed does, so never in the default build.
ZOKECC_OWN_FRAME bool seed(Block &block)
{
    Wiping<uint32_t[kBlockBytes / 4]> words;
    if (gen_random_seed(*words) != 0) return false;
    for (uint32_t i = 0; i < kBlockBytes / 4; ++i) store_little_endian((*words)[i], block.bytes + 4 * i);
    return true;
}

void hash(const Block &in, Block &out)
{
    const hash_msg message = {HASH_ALG_SHA256, in.bytes, 0, kBlockBytes};
    hash_byte(&message, out.bytes);
}

// out = H(a xor b)
ZOKECC_OWN_FRAME void hash_of_xor(const Block &a, const Block &b, Block &out)
{
    Wiping<Block> mixed;
    for (uint32_t i = 0; i < kBlockBytes; ++i)
        mixed->bytes[i] = static_cast<uint8_t>(a.bytes[i] ^ b.bytes[i]);
    hash(*mixed, out);
}

// One output block from the state and fresh seed material; also returns the intermediate value.
ZOKECC_OWN_FRAME bool next_output(const Block &state, Block &intermediate, Block &output)
{
    Wiping<Block> fresh;
    if (!seed(*fresh)) return false;
    hash(*fresh, intermediate);
    hash_of_xor(state, intermediate, output);
    return true;
}

}  // namespace

int32_t gen_random(uint8_t *out, uint32_t len)
{
    const HashBurn burn;
    Wiping<Block> state;
    Wiping<Block> intermediate;
    Wiping<Block> output;
    if (!seed(*state)) return -1;
    uint8_t *const first = out;
    while (len > 0) {
        if (!next_output(*state, *intermediate, *output)) {
            wipe(first, static_cast<size_t>(out - first));
            return -1;
        }
        const uint32_t taken = len < kBlockBytes ? len : kBlockBytes;
        if (taken == kBlockBytes) hash_of_xor(*intermediate, *output, *state);
        std::memcpy(out, output->bytes, taken);
        out += taken;
        len -= taken;
    }
    return 0;
}

// KEPT: the drawn value is reduced, not redrawn, so small values are slightly likelier and zero is
// possible. Held by GenRandomNumber.KeptDrawnValueIsReducedAndMayBeZero.
int32_t gen_random_number(mint *out, const mint *bound)
{
    const HashBurn burn;
    const uint32_t words = used_words(*bound);
    Wiping<uint8_t[kMintBytes]> bytes;
    if (gen_random(*bytes, 4 * words) != 0) return -1;
    Wiping<mint> drawn;
    for (uint32_t i = 0; i < words; ++i) drawn->words[i] = load_little_endian(*bytes + 4 * i);
    drawn->len = words;
    mint_mod(drawn.get(), bound, out);
    return 0;
}
