#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# The result of `cmake --install`, moved to another place, is enough to build and run the example; and each
# component contains exactly its files.
#
#     installed_check.sh CMAKE BUILD_FOLDER SOURCE_FOLDER COMPILER TOOLCHAIN_FILE [EMULATOR...]
set -eu

cmake=$1
binaries=$2
source=$3
shift 3

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

"$cmake" --install "$binaries" --prefix "$work/first" > /dev/null
mv "$work/first" "$work/moved"
shared=$(find "$work/moved" -name libzokecc.so)
[ -e "$(dirname "$shared")/libzokecc.so.1" ]

# component NAME FILE...: the component consists of these files; '*' matches anything.
component() {
    name=$1
    shift
    "$cmake" --install "$binaries" --prefix "$work/$name" --component "$name" > /dev/null
    (cd "$work/$name" && find . ! -type d | sed 's|^\./||') > "$work/found"
    for file in "$@"; do
        pattern=$(echo "$file" | sed -e 's/\./\\./g' -e 's/\*/.*/g')
        grep -qx "$pattern" "$work/found" || { echo "component $name has no $file"; exit 1; }
        grep -vx "$pattern" "$work/found" > "$work/rest" || [ ! -s "$work/rest" ]
        mv "$work/rest" "$work/found"
    done
    [ ! -s "$work/found" ] || { echo "component $name also has"; cat "$work/found"; exit 1; }
}

set -f
component library 'lib*/libzokecc.so.1' 'lib*/libzokecc.so.1.*' share/doc/zokecc/LICENSE
component development 'lib*/libzokecc.so' 'lib*/libzokecc.a' 'lib*/cmake/zokecc/zokecc-config.cmake' \
    'lib*/cmake/zokecc/zokecc-*.cmake' 'lib*/pkgconfig/zokecc.pc' 'include/zokecc/*.h' \
    share/doc/zokecc/README.md share/doc/zokecc/CHANGELOG.md share/doc/zokecc/SECURITY.md \
    'share/doc/zokecc/docs/*.md' 'share/doc/zokecc/docs/*.svg' 'share/doc/zokecc/examples/*'
component tools bin/zokecc 'bin/zokecc-*' share/man/man1/zokecc.1 'share/man/man1/zokecc-*.1' \
    share/bash-completion/completions/zokecc
set +f

"$source/tests/boundary/consumer_check.sh" "$cmake" "$source/examples" "$work/moved" "$@"
