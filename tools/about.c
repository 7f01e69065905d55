/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include "about.h"

#include <stdio.h>
#include <sys/utsname.h>

#include <zokecc/hash.h>
#include <zokecc/version.h>

#if defined __clang__
#define COMPILER "clang " __clang_version__
#else
#define COMPILER "gcc " __VERSION__
#endif

#define TEXT_OF(name) #name
#define VALUE_OF(name) TEXT_OF(name)

#if defined __arm__ && defined __SOFTFP__
#define PROCESSOR "ARMv" VALUE_OF(__ARM_ARCH) ", soft-float"
#elif defined __arm__
#define PROCESSOR "ARMv" VALUE_OF(__ARM_ARCH)
#elif defined __x86_64__
#define PROCESSOR "x86-64"
#else
#define PROCESSOR "another processor"
#endif

#if defined ZOKECC_SMALL
#define KIND "small"
#else
#define KIND "fast"
#endif

static int is_hardened(void)
{
    uint8_t bytes[4];
    const unsigned long before = random_draws();
    gen_random(bytes, sizeof bytes);
    return random_draws() == before;
}

void print_about(const char *program)
{
    struct utsname system;
    printf("%s " ZOKECC_VERSION_STRING ", compiled by " COMPILER " for " PROCESSOR, program);
    if (uname(&system) >= 0) printf(", on %s", system.machine);
    printf("\nzokecc: %s build, " KIND "\n\n", is_hardened() ? "hardened" : "default");
}
