/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/**
 * @file version.h
 * The version of these headers, for the preprocessor and for messages.
 *
 * The major number is that of the shared library's name (libzokecc.so.1): it changes when a program must be
 * recompiled. No call of the library returns its version; what is here is what a program was compiled
 * against. `pkg-config --modversion zokecc` and find_package(zokecc 1.0) give the same numbers.
 *
 * @par Example
 *      \#if ZOKECC_VERSION_NUMBER >= 10200 is true from version 1.2.0 on.
 */
#ifndef ZOKECC_VERSION_H
#define ZOKECC_VERSION_H

/** Major number: a change that breaks programs. */
#define ZOKECC_VERSION_MAJOR 1
/** Minor number: additions. */
#define ZOKECC_VERSION_MINOR 0
/** Patch number: corrections. */
#define ZOKECC_VERSION_PATCH 0

/** The three numbers with dots between them. */
#define ZOKECC_VERSION_STRING "1.0.0"

/** 10000 * major + 100 * minor + patch, for comparisons. */
#define ZOKECC_VERSION_NUMBER \
    (10000 * ZOKECC_VERSION_MAJOR + 100 * ZOKECC_VERSION_MINOR + ZOKECC_VERSION_PATCH)

#endif
