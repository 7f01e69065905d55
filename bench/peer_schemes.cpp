// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "bench/peer_schemes.h"

#include <openssl/ecdh.h>

namespace zokecc_bench {

namespace {

using KeyContext = Owned<EVP_PKEY_CTX, EVP_PKEY_CTX_free>;
using HashContext = Owned<EVP_MD_CTX, EVP_MD_CTX_free>;
using Algorithm = Owned<EVP_MD, EVP_MD_free>;

// A key with a context for one kind of call, and buffers for the results.
struct Use {
    Use(const SharedKey &with, int (*init)(EVP_PKEY_CTX *))
        : key(with),
          context(EVP_PKEY_CTX_new(with->peer_key.get(), nullptr)),
          algorithm(EVP_MD_fetch(nullptr, key->on.hash() == HASH_ALG_SM3 ? "SM3" : "SHA256", nullptr)),
          hashing(EVP_MD_CTX_new())
    {
        require(init(context.get()) == 1, "set up a key");
    }

    bool hash(const Bytes &prefix, const Bytes &message)
    {
        return EVP_DigestInit_ex2(hashing.get(), algorithm.get(), nullptr) == 1 &&
               EVP_DigestUpdate(hashing.get(), prefix.data(), prefix.size()) == 1 &&
               EVP_DigestUpdate(hashing.get(), message.data(), message.size()) == 1 &&
               EVP_DigestFinal_ex(hashing.get(), digest.data(), nullptr) == 1;
    }
    bool sign()
    {
        size = out.size();
        return EVP_PKEY_sign(context.get(), out.data(), &size, digest.data(), digest.size()) == 1;
    }
    bool verify() const
    {
        return EVP_PKEY_verify(context.get(), signature.data(), signature.size(), digest.data(),
                               digest.size()) == 1;
    }

    SharedKey key;
    KeyContext context;
    Algorithm algorithm;
    HashContext hashing;
    Bytes digest = Bytes(32), signature, out = Bytes(512);
    size_t size = 0;
};

std::shared_ptr<Use> verifier(const SharedKey &key, const Bytes &digest)
{
    Use signer(key, EVP_PKEY_sign_init);
    signer.digest = digest;
    require(signer.sign(), "sign");
    const auto use = std::make_shared<Use>(key, EVP_PKEY_verify_init);
    use->digest = digest;
    use->signature.assign(signer.out.begin(), signer.out.begin() + static_cast<std::ptrdiff_t>(signer.size));
    return use;
}

// Hash and sign in one call, with an identity that the context keeps.
struct IdentityUse {
    IdentityUse(const SharedKey &with, const Bytes &id)
        : key(with), context(EVP_PKEY_CTX_new(with->peer_key.get(), nullptr)), hashing(EVP_MD_CTX_new())
    {
        require(EVP_PKEY_CTX_set1_id(context.get(), id.data(), static_cast<int>(id.size())) == 1, "identity");
        EVP_MD_CTX_set_pkey_ctx(hashing.get(), context.get());
    }

    bool sign(const Bytes &message)
    {
        size = out.size();
        return EVP_DigestSignInit(hashing.get(), nullptr, EVP_sm3(), nullptr, key->peer_key.get()) == 1 &&
               EVP_DigestSign(hashing.get(), out.data(), &size, message.data(), message.size()) == 1;
    }
    bool verify(const Bytes &message)
    {
        return EVP_DigestVerifyInit(hashing.get(), nullptr, EVP_sm3(), nullptr, key->peer_key.get()) == 1 &&
               EVP_DigestVerify(hashing.get(), out.data(), size, message.data(), message.size()) == 1;
    }

    SharedKey key;
    KeyContext context;
    HashContext hashing;
    Bytes out = Bytes(128);
    size_t size = 0;
};

// The two products of encryption by multiplication, and their operands.
struct Multiplying {
    explicit Multiplying(const SharedKey &with, const Bytes &message)
        : key(with),
          group(key->on.group.get()),
          shared(EC_POINT_new(group)),
          temporary(EC_POINT_new(group)),
          text(number_of(message)),
          p(number_of(key->on.p)),
          k(BN_new()),
          x(BN_new()),
          y(BN_new()),
          cipher(BN_new()),
          plain(BN_new()),
          scratch(BN_CTX_new())
    {
    }

