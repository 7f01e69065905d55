# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# How the test programs and the fuzz targets are compiled: zokecc_test_options and zokecc_test_launcher.
#
# Compiling the tests takes most of the time. clang++ takes half as long as g++, which has a fifth less to do
# without exceptions and type information, and another tenth while it need not collect garbage.
set(zokecc_test_options -fno-exceptions -fno-rtti)
set(zokecc_test_launcher ${CMAKE_CXX_COMPILER_LAUNCHER})
if(ZOKECC_TEST_COMPILER)
    # CMake has one compiler for C++: the launcher replaces it. Precompiled headers are made in clang's way.
    list(JOIN zokecc_test_launcher " " zokecc_test_launcher)
    string(STRIP "${zokecc_test_launcher} ${ZOKECC_TEST_COMPILER}" zokecc_test_launcher)
    set(zokecc_test_launcher ${CMAKE_CURRENT_LIST_DIR}/compile_by.sh ${zokecc_test_launcher})
    set(CMAKE_PCH_EXTENSION .pch)
    set(CMAKE_CXX_COMPILE_OPTIONS_CREATE_PCH
        -Xclang -emit-pch -Xclang -include -Xclang <PCH_HEADER> -x c++-header)
    set(CMAKE_CXX_COMPILE_OPTIONS_USE_PCH
        -Xclang -include-pch -Xclang <PCH_FILE> -Xclang -include -Xclang <PCH_HEADER>)
    set(CMAKE_CXX_COMPILE_OPTIONS_INVALID_PCH)
    set(CMAKE_CXX_COMPILE_OPTIONS_INSTANTIATE_TEMPLATES_PCH -fpch-instantiate-templates)
elseif(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # False positives of GCC 12 in its own inlined std::string. If such a fault were real, the
    # sanitizers would find it. Nor does it matter here that files compiled together share a name.
    list(APPEND zokecc_test_options -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow
                -Wno-subobject-linkage --param=ggc-min-heapsize=400000)
endif()
