# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# ARM926EJ-S and its like; what Debian's armel is built for.
set(zokecc_arch_flags "-march=armv5te -mfloat-abi=soft -marm")
set(zokecc_emulated_cpu arm926)
include(${CMAKE_CURRENT_LIST_DIR}/arm-linux-soft.toolchain.cmake)
