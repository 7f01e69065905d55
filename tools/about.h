/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Prints the configuration of a program of tools/, so that reports from boards tell the builds apart. */
#ifndef ZOKECC_TOOLS_ABOUT_H
#define ZOKECC_TOOLS_ABOUT_H

/* Prints two lines: the program, its version, compiler and target; and whether
 * the library is the default or the hardened build, fast or small. Default or hardened is found out by
 * drawing random numbers, because the program may run with a different library from the one it was
 * linked with. The rest is what the program was built for. */
void print_about(const char *program);

/* How often the program's own rand has been called; defined next to it, in weak_random.c or own_random.c. */
unsigned long random_draws(void);

#endif
