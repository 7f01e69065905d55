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
 * zokecc is a library of elliptic-curve cryptography for small devices. Read first what all calls share,
 * conventions.h, and then the header of the family you need.
 */
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
