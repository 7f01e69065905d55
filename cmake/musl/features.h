// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
/* The C++ headers of a compiler for glibc test glibc's version without testing that it is glibc. */
#include_next <features.h>

#ifndef __GLIBC_PREREQ
#define __GLIBC_PREREQ(major, minor) 0
#endif
