// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Runs every call that takes or makes a secret, with several secrets in turn, for a plugin of the emulator
// that traces them; tests/secrets/trace.py runs it and compares the traces.
//
//     secrets_trace SECRETS
//
// Private numbers, messages and the kernel's bytes differ from run to run. Public points passed to a call
// and all addresses are the same.
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "bench/arm/mark.h"
#include "tests/secrets/calls.h"
#include "tests/secrets/scene.h"
#include "tests/secrets/stand_ins.h"

namespace {

using namespace zokecc_test::secrets;

constexpr uint32_t kStreamOfScenes = 1000;

volatile uint32_t secret_number = 0;
volatile uint8_t table[64] = {};

__attribute__((noinline)) uint32_t further() { return table[0]; }

// The comparison must detect these: a branch and an address that depend on a secret.
uint32_t planted_jump() { return secret_number == 1 ? further() : 0; }
uint32_t planted_look_up() { return table[secret_number % sizeof table]; }

void mark(int what) { syscall(ZOKECC_MARK_NUMBER, what); }

uint32_t trace(Work work, uint32_t secret, uint32_t stream) {
    secret_number = secret;
    start_watching({stream, 0, 0});
    mark(ZOKECC_MARK_START);
    const uint32_t status = work();
    mark(ZOKECC_MARK_OURS);
    stop_watching();
    return status;
}

void announce(const char *kind, const char *name, const char *curve) {
    std::printf("%s %s, %s\n", kind, name, curve);
    std::fflush(stdout);
}

// True for a number with a leading zero byte: calls that write public numbers take another path for
// those.
bool is_short(const uint8_t *number) {
    if (number[0] != 0) return false;
    for (uint32_t i = 1; i < scene.L; ++i)
        if (number[i] != 0) return true;
    return false;
}
template <class Point>
bool is_short(const Point &point) {
    return is_short(point.x) || is_short(point.y);
}

bool writes_short_numbers() {
    const Scene::Public &out = scene.out;
    const uint8_t *const first = out.bytes + 1;  // after a 04
    return is_short(out.point) || is_short(out.public_record) || is_short(out.cipher) ||
           is_short(out.signature.r) || is_short(out.signature.s) || is_short(first) ||
           is_short(first + scene.L);
}

// The public points of secret numbers, and those in ciphertexts for our own key, are the
// same in all runs: branches may depend on them.
bool make_scenes(std::vector<Scene> &out) {
    bool good = true;
    uint32_t number = 0;
    for (Scene &made : out) {
        do {
            start_watching({kStreamOfScenes, 0, 0});
            good = make_secrets(number++) && good;
            stop_watching();
        } while (is_short(scene.own.point) || is_short(scene.own_temporary.point));
        made = scene;
        for (const auto party : {&Scene::own, &Scene::own_temporary}) {
            (made.*party).point = (out[0].*party).point;
            (made.*party).public_record = (out[0].*party).public_record;
        }
    }
    return good;
}

bool run(const Call &call, const char *kind, const char *curve, const std::vector<Scene> &scenes) {
    announce(kind, call.name, curve);
    bool good = true;
    uint32_t stream = 0;
    for (uint32_t i = 0; i < scenes.size(); ++i) {
        // Once beforehand, for numbers of full length, and because the very first call writes variables.
        do {
            scene = scenes[i];
            start_watching({++stream, 0, 0});
            call.work();
            stop_watching();
        } while (writes_short_numbers());
        scene = scenes[i];
        good = trace(call.work, i, stream) == call.expected && good;
    }
    if (!good) announce("fault", call.name, "not the expected answer");
    return good;
}

}  // namespace

int main(int argc, char **argv) {
    const int count = argc == 2 ? std::atoi(argv[1]) : 0;
    if (count < 2) {
        std::fputs("secrets_trace SECRETS, two at least\n", stderr);
        return 2;
    }
    std::vector<Scene> scenes(static_cast<size_t>(count));
    bool good = true;
    for (unsigned curve = 0; curve < 2; ++curve) {
        const bool installed = install_curve(curve);
        keep_blocks();
        if (!installed || !make_scenes(scenes)) {
            std::fputs("no scene\n", stderr);
            return 2;
        }
        for (const auto &list : {scheme_calls(), session_calls(), agreement_calls()})
            for (const Call &call : list) good = run(call, "call", curve_names[curve], scenes) && good;
    }
    run({"jump", planted_jump, 0}, "planted", "", scenes);
    run({"look-up", planted_look_up, 0}, "planted", "", scenes);
    return good ? 0 : 1;
}
