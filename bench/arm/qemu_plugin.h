/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * The part of QEMU's plugin interface, version 1, that the plugins use; Debian 12 packages no header
 * for it. The emulated programs have one thread.
 */
#ifndef ZOKECC_BENCH_ARM_QEMU_PLUGIN_H
#define ZOKECC_BENCH_ARM_QEMU_PLUGIN_H

#include <stddef.h>
#include <stdint.h>

#define PLUGIN_EXPORT __attribute__((visibility("default")))

typedef uint64_t plugin_id;
typedef uint32_t plugin_access; /* size and kind of an access to memory */
struct qemu_plugin_tb;          /* a block of translated code */
struct qemu_plugin_insn;
enum { INLINE_ADD_U64 = 0 };
enum { WITHOUT_REGISTERS = 0 };
enum { READS_AND_WRITES = 3 };

typedef void (*translated_call)(plugin_id id, struct qemu_plugin_tb *block);
typedef void (*executed_call)(unsigned processor, void *data);
typedef void (*access_call)(unsigned processor, plugin_access access, uint64_t address, void *data);
typedef void (*system_call_call)(plugin_id id, unsigned processor, int64_t number, uint64_t a1, uint64_t a2,
                                 uint64_t a3, uint64_t a4, uint64_t a5, uint64_t a6, uint64_t a7,
                                 uint64_t a8);

void qemu_plugin_register_vcpu_tb_trans_cb(plugin_id id, translated_call call);
void qemu_plugin_register_vcpu_syscall_cb(plugin_id id, system_call_call call);
void qemu_plugin_register_vcpu_tb_exec_cb(struct qemu_plugin_tb *block, executed_call call, int registers,
                                          void *data);
void qemu_plugin_register_vcpu_tb_exec_inline(struct qemu_plugin_tb *block, int operation, void *counter,
                                              uint64_t amount);
void qemu_plugin_register_vcpu_mem_cb(struct qemu_plugin_insn *instruction, access_call call, int registers,
                                      int kinds, void *data);
size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb *block);
uint64_t qemu_plugin_tb_vaddr(const struct qemu_plugin_tb *block);
struct qemu_plugin_insn *qemu_plugin_tb_get_insn(const struct qemu_plugin_tb *block, size_t number);

/* Every plugin defines these two. */
PLUGIN_EXPORT extern const int qemu_plugin_version;
PLUGIN_EXPORT int qemu_plugin_install(plugin_id id, const void *machine, int argc, char **argv);

#endif
