// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The counter-mode key derivation of SM2 (GM/T 0003.4, section 5.4.3), one name per generation of
// the interface.
#ifndef ZOKECC_HASH_SM2_KDF_H
#define ZOKECC_HASH_SM2_KDF_H

#include <cstdint>

#include "base/linkage.h"

// out = H(z || 00000001) || H(z || 00000002) || ... for klen bytes.
//
// There are klen / step_len whole steps, and each writes a whole digest: for a step_len below 32
// the area written is the larger of klen and 32 times the steps; its first klen bytes are the key
// stream. Callers pass the byte length of a coordinate as step_len.
//
// Returns -1, with nothing written, if z_len is below 0 or above 300 or step_len is below 1,
// otherwise 0. An unknown alg writes klen zero bytes if klen is not a multiple of step_len, and
// nothing if it is.
ZOKECC_INTERNAL int32_t sm2_kdf(const uint8_t *z, int32_t z_len, int32_t klen, int32_t step_len, uint32_t alg,
                                uint8_t *out);
ZOKECC_INTERNAL int32_t sm2_kdf_session(const uint8_t *z, int32_t z_len, int32_t klen, int32_t step_len,
                                        uint32_t alg, uint8_t *out);

namespace zokecc {

// The bytes that the two calls above write for klen >= 0 and a step_len up to 32, if the hash is
// known.
uint64_t kdf_written_bytes(uint32_t klen, uint32_t step_len);

}  // namespace zokecc

#endif
