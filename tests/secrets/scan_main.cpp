// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Runs every call twice, with the same public inputs and two secrets: any difference in memory afterwards is
// a finding. Once on success, then with each allocation and each draw failing in turn.
//
//     secrets_scan          exits with 0 if nothing was found except every planted leak
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "base/config.h"
#include "tests/secrets/calls.h"
#include "tests/secrets/planted.h"
#include "tests/secrets/scene.h"

namespace {

using namespace zokecc_test::secrets;

constexpr size_t kShown = 300;  // findings of one path

unsigned faults = 0, runs = 0;
size_t deepest = 0;
Scene secrets[2];

void fault(const char *call, const char *text) {
    std::printf("%s: %s\n", call, text);
    ++faults;
}

const Remains &run_with(unsigned secret, Work work, Conditions conditions) {
    scene = secrets[secret];
    conditions.stream = secret;
    ++runs;
    return run(work, conditions);
}

// Whether the two words of a finding are at the same offset of data that is public after these two
// runs, in either order of bytes.
bool is_public(const Finding &finding, const Scene &first, const Scene &second) {
    const std::vector<Area> known = public_areas(first), also_known = public_areas(second);
    uint8_t a[4], b[4], reversed_a[4], reversed_b[4];
    std::memcpy(a, &finding.first, 4);
    std::memcpy(b, &finding.second, 4);
    std::reverse_copy(a, a + 4, reversed_a);
    std::reverse_copy(b, b + 4, reversed_b);
    for (size_t area = 0; area < known.size(); ++area)
        for (size_t i = 0; i + 4 <= known[area].size; ++i) {
            const uint8_t *const at = known[area].begin + i, *const also_at = also_known[area].begin + i;
            if (std::memcmp(at, a, 4) == 0 && std::memcmp(also_at, b, 4) == 0) return true;
            if (std::memcmp(at, reversed_a, 4) == 0 && std::memcmp(also_at, reversed_b, 4) == 0) return true;
        }
    return false;
}

bool has_written() {
    return std::memcmp(&scene.out, &secrets[1].out, sizeof scene.out) != 0 ||
           std::memcmp(&scene.hidden, &secrets[1].hidden, sizeof scene.hidden) != 0;
}

bool is_written_alike(const Scene &other) {
    return std::memcmp(&scene.out, &other.out, sizeof scene.out) == 0 &&
           std::memcmp(&scene.hidden, &other.hidden, sizeof scene.hidden) == 0;
}

void show(const std::vector<Finding> &found) {
    for (size_t i = 0; i < found.size() && i < kShown; ++i)
        std::printf("    %s, %zu: %08x %08x\n", found[i].place, found[i].offset, found[i].first,
                    found[i].second);
}

// One path of a call. The result is only known in advance if nothing fails.
Counts scan_path(const Call &call, const char *path, const Conditions &conditions, bool fails) {
    const Remains &first = run_with(0, call.work, conditions);
    static Scene written;
    written = scene;
    const Remains &second = run_with(1, call.work, conditions);
    if (first.status != second.status)
        fault(call.name, "two answers"), std::printf("   %08x %08x\n", first.status, second.status);
    if (!fails && first.status != call.expected) {
        fault(call.name, "not the expected answer");
        std::printf("    %08x %08x\n", first.status, second.status);
    }
    if (has_written() && is_written_alike(written)) fault(call.name, "writes the same for both secrets");
    std::vector<Finding> found = differences(first, second);
    std::erase_if(found, [](const Finding &finding) { return is_public(finding, written, scene); });
    if (!found.empty()) {
        ++faults;
        std::printf("%s, %s: %zu words\n", call.name, path, found.size());
    }
    show(found);
    if (first.counts.stack > deepest) deepest = first.counts.stack;
    return first.counts;
}

unsigned scan_call(const Call &call) {
    const Counts counts = scan_path(call, "success", {}, false);
    char path[64];
    for (unsigned i = 1; i <= counts.allocations; ++i) {
        std::snprintf(path, sizeof path, "allocation %u fails", i);
        scan_path(call, path, {0, i, 0}, true);
    }
    for (unsigned i = 1; i <= counts.draws; ++i) {
        std::snprintf(path, sizeof path, "draw %u fails", i);
        scan_path(call, path, {0, 0, i}, true);
    }
    return 1 + counts.allocations + counts.draws;
}

bool prepare(unsigned curve) {
    if (!install_curve(curve)) return false;
    for (unsigned i = 0; i < 2; ++i) {
        if (!make_secrets(i)) return false;
        secrets[i] = scene;
    }
    note_start({"libzokecc", "libplanted"});
    return true;
}

const uint32_t *secret_words() { return scene.own.number.words; }

struct Planted {
    const char *name;
    Work work;
    const char *place;  // where it must be found, null for nowhere
};

template <void leak(const uint32_t *)>
uint32_t planted() {
    leak(secret_words());
    return 0;
}

void expect_planted(const Planted &leak) {
    const Remains &first = run_with(0, leak.work, {});
    const std::vector<Finding> found = differences(first, run_with(1, leak.work, {}));
    const bool as_expected = leak.place == nullptr
                                 ? found.empty()
                                 : found.size() == 1 && std::strcmp(found.front().place, leak.place) == 0;
    if (as_expected) return;
    fault(leak.name, "was not found as planted");
    show(found);
}

void scan_planted() {
    const Planted leaks[] = {
        {"planted word on the stack", planted<planted_on_stack>, "stack"},
        {"planted word in freed heap", planted<planted_in_freed_heap>, "freed heap"},
        {"planted word in kept heap", planted<planted_in_kept_heap>, "kept heap"},
        {"planted word in a variable", planted<planted_in_variable>, "variable"},
        {"planted sum on the stack", planted<planted_sum_on_stack>, "stack"},
        {"nothing planted", planted<planted_nothing>, nullptr},
    };
    for (const Planted &leak : leaks) expect_planted(leak);
}

}  // namespace

int main() {
    unsigned calls = 0, paths = 0;
    // In the hardened build the last one has no secrets: it is too short.
    for (unsigned curve = 0; curve < (zokecc::kHardened ? 2 : 3); ++curve) {
        if (!prepare(curve)) {
            fault(curve_names[curve], "cannot be installed");
            continue;
        }
        std::printf("%s\n", curve_names[curve]);
        scan_planted();
        for (const auto &family : {hash_calls(), scheme_calls(), session_calls(), agreement_calls()})
            for (const Call &call : family) {
                paths += scan_call(call);
                ++calls;
            }
    }
    std::printf("%u calls, %u paths, %u runs, %zu bytes of variables, %zu bytes of stack; %u faults\n", calls,
                paths, runs, bytes_of_variables(), deepest, faults);
    return faults == 0 ? 0 : 1;
}
