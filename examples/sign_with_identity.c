/*
 * Signs a file for an identity with SM2 and SM3, and verifies the signature.
 *
 *     sign_with_identity [FILE [IDENTITY]]
 *
 * Prints the identity value Z, the public key and the signature (r, s) in hexadecimal. The exit
 * status is 0 if the signature verifies for the file and is refused for a changed one.
 *
 * The key pair is made for this run and then forgotten. A device would keep it; it would also link
 * rand, srand and time of its own, because the library draws all its random numbers from them.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zokecc/sdf.h>

/* The recommended 256-bit curve of GM/T 0003.5. Every number is big-endian and fills the first
 * 32 bytes of its field. Type 4 says 256 bits; the session hashes with SM3. */
static const CurvePara sm2p256v1 = {
    .p = {0xff, 0xff, 0xff, 0xfe, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff,
          0xff, 0xff, 0xff, 0xff, 0x00, 0x00, 0x00, 0x00, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff},
    .a = {0xff, 0xff, 0xff, 0xfe, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff,
          0xff, 0xff, 0xff, 0xff, 0x00, 0x00, 0x00, 0x00, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xfc},
    .b = {0x28, 0xe9, 0xfa, 0x9e, 0x9d, 0x9f, 0x5e, 0x34, 0x4d, 0x5a, 0x9e, 0x4b, 0xcf, 0x65, 0x09, 0xa7,
          0xf3, 0x97, 0x89, 0xf5, 0x15, 0xab, 0x8f, 0x92, 0xdd, 0xbc, 0xbd, 0x41, 0x4d, 0x94, 0x0e, 0x93},
    .Gx = {0x32, 0xc4, 0xae, 0x2c, 0x1f, 0x19, 0x81, 0x19, 0x5f, 0x99, 0x04, 0x46, 0x6a, 0x39, 0xc9, 0x94,
           0x8f, 0xe3, 0x0b, 0xbf, 0xf2, 0x66, 0x0b, 0xe1, 0x71, 0x5a, 0x45, 0x89, 0x33, 0x4c, 0x74, 0xc7},
    .Gy = {0xbc, 0x37, 0x36, 0xa2, 0xf4, 0xf6, 0x77, 0x9c, 0x59, 0xbd, 0xce, 0xe3, 0x6b, 0x69, 0x21, 0x53,
           0xd0, 0xa9, 0x87, 0x7c, 0xc6, 0x2a, 0x47, 0x40, 0x02, 0xdf, 0x32, 0xe5, 0x21, 0x39, 0xf0, 0xa0},
    .n = {0xff, 0xff, 0xff, 0xfe, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff,
          0x72, 0x03, 0xdf, 0x6b, 0x21, 0xc6, 0x05, 0x2b, 0x53, 0xbb, 0xf4, 0x09, 0x39, 0xd5, 0x41, 0x23},
    .type = 4,
    .hash_selector = HASH_ALG_SM3,
};

static void fail(const char *what)
{
    fprintf(stderr, "sign_with_identity: %s\n", what);
    exit(EXIT_FAILURE);
}

/* Every session call answers a status; ZOK_OK is success. */
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
    const uint32_t id_size = (uint32_t)strlen((const char *)id);

    void *session = NULL;
    ECCrefPublicKey pub;
    ECCrefPrivateKey priv;
    ECCSignature sig;

    /* A curve of an unknown type shows at the first call that needs it, the second here. */
    check(ZOK_OpenSession(&session, &sm2p256v1), "open a session");
    check(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_SM2_KEY, 256, &pub, &priv), "make a key pair");

    /* Hashes Z and the message, and signs the hash. The public key that Z needs comes from priv. */
    check(ZOK_ExternalSignHash_ECC(session, ZOK_ALG_SM2_SIGN, &priv, message, size, id, id_size, &sig),
          "sign");

    /* Whoever has the message, the identity and the public key can verify. */
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

    free(message);
    check(ZOK_CloseSession(session), "close the session");
    return EXIT_SUCCESS;
}
