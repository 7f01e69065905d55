// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
/* Shared by the counted program and the plugin. */
#ifndef ZOKECC_BENCH_ARM_MARK_H
#define ZOKECC_BENCH_ARM_MARK_H

/* A system call that does not exist. */
#define ZOKECC_MARK_NUMBER 0x7A6F

/* Its argument: the section that ends here. */
enum {
    ZOKECC_MARK_START = 0, /* everything before */
    ZOKECC_MARK_EMPTY = 1, /* nothing: the cost of a mark */
    ZOKECC_MARK_OURS = 2,
    ZOKECC_MARK_PEER = 3,
    ZOKECC_MARK_LIBGCRYPT = 4,
    ZOKECC_MARK_NETTLE = 5
};

#endif
