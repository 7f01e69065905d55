# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# ARM1136 and ARM1176, their floating-point unit left unused.
set(zokecc_arch_flags "-march=armv6 -mfloat-abi=soft -marm")
set(zokecc_emulated_cpu arm1136)
include(${CMAKE_CURRENT_LIST_DIR}/arm-linux-soft.toolchain.cmake)
