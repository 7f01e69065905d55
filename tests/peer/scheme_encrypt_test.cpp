// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM2 encryption on the process-wide curve, compared with OpenSSL. Our ciphertext is 04 || C1 || C2 ||
// C3; OpenSSL's is the sequence of x1, y1, C3 and C2 of GM/T 0009 in DER.
#include <openssl/asn1.h>

#include <vector>

#include "tests/peer/scheme_peer.h"

namespace zokecc_test::scheme_encrypt_test {

namespace {

struct Parts {
    ByteString x1, y1, C2, C3;
};

using DerInteger = PeerOwned<ASN1_INTEGER, ASN1_INTEGER_free>;
using DerOctets = PeerOwned<ASN1_OCTET_STRING, ASN1_OCTET_STRING_free>;

Parts split(const ByteString &flat) {
    auto at = [&](size_t index) { return flat.begin() + static_cast<std::ptrdiff_t>(index); };
    return {ByteString(at(1), at(33)), ByteString(at(33), at(65)), ByteString(at(65), at(flat.size() - 32)),
            ByteString(at(flat.size() - 32), flat.end())};
}
ByteString flat(const Parts &parts) {
    return joined({ByteString(1, 4), parts.x1, parts.y1, parts.C2, parts.C3});
}

void append_number(ByteString &der, const ByteString &bytes) {
    PeerNumber number(BN_bin2bn(bytes.data(), static_cast<int>(bytes.size()), nullptr));
    DerInteger integer(BN_to_ASN1_INTEGER(number.get(), nullptr));
    uint8_t *encoded = nullptr;
    const int size = i2d_ASN1_INTEGER(integer.get(), &encoded);
    der.insert(der.end(), encoded, encoded + size);
    OPENSSL_free(encoded);
}
void append_octets(ByteString &der, const ByteString &bytes) {
    DerOctets octets(ASN1_OCTET_STRING_new());
    ASN1_OCTET_STRING_set(octets.get(), bytes.data(), static_cast<int>(bytes.size()));
    uint8_t *encoded = nullptr;
    const int size = i2d_ASN1_OCTET_STRING(octets.get(), &encoded);
    der.insert(der.end(), encoded, encoded + size);
    OPENSSL_free(encoded);
}
ByteString to_der(const Parts &parts) {
    ByteString body;
    append_number(body, parts.x1);
    append_number(body, parts.y1);
    append_octets(body, parts.C3);
    append_octets(body, parts.C2);
    const int length = static_cast<int>(body.size());
    ByteString der(static_cast<size_t>(ASN1_object_size(1, length, V_ASN1_SEQUENCE)) - body.size());
    uint8_t *cursor = der.data();
    ASN1_put_object(&cursor, 1, length, V_ASN1_SEQUENCE, V_ASN1_UNIVERSAL);
    return joined({der, body});
}

ByteString take_number(const uint8_t *&cursor, const uint8_t *end) {
    DerInteger integer(d2i_ASN1_INTEGER(nullptr, &cursor, end - cursor));
    PeerNumber number(ASN1_INTEGER_to_BN(integer.get(), nullptr));
    ByteString out(32);
    EXPECT_EQ(BN_bn2binpad(number.get(), out.data(), 32), 32);
    return out;
}
ByteString take_octets(const uint8_t *&cursor, const uint8_t *end) {
    DerOctets octets(d2i_ASN1_OCTET_STRING(nullptr, &cursor, end - cursor));
    const uint8_t *bytes = ASN1_STRING_get0_data(octets.get());
    return ByteString(bytes, bytes + ASN1_STRING_length(octets.get()));
}
Parts from_der(const ByteString &der) {
    const uint8_t *cursor = der.data();
    const uint8_t *const end = cursor + der.size();
    long length = 0;
    int tag = 0, kind = 0;
    EXPECT_EQ(ASN1_get_object(&cursor, &length, &tag, &kind, end - cursor) & 0x80, 0);
    EXPECT_EQ(tag, V_ASN1_SEQUENCE);
    Parts out;
    out.x1 = take_number(cursor, end);
    out.y1 = take_number(cursor, end);
    out.C3 = take_octets(cursor, end);
    out.C2 = take_octets(cursor, end);
    return out;
}

const char *digest_name(uint32_t hash) { return hash == HASH_ALG_SM3 ? "SM3" : "SHA256"; }

PeerKeyContext prepared(const PeerKeyPair &keys, int (*init)(EVP_PKEY_CTX *), uint32_t hash) {
    PeerKeyContext context(EVP_PKEY_CTX_new(keys.peer.get(), nullptr));
    EXPECT_EQ(init(context.get()), 1);
    std::string name = digest_name(hash);
    const OSSL_PARAM params[] = {
        OSSL_PARAM_construct_utf8_string(OSSL_ASYM_CIPHER_PARAM_DIGEST, name.data(), 0),
        OSSL_PARAM_construct_end()};
    EXPECT_EQ(EVP_PKEY_CTX_set_params(context.get(), params), 1);
    return context;
}
ByteString peer_encrypt(const PeerKeyPair &keys, const ByteString &text, uint32_t hash) {
    PeerKeyContext context = prepared(keys, EVP_PKEY_encrypt_init, hash);
    size_t size = text.size() + 200;
    ByteString der(size);
    EXPECT_EQ(EVP_PKEY_encrypt(context.get(), der.data(), &size, text.data(), text.size()), 1);
    der.resize(size);
    return der;
}
// Empty if the peer rejects it.
ByteString peer_decrypt(const PeerKeyPair &keys, const ByteString &der, uint32_t hash) {
    PeerKeyContext context = prepared(keys, EVP_PKEY_decrypt_init, hash);
    size_t size = der.size() + 64;
    ByteString out(size);
    if (EVP_PKEY_decrypt(context.get(), out.data(), &size, der.data(), der.size()) != 1) return ByteString();
    out.resize(size);
    return out;
}

ByteString our_encrypt(const PeerKeyPair &keys, const ByteString &text, uint32_t hash) {
    Message msg(text);
    PointBytes Q = keys.point();
    ByteString area(text.size() + 97);
    sm3_msg cipher{area.data(), 0, 0};
    EXPECT_EQ(sm2_Encry(Q.get(), msg.get(), &cipher, hash), 0);
    EXPECT_EQ(cipher.len_low, area.size());
    return area;
}
// KEPT: the result is -1 although the plaintext is right.
ByteString our_decrypt(const PeerKeyPair &keys, const ByteString &bytes, uint32_t hash) {
    Scalar d(keys.d);
    Message cipher(bytes);
    ByteString area(bytes.size());
    sm3_msg plain{area.data(), 0, 0};
    EXPECT_EQ(sm2_Decry(d.get(), cipher.get(), &plain, hash), -1);
    area.resize(plain.len_low);
    return area;
}

// Every short length, then some longer ones.
std::vector<size_t> message_lengths() {
    std::vector<size_t> out;
    for (size_t length = 1; length <= 70; ++length) out.push_back(length);
    for (size_t length : {95u, 96u, 97u, 200u, 1000u, 4096u}) out.push_back(length);
    return out;
}

std::string describe(const PeerKeyPair &keys, const ByteString &cipher) {
    return "seed " + std::to_string(kPeerSeed) + " d " + to_hex(keys.d) + " ciphertext " + to_hex(cipher);
}

// A key stream of one byte may be zero, which the peer need not redraw.
bool is_masked(const ByteString &text, const Parts &parts) { return parts.C2 != text; }

}  // namespace

TEST(PeerSm2Encry, ThePeerDecryptsWhatWeEncrypt) {
    install(kPeerSm2.name);
    PeerDraws draws;
    FakeEntropy entropy;
    for (uint32_t hash : kHashes) {
        PeerKeyPair keys(kPeerSm2, draws);
        for (size_t length : message_lengths()) {
            const ByteString text = draws.bytes(length);
            const ByteString cipher = our_encrypt(keys, text, hash);
            SCOPED_TRACE(describe(keys, cipher));
            EXPECT_EQ(to_hex(peer_decrypt(keys, to_der(split(cipher)), hash)), to_hex(text));
            Parts spoilt = split(cipher);
            spoilt.C2[0] ^= 1;
            EXPECT_TRUE(peer_decrypt(keys, to_der(spoilt), hash).empty());
        }
    }
}

TEST(PeerSm2Decry, KeptPlaintextOfThePeersCiphertextIsWrittenWithTheAnswerMinusOne) {
    install(kPeerSm2.name);
    PeerDraws draws;
    for (uint32_t hash : kHashes) {
        PeerKeyPair keys(kPeerSm2, draws);
        for (size_t length : message_lengths()) {
            const ByteString text = draws.bytes(length);
            Parts parts = from_der(peer_encrypt(keys, text, hash));
            while (!is_masked(text, parts)) parts = from_der(peer_encrypt(keys, text, hash));
            SCOPED_TRACE(describe(keys, flat(parts)));
            EXPECT_EQ(to_hex(our_decrypt(keys, flat(parts), hash)), to_hex(text));
        }
    }
}

}  // namespace zokecc_test::scheme_encrypt_test
