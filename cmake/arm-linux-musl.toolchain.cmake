# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Soft-float ARM with musl as the C library, using Debian's compiler for glibc: it is kept
# away from its own C headers and start-up files, and given those of musl.
#
# ZOKECC_MUSL_ROOT is a folder with Debian's packages musl and musl-dev for armel unpacked in it,
# as `cmake/fetch_armel.sh musl musl-dev FOLDER` does.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZOKECC_MUSL_ROOT)
if(NOT ZOKECC_MUSL_ROOT)
    set(ZOKECC_MUSL_ROOT ${CMAKE_CURRENT_LIST_DIR}/../build/musl-root)
endif()
get_filename_component(ZOKECC_MUSL_ROOT ${ZOKECC_MUSL_ROOT} ABSOLUTE)
if(NOT EXISTS ${ZOKECC_MUSL_ROOT}/usr/include/arm-linux-musleabi/features.h)
    message(FATAL_ERROR "No musl for soft-float ARM in ${ZOKECC_MUSL_ROOT}")
endif()

set(zokecc_libc_root ${ZOKECC_MUSL_ROOT})
include(${CMAKE_CURRENT_LIST_DIR}/armv5te.toolchain.cmake)

# The search order of headers: C++, then musl, then the compiler's own. The first folder makes the
# C++ headers, which were configured for glibc, read musl's.
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -dumpversion
    OUTPUT_VARIABLE version OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=include
    OUTPUT_VARIABLE compiler_headers OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(cxx_headers /usr/arm-linux-gnueabi/include/c++/${version})
set(c_headers "-isystem ${ZOKECC_MUSL_ROOT}/usr/include/arm-linux-musleabi -isystem ${compiler_headers}")
string(APPEND CMAKE_C_FLAGS_INIT " -nostdinc ${c_headers}")
string(APPEND CMAKE_CXX_FLAGS_INIT " -nostdinc -isystem ${CMAKE_CURRENT_LIST_DIR}/musl"
    " -isystem ${cxx_headers} -isystem ${cxx_headers}/arm-linux-gnueabi ${c_headers}")

# Start-up files and libc.a are in one folder, libc.so in another. The compiler's own shared library
# needs glibc, its archive does not.
set(link_flags "-mmusl -static-libgcc -B${ZOKECC_MUSL_ROOT}/usr/lib/arm-linux-musleabi")
string(APPEND link_flags " -L${ZOKECC_MUSL_ROOT}/lib/arm-linux-musleabi")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${link_flags}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${link_flags}")
