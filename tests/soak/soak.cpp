// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Signs and verifies, opens and closes sessions, as often as requested, and compares the memory that
// remains allocated with what is documented: one digit buffer for each verification, and in the
// hardened build nothing.
//
//     soak ROUNDS SESSIONS
//
// The kept borrow rule applies if two words are equal under a borrow. Multiplying a point
// other than the base point subtracts some ten thousand pairs of words, and two random ones are equal
// once in 2^32, so about one signature in two hundred thousand does not verify. Those are printed, for
// examination, and counted; more of them than expected by chance are a failure.
#include <zokecc/zokecc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/soak/memory_count.h"

namespace {

using zokecc_soak::arena_in_use;
using zokecc_soak::memory_in_use;
using zokecc_soak::MemoryCount;

#ifdef ZOKECC_HARDENED
constexpr const char *kBuild = "hardened";
constexpr size_t kBuffersOfAProduct = 0;
#else
constexpr const char *kBuild = "default";
constexpr size_t kBuffersOfAProduct = 1;
#endif

constexpr size_t kLongestDigitBuffer = 257;  // a scalar of 256 bits, and one
// What the C library adds to a block, including the counting, and what it uses itself.
constexpr size_t kOverhead = 48, kArenaSlack = 64 * 1024;
constexpr uint32_t kL = 32;
constexpr unsigned long kRoundsOfARefusal = 20000, kRefusalsOfChance = 5;

const CurvePara &curve = zokecc_sm2p256v1;
const ecc_curve_bytes &process_curve = zokecc_sm2p256v1_process;

[[noreturn]] void fail(const char *what, unsigned long round) {
    std::fprintf(stderr, "soak: %s in round %lu\n", what, round);
    std::exit(EXIT_FAILURE);
}

void require(bool condition, const char *what, unsigned long round) {
    if (!condition) fail(what, round);
}

void print_number(const char *name, const uint8_t *bytes) {
    std::fprintf(stderr, "%s ", name);
    for (uint32_t i = 0; i < kL; ++i) std::fprintf(stderr, "%02x", unsigned{bytes[i]});
    std::fputc('\n', stderr);
}

// Every kind of signature in turn, of a message that contains the round.
class Signer {
public:
    Signer() {
        ecc_curve_bytes record = process_curve;
        require(ZOK_OpenSession(&session_, &curve) == ZOK_OK, "no session", 0);
        require(Curve_Init(&record) == 0, "no curve", 0);
        require(SDF_GenerateKeyPair_ECC(session_, ZOK_ALG_SM2_KEY, 8 * kL, &pub_, &priv_) == ZOK_OK, "no key",
                0);
        std::memcpy(point_.x, pub_.x, kL);
        std::memcpy(point_.y, pub_.y, kL);
        point_.length = kL;
        scalar_ = {priv_.K, kL};
    }
    ~Signer() { ZOK_CloseSession(session_); }
    Signer(const Signer &) = delete;
    Signer &operator=(const Signer &) = delete;

    unsigned long refusals() const { return refusals_; }

    void sign_and_verify(unsigned long round) {
        for (unsigned i = 0; i < sizeof round; ++i) message_[i] = static_cast<uint8_t>(round >> (8 * i));
        switch (round % 4) {
        case 0: return by_session(ZOK_ALG_SM2_SIGN, round);
        case 1: return by_session(ZOK_ALG_ECDSA_SIGN, round);
        case 2: return by_sm2(round);
        default: return by_ecdsa(round);
        }
    }

private:
    void note_verdict(bool valid, const char *kind, const uint8_t *r, const uint8_t *s) {
        if (valid) return;
        ++refusals_;
        std::fprintf(stderr, "%s does not verify:\n", kind);
        print_number("  private key", priv_.K);
        print_number("  message", message_);
        print_number("  r", r);
        print_number("  s", s);
    }
    void by_session(uint32_t algorithm, unsigned long round) {
        ECCSignature sig;
        require(SDF_ExternalSign_ECC(session_, algorithm, &priv_, message_, kL, &sig) == ZOK_OK,
                "no signature", round);
        note_verdict(SDF_ExternalVerify_ECC(session_, algorithm, &pub_, message_, kL, &sig) == ZOK_OK,
                     algorithm == ZOK_ALG_SM2_SIGN ? "SM2 over a value" : "ECDSA over a value", sig.r, sig.s);
    }
    void by_sm2(unsigned long round) {
        const sm3_msg text = {message_, 0, kL};
        ecc_point_bytes sig{};
        require(sm2_DigitalSign(&scalar_, &text, Z_, &sig, HASH_ALG_SM3) == 0, "no SM2 signature", round);
        note_verdict(sm2_DigitalVeriy(&point_, &text, &sig, Z_, HASH_ALG_SM3) == 0,
                     "SM2 over Z and a message", sig.x, sig.y);
    }
    void by_ecdsa(unsigned long round) {
        const sm3_msg text = {message_, 0, kL};
        ecc_point_bytes sig{};
        require(Ecdsa_DigitalSign(&scalar_, &text, &sig, HASH_ALG_SHA256) == 0, "no ECDSA signature", round);
        note_verdict(Ecdsa_DigitalVeriy(&point_, &text, &sig, HASH_ALG_SHA256) == 1, "ECDSA over a message",
                     sig.x, sig.y);
    }

