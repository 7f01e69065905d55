# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# The devices' processor: 32-bit little-endian ARM without a floating-point unit.
# Programs of the build, tests included, run under QEMU's user-mode emulation, unless
# CMAKE_CROSSCOMPILING_EMULATOR is given.
#
# A toolchain file for one architecture sets zokecc_arch_flags and zokecc_emulated_cpu and includes
# this one. Without them the compiler's default applies, which is ARMv5TE on Debian.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(CMAKE_C_COMPILER arm-linux-gnueabi-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabi-g++)
set(CMAKE_C_FLAGS_INIT "${zokecc_arch_flags}")
set(CMAKE_CXX_FLAGS_INIT "${zokecc_arch_flags}")

# Folders from the command line, for example the device's file system, come first.
if(NOT zokecc_libc_root)
    set(zokecc_libc_root /usr/arm-linux-gnueabi)
endif()
list(APPEND CMAKE_FIND_ROOT_PATH ${zokecc_libc_root})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

if(NOT CMAKE_CROSSCOMPILING_EMULATOR)
    set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm)
    if(zokecc_emulated_cpu)
        list(APPEND CMAKE_CROSSCOMPILING_EMULATOR -cpu ${zokecc_emulated_cpu})
    endif()
    list(APPEND CMAKE_CROSSCOMPILING_EMULATOR -L ${zokecc_libc_root})
endif()
