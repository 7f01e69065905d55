// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The worked SM2 signature of GM/T 0003.5, and signing with a fixed nonce on its curve and on
// the small one.
#ifndef ZOKECC_TESTS_SDF_EXAMPLE_H
#define ZOKECC_TESTS_SDF_EXAMPLE_H

#include "tests/sdf/fixtures.h"

namespace zokecc_test {

namespace example {

// The private key, the nonce, the first coordinate of k G, the hashed value and the signature.
inline constexpr char kD[] = "3945208f7b2144b13f36e38ac6d39f95889393692860b51a42fb81ef4df7c5b8";
inline constexpr char kK[] = "59276e27d506861a16680f3ad9c02dccef3cc1fa3cdbe4ce6d54b80deac1bc21";
inline constexpr char kX[] = "04ebfc718e8d1798620432268e77feb6415e2ede0e073c0f4f640ecd2e149a73";
inline constexpr char kE[] = "f0b43e94ba45accaace692ed534382eb17e6ab5a19ce7b31f4486fdfc0d28640";
inline constexpr char kR[] = "f5a03b0648d2c4630eeac513e1bb81a15944da3827d5b74143ac7eaceee720b3";
inline constexpr char kS[] = "b1b6aa29df212fd8763182bc0d421ca1bb9038fd1f7f42d4840b69c485bbc1aa";

inline ECCrefPrivateKey priv() { return private_key(from_hex(kD)); }
inline ByteString pub_x() {
    return from_hex("09f9df311e5421a150dd7d161e4bc5c672179fad1833fc076bb08ff356f35020");
}
inline ByteString pub_y() {
    return from_hex("ccea490ce26775a52dc6ea718cc1aa600aed05fbf35e084a6632f6072da9ad13");
}
inline ECCrefPublicKey pub() { return public_key(pub_x(), pub_y()); }
inline ByteString e() { return from_hex(kE); }
inline ECCSignature sig() { return signature(from_hex(kR), from_hex(kS)); }

}  // namespace example

// Signs on the SM2 curve with the example's nonce.
struct ExampleSigning {
    GuardedRecord<ECCSignature> sig;
    FakeEntropy entropy;

    uint32_t sign(uint32_t algorithm, const ECCrefPrivateKey &key, const ByteString &e = example::e()) {
        entropy.queued_numbers.push_back(mint_from_hex(example::kK));
        return sign_e(sm2_session(), algorithm, key, e, sig.get());
    }
    void expect(const char *r, const char *s) {
        expect_signature(sig, from_hex(r), from_hex(s));
        EXPECT_EQ(entropy.number_calls, 1u);
    }
};

// Signs on the small curve with these nonces.
struct SmallSigning {
    GuardedRecord<ECCSignature> sig;
    FakeEntropy entropy;

    uint32_t sign(uint32_t algorithm, const ECCrefPrivateKey &key, const ByteString &e = small_bytes(456),
                  std::initializer_list<uint32_t> nonces = {77}) {
        queue_numbers(entropy, nonces);
        return sign_e(small_session(), algorithm, key, e, sig.get());
    }
    void expect_refused() {
        EXPECT_TRUE(sig.unchanged());
        EXPECT_EQ(entropy.number_calls, 0u);
        entropy.queued_numbers.clear();
    }
};

}  // namespace zokecc_test

#endif
