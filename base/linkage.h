// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Linkage: functions and objects that several folders share under a plain C name but that do not
// leave the shared library, and how often the body of a template is written out.
#ifndef ZOKECC_BASE_LINKAGE_H
#define ZOKECC_BASE_LINKAGE_H

#define ZOKECC_INTERNAL extern "C" __attribute__((visibility("hidden")))

// A body of its own: one copy of a template's for all callers, or a frame that is gone again before
// the caller goes deeper.
#define ZOKECC_OUT_OF_LINE __attribute__((noinline))

// For what is to be unrolled by recursion over a template parameter.
#define ZOKECC_INLINE __attribute__((always_inline)) inline

// For what is short enough to be worth inlining where code is plenty: not on small machines.
#ifdef __SIZEOF_INT128__
#define ZOKECC_SHORT_BODY inline
#else
#define ZOKECC_SHORT_BODY ZOKECC_OUT_OF_LINE
#endif

#endif
