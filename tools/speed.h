/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* The operations of speed: a table per family. */
#ifndef ZOKECC_TOOLS_SPEED_H
#define ZOKECC_TOOLS_SPEED_H

#include "common.h"

/* An operation returns 1 if it worked. */
typedef struct speed_operation {
    const char *name;
    int (*run)(void);
} speed_operation;

/* Each table ends with an operation without a name. */
extern const speed_operation number_operations[], hash_operations[], point_operations[],
    process_p256_operations[], process_sm2_operations[], session_operations[];

/* These prepare the data of the operations. They return 1 on success. */
int prepare_numbers(void);
int prepare_hashes(void);
int prepare_points(void);
int prepare_process_p256(void);
int prepare_process_sm2(void);
int prepare_session(void);

#endif
