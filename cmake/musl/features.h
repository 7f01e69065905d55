// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
/* The C++ headers of a compiler for glibc ask for its version without asking whether it is there. */
#include_next <features.h>

#ifndef __GLIBC_PREREQ
#define __GLIBC_PREREQ(major, minor) 0
#endif
