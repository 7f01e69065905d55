// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Linkage of functions and objects that several folders share under a C name but the shared library does not
// export, and attributes that control inlining.
#ifndef ZOKECC_BASE_LINKAGE_H
#define ZOKECC_BASE_LINKAGE_H

#define ZOKECC_INTERNAL extern "C" __attribute__((visibility("hidden")))

// Not inlined, to save stack: the frame is gone before the caller goes deeper, or exists only on a rare
// path.
#define ZOKECC_OWN_FRAME __attribute__((noinline))

// Not inlined, to save code: several callers share one copy of a long body.
#define ZOKECC_ONE_COPY __attribute__((noinline))

// Always inlined: kernels that are unrolled over template parameters.
#define ZOKECC_INLINE __attribute__((always_inline)) inline

// Inlined on 64-bit machines, where code size does not matter.
#ifdef __SIZEOF_INT128__
#define ZOKECC_SHORT_BODY inline
#else
#define ZOKECC_SHORT_BODY ZOKECC_ONE_COPY
#endif

#endif
