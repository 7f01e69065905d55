/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * A plugin for QEMU's user-mode emulation: counts the guest's instructions between two marks.
 *
 * A mark is a system call with a number that no kernel uses. The guest's code runs unchanged
 * and need not be searched; and because a system call ends a block of translated code, the
 * count, which is kept per block, is exact at a mark. Each mark prints its argument and the
 * instructions since the previous mark:
 *
 *     mark ARGUMENT COUNT
 */
#include <inttypes.h>
#include <stdio.h>

#include "bench/arm/mark.h"
#include "bench/arm/qemu_plugin.h"

const int qemu_plugin_version = 1;

static uint64_t executed, at_last_mark;

static void block_translated(plugin_id id, struct qemu_plugin_tb *block)
{
    (void)id;
    qemu_plugin_register_vcpu_tb_exec_inline(block, INLINE_ADD_U64, &executed, qemu_plugin_tb_n_insns(block));
}

static void system_call(plugin_id id, unsigned processor, int64_t number, uint64_t a1, uint64_t a2,
                        uint64_t a3, uint64_t a4, uint64_t a5, uint64_t a6, uint64_t a7, uint64_t a8)
{
    (void)id, (void)processor, (void)a2, (void)a3, (void)a4, (void)a5, (void)a6, (void)a7, (void)a8;
    if (number != ZOKECC_MARK_NUMBER) return;
    printf("mark %" PRIu64 " %" PRIu64 "\n", a1, executed - at_last_mark);
    fflush(stdout);
    at_last_mark = executed;
}

int qemu_plugin_install(plugin_id id, const void *machine, int argc, char **argv)
{
    (void)machine, (void)argc, (void)argv;
    qemu_plugin_register_vcpu_tb_trans_cb(id, block_translated);
    qemu_plugin_register_vcpu_syscall_cb(id, system_call);
    return 0;
}
