/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Measures how many operations per second the library does, family by family.
 *
 *     zokecc-speed [SECONDS [PART [FILE]]]
 *
 * Prints the configuration first. Each operation, or each whose name contains PART, is repeated for SECONDS
 * (1; 0.1 will do) of processor time. FILE is the output of an earlier run, with the other build for example:
 * its times are shown in one column, and the ratio of the new times to them in another. The exit status is 0
 * if all operations worked, 1 if one failed, and 2 for wrong arguments, with a list of the names if none
 * contains PART.
 *
 * In the default build an operation that multiplies a point other than the base point leaves its digit
 * buffer allocated, some 260 bytes; a long run needs that much memory.
 */
#include "speed.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "about.h"

enum { NAME_COLUMNS = 34 }; /* width of an operation's name */

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
        printf("%10.2f us", seconds * 1e6);
    else
        printf("%10.3f ms", seconds * 1e3);
}

/* The seconds of one operation in the output of an earlier run, or 0 if it is not there. */
static double earlier_seconds(FILE *earlier, const char *name)
{
    char line[128];
    char wanted[NAME_COLUMNS + 2];
    snprintf(wanted, sizeof wanted, "%-*s ", NAME_COLUMNS, name);
    rewind(earlier);
    while (fgets(line, sizeof line, earlier) != NULL) {
        char *end = NULL;
        if (strncmp(line, wanted, NAME_COLUMNS + 1) != 0) continue;
        strtod(line + NAME_COLUMNS + 1, &end); /* operations per second */
        const double time = strtod(end, &end);
        return strncmp(end, " ms", 3) == 0 ? time * 1e-3 : time * 1e-6;
    }
    return 0;
}

/* earlier may be null. */
static int measure(const speed_operation *operation, double enough, FILE *earlier)
{
    printf("%-*s ", NAME_COLUMNS, operation->name);
    fflush(stdout);
    const double each = seconds_each(operation, enough);
    if (each < 0) {
        printf("FAILED\n");
        return 0;
    }
    printf("%12.1f ", 1 / each);
    print_time(each);
    const double before = earlier != NULL ? earlier_seconds(earlier, operation->name) : 0;
    if (before > 0) {
        print_time(before);
        printf(" %8.2f", each / before);
    }
    printf("\n");
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

/* Measures the operations of a family whose names contain the part. Returns how many; counts failures. */
static unsigned measure_family(const speed_family *family, const char *part, double enough, FILE *earlier,
                               unsigned *failed)
{
    unsigned measured = 0;
    if (!has_part(family->operations, part)) return 0;
    if (!family->prepare()) ++*failed;
    for (const speed_operation *o = family->operations; o->name != NULL; ++o) {
        if (strstr(o->name, part) == NULL) continue;
        ++measured;
        if (!measure(o, enough, earlier)) ++*failed;
    }
    return measured;
}

int main(int argc, char **argv)
{
    char *end = NULL;
    const double enough = argc > 1 ? strtod(argv[1], &end) : 1;
    const char *part = argc > 2 ? argv[2] : "";
    FILE *earlier = NULL;
    unsigned measured = 0;
    unsigned failed = 0;
    if (argc > 4 || (argc > 1 && (end == argv[1] || *end != '\0' || !(enough > 0 && enough <= 3600)))) {
        fprintf(stderr, "usage: zokecc-speed [SECONDS [PART [FILE]]], with at most 3600 seconds\n");
        return 2;
    }
    if (argc > 3 && (earlier = fopen(argv[3], "r")) == NULL) {
        fprintf(stderr, "zokecc-speed: cannot read %s\n", argv[3]);
        return 2;
    }
    print_about("zokecc-speed");
    printf("%-*s %12s %13s%s\n", NAME_COLUMNS, "operation", "per second", "time of one",
           earlier != NULL ? "      earlier    times" : "");
    for (size_t i = 0; i < sizeof families / sizeof families[0]; ++i)
        measured += measure_family(&families[i], part, enough, earlier, &failed);
    if (earlier != NULL) fclose(earlier);
    if (measured == 0) {
        fprintf(stderr, "zokecc-speed: no operation has '%s' in its name; the operations are\n", part);
        list_parts(stderr);
        return 2;
    }
    return failed == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
