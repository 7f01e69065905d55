/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/**
 * @file zokecc.h
 * The whole public interface of zokecc in one include.
 *
 * - zokecc/conventions.h: rules that all calls share, status codes
 * - zokecc/version.h: the version of the headers
 * - zokecc/mint.h: integers of up to 608 bits, plain and modular
 * - zokecc/hash.h: SHA-256, SM3, HMAC, key derivation and random numbers
 * - zokecc/ecc.h: curves, points, scalar multiplication and points as byte strings
 * - zokecc/curves.h: nine standard curves as ready records
 * - zokecc/schemes.h: signatures, encryption and key exchange over the curve of the process
 * - zokecc/sdf.h: devices, sessions, key pairs, signatures, encryption and key agreement
 * - zokecc/status.h: status codes in words
 */
/**
 * @mainpage
 *
 * zokecc is a C library of elliptic-curve cryptography for small embedded Linux devices: SM2, ECDSA, ECDH,
 * SM3, SHA-256, HMAC and key derivation over prime curves that the caller supplies.
 *
 * Start with conventions.h, the rules that all calls share, and with @ref sign_with_identity.c, a whole
 * program.
 *
 * | Guide | Content |
 * |---|---|
 * | @ref md_docs_integrating "Integrating" | a first program, threads, memory, results, migration |
 * | @ref md_docs_security "Security" | which build to use, what it protects, what the caller must do |
 * | @ref md_docs_interoperability "Interoperability" | keys, signatures and ciphertexts of other systems |
 * | @ref md_docs_coming_from "Coming from" | calls of mbedTLS, wolfSSL and OpenSSL, and ours |
 * | @ref md_docs_porting "Porting" | build options, processors, C libraries, packages |
 *
 * | Family | For |
 * |---|---|
 * | sdf.h | sessions: key pairs, signatures, encryption, key agreement; what new programs use |
 * | schemes.h | the same over one curve for the whole process; what older programs use |
 * | ecc.h | curves, points, scalar multiplication, points as byte strings |
 * | hash.h | SM3, SHA-256, HMAC, key derivation, random numbers |
 * | mint.h | integers of up to 608 bits, plain and modular |
 * | curves.h, status.h, version.h | nine standard curves, status codes in words, the version |
 *
 * | Example | Shows |
 * |---|---|
 * | @ref sign_with_identity.c | an SM2 signature for an identity, made and verified through a session |
 * | @ref check_peer_key.c | the checks that a public key from outside needs |
 * | @ref store_key.c | a private key in a PEM file that nobody else can read |
 * | @ref encrypt_message.c | SM2 encryption for a public key |
 * | @ref agree_on_key.c | SM2 key agreement, both sides, with its confirmation |
 * | @ref with_openssl.c | keys, signatures and ciphertexts exchanged with OpenSSL |
 * | @ref verify_daemon.c | verification for ever within a fixed amount of memory |
 * | @ref many_threads.c | threads, each with a session of its own |
 * | @ref own_random.c | random numbers from a source of the program's own |
 * | @ref legacy_sign.c | SM2 signatures over the curve of the process |
 * | @ref ecdsa_and_ecdh.c | ECDSA and Diffie-Hellman on P-256 |
 */
/** @example sign_with_identity.c */
/** @example check_peer_key.c */
/** @example store_key.c */
/** @example encrypt_message.c */
/** @example agree_on_key.c */
/** @example with_openssl.c */
/** @example verify_daemon.c */
/** @example many_threads.c */
/** @example own_random.c */
/** @example legacy_sign.c */
/** @example ecdsa_and_ecdh.c */
#ifndef ZOKECC_ZOKECC_H
#define ZOKECC_ZOKECC_H

#include <zokecc/curves.h>
#include <zokecc/ecc.h>
#include <zokecc/hash.h>
#include <zokecc/mint.h>
#include <zokecc/schemes.h>
#include <zokecc/sdf.h>
#include <zokecc/status.h>
#include <zokecc/version.h>

#endif
