// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "sdf/records.h"

namespace zokecc {

bool read_private_key(const SessionContext &session, const ECCrefPrivateKey &key, mint &d)
{
    return read_private(view_of(session), key.K, key.bits / 8, d);
}

void read_public_key(const ECCrefPublicKey &key, ecc_point &Q)
{
    Q.infinity = 0;
    octetstring_to_mint(key.x, key.bits / 8, &Q.x);
    octetstring_to_mint(key.y, key.bits / 8, &Q.y);
}

void write_field(const SessionContext &session, const mint &value, uint8_t *field)
{
    uint32_t written = 0;
    mint_to_fixedlen_os(&value, session.byte_len, kFieldBytes, &written, field);
}

void write_private_key(const SessionContext &session, const mint &d, ECCrefPrivateKey &key)
{
    key.bits = 8 * session.byte_len;
    write_number(d, session.byte_len, key.K);
}

void write_public_key(const SessionContext &session, const ecc_point &Q, ECCrefPublicKey &key)
{
    key.bits = 8 * session.byte_len;
    write_field(session, Q.x, key.x);
    write_field(session, Q.y, key.y);
}

}  // namespace zokecc
