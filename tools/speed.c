/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Measures how many operations the library does in a second, family by family.
 *
 *     zokecc-speed [SECONDS [PART]]
 *
 * Prints what is measured. Each operation, or each whose name contains PART, is repeated for SECONDS (1;
 * 0.1 will do) of processor time. The exit status is 0 if all of them did what they should, 1 if one
 * failed, and 2 for wrong arguments, with a list of the parts if there is no such PART.
 *
 * Where a product with a point other than the base point is in it, an operation leaves its digit
 * buffer allocated, some 260 bytes; a long run needs memory for these.
 */
#include "speed.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "about.h"

typedef struct speed_family {
    int (*prepare)(void);
    const speed_operation *operations;
} speed_family;

static const speed_family families[] = {
    {prepare_numbers, number_operations},
    {prepare_hashes, hash_operations},
    {prepare_points, point_operations},
    {prepare_process_p256, process_p256_operations},
    {prepare_process_sm2, process_sm2_operations},
    {prepare_session, session_operations},
};

/* Repeats an operation, more often each time, until the clock shows enough. Returns the seconds of
 * one, or a negative number if an operation failed. */
static double seconds_each(const speed_operation *operation, double enough)
{
    unsigned long done = 0;
    unsigned long batch = 1;
    double spent = 0;
    const clock_t start = clock();
    while (spent < enough || spent <= 0) {
        for (unsigned long i = 0; i < batch; ++i)
            if (!operation->run()) return -1;
        done += batch;
        spent = (double)(clock() - start) / CLOCKS_PER_SEC;
        if (spent < enough / 8) batch *= 2;
    }
    return spent / (double)done;
}

static void print_time(double seconds)
{
    if (seconds < 1e-3)
        printf("%10.2f us\n", seconds * 1e6);
    else
        printf("%10.3f ms\n", seconds * 1e3);
}

static int measure(const speed_operation *operation, double enough)
{
    printf("%-34s ", operation->name);
    fflush(stdout);
    const double each = seconds_each(operation, enough);
    if (each < 0) {
        printf("FAILED\n");
        return 0;
    }
    printf("%12.1f ", 1 / each);
    print_time(each);
    return 1;
}

static int has_part(const speed_operation *operations, const char *part)
{
    for (; operations->name != NULL; ++operations)
        if (strstr(operations->name, part) != NULL) return 1;
    return 0;
}

static void list_parts(FILE *out)
{
    for (size_t i = 0; i < sizeof families / sizeof families[0]; ++i)
        for (const speed_operation *o = families[i].operations; o->name != NULL; ++o)
            fprintf(out, "    %s\n", o->name);
}

int main(int argc, char **argv)
{
    char *end = NULL;
    const double enough = argc > 1 ? strtod(argv[1], &end) : 1;
    const char *part = argc > 2 ? argv[2] : "";
    unsigned measured = 0;
    unsigned failed = 0;
    if (argc > 1 && (end == argv[1] || *end != '\0' || !(enough > 0 && enough <= 3600))) {
        fprintf(stderr, "usage: zokecc-speed [SECONDS [PART]], with at most 3600 seconds\n");
        return 2;
    }
    print_about("zokecc-speed");
    printf("%-34s %12s %13s\n", "operation", "per second", "time of one");
    for (size_t i = 0; i < sizeof families / sizeof families[0]; ++i) {
        if (!has_part(families[i].operations, part)) continue;
        if (!families[i].prepare()) ++failed;
        for (const speed_operation *o = families[i].operations; o->name != NULL; ++o) {
            if (strstr(o->name, part) == NULL) continue;
            ++measured;
            if (!measure(o, enough)) ++failed;
        }
    }
    if (measured == 0) {
        fprintf(stderr, "zokecc-speed: no operation has '%s' in its name; there are\n", part);
        list_parts(stderr);
        return 2;
    }
    return failed == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
