#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# zokecc as a subdirectory of a project without a build type and with C++: the library is optimised, nothing
# else is built, and a C program linked with the archive needs only a C library. On ARM, too.
. "$(dirname "$0")/common.sh"

cat > "$work/CMakeLists.txt" <<END_OF_PROJECT
cmake_minimum_required(VERSION 3.16)
project(parent LANGUAGES C CXX)
add_subdirectory($sources zokecc)
foreach(kind shared static)
    add_executable(with_\${kind} $sources/examples/agree_on_key.c)
    # Makes a library visible in the program even if it is never called.
    target_link_options(with_\${kind} PRIVATE -Wl,--no-as-needed)
endforeach()
target_link_libraries(with_shared PRIVATE zokecc::zokecc)
target_link_libraries(with_static PRIVATE zokecc::zokecc_static)
install(TARGETS with_static RUNTIME DESTINATION bin)
END_OF_PROJECT

# check FOLDER EMULATOR...
check() {
    folder=$1
    shift
    quiet cmake --build "$folder" --parallel "$(nproc)"
    found=$(needed "$folder/with_static")
    [ "$found" = libc.so.6 ] || fail "$folder: with the archive a program needs $found"
    found=$(needed "$folder/with_shared")
    [ "$found" = 'libzokecc.so.1 libc.so.6' ] || fail "$folder: with the library a program needs $found"
    quiet "$@" "$folder/with_static"
    quiet "$@" "$folder/with_shared"
    grep -q '^CMAKE_BUILD_TYPE:STRING=$' "$folder/CMakeCache.txt" ||
        fail "$folder: the parent's cache is changed"
    grep -rqs -e '-O3 -DNDEBUG.*-Wframe-larger-than' "$folder/build.ninja" "$folder/zokecc" ||
        fail "$folder: the library is not optimised"
    [ ! -e "$folder/zokecc/examples/sign_with_identity" ] || fail "$folder: the examples are built"
}

quiet cmake -G 'Unix Makefiles' -S "$work" -B "$work/host"
check "$work/host"
quiet cmake -G Ninja -S "$work" -B "$work/arm" -DZOKECC_INSTALL=OFF \
    "-DCMAKE_TOOLCHAIN_FILE=$sources/cmake/armv5te.toolchain.cmake"
check "$work/arm" qemu-arm -cpu arm926 -L /usr/arm-linux-gnueabi

# The parent project installs its own files, and nothing of zokecc.
quiet cmake --install "$work/arm" --prefix "$work/prefix"
found=$(cd "$work/prefix" && find . -type f)
[ "$found" = ./bin/with_static ] || fail "installed are $found"
