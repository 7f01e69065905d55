// The shape of the fixed-base table.
#ifndef ZOKECC_ECC_TABLE_H
#define ZOKECC_ECC_TABLE_H

#include <zokecc/mint.h>

#include <cstdint>

namespace zokecc {

constexpr uint32_t kCombMaxWords = 8;  // 2^9 + 1 entries; a ninth word would need 2^10 + 1

// m, the words of p that give the table its shape, or 0 where there is no table: p of no words
// or of more than eight.
uint32_t comb_words(const mint &p);

}  // namespace zokecc

#endif
