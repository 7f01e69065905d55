# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Selects the sources and how each is optimised.
#
# Most of the code runs once per call; a handful of files do nearly all the work. On ARM the
# former is built for size, as Thumb code, the latter as ARM code, which has the
# long multiplication. There GCC's first scheduling pass only causes spills.

# zokecc_ask_compiler(VARIABLE CONDITION [FLAG...]): evaluates a preprocessor condition about the target,
# whatever CMake calls it.
include(CheckCXXSourceCompiles)
function(zokecc_ask_compiler variable condition)
    set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
    set(CMAKE_REQUIRED_FLAGS ${ARGN})
    check_cxx_source_compiles("
        #if !(${condition})
        #error
        #endif" ${variable})
endfunction()
zokecc_ask_compiler(ZOKECC_HAS_128_BIT_PRODUCT "defined(__SIZEOF_INT128__)")
zokecc_ask_compiler(ZOKECC_HAS_UMAAL "defined(__ARM_ARCH_ISA_ARM) && __ARM_ARCH >= 6")
zokecc_ask_compiler(ZOKECC_IS_X86_64 "defined(__x86_64__)")
zokecc_ask_compiler(ZOKECC_IS_ARM "defined(__arm__)")
if(ZOKECC_IS_ARM)
    zokecc_ask_compiler(ZOKECC_COUNTS_ZEROS "defined(__ARM_FEATURE_CLZ)" -marm)
endif()

# The multiplication modulo p that mint/limbs/modulus.h chooses for this processor.
set(zokecc_modulus_29 mint/limbs/modulus_29.cpp mint/limbs/modulus_29_columns.cpp)
set(zokecc_modulus_32 mint/limbs/modulus_32.cpp)
if(ZOKECC_HAS_128_BIT_PRODUCT OR (ZOKECC_SMALL AND NOT ZOKECC_HARDENED))
    set(zokecc_modulus)  # header only, or not used
elseif(ZOKECC_HAS_UMAAL)
    set(zokecc_modulus ${zokecc_modulus_32})
else()
    set(zokecc_modulus ${zokecc_modulus_29})
endif()
target_sources(zokecc_objects PRIVATE ${zokecc_modulus})
# For the tests, which run all of them on every machine.
set(zokecc_other_moduli ${zokecc_modulus_29} ${zokecc_modulus_32})
list(REMOVE_ITEM zokecc_other_moduli ${zokecc_modulus} none)

# Bodies for some processors, and those of the fast paths.
if(ZOKECC_IS_X86_64)
    target_sources(zokecc_objects PRIVATE base/cpu_x86_64.cpp)
    if(ZOKECC_SHA_INSTRUCTIONS)
        target_sources(zokecc_objects PRIVATE hash/sha256_x86_64.cpp hash/sm3_x86_64.cpp)
    endif()
endif()
if(ZOKECC_IS_ARM AND ZOKECC_HARDENED)
    target_sources(zokecc_objects PRIVATE ct/sums_arm.cpp)
endif()
set(zokecc_shared_field)  # that of ZOKECC_SHARED_MODULI
if(NOT ZOKECC_HAS_128_BIT_PRODUCT)
    set(zokecc_shared_field ecc/fast_field.cpp ecc/fast_points.cpp)
endif()
if(NOT ZOKECC_SMALL)
    target_sources(zokecc_objects PRIVATE mint/limbs/inverse.cpp ${zokecc_shared_field})
    if(ZOKECC_IS_ARM)
        target_sources(zokecc_objects PRIVATE mint/limbs/modular_sums_arm.cpp)
    endif()
    if(ZOKECC_COUNTS_ZEROS)
        target_sources(zokecc_objects PRIVATE mint/limbs/inverse_steps_arm.cpp)
    endif()
endif()

set(zokecc_hot
    mint/limbs/division.cpp mint/limbs/modulus_29_columns.cpp mint/limbs/modulus_32.cpp
    hash/sha256_blocks.cpp hash/sm3.cpp ecc/fast_field.cpp ct/field.cpp ct/inverse.cpp)
set(zokecc_arm_instructions ${zokecc_hot} mint/limbs/inverse.cpp mint/limbs/inverse_steps_arm.cpp
    mint/limbs/modulus_29.cpp mint/limbs/modular_sums_arm.cpp ct/sums_arm.cpp)
if(NOT ZOKECC_SMALL)  # for the chains of limbs
    list(APPEND zokecc_arm_instructions mint/add_sub.cpp mint/modular.cpp)
endif()

# From a hundred bytes on GCC clears memory with a string instruction, which is slow to start.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set_property(SOURCE hash/bytes.cpp hash/sha256.cpp hash/sm3.cpp APPEND PROPERTY COMPILE_OPTIONS
        -mmemset-strategy=vector_loop:512:noalign,libcall:-1:noalign)
endif()

# Pairs of limbs that are loaded into a vector register stall on the two stores that wrote them.
target_compile_options(zokecc_objects PRIVATE -fno-tree-slp-vectorize)

if(ZOKECC_IS_ARM)
    set(optimised $<NOT:$<CONFIG:Debug>>)
    get_target_property(zokecc_sources zokecc_objects SOURCES)
    foreach(source ${zokecc_sources})
        set(options)
        if(source IN_LIST zokecc_arm_instructions)
            list(APPEND options -marm)
        elseif(ZOKECC_THUMB)
            list(APPEND options -mthumb)
        endif()
        if(NOT source IN_LIST zokecc_hot)
            list(APPEND options $<${optimised}:-Os>)
        elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            list(APPEND options -fno-schedule-insns)
        endif()
        set_property(SOURCE ${source} APPEND PROPERTY COMPILE_OPTIONS ${options})
    endforeach()
    # With thirteen registers the sums are written in the order that spills least, and
    # expression substitution would change that order.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        set_property(SOURCE hash/sha256_blocks.cpp hash/sm3.cpp APPEND PROPERTY COMPILE_OPTIONS
            $<${optimised}:-O1> -fno-tree-reassoc -fno-tree-ter)
    endif()
    if(ZOKECC_THUMB)
        # From ARMv5T on, calls switch between the two instruction sets by themselves.
        set(zokecc_link_options -Wl,--use-blx)
    endif()
endif()
