/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "expect.h"

#include <inttypes.h>
#include <stdio.h>
#include <string.h>

#include "common.h"

enum { ROOM = 256 };

static char expected_text[ROOM];
static char found_text[ROOM];
static const char *failed_condition = "";

/* Writes as many bytes as fit, in hexadecimal digits. */
static void write_hex(char *text, const uint8_t *bytes, size_t size)
{
    static const char digits[] = "0123456789abcdef";
    size_t at = 0;
    for (size_t i = 0; i < size && at + 2 < ROOM; ++i) {
        text[at++] = digits[bytes[i] >> 4];
        text[at++] = digits[bytes[i] & 15];
    }
    text[at] = '\0';
}

static void write_number(char *text, const mint *value)
{
    size_t at = (size_t)snprintf(text, ROOM, "0x");
    for (uint32_t i = value->len; i-- > 0 && at + 9 < ROOM;)
        at += (size_t)snprintf(text + at, ROOM - at, "%08" PRIx32, value->words[i]);
}

static void write_integer(char *text, int64_t value)
{
    snprintf(text, ROOM, "%" PRId64 " (0x%" PRIx32 ")", value, (uint32_t)value);
}

static int is_first_difference(void) { return expected_text[0] == '\0'; }

int is(int64_t found, int64_t expected)
{
    if (found == expected) return 1;
    if (is_first_difference()) {
        write_integer(expected_text, expected);
        write_integer(found_text, found);
    }
    return 0;
}

int is_bytes(const uint8_t *found, const uint8_t *expected, size_t size)
{
    if (memcmp(found, expected, size) == 0) return 1;
    if (is_first_difference()) {
        write_hex(expected_text, expected, size);
        write_hex(found_text, found, size);
    }
    return 0;
}

int is_hex(const uint8_t *found, const char *digits)
{
    uint8_t expected[ROOM] = {0};
    return is_bytes(found, expected, from_hex(digits, expected));
}

int is_number(const mint *found, const mint *expected)
{
    if (mint_compare(found, expected) == 0) return 1;
    if (is_first_difference()) {
        write_number(expected_text, expected);
        write_number(found_text, found);
    }
    return 0;
}

void forget_difference(void)
{
    expected_text[0] = '\0';
    found_text[0] = '\0';
}

int keep_condition(const char *condition, int line)
{
    failed_condition = condition;
    return line;
}

void print_difference(void)
{
    printf("    %s\n", failed_condition);
    if (!is_first_difference()) printf("    expected %s\n    found    %s\n", expected_text, found_text);
}
