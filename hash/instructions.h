// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// x86-64 may have instructions for hashes; ZOKECC_NO_SHA_INSTRUCTIONS leaves them out.
#ifndef ZOKECC_HASH_INSTRUCTIONS_H
#define ZOKECC_HASH_INSTRUCTIONS_H

#if defined(__x86_64__) && !defined(ZOKECC_NO_SHA_INSTRUCTIONS)
#define ZOKECC_SHA_INSTRUCTIONS 1
#include "base/cpu_x86_64.h"
#else
#define ZOKECC_SHA_INSTRUCTIONS 0
#endif

#endif
