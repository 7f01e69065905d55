// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "bench/curves.h"

#include <openssl/core_names.h>
#include <openssl/param_build.h>

#include <algorithm>
#include <map>

namespace zokecc_bench {

namespace {

// Both kinds of record hold numbers at the start of their fields.
template <class Record>
void write_numbers(Record &record, const Curve &from)
{
    std::copy(from.p.begin(), from.p.end(), record.p);
    std::copy(from.a.begin(), from.a.end(), record.a);
    std::copy(from.b.begin(), from.b.end(), record.b);
    std::copy(from.Gx.begin(), from.Gx.end(), record.Gx);
    std::copy(from.Gy.begin(), from.Gy.end(), record.Gy);
    std::copy(from.n.begin(), from.n.end(), record.n);
}

Key imported(const Curve &on, const BIGNUM *scalar, const EC_POINT *point)
{
    Bytes octets(1 + 2 * on.L);
    EC_POINT_point2oct(on.group.get(), point, POINT_CONVERSION_UNCOMPRESSED, octets.data(), octets.size(),
                       nullptr);
    Owned<OSSL_PARAM_BLD, OSSL_PARAM_BLD_free> builder(OSSL_PARAM_BLD_new());
    OSSL_PARAM_BLD_push_utf8_string(builder.get(), OSSL_PKEY_PARAM_GROUP_NAME, OBJ_nid2sn(on.id), 0);
    OSSL_PARAM_BLD_push_octet_string(builder.get(), OSSL_PKEY_PARAM_PUB_KEY, octets.data(), octets.size());
    OSSL_PARAM_BLD_push_BN(builder.get(), OSSL_PKEY_PARAM_PRIV_KEY, scalar);
    Owned<OSSL_PARAM, OSSL_PARAM_free> params(OSSL_PARAM_BLD_to_param(builder.get()));
    Owned<EVP_PKEY_CTX, EVP_PKEY_CTX_free> context(
        EVP_PKEY_CTX_new_from_name(nullptr, on.id == NID_sm2 ? "SM2" : "EC", nullptr));
    EVP_PKEY *key = nullptr;
    require(EVP_PKEY_fromdata_init(context.get()) == 1 &&
                EVP_PKEY_fromdata(context.get(), &key, EVP_PKEY_KEYPAIR, params.get()) == 1,
            "import a key");
    return Key(key);
}

}  // namespace

Bytes fixed_bytes(const std::string &label, size_t count)
{
    Bytes out;
    for (int block = 0; out.size() < count; ++block) {
        const std::string text = label + ' ' + std::to_string(block);
        uint8_t digest[32];
        require(EVP_Digest(text.data(), text.size(), digest, nullptr, EVP_sha256(), nullptr) == 1, "hash");
        out.insert(out.end(), digest, digest + sizeof digest);
    }
    out.resize(count);
    return out;
}

Number number_of(const Bytes &bytes)
{
    return Number(BN_bin2bn(bytes.data(), static_cast<int>(bytes.size()), nullptr));
}

mint mint_of(const Bytes &bytes)
{
    mint out;
    octetstring_to_mint(bytes.data(), static_cast<uint32_t>(bytes.size()), &out);
    return out;
}

Bytes bytes_of(const BIGNUM *value, size_t count)
{
    Bytes out(count);
    require(BN_bn2binpad(value, out.data(), static_cast<int>(count)) >= 0, "a number is too long");
    return out;
}

Bytes bytes_of(const mint &value, size_t count)
{
    Bytes out(count);
    uint32_t written = 0;
    const uint32_t size = static_cast<uint32_t>(count);
    require(mint_to_fixedlen_os(&value, size, size, &written, out.data()) == 0, "a number is too long");
    return out;
}

Curve::Curve(const std::string &wanted) : name(wanted)
{
    static const std::map<std::string, int> ids = {{"SM2", NID_sm2},
                                                   {"P-192", NID_X9_62_prime192v1},
                                                   {"P-224", NID_secp224r1},
                                                   {"P-256", NID_X9_62_prime256v1},
                                                   {"brainpoolP256r1", NID_brainpoolP256r1}};
    id = ids.at(wanted);
    group.reset(EC_GROUP_new_by_curve_name(id));
    require(group != nullptr, "OpenSSL does not have " + wanted);
    Number p_(BN_new()), a_(BN_new()), b_(BN_new()), x_(BN_new()), y_(BN_new());
    EC_GROUP_get_curve(group.get(), p_.get(), a_.get(), b_.get(), nullptr);
    EC_POINT_get_affine_coordinates(group.get(), EC_GROUP_get0_generator(group.get()), x_.get(), y_.get(),
                                    nullptr);
    L = static_cast<size_t>(BN_num_bytes(p_.get()));
    p = bytes_of(p_.get(), L);
    a = bytes_of(a_.get(), L);
    b = bytes_of(b_.get(), L);
    Gx = bytes_of(x_.get(), L);
    Gy = bytes_of(y_.get(), L);
    n = bytes_of(EC_GROUP_get0_order(group.get()), L);
}

CurvePara Curve::session_record() const
{
    CurvePara out{};
    write_numbers(out, *this);
    out.type = L == 24 ? 2 : L == 28 ? 3 : 4;
    out.hash_selector = hash();
    return out;
}

ecc_curve_bytes Curve::process_record() const
{
    ecc_curve_bytes out{};
    write_numbers(out, *this);
    out.type = L == 24 ? 0 : L == 28 ? 4 : 1;
    return out;
}

const Curve &curve(const std::string &name)
{
    static std::map<std::string, std::unique_ptr<const Curve>> known;
    std::unique_ptr<const Curve> &slot = known[name];
    if (!slot) slot = std::make_unique<const Curve>(name);
    return *slot;
}

void *session_on(const std::string &curve_name)
{
    static std::map<std::string, void *> sessions;
    void *&slot = sessions[curve_name];
    if (slot == nullptr) {
        const CurvePara record = curve(curve_name).session_record();
        require(ZOK_OpenSession(&slot, &record) == ZOK_OK, "open a session");
    }
    return slot;
}

void install(const std::string &curve_name)
{
    static std::string installed;
    if (installed == curve_name) return;
    const ecc_curve_bytes record = curve(curve_name).process_record();
    require(Curve_Init(&record) == 0, "install a curve");
    installed = curve_name;
}

KeyPair::KeyPair(const std::string &curve_name, const std::string &label) : on(curve(curve_name))
{
    const EC_GROUP *group = on.group.get();
    Scratch scratch(BN_CTX_new());
    Number wide = number_of(fixed_bytes("key " + curve_name + ' ' + label, on.L + 8)), scalar(BN_new());
    require(BN_mod(scalar.get(), wide.get(), EC_GROUP_get0_order(group), scratch.get()) == 1, "a key");
    Point Q(EC_POINT_new(group));
    Number x_(BN_new()), y_(BN_new());
    require(EC_POINT_mul(group, Q.get(), scalar.get(), nullptr, nullptr, scratch.get()) == 1 &&
                EC_POINT_get_affine_coordinates(group, Q.get(), x_.get(), y_.get(), scratch.get()) == 1,
            "a public key");
    d = bytes_of(scalar.get(), on.L);
    x = bytes_of(x_.get(), on.L);
    y = bytes_of(y_.get(), on.L);
    peer.reset(EC_KEY_new_by_curve_name(on.id));
    require(EC_KEY_set_private_key(peer.get(), scalar.get()) == 1 &&
                EC_KEY_set_public_key(peer.get(), Q.get()) == 1,
            "a key of the peer");
    peer_key = imported(on, scalar.get(), Q.get());
}

ECCrefPrivateKey KeyPair::session_private() const
{
    ECCrefPrivateKey out{};
    out.bits = static_cast<uint32_t>(8 * on.L);
    std::copy(d.begin(), d.end(), out.K);
    return out;
}

ECCrefPublicKey KeyPair::session_public() const
{
    ECCrefPublicKey out{};
    out.bits = static_cast<uint32_t>(8 * on.L);
    std::copy(x.begin(), x.end(), out.x);
    std::copy(y.begin(), y.end(), out.y);
    return out;
}

ecc_point_bytes KeyPair::point() const
{
    ecc_point_bytes out{};
    out.length = static_cast<uint32_t>(on.L);
    std::copy(x.begin(), x.end(), out.x);
    std::copy(y.begin(), y.end(), out.y);
    return out;
}

ecc_point KeyPair::affine() const
{
    ecc_point out{};
    out.x = mint_of(x);
    out.y = mint_of(y);
    return out;
}

}  // namespace zokecc_bench
