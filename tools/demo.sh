#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Runs the tool and openssl together: each verifies what the other has signed, and decrypts what the
# other has encrypted.
#
#     demo.sh FILE ZOKECC...
#
# ZOKECC is the command that runs the tool. The exit status is 0 if everything went as expected, refusals
set -eu
# included.
LC_ALL=C
export LC_ALL

if [ $# -lt 2 ]; then
    echo "usage: $0 FILE ZOKECC..." >&2
    exit 2
fi
file=$(realpath "$1")
shift
identity=alice@example.org
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# show COMMAND...: prints a command and runs it in the work folder.
show() {
    printf '$'
    printf ' %s' "$@"
    printf '\n'
    (cd "$work" && "$@")
}
# zokecc ARGUMENTS...: the same for the tool, printed as plain zokecc wherever it is installed.
tool=$*
zokecc() {
    printf '$ zokecc'
    printf ' %s' "$@"
    printf '\n'
    # shellcheck disable=SC2086 # the tool with its emulator
    (cd "$work" && command $tool "$@")
}
# refused COMMAND...: the command must report something invalid, rather than that it could not run.
refused() {
    status=0
    "$@" || status=$?
    if [ "$status" -ne 1 ]; then
        echo "this should have been refused, but the status is $status" >&2
        exit 1
    fi
}

cp "$file" "$work/letter"
echo "==> a key pair, and a signature of $file by $identity"
zokecc keygen -c sm2 -o alice.pem -P alice.pub
zokecc sign -k alice.pem -i "$identity" -o letter.sig letter
zokecc verify -k alice.pub -i "$identity" -s letter.sig letter
echo '==> openssl verifies it'
show openssl pkeyutl -verify -pubin -inkey alice.pub -rawin -digest sm3 -pkeyopt "distid:$identity" \
    -in letter -sigfile letter.sig
echo '==> refused: a different identity, and a different letter'
refused zokecc verify -k alice.pub -i bob@example.org -s letter.sig letter
(cat "$file" && echo) > "$work/changed"
refused zokecc verify -k alice.pub -i "$identity" -s letter.sig changed
refused show openssl pkeyutl -verify -pubin -inkey alice.pub -rawin -digest sm3 -pkeyopt "distid:$identity" \
    -in changed -sigfile letter.sig

echo '==> the other way round: a key and a signature by openssl'
show openssl genpkey -algorithm SM2 -out bob.pem
show openssl pkey -in bob.pem -pubout -out bob.pub
show openssl pkeyutl -sign -inkey bob.pem -rawin -digest sm3 -pkeyopt distid:bob@example.org \
    -in letter -out reply.sig
zokecc verify -k bob.pub -i bob@example.org -s reply.sig letter

echo '==> encrypted by one, decrypted by the other'
printf 'The pump station opens at six.\n' > "$work/message"
zokecc encrypt -k bob.pub -o message.enc message
show openssl pkeyutl -decrypt -inkey bob.pem -in message.enc
show openssl pkeyutl -encrypt -pubin -inkey alice.pub -in message -out message.enc
zokecc decrypt -k alice.pem message.enc
echo '==> the demo succeeded'
