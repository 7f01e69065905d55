// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Every call that takes or makes a secret, under valgrind's memcheck and with the secrets marked as
// undefined: a jump or an address that depends on one is a report.
//
//     valgrind secrets_undefined       exits with 0 if no call is reported, and a planted jump is
//
// The private numbers, what is encrypted and what the kernel gives are secret. The library has to be built
// with ZOKECC_MEMCHECK, which makes its declassify() tell memcheck what is not.
#include <valgrind/memcheck.h>

#include <cstdio>
#include <cstring>

#include "tests/secrets/calls.h"
#include "tests/secrets/scene.h"
#include "tests/secrets/stand_ins.h"

namespace {

using namespace zokecc_test::secrets;

uint64_t secret_bytes = 0;
unsigned calls = 0, faults = 0;

void hide(void *bytes, size_t size) {
    (void)VALGRIND_MAKE_MEM_UNDEFINED(bytes, size);
    secret_bytes += size;
}
void show(void *bytes, size_t size) { (void)VALGRIND_MAKE_MEM_DEFINED(bytes, size); }

void hide(Party &party) {
    hide(party.bytes, scene.L);
    hide(party.private_record.K, scene.L);
}

unsigned reports() { return static_cast<unsigned>(VALGRIND_COUNT_ERRORS); }

void run(const Call &call, unsigned curve) {
    const Scene before = scene;
    hide(scene.own);
    hide(scene.own_temporary);
    hide(scene.message, sizeof scene.message);
    const unsigned reported = reports();
    uint32_t status = call.work();
    const unsigned found = reports() - reported;
    show(&status, sizeof status);
    show(&scene, sizeof scene);
    scene = before;
    ++calls;
    if (found == 0 && status == call.expected) return;
    ++faults;
    std::printf("%s on %s: %u reports, status %x\n", call.name, curve_names[curve], found, status);
}

// What memcheck has to see.
__attribute__((noinline)) int planted_jump(const volatile uint8_t *secret) {
    if (*secret == 3) return std::puts("planted");
    return 0;
}

bool sees_planted_jump() {
    const unsigned before = reports();
    uint8_t secret = 1;
    hide(&secret, 1);
    planted_jump(&secret);
    return reports() > before;
}

}  // namespace

int main() {
    if (RUNNING_ON_VALGRIND == 0) {
        std::puts("not under valgrind");
        return 2;
    }
    for (unsigned curve = 0; curve < 2; ++curve) {
        if (!install_curve(curve) || !make_secrets(curve + 1)) {
            std::puts("no scene");
            return 2;
        }
        show(&scene, sizeof scene);
        note_random = hide;
        for (const auto &list : {scheme_calls(), session_calls(), agreement_calls()})
            for (const Call &call : list) run(call, curve);
        note_random = nullptr;
    }
    const bool is_watching = sees_planted_jump();
    std::printf("%u calls with %llu secret bytes, %u of them with reports; the planted jump was %s\n", calls,
                static_cast<unsigned long long>(secret_bytes), faults, is_watching ? "seen" : "NOT SEEN");
    return faults == 0 && is_watching && calls > 80 ? 0 : 1;
}
