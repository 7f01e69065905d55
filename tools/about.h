/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Says what a program of tools/ runs with, so that a report from a board tells the builds apart. */
#ifndef ZOKECC_TOOLS_ABOUT_H
#define ZOKECC_TOOLS_ABOUT_H

/* Prints two lines: the program with its version, what it was compiled with and for what; and whether
 * the library is the default or the hardened build, fast or small. The first of these is found out by a
 * draw of random numbers, since the program may run with another library than it was linked with. The
 * rest is what the program was built for. */
void print_about(const char *program);

/* How often the program's own rand has been called; defined beside it, in weak_random.c or own_random.c. */
unsigned long random_draws(void);

#endif
