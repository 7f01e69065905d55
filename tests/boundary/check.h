// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
/* Checks for the C programs of this folder: a failed one is printed and counted. */
#ifndef ZOKECC_TESTS_BOUNDARY_CHECK_H
#define ZOKECC_TESTS_BOUNDARY_CHECK_H

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define CHECK(condition) check_that((condition) != 0, #condition, __FILE__, __LINE__)

static int failed_checks;
static int made_checks;

static inline void check_that(int holds, const char *condition, const char *file, int line) {
    ++made_checks;
    if (holds) return;
    ++failed_checks;
    printf("%s:%d: does not hold: %s\n", file, line, condition);
}

/* The exit status of a program. A program without checks has failed, too. */
static inline int check_result(void) {
    printf("%d checks, %d failed\n", made_checks, failed_checks);
    return made_checks > 0 && failed_checks == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

/* True if the bytes equal the hexadecimal digits, two per byte. */
static inline int equals_hex(const uint8_t *bytes, const char *digits) {
    char pair[3];
    for (; *digits != '\0'; digits += 2, ++bytes) {
        snprintf(pair, sizeof pair, "%02x", (unsigned)*bytes);
        if (memcmp(pair, digits, 2) != 0) return 0;
    }
    return 1;
}

#endif
