/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Comparisons that remember the first difference, so that a failing case can report it. */
#ifndef ZOKECC_TOOLS_EXPECT_H
#define ZOKECC_TOOLS_EXPECT_H

#include <zokecc/mint.h>

#include <stddef.h>

/* Each is true if the found value equals the expected one: a status or a count, bytes, bytes given as
 * digits, a number. */
int is(int64_t found, int64_t expected);
int is_bytes(const uint8_t *found, const uint8_t *expected, size_t size);
int is_hex(const uint8_t *found, const char *digits);
int is_number(const mint *found, const mint *expected);

/* Called before a condition is tested, and after it turned out false; the second returns the line. */
void forget_difference(void);
int keep_condition(const char *condition, int line);

/* Prints the stored condition and, if a comparison in it differed, both sides. */
void print_difference(void);

#endif
