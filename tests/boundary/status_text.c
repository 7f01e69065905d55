/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* The texts of zokecc/status.h: one for every code of conventions.h, no two alike; and version.h. */
#include <stdio.h>
#include <string.h>

#include <zokecc/status.h>
#include <zokecc/version.h>

#include "check.h"

static const uint32_t codes[] = {
    ZOK_OK,
    ZOK_ERR_SM3,
    ZOK_ERR_SIGN,
    ZOK_ERR_VERIFY,
    ZOK_ERR_CLOSE_SESSION,
    ZOK_ERR_OPEN_DEVICE,
    ZOK_ERR_CLOSE_DEVICE,
    ZOK_ERR_DEVICE,
    ZOK_ERR_SESSION,
    ZOK_ERR_ARGUMENT,
    ZOK_ERR_OPEN_SESSION,
    ZOK_ERR_INTERNAL,
};
enum { CODES = sizeof codes / sizeof codes[0] };

int main(void) {
    const char *unknown = zokecc_status_text(0x12345678u);
    CHECK(strcmp(unknown, "unknown status") == 0);
    CHECK(strcmp(zokecc_status_text(ZOK_OK), "success") == 0);
    for (int i = 0; i < CODES; ++i) {
        const char *text = zokecc_status_text(codes[i]);
        CHECK(strlen(text) > 5 && strcmp(text, unknown) != 0);
        for (int j = 0; j < i; ++j) CHECK(strcmp(text, zokecc_status_text(codes[j])) != 0);
    }
    char numbers[32];
    snprintf(numbers, sizeof numbers, "%d.%d.%d", ZOKECC_VERSION_MAJOR, ZOKECC_VERSION_MINOR,
             ZOKECC_VERSION_PATCH);
    CHECK(strcmp(numbers, ZOKECC_VERSION_STRING) == 0);
    CHECK(ZOKECC_VERSION_NUMBER ==
          10000 * ZOKECC_VERSION_MAJOR + 100 * ZOKECC_VERSION_MINOR + ZOKECC_VERSION_PATCH);
    return check_result();
}
