// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "hash/sm2_kdf.h"

#include <zokecc/hash.h>
#include <zokecc/mint.h>

#include <cstring>

#include "base/burn.h"
#include "base/wipe.h"
#include "hash/bytes.h"
#include "hash/digest.h"

using namespace zokecc;

namespace {

constexpr int32_t kMaxSecretBytes = 300;
constexpr uint32_t kCounterBytes = 4;

// z, with room for the counter after it.
struct CountedSecret {
    uint8_t bytes[kMaxSecretBytes + kCounterBytes];
    uint32_t z_len;
};

// digest = H(z || counter). Returns the digest's length, 0 for an unknown hash.
int32_t hash_with_counter(CountedSecret &secret, uint32_t counter, uint32_t alg, uint8_t *digest)
{
    store_big_endian(counter, secret.bytes + secret.z_len);
    const hash_msg message = {alg, secret.bytes, 0, secret.z_len + kCounterBytes};
    return hash_byte(&message, digest);
}

int32_t smaller(int32_t a, int32_t b) { return a < b ? a : b; }

// Copies count bytes of the digest; past its end, writes zeros.
void copy_digest(const uint8_t *digest, int64_t count, uint8_t *out)
{
    const size_t size = static_cast<size_t>(count);
    const size_t from_digest = size < kDigestBytes ? size : kDigestBytes;
    std::memcpy(out, digest, from_digest);
    if (size > from_digest) std::memset(out + from_digest, 0, size - from_digest);
}

// KEPT: steps are counted in units of step_len but filled with whole digests. Key buffers of
// deployed callers on curves shorter than 32 bytes have room for it. An unknown hash gives zero
// bytes. Held by Sm2Kdf.KeptStepsAreFilledWithWholeDigests and
// Sm2Kdf.KeptUnknownSelectorGivesZeros.
int32_t derive(const uint8_t *z, int32_t z_len, int32_t klen, int32_t step_len, uint32_t alg, uint8_t *out)
{
    const HashBurn burn;
    if (z_len < 0 || z_len > kMaxSecretBytes || step_len <= 0) return -1;
    if (klen <= 0) return 0;
    Wiping<CountedSecret> secret;
    Wiping<uint8_t[kDigestBytes]> digest;
    if (z_len > 0) std::memcpy(secret->bytes, z, static_cast<size_t>(z_len));
    secret->z_len = static_cast<uint32_t>(z_len);

    // div_2 is linked anyway; on ARM another division would add 500 bytes of libgcc.
    const uint32_t steps =
        static_cast<uint32_t>(div_2(0, static_cast<uint32_t>(klen), static_cast<uint32_t>(step_len)));
    const uint32_t remainder = static_cast<uint32_t>(klen) - steps * static_cast<uint32_t>(step_len);
    int32_t part = 0;
    for (uint32_t i = 0; i < steps; ++i) {
        part = smaller(klen, hash_with_counter(*secret, i + 1, alg, *digest));
        if (part == 0) break;
        copy_digest(*digest, part, out + int64_t{i} * part);
    }
    if (remainder == 0) return 0;
    part = smaller(klen, hash_with_counter(*secret, steps + 1, alg, *digest));
    // Whole digests may already exceed klen; then nothing is left to copy.
    const int64_t done = int64_t{steps} * part;
    if (klen > done) copy_digest(*digest, klen - done, out + done);
    return 0;
}

}  // namespace

int32_t sm2_kdf(const uint8_t *z, int32_t z_len, int32_t klen, int32_t step_len, uint32_t alg, uint8_t *out)
{
    return derive(z, z_len, klen, step_len, alg, out);
}

int32_t sm2_kdf_session(const uint8_t *z, int32_t z_len, int32_t klen, int32_t step_len, uint32_t alg,
                        uint8_t *out)
{
    return derive(z, z_len, klen, step_len, alg, out);
}

namespace zokecc {

uint64_t kdf_written_bytes(uint32_t klen, uint32_t step_len)
{
    if (step_len == 0) return klen;
    const uint64_t per_step = klen < kDigestBytes ? klen : kDigestBytes;
    const uint64_t in_steps = klen / step_len * per_step;
    return in_steps > klen ? in_steps : klen;
}

}  // namespace zokecc
