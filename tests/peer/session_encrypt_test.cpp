// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// SM2 encryption by the session calls and OpenSSL, both ways. A ciphertext is 04 || x1 || y1 ||
// C2 || C3 here and the sequence of x1, y1, C3 and C2 in DER there.
#include <zokecc/sdf.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "tests/peer/scheme_peer.h"

namespace zokecc_test::session_encrypt_test {

namespace {

constexpr size_t kL = 32;
constexpr uint8_t kInteger = 0x02;
constexpr uint8_t kOctets = 0x04;
constexpr uint8_t kSequence = 0x30;

// One ciphertext in its parts.
struct Parts {
    ByteString x1, y1, C2, C3;

    ByteString flat() const { return joined({{0x04}, x1, y1, C2, C3}); }
    bool is_masked(const ByteString &message) const { return C2 != message; }
};

ByteString slice(const ByteString &bytes, size_t from, size_t size) {
    const auto start = bytes.begin() + static_cast<std::ptrdiff_t>(from);
    return ByteString(start, start + static_cast<std::ptrdiff_t>(size));
}

Parts split(const ByteString &flat) {
    const size_t m = flat.size() - 97;
    return {slice(flat, 1, kL), slice(flat, 33, kL), slice(flat, 65, m), slice(flat, 65 + m, 32)};
}

ByteString der(uint8_t tag, const ByteString &content) {
    ByteString length;
    for (size_t rest = content.size(); rest > 0; rest >>= 8)
        length.insert(length.begin(), static_cast<uint8_t>(rest));
    if (content.size() < 128)
        length.assign(1, static_cast<uint8_t>(content.size()));
    else
        length.insert(length.begin(), static_cast<uint8_t>(0x80 + length.size()));
    return joined({{tag}, length, content});
}

// The shortest non-negative form.
ByteString der_number(ByteString bytes) {
    while (bytes.size() > 1 && bytes[0] == 0) bytes.erase(bytes.begin());
    if (bytes[0] >= 0x80) bytes.insert(bytes.begin(), uint8_t{0});
    return der(kInteger, bytes);
}

ByteString to_der(const Parts &parts) {
    return der(kSequence, joined({der_number(parts.x1), der_number(parts.y1), der(kOctets, parts.C3),
                                  der(kOctets, parts.C2)}));
}

// Reads the element at `at` and moves past it.
ByteString take(const ByteString &bytes, size_t &at, uint8_t tag) {
    EXPECT_EQ(bytes.at(at), tag);
    size_t size = bytes.at(at + 1);
    at += 2;
    if (size >= 0x80) {
        size_t octets = size - 0x80;
        for (size = 0; octets > 0; --octets) size = size << 8 | bytes.at(at++);
    }
    at += size;
    return slice(bytes, at - size, size);
}

ByteString take_number(const ByteString &bytes, size_t &at) {
    ByteString out = take(bytes, at, kInteger);
    while (out.size() > kL) out.erase(out.begin());
    out.insert(out.begin(), kL - out.size(), uint8_t{0});
    return out;
}

Parts from_der(const ByteString &bytes) {
    size_t at = 0;
    const ByteString content = take(bytes, at, kSequence);
    EXPECT_EQ(at, bytes.size());
    Parts out;
    at = 0;
    out.x1 = take_number(content, at);
    out.y1 = take_number(content, at);
    out.C3 = take(content, at, kOctets);
    out.C2 = take(content, at, kOctets);
    EXPECT_EQ(at, content.size());
    return out;
}

PeerKeyContext prepared(const PeerKeyPair &keys, int (*init)(EVP_PKEY_CTX *), uint32_t hash) {
    PeerKeyContext context(EVP_PKEY_CTX_new(keys.peer.get(), nullptr));
    EXPECT_EQ(init(context.get()), 1);
    char name[8];
    std::strcpy(name, hash == HASH_ALG_SM3 ? "SM3" : "SHA256");
    const OSSL_PARAM params[] = {OSSL_PARAM_construct_utf8_string(OSSL_ASYM_CIPHER_PARAM_DIGEST, name, 0),
                                 OSSL_PARAM_construct_end()};
    EXPECT_EQ(EVP_PKEY_CTX_set_params(context.get(), params), 1);
    return context;
}

Parts peer_encrypt(const PeerKeyPair &keys, const ByteString &message, uint32_t hash) {
    PeerKeyContext context = prepared(keys, EVP_PKEY_encrypt_init, hash);
    size_t size = message.size() + 200;
    ByteString out(size);
    EXPECT_EQ(EVP_PKEY_encrypt(context.get(), out.data(), &size, message.data(), message.size()), 1);
    return from_der(slice(out, 0, size));
}

// Empty if the peer rejects it.
ByteString peer_decrypt(const PeerKeyPair &keys, const Parts &parts, uint32_t hash) {
    PeerKeyContext context = prepared(keys, EVP_PKEY_decrypt_init, hash);
    const ByteString cipher = to_der(parts);
    size_t size = cipher.size();
    ByteString out(size);
    if (EVP_PKEY_decrypt(context.get(), out.data(), &size, cipher.data(), cipher.size()) != 1)
        return ByteString();
    return slice(out, 0, size);
}

ECCrefPublicKey public_key(const PeerKeyPair &keys) {
    ECCrefPublicKey out{};
    out.bits = 8 * kL;
    std::copy(keys.x.begin(), keys.x.end(), out.x);
    std::copy(keys.y.begin(), keys.y.end(), out.y);
    return out;
}

ECCrefPrivateKey private_key(const PeerKeyPair &keys) {
    ECCrefPrivateKey out{};
    out.bits = 8 * kL;
    std::copy(keys.d.begin(), keys.d.end(), out.K);
    return out;
}

Parts our_encrypt(void *session, const PeerKeyPair &keys, const ByteString &message) {
    const ECCrefPublicKey key = public_key(keys);
    ByteString out(message.size() + 97);
    uint32_t length = 0;
    EXPECT_EQ(ZOK_ExternalEncrytp_ECC(session, &key, message.data(), static_cast<int32_t>(message.size()),
                                      out.data(), &length),
              ZOK_OK);
    EXPECT_EQ(length, out.size());
    return split(out);
}

// Empty if we reject it.
ByteString our_decrypt(void *session, const PeerKeyPair &keys, const Parts &parts) {
    const ECCrefPrivateKey key = private_key(keys);
    const ByteString cipher = parts.flat();
    ByteString out(cipher.size());
    uint32_t length = 0;
    const uint32_t status = ZOK_ExternalDecrypt_ECC(
        session, &key, cipher.data(), static_cast<uint32_t>(cipher.size()), out.data(), &length);
    EXPECT_EQ(length, parts.C2.size());
    return status == ZOK_OK ? slice(out, 0, length) : ByteString();
}

Parts our_record_encrypt(void *session, const PeerKeyPair &keys, const ByteString &message) {
    const ECCrefPublicKey key = public_key(keys);
    ECCCipher out{};
    EXPECT_EQ(SDF_ExternalEncrytp_ECC(session, ZOK_ALG_SM2_ENCRYPT, &key, message.data(), kL, &out), ZOK_OK);
    return {ByteString(out.x, out.x + kL), ByteString(out.y, out.y + kL), ByteString(out.C, out.C + kL),
            ByteString(out.M, out.M + 32)};
}

ByteString our_record_decrypt(void *session, const PeerKeyPair &keys, const Parts &parts) {
    const ECCrefPrivateKey key = private_key(keys);
    ECCCipher cipher{};
    std::copy(parts.x1.begin(), parts.x1.end(), cipher.x);
    std::copy(parts.y1.begin(), parts.y1.end(), cipher.y);
    std::copy(parts.C2.begin(), parts.C2.end(), cipher.C);
    std::copy(parts.C3.begin(), parts.C3.end(), cipher.M);
    ByteString out(kL);
    uint32_t length = 0;
    EXPECT_EQ(SDF_ExternalDecrypt_ECC(session, ZOK_ALG_SM2_ENCRYPT, &key, &cipher, out.data(), &length),
              ZOK_OK);
    EXPECT_EQ(length, kL);
    return out;
}

std::vector<size_t> message_lengths() {
    std::vector<size_t> out;
    for (size_t length = 1; length <= 70; ++length) out.push_back(length);
    for (size_t length : {95u, 96u, 97u, 127u, 128u, 200u, 255u, 256u, 1000u, 4096u}) out.push_back(length);
    return out;
}

std::string describe(const PeerKeyPair &keys, const Parts &parts) {
    return "seed " + std::to_string(kPeerSeed) + " d " + to_hex(keys.d) + " ciphertext " +
           to_hex(parts.flat());
}

}  // namespace

TEST(PeerZokExternalEncrytpEcc, ThePeerDecryptsWhatWeEncrypt) {
    PeerDraws draws;
    FakeEntropy entropy;
    for (uint32_t hash : kHashes) {
        Session session(curve(kPeerSm2.name), hash);
        const PeerKeyPair keys(kPeerSm2, draws);
        for (size_t length : message_lengths()) {
            const ByteString message = draws.bytes(length);
            Parts parts = our_encrypt(session.handle(), keys, message);
            SCOPED_TRACE(describe(keys, parts));
            EXPECT_EQ(to_hex(peer_decrypt(keys, parts, hash)), to_hex(message));
            parts.C3[31] = static_cast<uint8_t>(parts.C3[31] ^ 1u);
            EXPECT_TRUE(peer_decrypt(keys, parts, hash).empty());
        }
    }
}

TEST(PeerZokExternalDecryptEcc, WeDecryptWhatThePeerEncrypts) {
    PeerDraws draws;
    for (uint32_t hash : kHashes) {
        Session session(curve(kPeerSm2.name), hash);
        const PeerKeyPair keys(kPeerSm2, draws);
        for (size_t length : message_lengths()) {
            const ByteString message = draws.bytes(length);
            Parts parts = peer_encrypt(keys, message, hash);
            // A key stream of one byte may be zero, which the peer need not redraw.
            while (!parts.is_masked(message)) parts = peer_encrypt(keys, message, hash);
            SCOPED_TRACE(describe(keys, parts));
            EXPECT_EQ(to_hex(our_decrypt(session.handle(), keys, parts)), to_hex(message));
            parts.C3[0] = static_cast<uint8_t>(parts.C3[0] ^ 0x80u);
            EXPECT_TRUE(our_decrypt(session.handle(), keys, parts).empty());
        }
    }
}

TEST(PeerSdfExternalEncrytpEcc, RecordsGoBothWays) {
    PeerDraws draws;
    FakeEntropy entropy;
    for (uint32_t hash : kHashes) {
        Session session(curve(kPeerSm2.name), hash);
        for (int round = 0; round < 20; ++round) {
            const PeerKeyPair keys(kPeerSm2, draws);
            const ByteString message = draws.bytes(kL);
            const Parts ours = our_record_encrypt(session.handle(), keys, message);
            SCOPED_TRACE(describe(keys, ours));
            EXPECT_EQ(to_hex(peer_decrypt(keys, ours, hash)), to_hex(message));
            const Parts theirs = peer_encrypt(keys, message, hash);
            EXPECT_EQ(to_hex(our_record_decrypt(session.handle(), keys, theirs)), to_hex(message));
        }
    }
}

}  // namespace zokecc_test::session_encrypt_test
