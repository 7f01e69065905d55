// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Sums modulo p on limbs: equal to the reference's, and given up only if a word may be all ones.
#include "mint/limbs/modular_sums.h"

#include "tests/mint/kept_rules.h"
#include "tests/mint/limb_products.h"
#include "tests/mint/limb_rows.h"
#include "tests/support/emulated.h"

namespace zokecc_test::modular_sums_test {
namespace {

// The sums chosen for the steps, with their limbs.
template <class Steps>
struct SumsOn : zokecc::ModularSums<Steps> {
    using Limb = typename Steps::Limb;
};
// ARM's sums fall back to these for some widths, with the machine's steps.
struct PortableSumsOnNative : zokecc::PortableSums<zokecc::NativeSteps> {
    using Limb = zokecc::NativeLimb;
};

using Kinds = ::testing::Types<
#ifdef __SIZEOF_INT128__
    SumsOn<zokecc::PortableSteps<uint64_t>>,
#else
    PortableSumsOnNative,
#endif
    SumsOn<zokecc::PortableSteps<uint32_t>>, SumsOn<zokecc::NativeSteps>>;

template <class Sums>
class ModularSums : public testing::Test {
protected:
    using L = typename Sums::Limb;

    void use(const Natural &modulus) {
        p = modulus;
        n = static_cast<unsigned>(p.word_count() + zokecc::kWordsPerLimb<L> - 1) / zokecc::kWordsPerLimb<L>;
        p_limbs = limbs_of(p);
    }

    // With a fence after the used limbs.
    Row<L> limbs_of(const Natural &value) const {
        Row<L> out(n + 1);
        const mint words = value.to_mint();
        std::memcpy(out.data(), words.words, 4 * words.len);
        out[n] = kFenceLimb<L>;
        return out;
    }

    Natural value_of(const Row<L> &limbs) const {
        EXPECT_EQ(kFenceLimb<L>, limbs[n]);
        return natural(limbs, n);
    }

    static bool has_all_ones(const Natural &value) {
        for (unsigned i = 0; i < value.word_count(); ++i)
            if (value.word(i) == 0xFFFFFFFFu) return true;
        return false;
    }

    // A separate output, over a, over b.
    void check_add(const Natural &a, const Natural &b) {
        for (int place = 0; place < 3; ++place) {
            Row<L> x = limbs_of(a), y = limbs_of(b), apart = limbs_of(p);
            Row<L> &out = place == 0 ? apart : place == 1 ? x : y;
            Sums::add(x.data(), y.data(), p_limbs.data(), n, out.data());
            EXPECT_EQ((a + b) % p, value_of(out)) << a.to_hex() << " + " << b.to_hex() << ", place " << place;
        }
    }

    void check_sub(const Natural &a, const Natural &b) {
        const bool below = a < b;
        const Natural first = below ? b - a : a - b;
        const Natural difference = below ? p - first : first;
        for (int place = 0; place < 3; ++place) {
            Row<L> x = limbs_of(a), y = limbs_of(b), apart = limbs_of(p);
            Row<L> &out = place == 0 ? apart : place == 1 ? x : y;
            const Natural before = value_of(out);
            const bool done = Sums::try_sub(x.data(), y.data(), p_limbs.data(), n, out.data());
            if (done) {
                EXPECT_EQ(kept_mod_sub(a, b, p), value_of(out));
                EXPECT_FALSE(has_all_ones(first) || has_all_ones(difference));
            } else {
                EXPECT_EQ(before, value_of(out));
            }
            EXPECT_FALSE(testing::Test::HasFailure()) << a.to_hex() << " - " << b.to_hex() << ", " << place;
            refused += done ? 0 : 1;
            answered += done ? 1 : 0;
        }
    }

    void check_double(const Natural &a, unsigned times) {
        Natural want = a;
        bool ones = false;
        for (unsigned i = 0; i < times; ++i) {
            const bool above = !((want << 1) < p);
            const Natural next = above ? (want << 1) - p : want << 1;
            ones = ones || (above && has_all_ones(next));
            want = next;
        }
        for (int place = 0; place < 2; ++place) {
            Row<L> x = limbs_of(a), apart = limbs_of(p);
            Row<L> &out = place == 0 ? apart : x;
            const Natural before = value_of(out);
            const bool done = Sums::try_double(x.data(), times, p_limbs.data(), n, out.data());
            EXPECT_EQ(!ones, done) << a.to_hex() << ", " << times << " times";
            EXPECT_EQ(done ? want : before, value_of(out)) << a.to_hex() << ", " << times << " times";
            refused += done ? 0 : 1;
            answered += done ? 1 : 0;
        }
    }

    template <class Check>
    void for_each_modulus(Check check) {
        for (uint32_t words = 5; words <= 9; ++words)
            for (const mint &modulus : moduli_of(words, draw, rounds(12))) {
                use(Natural(modulus));
                if (!Sums::serves(n)) continue;
                for (int i = 0; i < rounds(40); ++i) check();
                ASSERT_FALSE(this->HasFailure()) << p.to_hex() << ", " << draw.where();
            }
    }

    Natural drawn() {
        const mint modulus = p.to_mint();
        return Natural(draw.below(16) == 0 ? Natural(draw.below(3)).to_mint() : draw.reduced(modulus));
    }
    Natural related(const Natural &other) {
        const Natural out(draw.relative_of(other.to_mint()));
        return out < p ? out : drawn();
    }

    HardWords draw{7601};
    Natural p;
    Row<L> p_limbs;
    unsigned n = 0;
    int refused = 0;
    int answered = 0;
};
TYPED_TEST_SUITE(ModularSums, Kinds);

// With sums equal to p, one below it, and with the same top word as p.
TYPED_TEST(ModularSums, Additions) {
    this->for_each_modulus([this] {
        const Natural a = this->drawn();
        this->check_add(a, this->drawn());
        this->check_add(a, a);
        const Natural rest = this->p - a;
        if (rest < this->p) this->check_add(a, rest);
        this->check_add(a, rest - Natural(1));
        const Natural near = this->related(this->p - Natural(1));
        if (!(near < a)) this->check_add(a, near - a);
    });
}

TYPED_TEST(ModularSums, DifferencesAreAnsweredOrRefused) {
    this->for_each_modulus([this] {
        const Natural a = this->drawn();
        const Natural b = this->draw.below(2) == 0 ? this->drawn() : this->related(a);
        this->check_sub(a, b);
        this->check_sub(b, a);
        this->check_sub(a, a);
    });
    EXPECT_GE(this->refused, rounds(3000));
    EXPECT_GE(this->answered, rounds(3000));
}

TYPED_TEST(ModularSums, DoublingsAreAnsweredOrRefused) {
    this->for_each_modulus([this] {
        this->check_double(this->drawn(), 1 + this->draw.below(3));
        const Natural half = Natural(this->draw.relative_of(this->p.to_mint())) >> 1;
        if (half < this->p) this->check_double(half, 1);
        const Natural quarter = (this->p + Natural(this->draw.relative_of(this->p.to_mint()))) >> 2;
        if (quarter < this->p) this->check_double(quarter, 3);
        this->check_double(this->p >> 1, 1);
        this->check_double((this->p >> 1) + Natural(1), 2);
        this->check_double(this->p - Natural(1), 40);
    });
    EXPECT_GE(this->refused, rounds(3000));
    EXPECT_GE(this->answered, rounds(3000));
}

}  // namespace
}  // namespace zokecc_test::modular_sums_test
