#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# The build of a user who has read nothing: no preset, no build type, a machine without GoogleTest.
. "$(dirname "$0")/common.sh"

# Without a build type the build is optimised, tests included.
quiet cmake -S . -B "$work/plain"
told 'no build type given, using Release'
grep -q '^CMAKE_BUILD_TYPE:STRING=Release$' "$work/plain/CMakeCache.txt" ||
    fail 'the build type is not Release'
quiet ctest --test-dir "$work/plain" --show-only
told 'boundary.imports'

# Without GoogleTest the tests are left out with a message, and everything else is built and can be installed.
quiet cmake -S . -B "$work/bare" -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON
told 'the tests are left out; missing: GoogleTest'
quiet cmake --build "$work/bare" --parallel "$(nproc)"
quiet ctest --test-dir "$work/bare" --show-only
told 'Total Tests: 0'
quiet cmake --install "$work/bare" --prefix "$work/prefix"
"$work/prefix/bin/zokecc-selftest" sm3 > "$work/selftest" ||
    fail 'the installed zokecc-selftest does not find its library'
grep -q ': default build, fast$' "$work/selftest" || fail 'zokecc-selftest does not say which build it is'

# A library with wrong results: the failing case reports the expected and the actual value. A part
# that does not exist leads to the list of parts.
cat > "$work/wrong.c" <<'END_OF_LIBRARY'
int sm3_hash(const void *message, unsigned char *out)
{
    (void)message;
    for (int i = 0; i < 32; ++i) out[i] = (unsigned char)i;
    return 0;
}
END_OF_LIBRARY
quiet cc -shared -fPIC -o "$work/wrong.so" "$work/wrong.c"
status=0
LD_PRELOAD=$work/wrong.so "$work/prefix/bin/zokecc-selftest" sm3 > "$work/quiet.log" 2>&1 || status=$?
[ "$status" -eq 1 ] || fail "zokecc-selftest answers $status for a wrong hash"
told 'FAILED, selftest_hash.c:'
told 'expected 66c7f0f462eeedd9d1f2d46bdc10e4e24167c4875cf2f7a2297da02b8f4ba8e0'
told 'found    000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f'
for program in zokecc-selftest 'zokecc-speed 1'; do
    status=0
    # shellcheck disable=SC2086 # a program and its argument
    "$work/prefix/bin/"$program none > "$work/quiet.log" 2>&1 || status=$?
    [ "$status" -eq 2 ] || fail "$program answers $status for a part that does not exist"
    told '    process: sm2 sign'
done
[ -f "$work/prefix/share/man/man3/mint_sub.3" ] || fail 'the man pages are not installed'

# CMake's own switch is respected, and unoptimised code may have large frames.
quiet cmake -S . -B "$work/debug" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=-O0 -DBUILD_TESTING=OFF \
    -DZOKECC_WERROR=ON -DZOKECC_EXAMPLES=OFF
quiet cmake --build "$work/debug" --parallel "$(nproc)"
quiet ctest --test-dir "$work/debug" --show-only
told 'Total Tests: 0'
