#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# The messages of ./build.sh when something is wrong, and what it leaves behind. The compilers and
# apt are fakes here, so that nothing is built or installed.
. "$(dirname "$0")/common.sh"

copy_sources "$work/sources"
mkdir "$work/bin" "$work/tmp" "$work/elsewhere"
cd "$work/sources"

# stand_in NAME BODY: a fake program that is found before the machine's own.
stand_in() { printf '#!/bin/sh\n%s\n' "$2" > "$work/bin/$1" && chmod +x "$work/bin/$1"; }

# answer STATUS COMMAND...: runs it with the fakes; the output is in $work/quiet.log.
answer() {
    expected=$1
    shift
    status=0
    PATH=$work/bin:$PATH TMPDIR=$work/tmp "$@" > "$work/quiet.log" 2>&1 < /dev/null || status=$?
    [ "$status" -eq "$expected" ] || { cat "$work/quiet.log"; fail "$*: status $status and not $expected"; }
}

# FILE is checked before anything is built.
stand_in cmake 'echo built >&2; exit 1'
answer 2 ./build.sh demo "$work/none"
told "build.sh: $work/none does not exist"
answer 2 ./build.sh demo docs
told "docs is a folder; a file is needed"

# It reports what it does, and finds its folder through a symbolic link from elsewhere.
ln -s "$work/sources/build.sh" "$work/elsewhere/sign"
cd "$work/elsewhere"
answer 1 ./sign demo "$work/sources/README.md"
told '==> building the library and the tool'
told built
cd "$work/sources"

# A build folder configured elsewhere is recreated, and its log is not shown.
echo 'CMAKE_HOME_DIRECTORY:INTERNAL=/somewhere/else' > build/demo/CMakeCache.txt
echo 'the old log' > build/demo/build.log
stand_in cmake 'echo the new log; exit 1'
answer 1 ./build.sh demo
told '==> build/demo was configured elsewhere; starting over'
told 'the new log'
if grep -q 'the old log' "$work/quiet.log"; then fail 'the old log is shown'; fi

# A file in place of the folder simulates a folder that cannot be written; root could write to that.
rm -rf build
: > build
answer 1 ./build.sh demo
told "build.sh: cannot write in $work/sources/build/demo"
rm build

# Missing packages: without a network the reason, without sudo the whole command.
mkdir "$work/few"
for name in sh dirname readlink date nproc id grep head mktemp rm cat; do
    ln -s "$(command -v "$name")" "$work/few/$name"
done
printf '#!/bin/sh\nfor i in $(seq 60); do echo "Ign:$i"; done\necho "E: no route"; exit 100\n' \
    > "$work/few/apt-get"
printf '#!/bin/sh\nexec "$@"\n' > "$work/few/sudo"
chmod +x "$work/few/apt-get" "$work/few/sudo"
for name in seq env; do ln -s "$(command -v "$name")" "$work/few/$name"; done
command='as root: apt-get update && apt-get install --no-install-recommends cmake ninja-build g++ openssl'
answer 1 env PATH="$work/few" TMPDIR="$work/tmp" sh ./build.sh demo
told 'E: no route'
told "$command"
[ "$(wc -l < "$work/quiet.log")" -le 6 ] || fail 'apt talks too much'
rm "$work/few/sudo" "$work/few/id"
printf '#!/bin/sh\necho 1000\n' > "$work/few/id"
chmod +x "$work/few/id"
answer 1 env PATH="$work/few" TMPDIR="$work/tmp" sh ./build.sh demo
told 'there is no sudo'
told "$command"

# Ctrl-C during the work leaves nothing of FILE. setsid's group gets the signal as from a terminal.
stand_in openssl 'kill -INT 0; exit 1'
stand_in zokecc 'kill -INT 0; exit 1'
printf '#!/bin/sh\nfor n in Z x y r s; do printf "%%s = %%064d\\n" $n 1; done\n' > "$work/bin/signer"
chmod +x "$work/bin/signer"
for script in "examples/verify_with_openssl.sh README.md id $work/bin/signer" \
    "tools/demo.sh README.md $work/bin/zokecc"; do
    rm -rf "$work/tmp"
    mkdir "$work/tmp"
    # shellcheck disable=SC2086 # a command and its arguments
    PATH=$work/bin:$PATH TMPDIR=$work/tmp setsid --wait $script > "$work/quiet.log" 2>&1 ||
        echo "ended with $?" >> "$work/quiet.log"
    found=$(ls "$work/tmp")
    [ -z "$found" ] || fail "left behind: $found"
done
