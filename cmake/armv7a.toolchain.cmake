# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Cortex-A5 to Cortex-A9 in the soft-float binary interface, in the mixed 16- and 32-bit encoding.
set(zokecc_arch_flags "-march=armv7-a -mfloat-abi=soft -mthumb")
set(zokecc_emulated_cpu cortex-a8)
include(${CMAKE_CURRENT_LIST_DIR}/arm-linux-soft.toolchain.cmake)
