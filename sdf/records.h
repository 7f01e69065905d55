// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Reading and writing the key and signature records of the session interface.
//
// A record is read with its own length, bits / 8 bytes, and written with the session's L; the bytes of
// a field after that are neither read nor written.
#ifndef ZOKECC_SDF_RECORDS_H
#define ZOKECC_SDF_RECORDS_H

#include <zokecc/sdf.h>

#include "ecc/secret_steps.h"
#include "hash/bytes.h"

namespace zokecc {

constexpr uint32_t kFieldBytes = 64;

// A byte string from the caller: a message, an identity, a Z value.
struct Octets {
    const uint8_t *bytes;
    uint32_t len;
    bool missing() const { return bytes == nullptr && len > 0; }
    Bytes view() const { return {bytes, len}; }
};

// True if the record's length does not exceed its fields.
inline bool fits_field(uint32_t bits) { return bits / 8 <= kFieldBytes; }

inline bool fits_field(const ECCrefPublicKey &key) { return fits_field(key.bits); }
inline bool fits_field(const ECCrefPrivateKey &key) { return fits_field(key.bits); }

// False if the number must not be used: see read_private.
bool read_private_key(const SessionContext &session, const ECCrefPrivateKey &key, mint &d);
void read_public_key(const ECCrefPublicKey &key, ecc_point &Q);  // as a finite point

// Writes value in L bytes at the start of a field.
void write_field(const SessionContext &session, const mint &value, uint8_t *field);

void write_private_key(const SessionContext &session, const mint &d, ECCrefPrivateKey &key);
void write_public_key(const SessionContext &session, const ecc_point &Q, ECCrefPublicKey &key);

}  // namespace zokecc

#endif
