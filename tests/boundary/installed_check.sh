#!/bin/sh
# What `cmake --install` gives, moved to another place, is enough to build the example and run it.
#
#     installed_check.sh CMAKE BUILD_FOLDER SOURCE_FOLDER COMPILER TOOLCHAIN_FILE [EMULATOR...]
set -eu

cmake=$1
binaries=$2
source=$3
shift 3

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$cmake" --install "$binaries" --prefix "$work/first" > /dev/null
mv "$work/first" "$work/moved"
shared=$(find "$work/moved" -name libzokecc.so)
[ -e "$(dirname "$shared")/libzokecc.so.1" ]

"$source/tests/boundary/consumer_check.sh" "$cmake" "$source/examples" "$work/moved" "$@"
