# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Sanitizers and coverage, applied to the library and to everything linked with it.
function(zokecc_instrument target)
    if(ZOKECC_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${ZOKECC_SANITIZE} -fno-sanitize-recover=all
                               -fno-omit-frame-pointer -fno-optimize-sibling-calls)
        # Clang's check of function types needs the C++ run time, which C programs do not have.
        target_compile_options(${target} PRIVATE
            $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-fno-sanitize=function>)
        target_link_options(${target} PRIVATE -fsanitize=${ZOKECC_SANITIZE})
    endif()
    if(ZOKECC_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage)
        target_link_options(${target} PRIVATE --coverage)
    endif()
endfunction()

# Run-time options of the sanitizers for a test. Matching stacks with the suppressions needs
# the frames that the options above keep, and a symbolizer: of the two
# that Clang can use, addr2line is always available.
function(zokecc_sanitizer_options test)
    if(ZOKECC_SANITIZE)
        set(checks detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1)
        set_property(TEST ${test} APPEND PROPERTY ENVIRONMENT
            "ASAN_OPTIONS=${checks}:allow_addr2line=1"
            "UBSAN_OPTIONS=print_stacktrace=1"
            "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0")
    endif()
endfunction()

# zokecc_qemu_plugin(NAME SOURCE): libNAME.so, which runs on the build machine inside the emulator.
function(zokecc_qemu_plugin name source)
    find_program(ZOKECC_HOST_CC NAMES gcc cc REQUIRED)
    set(library ${CMAKE_CURRENT_BINARY_DIR}/lib${name}.so)
    add_custom_command(OUTPUT ${library}
        COMMAND ${ZOKECC_HOST_CC} -std=c99 -O2 -Wall -Wextra -Werror -fPIC -shared -fvisibility=hidden
                -I${PROJECT_SOURCE_DIR} -o ${library} ${CMAKE_CURRENT_SOURCE_DIR}/${source}
        DEPENDS ${source} ${PROJECT_SOURCE_DIR}/bench/arm/mark.h
                ${PROJECT_SOURCE_DIR}/bench/arm/qemu_plugin.h)
    add_custom_target(${name} ALL DEPENDS ${library})
endfunction()
