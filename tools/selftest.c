/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Runs known answers and round trips through every family of calls, on the device itself.
 *
 *     zokecc-selftest [PART]
 *
 * Prints the configuration and one line for each case, or for each whose name contains PART. The exit status
 * is 0 if all passed, 1 if one failed, and 2, with a list of the names, if none contains PART.
 */
#include "selftest.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "about.h"

typedef struct selftest_family {
    const char *file; /* the source file of a failing line */
    const selftest_case *cases;
} selftest_family;

static const selftest_family families[] = {
    {"selftest_mint.c", mint_cases},
    {"selftest_hash.c", hash_cases},
    {"selftest_ecc.c", ecc_cases},
    {"selftest_signature.c", signature_cases},
    {"selftest_encryption.c", encryption_cases},
    {"selftest_exchange.c", exchange_cases},
    {"selftest_session.c", session_cases},
    {"selftest_session_encryption.c", session_encryption_cases},
    {"selftest_agreement.c", agreement_cases},
};

static int passes(const selftest_family *family, const selftest_case *c)
{
    static const char dots[] = "........................................";
    const size_t name_len = strlen(c->name);
    printf("%s %s ", c->name, dots + (name_len < sizeof dots ? name_len : sizeof dots - 1));
    fflush(stdout);
    const int line = c->run();
    if (line == 0)
        printf("ok\n");
    else
        printf("FAILED, %s:%d\n", family->file, line);
    if (line != 0) print_difference();
    return line == 0;
}

static void list_parts(FILE *out)
{
    for (size_t i = 0; i < sizeof families / sizeof families[0]; ++i)
        for (const selftest_case *c = families[i].cases; c->name != NULL; ++c)
            fprintf(out, "    %s\n", c->name);
}

int main(int argc, char **argv)
{
    const char *part = argc > 1 ? argv[1] : "";
    unsigned passed = 0;
    unsigned failed = 0;
    print_about("zokecc-selftest");
    for (size_t i = 0; i < sizeof families / sizeof families[0]; ++i) {
        for (const selftest_case *c = families[i].cases; c->name != NULL; ++c) {
            if (strstr(c->name, part) == NULL) continue;
            if (passes(&families[i], c))
                ++passed;
            else
                ++failed;
        }
    }
    if (passed + failed == 0) {
        fprintf(stderr, "zokecc-selftest: no case has '%s' in its name; the cases are\n", part);
        list_parts(stderr);
        return 2;
    }
    printf("%u passed, %u failed\n", passed, failed);
    return failed == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
