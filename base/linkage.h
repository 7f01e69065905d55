// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Linkage: functions and objects that several folders share under a plain C name but that do not
// leave the shared library, and how often the body of a template is written out.
#ifndef ZOKECC_BASE_LINKAGE_H
#define ZOKECC_BASE_LINKAGE_H

#define ZOKECC_INTERNAL extern "C" __attribute__((visibility("hidden")))

// Why a function is not inlined. For the stack: its frame is gone again before the caller goes deeper, or is
// there on a rare path alone.
#define ZOKECC_OWN_FRAME __attribute__((noinline))

// For the size: several callers share one copy of a long body.
#define ZOKECC_ONE_COPY __attribute__((noinline))

// For what is to be unrolled by recursion over a template parameter.
#define ZOKECC_INLINE __attribute__((always_inline)) inline

// For what is short enough to be worth inlining where code is plenty: not on small machines.
#ifdef __SIZEOF_INT128__
#define ZOKECC_SHORT_BODY inline
#else
#define ZOKECC_SHORT_BODY ZOKECC_ONE_COPY
#endif

#endif
