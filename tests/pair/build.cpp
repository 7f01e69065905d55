// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/pair/build.h"

#include <dlfcn.h>

#include <cstring>
#include <stdexcept>

namespace zokecc_test::pair {

namespace {

template <class Call>
void look_up(void *library, const char *name, Call &out) {
    void *const found = dlsym(library, name);
    if (found == nullptr) throw std::runtime_error(std::string("no ") + name);
    static_assert(sizeof found == sizeof out);
    std::memcpy(&out, &found, sizeof out);
}

void require(bool good, const char *what) {
    if (!good) throw std::runtime_error(what);
}

}  // namespace

const Curve kCurves[9] = {
    {"sm2p256v1", &zokecc_sm2p256v1, &zokecc_sm2p256v1_process},
    {"secp192r1", &zokecc_secp192r1, &zokecc_secp192r1_process},
    {"secp224r1", &zokecc_secp224r1, &zokecc_secp224r1_process},
    {"secp256r1", &zokecc_secp256r1, &zokecc_secp256r1_process},
    {"secp256k1", &zokecc_secp256k1, &zokecc_secp256k1_process},
    {"brainpoolP160r1", &zokecc_brainpoolP160r1, nullptr},
    {"brainpoolP192r1", &zokecc_brainpoolP192r1, &zokecc_brainpoolP192r1_process},
    {"brainpoolP224r1", &zokecc_brainpoolP224r1, &zokecc_brainpoolP224r1_process},
    {"brainpoolP256r1", &zokecc_brainpoolP256r1, &zokecc_brainpoolP256r1_process},
};

uint32_t Curve::L() const { return 16 + 4 * record->type; }

Build::Build(const std::string &path) {
    void *const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) throw std::runtime_error(dlerror());
#define ZOKECC_PAIR_LOOK_UP(name) look_up(library, #name, this->name);
    ZOKECC_PAIR_CALLS(ZOKECC_PAIR_LOOK_UP)
#undef ZOKECC_PAIR_LOOK_UP
}

Side::Side(const Build &build, const Curve &curve) : calls(build) {
    require(build.ZOK_OpenSession(&session, curve.record) == ZOK_OK, "a session");
    if (curve.process != nullptr) require(build.Curve_Init(curve.process) == 0, "the curve of the process");
}

Side::~Side() { calls.ZOK_CloseSession(session); }

Key::Key(const Side &maker, uint32_t L) {
    require(maker.calls.SDF_GenerateKeyPair_ECC(maker.session, ZOK_ALG_SM2_KEY, 8 * L, &pub, &priv) == ZOK_OK,
            "a key pair");
    std::memcpy(bytes, priv.K, L);
    scalar.length = L;
    std::memcpy(point.x, pub.x, L);
    std::memcpy(point.y, pub.y, L);
    point.length = L;
}

}  // namespace zokecc_test::pair
