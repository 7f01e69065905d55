/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * A plugin for QEMU's user-mode emulation: records what the guest executes between two marks, and where it
 * reads and writes, each as a count and a hash over the whole sequence. The second mark prints
 *
 *     trace INSTRUCTIONS PATH ACCESSES ADDRESSES
 *
 * A mark is a system call with a number that no kernel uses. PATH hashes the address of each block of code
 * as it begins: blocks end at branches, so two equal paths execute the same instructions. ADDRESSES hashes
 * the address, size and kind of each access.
 */
#include <inttypes.h>
#include <stdbool.h>
#include <stdio.h>

#include "bench/arm/mark.h"
#include "bench/arm/qemu_plugin.h"

const int qemu_plugin_version = 1;

static bool watches;
static uint64_t instructions, path, accesses, addresses;

/* The multiplication is a permutation and propagates every bit upwards. */
static uint64_t mix(uint64_t hash, uint64_t value) {
    hash = (hash ^ value) * UINT64_C(0x9E3779B97F4A7C15);
    return hash ^ hash >> 32;
}

static void block_begins(unsigned processor, void *address) {
    (void)processor;
    if (watches) path = mix(path, (uintptr_t)address);
}

static void memory_accessed(unsigned processor, plugin_access access, uint64_t address, void *data) {
    (void)processor, (void)data;
    if (!watches) return;
    ++accesses;
    addresses = mix(addresses, address ^ (uint64_t)access << 32);
}

static void block_translated(plugin_id id, struct qemu_plugin_tb *block) {
    const size_t count = qemu_plugin_tb_n_insns(block);
    (void)id;
    qemu_plugin_register_vcpu_tb_exec_cb(block, block_begins, WITHOUT_REGISTERS,
                                         (void *)(uintptr_t)qemu_plugin_tb_vaddr(block));
    qemu_plugin_register_vcpu_tb_exec_inline(block, INLINE_ADD_U64, &instructions, count);
    for (size_t i = 0; i < count; ++i)
        qemu_plugin_register_vcpu_mem_cb(qemu_plugin_tb_get_insn(block, i), memory_accessed,
                                         WITHOUT_REGISTERS, READS_AND_WRITES, NULL);
}

static void system_call(plugin_id id, unsigned processor, int64_t number, uint64_t a1, uint64_t a2,
                        uint64_t a3, uint64_t a4, uint64_t a5, uint64_t a6, uint64_t a7, uint64_t a8) {
    (void)id, (void)processor, (void)a2, (void)a3, (void)a4, (void)a5, (void)a6, (void)a7, (void)a8;
    if (number != ZOKECC_MARK_NUMBER) return;
    watches = a1 == ZOKECC_MARK_START;
    if (!watches) {
        printf("trace %" PRIu64 " %016" PRIx64 " %" PRIu64 " %016" PRIx64 "\n", instructions, path, accesses,
               addresses);
        fflush(stdout);
    }
    instructions = path = accesses = addresses = 0;
}

int qemu_plugin_install(plugin_id id, const void *machine, int argc, char **argv) {
    (void)machine, (void)argc, (void)argv;
    qemu_plugin_register_vcpu_tb_trans_cb(id, block_translated);
    qemu_plugin_register_vcpu_syscall_cb(id, system_call);
    return 0;
}
