// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Lets tests count which slow paths were taken; does nothing in the library.
#ifndef ZOKECC_MINT_LIMBS_TRACE_H
#define ZOKECC_MINT_LIMBS_TRACE_H

namespace zokecc {

struct NoTrace {
    static void quotient_unsure() {}        // the guard left the quotient open
    static void first_difference() {}       // a word of all ones in a - b
    static void second_difference() {}      // one in p - (b - a)
    static void doubled_difference() {}     // one in 2 a - p
    static void difference_in_place() {}    // one in the inverse's u or v
    static void last_difference() {}        // one in m - x
    static void inverse_by_definition() {}  // the fast inverse gave up and the reference ran
};

}  // namespace zokecc

#endif
