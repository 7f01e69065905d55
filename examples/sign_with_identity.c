/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * Signs a file for an identity with SM2 and SM3, and verifies the signature.
 *
 *     sign_with_identity [FILE [IDENTITY]]
 *
 * Prints the identity value Z, the public key and the signature (r, s) in hexadecimal. The exit
 * status is 0 if the signature verifies for the file and is refused for a changed one.
 *
 * The key pair is made for this run and then discarded. A device would keep it; it would also link
 * its own rand, srand and time, because the library draws all its random numbers from them.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zokecc/curves.h>
#include <zokecc/sdf.h>

static void fail(const char *what)
{
    fprintf(stderr, "sign_with_identity: %s\n", what);
    exit(EXIT_FAILURE);
}

/* Every session call returns a status; ZOK_OK is success. */
static void check(uint32_t status, const char *step)
{
    if (status == ZOK_OK) return;
    fprintf(stderr, "status %08x: ", (unsigned)status);
    fail(step);
}

static void print_hex(const char *label, const uint8_t *bytes)
{
    printf("%-2s = ", label);
    for (int i = 0; i < 32; ++i) printf("%02x", bytes[i]);
    printf("\n");
}

static uint8_t *read_file(const char *path, uint32_t *size)
{
    FILE *file = fopen(path, "rb");
    if (file == NULL || fseek(file, 0, SEEK_END) != 0) fail("cannot open the file");
    const long length = ftell(file);
    if (length <= 0 || length > 0x7fffffff - 64) fail("the file is empty or too long");
    uint8_t *bytes = malloc((size_t)length);
    rewind(file);
    if (bytes == NULL || fread(bytes, 1, (size_t)length, file) != (size_t)length)
        fail("cannot read the file");
    fclose(file);
    *size = (uint32_t)length;
    return bytes;
}

int main(int argc, char **argv)
{
    uint32_t size = 0, z_size = 0;
    uint8_t z[32];
    uint8_t *message = read_file(argc > 1 ? argv[1] : "README.md", &size);
    const uint8_t *id = (const uint8_t *)(argc > 2 ? argv[2] : "1234567812345678");
    const size_t id_length = strlen((const char *)id);
    /* Only 16 bits of the identity's length in bits are hashed: from 8,192 bytes on they wrap around. */
    if (id_length > 8191) fail("the identity is longer than 8191 bytes");
    const uint32_t id_size = (uint32_t)id_length;

    void *session = NULL;
    ECCrefPublicKey pub;
    ECCrefPrivateKey priv;
    ECCSignature sig;

    /* An unknown curve type is reported by the first call that needs the curve, the second one here. */
    check(ZOK_OpenSession(&session, &zokecc_sm2p256v1), "open a session");
    check(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_SM2_KEY, 256, &pub, &priv), "make a key pair");

    /* Hashes Z and the message, and signs the hash. The public key that Z needs comes from priv. */
    check(ZOK_ExternalSignHash_ECC(session, ZOK_ALG_SM2_SIGN, &priv, message, size, id, id_size, &sig),
          "sign");

    /* Anyone with the message, the identity and the public key can verify. */
    check(ZOK_ExternalVerifyHash_ECC(session, ZOK_ALG_SM2_SIGN, &pub, message, size, id, id_size, &sig),
          "verify");

    check(ZOK_GenerateUserInfo(session, &pub, id, id_size, z, &z_size), "compute Z");
    print_hex("Z", z);
    print_hex("x", pub.x);
    print_hex("y", pub.y);
    print_hex("r", sig.r);
    print_hex("s", sig.s);
    printf("verified: %u bytes, signed by \"%s\"\n", (unsigned)size, (const char *)id);

    message[0] ^= 1;
    if (ZOK_ExternalVerifyHash_ECC(session, ZOK_ALG_SM2_SIGN, &pub, message, size, id, id_size, &sig) !=
        ZOK_ERR_VERIFY)
        fail("a changed message was not refused");
    printf("refused: the same signature after one bit of the first byte changed\n");

    memset(&priv, 0, sizeof priv); /* in a product use a call that is not optimised away */
    free(message);
    check(ZOK_CloseSession(session), "close the session");
    return EXIT_SUCCESS;
}
