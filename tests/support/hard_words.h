// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Numbers that provoke errors in carries, borrows and digit estimates, and the aliasing drill of
// the arithmetic calls.
//
// Uniform random words meet two equal words, a word of all ones or a zero top word about once
// in four thousand million draws; here every few draws have one. Everything comes from a seed,
// which where() reports in failure messages. Words above the length of a drawn number are
// garbage on purpose: no call may read them.
#ifndef ZOKECC_TESTS_SUPPORT_HARD_WORDS_H
#define ZOKECC_TESTS_SUPPORT_HARD_WORDS_H

#include <zokecc/mint.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/support/hex.h"
#include "tests/support/naive_int.h"

namespace zokecc_test {

class HardWords {
public:
    explicit HardWords(uint32_t seed) : seed_(seed), state_(seed * 2654435769u + 0x9E3779B9u) {
        if (state_ == 0) state_ = 1;
    }

    // For messages: the seed and the number of draws.
    std::string where() const {
        return "HardWords seed " + std::to_string(seed_) + ", after " + std::to_string(draws_) + " draws";
    }

    uint32_t uniform() {
        ++draws_;
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return state_;
    }
    uint32_t below(uint32_t bound) { return (uniform() >> 3) % bound; }
    uint32_t between(uint32_t low, uint32_t high) { return low + below(high - low + 1); }

    // One word: an extreme one, one bit, a run of ones, sparse, dense or uniform.
    uint32_t word() {
        static const uint32_t extremes[] = {0,           1,           2,           0x7FFFFFFFu,
                                            0x80000000u, 0x80000001u, 0xFFFFFFFEu, 0xFFFFFFFFu};
        switch (below(6)) {
        case 0: return extremes[below(8)];
        case 1: return 1u << below(32);
        case 2: return (0xFFFFFFFFu >> below(32)) & (0xFFFFFFFFu << below(32));
        case 3: return uniform() & uniform() & uniform();
        case 4: return uniform() | uniform() | uniform();
        default: return uniform();
        }
    }

    void fill(uint32_t *words, size_t count) {
        uint32_t style = below(7), same = word();
        for (size_t i = 0; i < count; ++i) {
            switch (style) {
            case 0: words[i] = 0; break;
            case 1: words[i] = 0xFFFFFFFFu; break;
            case 2: words[i] = same; break;                             // equal neighbours
            case 3: words[i] = below(2) == 0 ? 0 : 0xFFFFFFFFu; break;  // long runs of bits
            case 4: words[i] = uniform(); break;
            default: words[i] = word(); break;
            }
        }
        if (count > 0 && style == 0 && below(2) == 0)
            words[below(static_cast<uint32_t>(count))] = 1u << below(32);
        if (count > 0 && style == 1 && below(2) == 0)
            words[below(static_cast<uint32_t>(count))] -= 1u << below(32);
    }

    // Exactly `len` words, at most 19; the top ones may be zero.
    mint untrimmed(uint32_t len) {
        mint out = rubbish();
        fill(out.words, len);
        out.len = len;
        return out;
    }

    // Normalised, at most max_len words.
    mint trimmed(uint32_t max_len) { return trim(untrimmed(below(max_len + 1))); }

    // Like trimmed(), but sometimes with zero top words, and zero also as one zero word.
    mint number(uint32_t max_len) { return below(4) == 0 ? untrimmed(below(max_len + 1)) : trimmed(max_len); }

    // Has most words in common with `other`, so that a comparison goes far down and a borrow meets
    // equal words; normalised.
    mint relative_of(const mint &other) {
        mint out = rubbish();
        out.len = other.len <= MINT_WORDS ? other.len : MINT_WORDS;
        std::memcpy(out.words, other.words, 4u * out.len);
        for (uint32_t changes = below(3) + 1; changes > 0 && out.len > 0; --changes)
            out.words[below(out.len)] += below(2) == 0 ? word() : 1u - 2u * below(2);
        if (out.len > 0 && below(4) == 0) out.len = 1 + below(out.len);
        return trim(out);
    }

    // Normalised and below the nonzero `bound`; often close to 0 or to the bound.
    mint reduced(const mint &bound) {
        Natural limit(bound);
        switch (below(8)) {
        case 0: return with_rubbish(Natural(below(4)) % limit);
        case 1: return with_rubbish(limit - Natural(1));
        case 2: return with_rubbish(limit >> (1 + below(3)));
        case 3: return with_rubbish((limit - Natural(1 + below(1000)) % limit) % limit);
        default: break;
        }
        Natural drawn(below(3) == 0 ? relative_of(bound) : untrimmed(bound.len));
        return with_rubbish(drawn < limit ? drawn : drawn % limit);
    }

