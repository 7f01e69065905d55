// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Runs every call that takes or makes a secret under valgrind's memcheck with the secrets marked as
// undefined: a branch or an address that depends on one is reported.
//
//     valgrind secrets_undefined       exits with 0 if no call is reported, and a planted branch is
//
// Built with clang's memory sanitizer it runs alone. The private numbers, the plaintexts and the kernel's
// bytes are secret. The library must be built with ZOKECC_MEMCHECK, or with the same sanitizer,
// so that its declassify() marks what is not.
#include <cstdio>
#include <cstring>

#include "base/declassify.h"
#include "tests/secrets/calls.h"
#include "tests/secrets/scene.h"
#include "tests/secrets/stand_ins.h"

#ifdef ZOKECC_MEMORY_SANITIZER
namespace {
unsigned report_count = 0;
}  // namespace

// Called by instrumented code for a finding; intercepted with the linker's --wrap.
extern "C" void __real___msan_warning_with_origin(unsigned origin);
extern "C" void __wrap___msan_warning_with_origin(unsigned origin);
extern "C" void __wrap___msan_warning_with_origin(unsigned origin) {
    ++report_count;
    __real___msan_warning_with_origin(origin);
}
#else
#include <valgrind/memcheck.h>
#endif

namespace {

using namespace zokecc_test::secrets;

uint64_t secret_bytes = 0;
unsigned calls = 0, faults = 0, refusals = 0;

#ifdef ZOKECC_MEMORY_SANITIZER
bool is_watched() { return true; }
unsigned reports() { return report_count; }
void poison(void *bytes, size_t size) { __msan_poison(bytes, size); }
void show(void *bytes, size_t size) { __msan_unpoison(bytes, size); }
#else
bool is_watched() { return RUNNING_ON_VALGRIND != 0; }
unsigned reports() { return static_cast<unsigned>(VALGRIND_COUNT_ERRORS); }
void poison(void *bytes, size_t size) { (void)VALGRIND_MAKE_MEM_UNDEFINED(bytes, size); }
void show(void *bytes, size_t size) { (void)VALGRIND_MAKE_MEM_DEFINED(bytes, size); }
#endif

void hide(void *bytes, size_t size) {
    poison(bytes, size);
    secret_bytes += size;
}

void hide(Party &party) {
    hide(party.bytes, scene.L);
    hide(party.private_record.K, scene.L);
}

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
    const bool is_refusal = status != call.expected;
    refusals += is_refusal;
    if (found == 0 && (!is_refusal || curve == kWideOrderCurve)) return;
    ++faults;
    std::printf("%s on %s: %u reports, status %x\n", call.name, curve_names[curve], found, status);
}

// Memcheck must detect this.
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
    if (!is_watched()) {
        std::puts("not under valgrind");
        return 2;
    }
    for (const unsigned curve : {0u, 1u, kWideOrderCurve}) {
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
    std::printf("%u calls with %llu secret bytes, %u of them with reports; the planted jump was %s\n",
                calls - refusals, static_cast<unsigned long long>(secret_bytes), faults,
                is_watching ? "seen" : "NOT SEEN");
    return faults == 0 && is_watching && calls - refusals > 140 ? 0 : 1;
}
