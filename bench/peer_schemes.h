// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The schemes as an efficient OpenSSL 3.0 program would call them: keys and contexts are set up once, and
// the faster of two ways to the same result is used.
#ifndef ZOKECC_BENCH_PEER_SCHEMES_H
#define ZOKECC_BENCH_PEER_SCHEMES_H

#include "bench/curves.h"

namespace zokecc_bench {

// A new key pair in a reused key object (EC_KEY_generate_key; EVP_PKEY_generate is slower).
Loop peer_make_key(const std::string &curve_name);

// Signs or verifies a digest (EVP_PKEY_sign, EVP_PKEY_verify) with SM2 or ECDSA, by the curve. Given a prefix
// and a message, hashes both first, with a reused context.
Loop peer_sign(const SharedKey &key, const Bytes &digest);
Loop peer_verify(const SharedKey &key, const Bytes &digest);
Loop peer_hash_and_sign(const SharedKey &key, const Bytes &prefix, const Bytes &message);
Loop peer_hash_and_verify(const SharedKey &key, const Bytes &prefix, const Bytes &message);

// SM2 with an identity (EVP_DigestSign, EVP_DigestVerify).
Loop peer_sign_for(const SharedKey &key, const Bytes &id, const Bytes &message);
Loop peer_verify_for(const SharedKey &key, const Bytes &id, const Bytes &message);

// SM2 (EVP_PKEY_encrypt, EVP_PKEY_decrypt).
Loop peer_encrypt(const SharedKey &key, const Bytes &message);
Loop peer_decrypt(const SharedKey &key, const Bytes &message);

// ECDH (ECDH_compute_key; EVP_PKEY_derive is slower and not available for the SM2 curve).
// The secret is left in *out.
Loop peer_agree(const SharedKey &own, const SharedKey &other, const std::shared_ptr<Bytes> &out);

// Multiplicative encryption, composed of calls on points and numbers.
Loop peer_multiply_encrypt(const SharedKey &key, const Bytes &message);
Loop peer_multiply_decrypt(const SharedKey &key, const Bytes &message);

}  // namespace zokecc_bench

#endif
