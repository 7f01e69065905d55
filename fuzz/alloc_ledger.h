// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Watches the allocations of the library while one input runs.
//
// What is still allocated at the end may only be digit buffers of signed-window products, which
// stay on purpose: at most 609 bytes each. They are then given back, so that millions of inputs
// fit into memory. Anything else ends the process.
#ifndef ZOKECC_FUZZ_ALLOC_LEDGER_H
#define ZOKECC_FUZZ_ALLOC_LEDGER_H

namespace zokecc_fuzz {

class AllocLedger {
public:
    // At most that many digit buffers may be left.
    explicit AllocLedger(unsigned digit_buffers = 0);
    ~AllocLedger();
    AllocLedger(const AllocLedger &) = delete;
    AllocLedger &operator=(const AllocLedger &) = delete;

private:
    unsigned digit_buffers_;
};

// While an object lives nothing is noted: for sessions that outlive the input.
class LedgerPause {
public:
    LedgerPause();
    ~LedgerPause();
    LedgerPause(const LedgerPause &) = delete;
    LedgerPause &operator=(const LedgerPause &) = delete;

private:
    bool was_active_;
};

}  // namespace zokecc_fuzz

#endif
