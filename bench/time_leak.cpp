// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Tests whether the time of an operation reveals its private key: Welch's t between runs with one fixed
// key and runs with random keys, after O. Reparaz, J. Balasch and I. Verbauwhede, "Dude, is my code constant
// time?" (2017).
//
//     time_leak sign|decrypt|agree [RUNS]        by default a million runs
//
// Prints a row of a table: the operation, the build, the runs, and the greatest |t| over all times and those
// below twenty percentiles. All public data is the same in all runs; the kind of each run is drawn at
// random. Above 4.5 the times differ. The exit status is 0 for any t.
#include <zokecc/curves.h>
#include <zokecc/ecc.h>
#include <zokecc/hash.h>
#include <zokecc/sdf.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#ifdef __x86_64__
#include <x86intrin.h>
#endif

#include "base/config.h"
#include "bench/operation.h"

namespace {

using zokecc_bench::require;

constexpr uint32_t kL = 32;
constexpr size_t kKeys = 1024;   // random keys, used in turn
constexpr size_t kBatch = 4096;  // runs prepared before they are measured
constexpr unsigned kCrops = 20;
constexpr double kEnough = 10000;  // runs of each kind below a percentile

// The processor's cycle counter, serialised with the instructions before and after.
uint64_t ticks()
{
#ifdef __x86_64__
    _mm_lfence();
    const uint64_t now = __rdtsc();
    _mm_lfence();
    return now;
#else
    return static_cast<uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
#endif
}

// A private key with a ciphertext for it.
struct Case {
    ECCrefPrivateKey priv;
    uint8_t flat[1 + 2 * kL + kL + 32];
};

struct Slot {
    Case input;
    bool is_fixed;
};

// Running mean and variance.
class Moments {
public:
    void add(double value)
    {
        ++count_;
        const double off = value - mean_;
        mean_ += off / count_;
        squares_ += off * (value - mean_);
    }
    double count() const { return count_; }
    double mean() const { return mean_; }
    double variance_of_mean() const { return squares_ / (count_ - 1) / count_; }

private:
    double count_ = 0;
    double mean_ = 0;
    double squares_ = 0;
};

// Both kinds of runs, restricted to those within a time limit.
struct Comparison {
    double limit;
    Moments of[2];

    void add(double value, bool is_fixed)
    {
        if (value <= limit) of[is_fixed ? 1 : 0].add(value);
    }
    double t() const
    {
        if (std::min(of[0].count(), of[1].count()) < kEnough) return 0;
        return (of[1].mean() - of[0].mean()) / std::sqrt(of[0].variance_of_mean() + of[1].variance_of_mean());
    }
};

mint number(const uint8_t *bytes)
{
    mint out{};
    octetstring_to_mint(bytes, kL, &out);
    return out;
}

void put(const mint &value, uint8_t *out)
{
    uint32_t written = 0;
    mint_to_fixedlen_os(&value, kL, kL, &written, out);
}

class Measured {
public:
    Measured()
    {
        require(ZOK_OpenSession(&session_, &zokecc_sm2p256v1) == ZOK_OK, "a session");
        peer_ = made_key(nullptr);
        std::memset(digest_, 0x5A, sizeof digest_);
    }

    // A new key pair, and a ciphertext of the digest for it with the peer's point as C1. For one key
    // in some hundred thousand the product is wrong, and the hardened build refuses the ciphertext.
    Case made_case()
    {
        Case out{};
        do {
            made_key(&out.priv);
            seal(product(number(out.priv.K)), out.flat);
        } while (!decrypt(out));
        return out;
    }

    bool sign(const Case &with)
    {
        return SDF_ExternalSign_ECC(session_, ZOK_ALG_SM2_SIGN, &with.priv, digest_, kL, &sig_) == ZOK_OK;
    }
    bool decrypt(const Case &with)
    {
        uint32_t size = 0;
        return ZOK_ExternalDecrypt_ECC(session_, &with.priv, with.flat, sizeof with.flat, plain_, &size) ==
               ZOK_OK;
    }
    bool agree(const Case &with)
    {
        return ZOK_ExternalEcdhKeyAgreement(session_, &with.priv, &peer_, plain_) == ZOK_OK;
    }

private:
    ECCrefPublicKey made_key(ECCrefPrivateKey *priv)
    {
        ECCrefPublicKey pub;
        ECCrefPrivateKey spare;
        require(SDF_GenerateKeyPair_ECC(session_, ZOK_ALG_SM2_KEY, 8 * kL, &pub,
                                        priv != nullptr ? priv : &spare) == ZOK_OK,
                "a key pair");
        return pub;
    }

    // The product with the peer's point.
    ecc_point product(const mint &d) const
    {
        const mint p = number(zokecc_sm2p256v1.p);
        const mint a = number(zokecc_sm2p256v1.a);
        const mint b = number(zokecc_sm2p256v1.b);
        const ecc_point peer = {0, number(peer_.x), number(peer_.y)};
        ecc_point out{};
        require(ecc_unknown_point_mul(&d, &peer, &a, &b, &p, &out) == 1, "a product");
        return out;
    }

