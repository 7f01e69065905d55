// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Tracks the library's allocations while one input runs.
//
// Only digit buffers of scalar multiplications may remain allocated at the end, which is
// intended: at most 609 bytes each. They are then freed, so that millions of inputs
// fit into memory. Anything else aborts the process.
#ifndef ZOKECC_FUZZ_ALLOC_LEDGER_H
#define ZOKECC_FUZZ_ALLOC_LEDGER_H

namespace zokecc_fuzz {

class AllocLedger {
public:
    // At most digit_buffers of them may be left.
    explicit AllocLedger(unsigned digit_buffers = 0);
    ~AllocLedger();
    AllocLedger(const AllocLedger &) = delete;
    AllocLedger &operator=(const AllocLedger &) = delete;

private:
    unsigned digit_buffers_;
};

// Suspends tracking during its lifetime: for sessions that outlive the input.
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
