// Two parties on one curve, with everything that the calls of both generations take from them.
#ifndef ZOKECC_TESTS_SECRETS_SCENE_H
#define ZOKECC_TESTS_SECRETS_SCENE_H

#include <gtest/gtest.h>
#include <zokecc/zokecc.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/secrets/memory_watch.h"
#include "tests/support/curves.h"

namespace zokecc_test::secrets {

// A number below the order that looks random, and the point that belongs to it.
struct KeyPair {
    KeyPair(const Curve &curve, const std::string &seed);

    mint d;
    ecc_point Q;
    ByteString bytes;
    ecc_scalar scalar;
    ecc_point_bytes point;
    ECCrefPrivateKey private_record;
    ECCrefPublicKey public_record;
};

class Scene {
public:
    explicit Scene(const Curve &curve);
    Scene(const Scene &) = delete;
    Scene &operator=(const Scene &) = delete;

    const Curve &curve;
    const size_t L;
    Session session;
    KeyPair own, own_temporary, peer, peer_temporary;

    void *handle() const { return session.handle(); }
    Secret private_key() const { return secret("the private key", own.d); }
    Secret temporary_key() const { return secret("the temporary key", own_temporary.d); }

    // k * P, and the secrets that its coordinates are.
    ecc_point multiple(const mint &k, const ecc_point &P) const;
    std::vector<Secret> shared(const ecc_point &P) const;
    // What a signature gives the private key away with: the nonce, and what stands in its equation.
    std::vector<Secret> sm2_nonce(const mint &k, const mint &r) const;
    std::vector<Secret> ecdsa_nonce(const mint &k) const;
    // The point of an SM2 exchange as the own side computes it, with that temporary key.
    ecc_point exchanged(const KeyPair &temporary) const;
};

// sm2p256v1 and secp192r1, which fast fields serve, and a curve over 128 bits, which none does.
std::vector<std::string> scene_curves();
Scene &scene(const std::string &curve_name);

using Secrets = std::vector<Secret>;

// Runs the call, and fails for every piece of a secret that it leaves behind. What the secrets are
// may depend on the numbers that the call has drawn.
void expect_nothing_left(const std::string &name, const std::function<void()> &call,
                         const std::function<Secrets(const std::vector<mint> &drawn)> &secrets);

// All tests of this program run on each of the curves.
class Secrecy : public testing::TestWithParam<std::string> {
protected:
    Scene &s = scene(GetParam());
};

}  // namespace zokecc_test::secrets

#endif