    bool to_affine(const EC_POINT *point)
    {
        return EC_POINT_get_affine_coordinates(group, point, x.get(), y.get(), scratch.get()) == 1;
    }
    bool encrypt()
    {
        BN_CTX *room = scratch.get();
        return BN_priv_rand_range(k.get(), EC_GROUP_get0_order(group)) == 1 &&
               EC_POINT_mul(group, temporary.get(), k.get(), nullptr, nullptr, room) == 1 &&
               to_affine(temporary.get()) &&
               EC_POINT_mul(group, shared.get(), nullptr, EC_KEY_get0_public_key(key->peer.get()), k.get(),
                            room) == 1 &&
               to_affine(shared.get()) && BN_mod_mul(cipher.get(), text.get(), x.get(), p.get(), room) == 1;
    }
    bool decrypt()
    {
        BN_CTX *room = scratch.get();
        return EC_POINT_mul(group, shared.get(), nullptr, temporary.get(),
                            EC_KEY_get0_private_key(key->peer.get()), room) == 1 &&
               to_affine(shared.get()) && BN_mod_inverse(y.get(), x.get(), p.get(), room) != nullptr &&
               BN_mod_mul(plain.get(), cipher.get(), y.get(), p.get(), room) == 1 &&
               BN_cmp(plain.get(), text.get()) == 0;
    }

    SharedKey key;
    const EC_GROUP *group;
    Point shared, temporary;
    Number text, p, k, x, y, cipher, plain;
    Scratch scratch;
};

}  // namespace

Loop peer_make_key(const std::string &curve_name)
{
    const std::shared_ptr<EC_KEY> key(EC_KEY_new_by_curve_name(curve(curve_name).id), EC_KEY_free);
    return repeat([key] { return EC_KEY_generate_key(key.get()) == 1; });
}

Loop peer_sign(const SharedKey &key, const Bytes &digest)
{
    const auto use = std::make_shared<Use>(key, EVP_PKEY_sign_init);
    use->digest = digest;
    return repeat([use] { return use->sign(); });
}

Loop peer_verify(const SharedKey &key, const Bytes &digest)
{
    const auto use = verifier(key, digest);
    return repeat([use] { return use->verify(); });
}

Loop peer_hash_and_sign(const SharedKey &key, const Bytes &prefix, const Bytes &message)
{
    const auto use = std::make_shared<Use>(key, EVP_PKEY_sign_init);
    return repeat([use, prefix, message] { return use->hash(prefix, message) && use->sign(); });
}

Loop peer_hash_and_verify(const SharedKey &key, const Bytes &prefix, const Bytes &message)
{
    Use hashing(key, EVP_PKEY_sign_init);
    require(hashing.hash(prefix, message), "hash");
    const auto use = verifier(key, hashing.digest);
    return repeat([use, prefix, message] { return use->hash(prefix, message) && use->verify(); });
}

Loop peer_sign_for(const SharedKey &key, const Bytes &id, const Bytes &message)
{
    const auto use = std::make_shared<IdentityUse>(key, id);
    require(use->sign(message) && use->verify(message), "sign and verify");
    return repeat([use, message] { return use->sign(message); });
}

Loop peer_verify_for(const SharedKey &key, const Bytes &id, const Bytes &message)
{
    const auto use = std::make_shared<IdentityUse>(key, id);
    require(use->sign(message), "sign");
    return repeat([use, message] { return use->verify(message); });
}

Loop peer_encrypt(const SharedKey &key, const Bytes &message)
{
    const auto use = std::make_shared<Use>(key, EVP_PKEY_encrypt_init);
    return repeat([use, message] {
        use->size = use->out.size();
        return EVP_PKEY_encrypt(use->context.get(), use->out.data(), &use->size, message.data(),
                                message.size()) == 1;
    });
}

Loop peer_decrypt(const SharedKey &key, const Bytes &message)
{
    Use sender(key, EVP_PKEY_encrypt_init);
    sender.size = sender.out.size();
    require(EVP_PKEY_encrypt(sender.context.get(), sender.out.data(), &sender.size, message.data(),
                             message.size()) == 1,
            "encrypt");
    const Bytes cipher(sender.out.begin(), sender.out.begin() + static_cast<std::ptrdiff_t>(sender.size));
    const auto use = std::make_shared<Use>(key, EVP_PKEY_decrypt_init);
    return repeat([use, cipher] {
        use->size = use->out.size();
        return EVP_PKEY_decrypt(use->context.get(), use->out.data(), &use->size, cipher.data(),
                                cipher.size()) == 1;
    });
}

Loop peer_agree(const SharedKey &own, const SharedKey &other, const std::shared_ptr<Bytes> &out)
{
    out->resize(own->on.L);
    return repeat([own, other, out] {
        return ECDH_compute_key(out->data(), out->size(), EC_KEY_get0_public_key(other->peer.get()),
                                own->peer.get(), nullptr) == static_cast<int>(out->size());
    });
}

Loop peer_multiply_encrypt(const SharedKey &key, const Bytes &message)
{
    const auto use = std::make_shared<Multiplying>(key, message);
    return repeat([use] { return use->encrypt(); });
}

Loop peer_multiply_decrypt(const SharedKey &key, const Bytes &message)
{
    const auto use = std::make_shared<Multiplying>(key, message);
    require(use->encrypt() && use->decrypt(), "decrypt");
    return repeat([use] { return use->decrypt(); });
}

}  // namespace zokecc_bench
