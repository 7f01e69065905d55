#!/bin/sh
# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# Lets a signer sign a file, and the openssl command line judge the signature.
#
#     verify_with_openssl.sh FILE IDENTITY SIGNER...
#
# SIGNER is the command of the example sign_with_identity; it is called with FILE and IDENTITY.
# The hexadecimal numbers that it prints become a DER public key and a DER signature. openssl has
# to accept them for the file and the identity, and to refuse a changed file and another identity.
set -eu

if [ $# -lt 3 ]; then
    echo "usage: $0 FILE IDENTITY SIGNER..." >&2
    exit 2
fi
file=$1
identity=$2
shift 2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

if ! "$@" "$file" "$identity" > "$work/report"; then
    cat "$work/report"
    exit 1
fi
cat "$work/report"

# field NAME: the 64 digits that the signer printed for NAME.
field() {
    sed -n "s/^$1 *= *\([0-9a-f]\{64\}\)\$/\1/p" "$work/report"
}

# A public key as in RFC 5480, with the object identifier of the SM2 curve.
cat > "$work/key.cnf" <<END
asn1 = SEQUENCE:key
[key]
algorithm = SEQUENCE:algorithm
point = FORMAT:HEX,BITSTRING:04$(field x)$(field y)
[algorithm]
type = OID:id-ecPublicKey
curve = OID:1.2.156.10197.1.301
END
cat > "$work/signature.cnf" <<END
asn1 = SEQUENCE:signature
[signature]
r = INTEGER:0x$(field r)
s = INTEGER:0x$(field s)
END
for name in key signature; do
    openssl asn1parse -genconf "$work/$name.cnf" -noout -out "$work/$name.der"
done

# judge FILE IDENTITY: openssl's verdict in one line, and its exit status.
judge() {
    openssl pkeyutl -verify -pubin -inkey "$work/key.der" -keyform DER -sigfile "$work/signature.der" \
        -rawin -in "$1" -digest sm3 -pkeyopt "distid:$2" 2>&1
}

# refused WHAT FILE IDENTITY: openssl says that the signature is bad, and not merely fails.
refused() {
    if answer=$(judge "$2" "$3") || [ "$answer" != 'Signature Verification Failure' ]; then
        echo "openssl did not refuse $1: $answer" >&2
        exit 1
    fi
    echo "openssl refuses $1"
}

if ! answer=$(judge "$file" "$identity"); then
    echo "openssl did not accept the signature: $answer" >&2
    exit 1
fi
echo "openssl accepts the same signature, file and identity"

{ cat "$file"; echo; } > "$work/changed"
refused 'the file with a line added' "$work/changed" "$identity"
refused 'another identity' "$file" "$identity."
