// Multiples of the base point: a comb over the precomputed table.
//
// Each 32-bit word of the scalar is split in two halves of 16 bits. Round i takes bit 15 - i of
// every low half at once (first half of the table) and bit 31 - i of every high half (second
// half), so 16 doublings and at most 32 mixed additions serve a scalar of any size up to p's.
#include "ecc/curve.h"
#include "ecc/exact_field.h"
#include "ecc/point_formulas.h"
#include "ecc/table.h"
#include "mint/value.h"
#include "mint/wipe.h"

namespace {

using zokecc::used_words;

constexpr uint32_t kRounds = 16;

// Bit number bit of words 0..m-1, side by side.
uint32_t column(const mint &k, uint32_t m, uint32_t bit)
{
    const uint32_t count = used_words(k) < m ? used_words(k) : m;
    uint32_t out = 0;
    for (uint32_t j = 0; j < count; ++j) out |= (k.words[j] >> bit & 1) << j;
    return out;
}

// True if k has a bit above the m words that the table covers.
bool is_wider_than(const mint &k, uint32_t m) { return zokecc::trimmed_words(k) > m; }

void set_infinity(ecc_point *out) { zokecc::set_affine_infinity<zokecc::ExactField>(*out); }

}  // namespace

int32_t ecc_fix_point_mul_1(const mint *k, const ecc_point *, const mint *a, const mint *b, const mint *p,
                            ecc_point *out, const ecc_point *table)
{
    const uint32_t m = zokecc::comb_words(*p);
    if (zokecc::is_zero(*k) || m == 0 || zokecc::is_zero(*p)) {
        set_infinity(out);
        return 0;
    }
    if (is_wider_than(*k, m)) {
        // Callers that test the range of a scalar afterwards come here: the true product.
        ecc_point product{};
        if (ecc_unknown_point_mul(k, &table[1], a, b, p, &product) < 0) set_infinity(&product);
        *out = product;
        return 0;
    }
    zokecc::Wiping<ecc_jac_point> sum;
    zokecc::set_jacobian_infinity<zokecc::ExactField>(*sum);
    for (uint32_t i = 0; i < kRounds; ++i) {
        ecc_jac_point_double(sum.get(), a, b, p, sum.get());
        const uint32_t low = column(*k, m, 15 - i);
        const uint32_t high = column(*k, m, 31 - i);
        if (low != 0) ecc_jac_point_add(sum.get(), &table[low], a, b, p, sum.get());
        if (high != 0) ecc_jac_point_add(sum.get(), &table[(1u << m) + high], a, b, p, sum.get());
    }
    return ecc_jacobin_affine(out, p, sum.get());
}

int32_t ecc_fix_point_mul(const mint *k, const ecc_point *G, const mint *a, const mint *b, const mint *p,
                          ecc_point *out)
{
    return ecc_fix_point_mul_1(k, G, a, b, p, out, global_curve.table.entry);
}
