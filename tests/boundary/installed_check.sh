#!/bin/sh
# The installed headers and libraries are enough to build the example and run it, with the shared
# library and with the static one, by a C compiler that knows nothing of this build.
#
#     installed_check.sh CMAKE BUILD_FOLDER SOURCE_FOLDER COMPILER [EMULATOR...]
set -eu

cmake=$1
binaries=$2
source=$3
compiler=$4
shift 4

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$cmake" --install "$binaries" --prefix "$work" > /dev/null
shared=$(find "$work" -name libzokecc.so)
libraries=$(dirname "$shared")
[ -e "$libraries/libzokecc.so.1" ]

# build PROGRAM LINK_ARGUMENT...
build() {
    program=$work/$1
    shift
    "$compiler" -std=c99 -I "$work/include" "$source/examples/sign_with_identity.c" -o "$program" "$@"
}

build with_shared -L "$libraries" -lzokecc "-Wl,-rpath,$libraries"
build with_static "$libraries/libzokecc.a"
for program in with_shared with_static; do
    "$@" "$work/$program" "$source/README.md"
done