    // GB/T 32918.4 for a message of one block.
    void seal(const ecc_point &shared, uint8_t *flat) const
    {
        uint8_t input[3 * kL];
        uint8_t *const C2 = flat + 1 + 2 * kL;
        flat[0] = 4;
        std::memcpy(flat + 1, peer_.x, kL);
        std::memcpy(flat + 1 + kL, peer_.y, kL);
        put(shared.x, input);
        put(shared.y, input + kL);
        const uint8_t counter[4] = {0, 0, 0, 1};
        std::memcpy(input + 2 * kL, counter, sizeof counter);
        hash(input, 2 * kL + 4, C2);
        for (uint32_t i = 0; i < kL; ++i) C2[i] ^= digest_[i];
        std::memcpy(input + kL, digest_, kL);
        put(shared.y, input + 2 * kL);
        hash(input, 3 * kL, C2 + kL);
    }
    static void hash(const uint8_t *bytes, uint32_t size, uint8_t *out)
    {
        const hash_msg message = {HASH_ALG_SM3, bytes, 0, size};
        hash_byte(&message, out);
    }

    void *session_ = nullptr;
    ECCrefPublicKey peer_;
    uint8_t digest_[kL];
    uint8_t plain_[2 * kL];
    ECCSignature sig_;
};

using Call = bool (Measured::*)(const Case &);

class Experiment {
public:
    explicit Experiment(Call call) : call_(call), fixed_(measured_.made_case()), slots_(kBatch)
    {
        for (size_t i = 0; i < kKeys; ++i) random_.push_back(measured_.made_case());
    }

    void run(uint64_t runs)
    {
        std::vector<double> first;
        batch([&](double time, bool) { first.push_back(time); });
        batch([&](double time, bool) { first.push_back(time); });
        set_limits(first);
        for (done_ = 0; done_ < runs; done_ += kBatch)
            batch([&](double time, bool is_fixed) {
                for (Comparison &one : comparisons_) one.add(time, is_fixed);
            });
    }

    uint64_t done() const { return done_; }
    // The greatest |t|.
    double worst() const
    {
        double out = 0;
        for (const Comparison &one : comparisons_) out = std::max(out, std::fabs(one.t()));
        return out;
    }

private:
    template <class Take>
    void batch(const Take &take)
    {
        for (Slot &slot : slots_) {
            const uint64_t drawn = generator_();
            slot.is_fixed = (drawn & 1) != 0;
            const Case &other = random_[(drawn >> 1) % kKeys];
            slot.input = slot.is_fixed ? fixed_ : other;
        }
        for (const Slot &slot : slots_) {
            const uint64_t start = ticks();
            const bool good = (measured_.*call_)(slot.input);
            const uint64_t end = ticks();
            require(good, "a call failed");
            take(static_cast<double>(end - start), slot.is_fixed);
        }
    }

    // No limit, then twenty percentiles that approach the maximum.
    void set_limits(std::vector<double> &times)
    {
        std::sort(times.begin(), times.end());
        comparisons_.push_back({HUGE_VAL, {}});
        for (unsigned i = 1; i <= kCrops; ++i) {
            const double above = std::pow(0.5, 10.0 * i / kCrops) * static_cast<double>(times.size());
            comparisons_.push_back({times[times.size() - 1 - static_cast<size_t>(above)], {}});
        }
    }

    Measured measured_;
    Call call_;
    Case fixed_;
    std::vector<Case> random_;
    std::vector<Slot> slots_;
    std::vector<Comparison> comparisons_;
    std::mt19937_64 generator_{std::random_device{}()};
    uint64_t done_ = 0;
};

struct Operation {
    const char *name, *what;
    Call call;
};
const Operation operations[] = {{"sign", "SM2 signature", &Measured::sign},
                                {"decrypt", "SM2 decryption", &Measured::decrypt},
                                {"agree", "Diffie-Hellman", &Measured::agree}};

int report(const Operation &operation, uint64_t runs)
{
    Experiment experiment(operation.call);
    experiment.run(runs);
    std::printf("| %s | %s | %llu | %.1f |\n", operation.what, zokecc::kHardened ? "hardened" : "default",
                static_cast<unsigned long long>(experiment.done()), experiment.worst());
    return 0;
}

}  // namespace

int main(int argc, char **argv)
{
    const std::string wanted = argc > 1 ? argv[1] : "";
    const uint64_t runs = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1000000;
    for (const Operation &operation : operations) {
        if (operation.name != wanted || argc > 3 || runs == 0) continue;
        try {
            return report(operation, runs);
        } catch (const std::exception &failure) {
            std::fprintf(stderr, "time_leak: %s\n", failure.what());
            return 1;
        }
    }
    std::fputs("usage: time_leak sign|decrypt|agree [RUNS]\n", stderr);
    return 2;
}
