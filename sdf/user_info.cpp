// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The value Z, which binds a signature to its signer's identity (GB/T 32918.2, section 5.5).
#include <zokecc/hash.h>
#include <zokecc/sdf.h>

#include <cstring>

#include "base/work_buffer.h"
#include "ecc/curve.h"

using namespace zokecc;

namespace {

// Appends bytes to a buffer that is known to be long enough.
class Writer {
public:
    explicit Writer(uint8_t *to) : to_(to) {}
    void put(const uint8_t *bytes, uint32_t count)
    {
        if (count > 0) std::memcpy(to_, bytes, count);
        to_ += count;
    }
    void put(uint32_t byte) { *to_++ = static_cast<uint8_t>(byte); }

private:
    uint8_t *to_;
};

}  // namespace

// a, b and G come from the record last passed to the session, even if that configuration failed;
// the key's bits are ignored.
uint32_t ZOK_GenerateUserInfo(void *session, const ECCrefPublicKey *pub, const uint8_t *id, uint32_t id_len,
                              uint8_t *Z_out, uint32_t *Z_len_out)
{
    if (session == nullptr) return ZOK_ERR_SESSION;
    if (pub == nullptr || Z_out == nullptr || Z_len_out == nullptr) return ZOK_ERR_ARGUMENT;
    if (id == nullptr && id_len > 0) return ZOK_ERR_ARGUMENT;
    const SessionContext &s = *static_cast<const SessionContext *>(session);
    if (s.record == nullptr) return ZOK_ERR_ARGUMENT;

    const uint32_t L = s.byte_len;
    const uint64_t size = uint64_t{6} * L + id_len + 3;
    if (size > UINT32_MAX) return ZOK_ERR_INTERNAL;
    WorkBuffer buffer(static_cast<uint32_t>(size));
    if (!buffer) return ZOK_ERR_INTERNAL;

    const uint32_t id_bits = id_len * 8;  // only the low 16 bits count
    Writer writer(buffer.data());
    writer.put(id_bits >> 8);
    writer.put(id_bits);
    writer.put(id, id_len);
    writer.put(s.record->a, L);
    writer.put(s.record->b, L);
    writer.put(s.record->Gx, L);
    writer.put(s.record->Gy, L);
    writer.put(pub->x, L);
    writer.put(pub->y, L);

    const hash_msg message = {s.hash_selector, buffer.data(), 0, static_cast<uint32_t>(size - 1)};
    const int32_t digest_len = hash_byte(&message, Z_out);
    if (digest_len == 0) return ZOK_ERR_INTERNAL;
    *Z_len_out = static_cast<uint32_t>(digest_len);
    return ZOK_OK;
}
