// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// libgcrypt: hashes of a whole message, points through its big-integer interface, ECDSA through its
// S-expressions, which are built beforehand.
#include <gcrypt.h>

#include <memory>

#include "bench/other_peers.h"

namespace zokecc_bench {

namespace {

template <auto Free>
struct Release {
    template <class T>
    void operator()(T *object) const
    {
        Free(object);
    }
};
using Expression = std::unique_ptr<gcry_sexp, Release<gcry_sexp_release>>;
using Integer = std::unique_ptr<gcry_mpi, Release<gcry_mpi_release>>;
using Point = std::unique_ptr<gcry_mpi_point, Release<gcry_mpi_point_release>>;
using Context = std::unique_ptr<gcry_context, Release<gcry_ctx_release>>;

// Must be called before anything else.
std::string started()
{
    const std::string version = gcry_check_version(nullptr);
    gcry_control(GCRYCTL_DISABLE_SECMEM, 0);
    gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
    return "libgcrypt " + version;
}

Integer integer(const Bytes &bytes)
{
    gcry_mpi_t value = nullptr;
    require(gcry_mpi_scan(&value, GCRYMPI_FMT_USG, bytes.data(), bytes.size(), nullptr) == 0, "a number");
    return Integer(value);
}

template <class... Arguments>
Expression expression(const char *format, Arguments... arguments)
{
    gcry_sexp_t built = nullptr;
    require(gcry_sexp_build(&built, nullptr, format, arguments...) == 0, format);
    return Expression(built);
}

Loop hash(int algorithm, const Bytes &message, const Bytes &expected)
{
    const auto digest = std::make_shared<Bytes>(expected.size());
    Loop loop = repeat([=] {
        gcry_md_hash_buffer(algorithm, digest->data(), message.data(), message.size());
        return true;
    });
    loop(1);
    require(*digest == expected, "the two sides differ");
    return loop;
}

Loop sm3(size_t size)
{
    const Bytes message = peer_message(size);
    return hash(GCRY_MD_SM3, message, sm3_of(message));
}

Loop sha256(size_t size)
{
    const Bytes message = peer_message(size);
    return hash(GCRY_MD_SHA256, message, sha256_of(message));
}

struct Points {
    explicit Points(const char *curve_name)
        : out(gcry_mpi_point_new(0)), x(gcry_mpi_new(0)), y(gcry_mpi_new(0))
    {
        gcry_ctx_t made = nullptr;
        require(gcry_mpi_ec_new(&made, nullptr, curve_name) == 0, curve_name);
        context.reset(made);
        G.reset(gcry_mpi_ec_get_point("g", made, 1));
    }
    // The point of a key.
    Point point(const KeyNumbers &key) const
    {
        Point made(gcry_mpi_point_new(0));
        gcry_mpi_point_set(made.get(), integer(key.x).get(), integer(key.y).get(), GCRYMPI_CONST_ONE);
        return made;
    }

    Context context;
    Point G, out;
    Integer x, y;
};

Loop product(const std::shared_ptr<Points> &s, const std::shared_ptr<gcry_mpi_point> &P, const Bytes &scalar,
             const Bytes &expected)
{
    const std::shared_ptr<gcry_mpi> k = integer(scalar);
    Loop loop = repeat([=] {
        gcry_mpi_ec_mul(s->out.get(), k.get(), P.get(), s->context.get());
        return gcry_mpi_ec_get_affine(s->x.get(), s->y.get(), s->out.get(), s->context.get()) == 0;
    });
    loop(1);
    require(gcry_mpi_cmp(s->x.get(), integer(expected).get()) == 0, "the two sides differ");
    return loop;
}

Loop base_point_multiple(const char *theirs, const char *ours)
{
    const auto s = std::make_shared<Points>(theirs);
    const KeyNumbers other = key_numbers(ours, "other");
    return product(s, {s, s->G.get()}, other.d, other.x);
}

Loop point_multiple(const char *theirs, const char *ours)
{
    const auto s = std::make_shared<Points>(theirs);
    return product(s, s->point(key_numbers(ours)), key_numbers(ours, "other").d, shared_x(ours));
}

// Deterministic nonces (RFC 6979): drawing them would measure libgcrypt's strong generator.
struct Ecdsa {
    Ecdsa(const char *theirs, const char *ours) : message(peer_message(kSignedMessage))
    {
        const KeyNumbers key = key_numbers(ours);
        Bytes q = {4};
        q.insert(q.end(), key.x.begin(), key.x.end());
        q.insert(q.end(), key.y.begin(), key.y.end());
        const int q_size = static_cast<int>(q.size());
        priv = expression("(private-key (ecc (curve %s) (q %b) (d %b)))", theirs, q_size, q.data(),
                          static_cast<int>(key.d.size()), key.d.data());
        pub = expression("(public-key (ecc (curve %s) (q %b)))", theirs, q_size, q.data());
    }
    Expression digest() const
    {
        uint8_t bytes[32];
        gcry_md_hash_buffer(GCRY_MD_SHA256, bytes, message.data(), message.size());
        return expression("(data (flags rfc6979) (hash sha256 %b))", 32, bytes);
    }
    bool sign()
    {
        gcry_sexp_t made = nullptr;
        const bool good = gcry_pk_sign(&made, digest().get(), priv.get()) == 0;
        signature.reset(made);
        return good;
    }
    bool verify() const { return gcry_pk_verify(signature.get(), digest().get(), pub.get()) == 0; }

    Bytes message;
    Expression priv, pub, signature;
};

Loop ecdsa_sign(const char *theirs, const char *ours)
{
    const auto s = std::make_shared<Ecdsa>(theirs, ours);
    require(s->sign() && s->verify(), "sign");
    return repeat([s] { return s->sign(); });
}

Loop ecdsa_verify(const char *theirs, const char *ours)
{
    const auto s = std::make_shared<Ecdsa>(theirs, ours);
    require(s->sign(), "sign");
    return repeat([s] { return s->verify(); });
}

constexpr char kName[] = "libgcrypt";

const RegisterPeers peers{
    started(),
    {
        {"sm3_64", kName, [] { return sm3(kShortMessage); }},
        {"sm3_16384", kName, [] { return sm3(kLongMessage); }},
        {"sha256_64", kName, [] { return sha256(kShortMessage); }},
        {"sha256_16384", kName, [] { return sha256(kLongMessage); }},
        {"fixed_point_mul_sm2", kName, [] { return base_point_multiple("sm2p256v1", "SM2"); }},
        {"fixed_point_mul_p256", kName, [] { return base_point_multiple("NIST P-256", "P-256"); }},
        {"point_mul_sm2", kName, [] { return point_multiple("sm2p256v1", "SM2"); }},
        {"point_mul_p256", kName, [] { return point_multiple("NIST P-256", "P-256"); }},
        {"ecdsa_sign_p256", kName, [] { return ecdsa_sign("NIST P-256", "P-256"); }},
        {"ecdsa_verify_p256", kName, [] { return ecdsa_verify("NIST P-256", "P-256"); }},
        {"ecdsa_sign_p192", kName, [] { return ecdsa_sign("NIST P-192", "P-192"); }},
        {"ecdsa_verify_p192", kName, [] { return ecdsa_verify("NIST P-192", "P-192"); }},
        {"ecdsa_sign_p224", kName, [] { return ecdsa_sign("NIST P-224", "P-224"); }},
        {"ecdsa_verify_p224", kName, [] { return ecdsa_verify("NIST P-224", "P-224"); }},
    }};

}  // namespace

}  // namespace zokecc_bench
