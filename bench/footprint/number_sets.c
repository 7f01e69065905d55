/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * The numbers that the calls are measured with. Together they cover the fast paths with 8, 7, 6
 * and 9 words, the reference path, and every kind of square root.
 */
#include "probe.h"

const number_set number_sets[] = {
    {"sm2p256v1", 32, 4, 1, /* GM/T 0003.5; p = 3 (mod 4) */
     "fffffffeffffffffffffffffffffffffffffffff00000000ffffffffffffffff",
     "fffffffeffffffffffffffffffffffffffffffff00000000fffffffffffffffc",
     "28e9fa9e9d9f5e344d5a9e4bcf6509a7f39789f515ab8f92ddbcbd414d940e93",
     "32c4ae2c1f1981195f9904466a39c9948fe30bbff2660be1715a4589334c74c7",
     "bc3736a2f4f6779c59bdcee36b692153d0a9877cc62a474002df32e52139f0a0",
     "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54123"},
    {"P-224", 28, 3, 4, /* FIPS 186-4; p = 1 (mod 8) */
     "ffffffffffffffffffffffffffffffff000000000000000000000001",
     "fffffffffffffffffffffffffffffffefffffffffffffffffffffffe",
     "b4050a850c04b3abf54132565044b0b7d7bfd8ba270b39432355ffb4",
     "b70e0cbd6bb4bf7f321390b94a03c1d356c21122343280d6115c1d21",
     "bd376388b5f723fb4c22dfe6cd4375a05a07476444d5819985007e34",
     "ffffffffffffffffffffffffffff16a2e0b8f03e13dd29455c5c2a3d"},
    {"P-192", 24, 2, 0, /* FIPS 186-4 */
     "fffffffffffffffffffffffffffffffeffffffffffffffff", "fffffffffffffffffffffffffffffffefffffffffffffffc",
     "64210519e59c80e70fa7e9ab72243049feb8deecc146b9b1", "188da80eb03090f67cbf20eb43a18800f4ff0afd82ff1012",
     "07192b95ffc8da78631011ed6b24cdd573f977a11e794811", "ffffffffffffffffffffffff99def836146bc9b1b4d22831"},
    {"secp128r1", 24, 2, 0, /* SEC 2: four words use the reference path */
     "0000000000000000fffffffdffffffffffffffffffffffff", "0000000000000000fffffffdfffffffffffffffffffffffc",
     "0000000000000000e87579c11079f43dd824993c2cee5ed3", "0000000000000000161ff7528b899b2d0c28607ca52c5b86",
     "0000000000000000cf5ac8395bafeb13c02da292dded7a83", "0000000000000000fffffffe0000000075a30d1b9038a115"},
    {"p = 5 (mod 8)", 32, 4, 1, /* 2^255 - 19, an arbitrary point and the b that fits it */
     "7fffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffed",
     "7fffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffea",
     "36ce03fefe5d141d0b3ab4b67dae329cff3f64d125e30dfcbcad1948e022477a",
     "32c4ae2c1f1981195f9904466a39c9948fe30bbff2660be1715a4589334c74c7",
     "3c3736a2f4f6779c59bdcee36b692153d0a9877cc62a474002df32e52139f0b3",
     "7fffffffffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54123"},
    {"even p", 32, 4, 1, /* not a field; reference path; b as above */
     "fffffffeffffffffffffffffffffffffffffffff00000000fffffffffffffffe",
     "fffffffeffffffffffffffffffffffffffffffff00000000fffffffffffffffb",
     "e8f4beb1f8b84886bdd4c185eb252f12951b0a1639a9609cc98fe208568460c0",
     "32c4ae2c1f1981195f9904466a39c9948fe30bbff2660be1715a4589334c74c7",
     "bc3736a2f4f6779c59bdcee36b692153d0a9877cc62a474002df32e52139f0a0",
     "fffffffeffffffffffffffffffffffff7203df6b21c6052b53bbf40939d54123"},
    {"288 bits", 36, 0, 0, /* 2^288 - 167, for calls with p as an argument; b as above */
     "ffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff59",
     "ffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff56",
     "d7c8b6a2e3caadfca378230acf17b9721cb044a6f3707dba886973a233688c5e4a9b1a32",
     "032c4ae2c1f1981195f9904466a39c9948fe30bbff2660be1715a4589334c74c70003039",
     "05e1b9b517a7b3bce2cdee771b5b490a9e854c3be631523a0016f9972909cf850000d431",
     "ffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff59"},
    {NULL, 0, 0, 0, NULL, NULL, NULL, NULL, NULL, NULL},
};
