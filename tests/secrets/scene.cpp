#include "tests/secrets/scene.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <stdexcept>

#include "tests/support/hex.h"

namespace zokecc_test::secrets {

namespace {

constexpr const char *kWithoutFastField = "secp128r2";

// SEC 2 version 1, section 2.3.2, in records of 24 bytes.
Curve curve_of_128_bits() {
    Curve out{};
    out.name = kWithoutFastField;
    out.byte_len = 24;
    out.session_type = 2;
    out.legacy_type = 0;
    out.p = mint_from_hex("fffffffdffffffffffffffffffffffff");
    out.a = mint_from_hex("d6031998d1b3bbfebf59cc9bbff9aee1");
    out.b = mint_from_hex("5eeefca380d02919dc2c6558bb6d8a5d");
    out.n = mint_from_hex("3fffffff7fffffffbe0024720613b5a3");
    out.G.x = mint_from_hex("7b6aa5d85e572983e6fb32a7cdebc140");
    out.G.y = mint_from_hex("27b6916a894d3aee7106fe805fc34b44");
    return out;
}

const Curve &curve_named(const std::string &name) {
    static const Curve short_curve = curve_of_128_bits();
    return name == kWithoutFastField ? short_curve : zokecc_test::curve(name);
}

mint number_from(const std::string &seed, const mint &n) {
    uint8_t digest[32];
    mhash_sha256(reinterpret_cast<const uint8_t *>(seed.data()), static_cast<uint32_t>(seed.size()), digest);
    mint number{}, out{};
    octetstring_to_mint(digest, 4 * n.len, &number);
    mint_mod(&number, &n, &out);
    return out;
}

mint product(const mint &a, const mint &b, const mint &p) {
    mint out{};
    mint_mod_mul(&a, &b, &p, &out);
    return out;
}

mint sum(mint a, mint b, const mint &p) {
    mint out{};
    mint_mod_add(&a, &b, &p, &out);
    return out;
}

mint inverse(const mint &a, const mint &p) {
    mint out{};
    mint_EEA_algo(&a, &p, &out);
    return out;
}

mint one() { return mint_from_hex("1"); }

// 2^w + (x mod 2^w), where 2^(2w) is about the order. GB/T 32918.3, A4.
mint x_bar(const ecc_point &P, uint32_t w) {
    mint out = P.x;
    for (uint32_t i = w / 32; i < MINT_WORDS; ++i) out.words[i] &= i == w / 32 ? (1u << w % 32) - 1 : 0;
    out.words[w / 32] |= 1u << w % 32;
    out.len = w / 32 + 1;
    return out;
}

}  // namespace

KeyPair::KeyPair(const Curve &curve, const std::string &seed)
    : d(number_from(seed, curve.n)), Q{}, scalar{}, point{}, private_record{}, public_record{} {
    const size_t L = curve.byte_len;
    ecc_unknown_point_mul(&d, &curve.G, &curve.a, &curve.b, &curve.p, &Q);
    bytes = fixed_bytes(d, L);
    scalar = {bytes.data(), static_cast<uint32_t>(L)};
    const ByteString x = fixed_bytes(Q.x, L), y = fixed_bytes(Q.y, L);
    std::copy(x.begin(), x.end(), point.x);
    std::copy(y.begin(), y.end(), point.y);
    point.length = static_cast<uint32_t>(L);
    std::copy(bytes.begin(), bytes.end(), private_record.K);
    std::copy(x.begin(), x.end(), public_record.x);
    std::copy(y.begin(), y.end(), public_record.y);
    private_record.bits = public_record.bits = static_cast<uint32_t>(8 * L);
}

Scene::Scene(const Curve &curve_)
    : curve(curve_),
      L(curve_.byte_len),
      session(curve_),
      own(curve_, "own"),
      own_temporary(curve_, "own temporary"),
      peer(curve_, "peer"),
      peer_temporary(curve_, "peer temporary") {}

ecc_point Scene::multiple(const mint &k, const ecc_point &P) const {
    ecc_point out{};
    ecc_unknown_point_mul(&k, &P, &curve.a, &curve.b, &curve.p, &out);
    return out;
}

Secrets Scene::shared(const ecc_point &P) const {
    return {secret("the shared x", P.x), secret("the shared y", P.y)};
}

Secrets Scene::sm2_nonce(const mint &k, const mint &r) const {
    const mint rd = product(r, own.d, curve.n);
    mint difference{};
    mint_mod_sub(&k, &rd, &curve.n, &difference);
    const mint next = sum(own.d, one(), curve.n);
    return {private_key(),         secret("the nonce", k),
            secret("1 + d", next), secret("1 / (1 + d)", inverse(next, curve.n)),
            secret("r d", rd),     secret("k - r d", difference)};
}

Secrets Scene::ecdsa_nonce(const mint &k) const {
    mint r{};
    const ecc_point R = multiple(k, curve.G);
    mint_mod(&R.x, &curve.n, &r);
    return {private_key(), secret("the nonce", k), secret("1 / k", inverse(k, curve.n)),
            secret("r d", product(r, own.d, curve.n))};
}

ecc_point Scene::exchanged(const KeyPair &temporary) const {
    const uint32_t w = session.context()->w;
    const mint &n = curve.n;
    const mint t = sum(own.d, product(x_bar(temporary.Q, w), temporary.d, n), n);
    const ecc_point of_peer = multiple(x_bar(peer_temporary.Q, w), peer_temporary.Q);
    ecc_point both{};
    ecc_point_add(&peer.Q, &of_peer, &curve.a, &curve.b, &curve.p, &both);
    return multiple(product(session.context()->h, t, curve.p), both);
}

std::vector<std::string> scene_curves() { return {"sm2p256v1", "secp192r1", kWithoutFastField}; }

// Also makes its curve that of the process.
Scene &scene(const std::string &curve_name) {
    static std::map<std::string, std::unique_ptr<Scene>> scenes;
    std::unique_ptr<Scene> &slot = scenes[curve_name];
    if (!slot) slot = std::make_unique<Scene>(curve_named(curve_name));
    ecc_curve_bytes record = slot->curve.legacy_record();
    if (Curve_Init(&record) != 0) throw std::runtime_error("cannot install " + curve_name);
    return *slot;
}

void expect_nothing_left(const std::string &name, const std::function<void()> &call,
                         const std::function<Secrets(const std::vector<mint> &drawn)> &secrets) {
    const MemoryWatch watch(call);
    std::printf("%s: %zu bytes of stack\n", name.c_str(), watch.stack_depth());
    for (const std::string &left : watch.find(secrets(watch.drawn()))) ADD_FAILURE() << name << ": " << left;
}

}  // namespace zokecc_test::secrets