    void *session_ = nullptr;
    ECCrefPublicKey pub_{};
    ECCrefPrivateKey priv_{};
    ecc_point_bytes point_{};
    ecc_scalar scalar_{};
    uint8_t message_[kL] = {};
    uint8_t Z_[kL] = {1, 2, 3};
    unsigned long refusals_ = 0;
};

// A session without a device, or with one opened for it, and a signature in it.
void open_and_close(unsigned long round) {
    const bool on_a_device = round % 2 == 1;
    void *device = nullptr, *session = nullptr;
    if (on_a_device) {
        require(SDF_OpenDevice(&device) == ZOK_OK, "no device", round);
        require(SDF_OpenSession(device, &session) == ZOK_OK, "no session on a device", round);
        require(ZOK_CurveParaCfg(session, curve.type, &curve) == ZOK_OK, "no curve", round);
    } else {
        require(ZOK_OpenSession(&session, &curve) == ZOK_OK, "no session", round);
    }
    ECCrefPublicKey pub;
    ECCrefPrivateKey priv;
    require(SDF_GenerateKeyPair_ECC(session, ZOK_ALG_SM2_KEY, 8 * kL, &pub, &priv) == ZOK_OK, "no key",
            round);
    if (on_a_device) {
        require(SDF_CloseSession(session) == ZOK_OK, "a session that stays open", round);
        require(SDF_CloseDevice(device) == ZOK_OK, "a device that stays open", round);
    } else {
        require(ZOK_CloseSession(session) == ZOK_OK, "a session that stays open", round);
    }
}

// Runs the rounds; after each the library may hold exactly `kept` more blocks than before. In
// the end the C library's arena must agree.
template <class Work>
void soak(const char *name, unsigned long rounds, size_t kept, const Work &work) {
    const MemoryCount before = memory_in_use();
    const size_t arena_before = arena_in_use();
    const auto start = std::chrono::steady_clock::now();
    std::fflush(stdout);
    for (unsigned long round = 0; round < rounds; ++round) {
        const MemoryCount last = memory_in_use();
        work(round);
        const MemoryCount now = memory_in_use();
        require(now.blocks == last.blocks + kept, "memory stays allocated", round);
        require(now.bytes - last.bytes <= kept * kLongestDigitBuffer, "memory stays that is no digit buffer",
                round);
    }
    const MemoryCount after = memory_in_use();
    const size_t arena_after = arena_in_use();
    require(arena_after <= arena_before + rounds * kept * (kLongestDigitBuffer + kOverhead) + kArenaSlack,
            "the arena grows", rounds);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%s build, %s: %lu rounds in %.1f s, %.3f ms each; blocks %+ld, bytes %+ld, arena %+ld\n",
                kBuild, name, rounds, seconds.count(),
                1000 * seconds.count() / static_cast<double>(std::max(rounds, 1ul)),
                static_cast<long>(after.blocks - before.blocks),
                static_cast<long>(after.bytes - before.bytes), static_cast<long>(arena_after - arena_before));
}

}  // namespace

int main(int count, char **arguments) {
    if (count != 3) {
        std::fputs("soak ROUNDS SESSIONS\n", stderr);
        return 2;
    }
    const unsigned long rounds = std::strtoul(arguments[1], nullptr, 10);
    const unsigned long sessions = std::strtoul(arguments[2], nullptr, 10);
    {
        Signer signer;
        soak("sign and verify", rounds, kBuffersOfAProduct,
             [&](unsigned long round) { signer.sign_and_verify(round); });
        std::printf("%lu of %lu signatures did not verify\n", signer.refusals(), rounds);
        require(signer.refusals() <= kRefusalsOfChance + rounds / kRoundsOfARefusal, "too many refusals",
                rounds);
    }
    soak("open and close", sessions, 0, open_and_close);
    return EXIT_SUCCESS;
}
