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

Build::Build(const std::string &path) {
    void *const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) throw std::runtime_error(dlerror());
#define ZOKECC_PAIR_LOOK_UP(name) look_up(library, #name, this->name);
    ZOKECC_PAIR_CALLS(ZOKECC_PAIR_LOOK_UP)
#undef ZOKECC_PAIR_LOOK_UP
}

Side::Side(const Build &build, const ReadyCurve &curve) : calls(build) {
    require(build.ZOK_OpenSession(&session, curve.session) == ZOK_OK, "a session");
    if (curve.process != nullptr) require(build.Curve_Init(curve.process) == 0, "the process-wide curve");
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
