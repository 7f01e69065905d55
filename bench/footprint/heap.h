// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
/* The heap as the library uses it, counted. Needs -Wl,--wrap=malloc,--wrap=calloc,--wrap=free. */
#ifndef ZOKECC_BENCH_FOOTPRINT_HEAP_H
#define ZOKECC_BENCH_FOOTPRINT_HEAP_H

#include <stddef.h>

/* Bytes allocated and not freed, their maximum, and the number of blocks. */
size_t heap_bytes(void);
size_t heap_peak(void);
size_t heap_blocks(void);
void heap_forget_peak(void);

#endif
