// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Hashing by selector: every hash in a scheme goes through one of these two calls.
#include <zokecc/hash.h>

#include <cstddef>

#include "base/burn.h"
#include "base/wipe.h"
#include "hash/bytes.h"
#include "hash/digest.h"

using namespace zokecc;

// From data on, a hash_msg is laid out as an sm3_msg.
static_assert(sizeof(hash_msg) - offsetof(hash_msg, data) == sizeof(sm3_msg));

namespace {

constexpr uint32_t kDigestWords = kDigestBytes / 4;

// KEPT: SHA-256 uses only the low word of the length. Held by HashByte.KeptSha256IgnoresLenHigh.
bool digest_of(const hash_msg &msg, uint8_t *digest)
{
    if (msg.alg == HASH_ALG_SM3) {
        const sm3_msg message = {const_cast<uint8_t *>(msg.data), msg.len_high, msg.len_low};
        sm3_hash(&message, digest);
        return true;
    }
    if (msg.alg == HASH_ALG_SHA256) {
        mhash_sha256(msg.data, msg.len_low, digest);
        return true;
    }
    return false;
}

}  // namespace

int32_t hash_byte(const hash_msg *msg, uint8_t *out)
{
    return digest_of(*msg, out) ? static_cast<int32_t>(kDigestBytes) : 0;
}

// KEPT: the whole digest is used, never truncated to the modulus' size; and a SHA-256 value always
// has len 8, even with zero words at the top, while an SM3 value is trimmed. Held by
// HashMintValue.KeptWholeDigestWithoutTruncation and HashMintValue.KeptSha256ValueIsNotTrimmed.
int32_t hash_mint_value(const hash_msg *msg, const mint *modulus, mint *out)
{
    const HashBurn burn;
    Wiping<uint8_t[kDigestBytes]> digest;
    if (!digest_of(*msg, *digest)) return -1;
    if (msg->alg == HASH_ALG_SHA256) {
        for (uint32_t i = 0; i < kDigestWords; ++i)
            out->words[kDigestWords - 1 - i] = load_big_endian(*digest + 4 * i);
        out->len = kDigestWords;
    } else {
        octetstring_to_mint(*digest, kDigestBytes, out);
    }
    if (modulus != nullptr) mint_mod(out, modulus, out);
    return 0;
}
