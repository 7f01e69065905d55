#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# The recipe for a board from docs/porting.md, verbatim, with substitutes for scp and ssh: what is
# copied to the board runs there without any library.
. "$(dirname "$0")/common.sh"

copy_sources "$work/sources"
cd "$work/sources"
sed -n '/^    cmake --preset armv5te-os -DZOKECC_TOOLS_STATIC=ON$/,/ ssh board /s/^    //p' docs/porting.md \
    > "$work/recipe"
[ "$(wc -l < "$work/recipe")" -eq 3 ] || fail 'docs/porting.md has not the three commands'

mkdir "$work/bin" "$work/board"
cat > "$work/bin/scp" <<END_OF_SCP
#!/bin/sh
[ "\$2" = board:/tmp/ ] && cp "\$1" "$work/board/"
END_OF_SCP
cat > "$work/bin/ssh" <<END_OF_SSH
#!/bin/sh
[ "\$1" = board ] && exec qemu-arm -cpu arm926 "$work/board/\$(basename "\$2")"
END_OF_SSH
chmod +x "$work/bin/scp" "$work/bin/ssh"

# The example next to the tools remains dynamically linked.
PATH=$work/bin:$PATH quiet sh -eu "$work/recipe"
told ': default build, small'
told ' passed, 0 failed'
[ -z "$(needed build/armv5te-os/tools/zokecc-speed)" ] || fail 'zokecc-speed is not static'
[ "$(needed build/armv5te-os/examples/agree_on_key)" = 'libzokecc.so.1 libc.so.6' ] ||
    fail 'the examples are linked as the tools are'
