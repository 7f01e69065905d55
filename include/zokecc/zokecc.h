/**
 * @file zokecc.h
 * The whole public interface of zokecc in one include.
 *
 * - zokecc/conventions.h: rules that all calls share, status codes
 * - zokecc/mint.h: integers of up to 608 bits, plain and modular
 * - zokecc/hash.h: SHA-256, SM3, HMAC, key derivation and random numbers
 * - zokecc/ecc.h: curves, points and scalar multiplication
 * - zokecc/sdf.h: devices, sessions, key pairs and signatures
 */
#ifndef ZOKECC_ZOKECC_H
#define ZOKECC_ZOKECC_H

#include <zokecc/ecc.h>
#include <zokecc/hash.h>
#include <zokecc/mint.h>
#include <zokecc/sdf.h>

#endif
