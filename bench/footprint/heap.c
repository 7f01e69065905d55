/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "heap.h"

#include <stdint.h>
#include <stdlib.h>

enum { MAX_BLOCKS = 8192 };

void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void __real_free(void *block);
void *__wrap_malloc(size_t size);
void *__wrap_calloc(size_t count, size_t size);
void __wrap_free(void *block);

static struct {
    void *block;
    size_t size;
} live[MAX_BLOCKS];
static size_t blocks, bytes, peak;

size_t heap_bytes(void) { return bytes; }
size_t heap_peak(void) { return peak; }
size_t heap_blocks(void) { return blocks; }
void heap_forget_peak(void) { peak = bytes; }

static void *counted(void *block, size_t size)
{
    if (block == NULL) return NULL;
    if (blocks == MAX_BLOCKS) abort();
    live[blocks].block = block;
    live[blocks++].size = size;
    bytes += size;
    if (bytes > peak) peak = bytes;
    return block;
}

void *__wrap_malloc(size_t size) { return counted(__real_malloc(size), size); }
void *__wrap_calloc(size_t count, size_t size) { return counted(__real_calloc(count, size), count * size); }

/* The latest blocks are usually freed first. A block not in the list was allocated before or elsewhere. */
void __wrap_free(void *block)
{
    for (size_t i = blocks; i-- > 0;) {
        if (live[i].block != block) continue;
        bytes -= live[i].size;
        live[i] = live[--blocks];
        break;
    }
    __real_free(block);
}