    // The value in a record whose unused words are garbage.
    mint with_rubbish(const Natural &value) {
        mint trimmed_value = value.to_mint(), out = rubbish();
        std::memcpy(out.words, trimmed_value.words, 4u * trimmed_value.len);
        out.len = trimmed_value.len;
        return out;
    }

private:
    static mint trim(mint value) {
        while (value.len > 0 && value.words[value.len - 1] == 0) --value.len;
        return value;
    }
    mint rubbish() {
        mint out;
        for (uint32_t &word : out.words) word = 0xC0DE0000u + (++rubbish_ & 0xFFFFu);
        out.len = 0;
        return out;
    }

    uint32_t seed_;
    uint32_t state_;
    uint32_t draws_ = 0;
    uint32_t rubbish_ = 0;
};

// Same length and same used words, with both numbers in the message.
inline ::testing::AssertionResult is_value(const mint &got, const mint &want) {
    if (same_value(got, want)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "got len " << got.len << " " << (got.len <= MINT_WORDS ? mint_to_hex(got) : "?")
           << ", want len " << want.len << " " << (want.len <= MINT_WORDS ? mint_to_hex(want) : "?");
}
inline ::testing::AssertionResult is_value(const mint &got, const Natural &want) {
    return is_value(got, want.to_mint());
}

// The result of one run of the drill. a and b are the original operands.
struct AliasRun {
    const char *how;
    mint a, b;
    mint out;
    int32_t returned;
    bool out_is_a, out_is_b;
};

// Whether a call leaves its operands unchanged, or trims their len in place.
enum class Operands { kKept, kTrimmed };

namespace aliasing_detail {

struct Slot {
    uint32_t below[2] = {0xA5A5A5A5u, 0xA5A5A5A5u};
    mint value;
    uint32_t above[2] = {0xA5A5A5A5u, 0xA5A5A5A5u};
    bool guarded() const {
        return (below[0] & below[1] & above[0] & above[1]) == 0xA5A5A5A5u &&
               (below[0] | below[1] | above[0] | above[1]) == 0xA5A5A5A5u;
    }
};

inline bool left_as(const mint &now, mint given, Operands rule) {
    if (rule == Operands::kTrimmed && static_cast<int32_t>(given.len) > 0) {
        if (given.len > MINT_WORDS) given.len = MINT_WORDS;
        while (given.len > 0 && given.words[given.len - 1] == 0) --given.len;
    }
    return same_record(now, given);
}

template <class Call>
AliasRun run(const char *how, const mint &a, const mint &b, unsigned b_slot, unsigned out_slot, Operands rule,
             Call call) {
    Slot slots[3];
    std::memset(&slots[2].value, 0x5A, sizeof(mint));
    slots[1].value = b;
    slots[0].value = a;
    AliasRun done{how, a, b_slot == 0 ? a : b, {}, 0, out_slot == 0, out_slot == b_slot};
    done.returned = call(&slots[0].value, &slots[b_slot].value, &slots[out_slot].value);
    done.out = slots[out_slot].value;
    for (const Slot &slot : slots) EXPECT_TRUE(slot.guarded()) << how << ": wrote beside a record";
    EXPECT_TRUE(out_slot == 0 || left_as(slots[0].value, a, rule)) << how << ": first operand changed";
    EXPECT_TRUE(out_slot == 1 || b_slot == 0 || left_as(slots[1].value, b, rule))
        << how << ": second operand changed";
    return done;
}

}  // namespace aliasing_detail

// Runs `int32_t call(mint *a, mint *b, mint *out)` with a separate output, with the output over a,
// over b, then with one record for both operands, and with one record for all
// three. Each run starts from fresh records between guards, checks the guards and the operands
// that are not the output, and passes an AliasRun to check.
template <class Call, class Check>
void for_each_aliasing(const mint &a, const mint &b, Operands rule, Call call, Check check) {
    check(aliasing_detail::run("separate", a, b, 1, 2, rule, call));
    check(aliasing_detail::run("out is a", a, b, 1, 0, rule, call));
    check(aliasing_detail::run("out is b", a, b, 1, 1, rule, call));
    check(aliasing_detail::run("a is b", a, b, 0, 2, rule, call));
    check(aliasing_detail::run("all one record", a, b, 0, 0, rule, call));
}

// The same for calls with one operand, `int32_t call(mint *a, mint *out)`.
template <class Call, class Check>
void for_each_aliasing(const mint &a, Call call, Check check) {
    auto both = [&call](mint *x, mint *, mint *out) { return call(x, out); };
    check(aliasing_detail::run("separate", a, a, 1, 2, Operands::kKept, both));
    check(aliasing_detail::run("out is a", a, a, 1, 0, Operands::kKept, both));
}

}  // namespace zokecc_test

#endif
