#!/bin/sh
# The build that a user types who has read nothing: no preset, no build type, a machine without GoogleTest.
. "$(dirname "$0")/common.sh"

# Without a build type it is an optimised build, of the tests too.
quiet cmake -S . -B "$work/plain"
told 'no build type given, taking Release'
grep -q '^CMAKE_BUILD_TYPE:STRING=Release$' "$work/plain/CMakeCache.txt" ||
    fail 'the build type is not Release'
quiet ctest --test-dir "$work/plain" --show-only
told 'boundary.imports'

# Without GoogleTest the tests are left out, which is said, and the rest is built and can be installed.
quiet cmake -S . -B "$work/bare" -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON
told 'the tests are left out, for want of GoogleTest'
quiet cmake --build "$work/bare" --parallel "$(nproc)"
quiet ctest --test-dir "$work/bare" --show-only
told 'Total Tests: 0'
quiet cmake --install "$work/bare" --prefix "$work/prefix"
"$work/prefix/bin/zokecc-selftest" sm3 > "$work/selftest" ||
    fail 'the installed zokecc-selftest does not find its library'
grep -q ': default build, fast$' "$work/selftest" || fail 'zokecc-selftest does not say which build it is'

# CMake's own switch is respected, and code that is not optimised may have large frames.
quiet cmake -S . -B "$work/debug" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=-O0 -DBUILD_TESTING=OFF \
    -DZOKECC_WERROR=ON -DZOKECC_EXAMPLES=OFF
quiet cmake --build "$work/debug" --parallel "$(nproc)"
quiet ctest --test-dir "$work/debug" --show-only
told 'Total Tests: 0'
