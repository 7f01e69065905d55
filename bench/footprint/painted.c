/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Measures how deep the stack of each call gets, and its use of the heap: runs it on an area
 * filled with a pattern and checks how far that was overwritten. A line for each call and set of numbers:
 *
 *     stack <tab> family <tab> call <tab> set <tab> bytes of stack <tab> of heap <tab> kept from the heap
 */
#define _XOPEN_SOURCE 700
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <ucontext.h>

#include "heap.h"
#include "probe.h"

#define PAINT 0x9e3779b9u

enum { AREA_WORDS = 16384 }; /* 64 KiB */

static uint32_t area[AREA_WORDS] __attribute__((aligned(16)));
static ucontext_t caller, callee;
static void (*call)(void);
static size_t reached;

/* Runs on the area; only the call has written below this function's frame. */
static void run_and_look(void)
{
    size_t untouched = 0;
    call();
    while (untouched < AREA_WORDS && area[untouched] == PAINT) ++untouched;
    reached = sizeof area - untouched * sizeof area[0];
}

static void nothing(void) {}

static size_t run_on_paint(void (*run)(void))
{
    for (size_t i = 0; i < AREA_WORDS; ++i) area[i] = PAINT;
    call = run;
    getcontext(&callee);
    callee.uc_stack.ss_sp = area;
    callee.uc_stack.ss_size = sizeof area;
    callee.uc_link = &caller;
    makecontext(&callee, run_and_look, 0);
    swapcontext(&caller, &callee);
    if (reached == sizeof area) abort(); /* perhaps even further */
    return reached;
}

static void measure(const probe *probes, const char *set)
{
    const size_t empty = run_on_paint(nothing);
    for (; probes->run != NULL; ++probes) {
        const size_t before = heap_bytes();
        heap_forget_peak();
        const size_t stack = run_on_paint(probes->run) - empty;
        printf("stack\t%s\t%s\t%s\t%zu\t%zu\t%ld\n", probes->family, probes->call, set, stack,
               heap_peak() - before, (long)(heap_bytes() - before));
    }
}

/* The memory left allocated after a call, and the number of blocks. */
static void measure_kept(const char *what, uint32_t (*call)(void))
{
    const size_t bytes = heap_bytes();
    const size_t blocks = heap_blocks();
    if (call() != ZOK_OK) return;
    printf("heap\t%s\t%zu\t%zu\n", what, heap_bytes() - bytes, heap_blocks() - blocks);
}

static uint32_t open_device(void) { return SDF_OpenDevice(&in.out_device); }
static uint32_t open_session(void) { return ZOK_OpenSession(&in.out_session, &in.session_curve); }
static uint32_t verify(void)
{
    return SDF_ExternalVerify_ECC(in.session, ZOK_ALG_SM2_SIGN, &in.A.P_record, in.message, in.bytes,
                                  &in.signature);
}

/* The same random numbers in every run. */
static unsigned drawn;
int rand(void) { return (int)((drawn = drawn * 69069u + 1u) >> 1); }
void srand(unsigned seed) { drawn += seed; }
time_t time(time_t *out)
{
    if (out != NULL) *out = 1;
    return 1;
}

int main(void)
{
    static char room[BUFSIZ];
    setvbuf(stdout, room, _IOFBF, sizeof room); /* keeps the C library's blocks out of the count */
    for (const number_set *set = number_sets; set->name != NULL; ++set) {
        prepare(set);
        measure(number_probes, set->name);
        measure(hash_probes, set->name);
        measure(point_probes, set->name);
        if (set->session_type == 0) continue;
        measure(process_probes, set->name);
        measure(session_probes, set->name);
    }
    prepare(number_sets);
    measure_kept("a device", open_device);
    measure_kept("a session with a 256-bit curve", open_session);
    measure_kept("verifying a signature", verify);
    return 0;
}
