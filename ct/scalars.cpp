// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "ct/scalars.h"

#include <zokecc/hash.h>

#include "base/burn.h"
#include "ct/choice.h"

namespace zokecc {

namespace {

template <class Field>
using Element = typename Field::Element;

// Reads a wide record, or a trimmed one of the other layers.
template <class Field>
void read(const Field &f, const mint &in, Element<Field> &out)
{
    Wiping<uint32_t[kMaxSecretWords + 1]> words;
    std::memcpy(*words, in.words, 4 * in.len);
    f.read_words(*words, out);
}

template <class Field>
void write(const Field &f, const Element<Field> &in, mint &out)
{
    f.write_words(in, out.words);
    out.len = f.words();
}

// Runs work(field) on the field of n, and clears the stack that it used.
template <class Work>
ZOKECC_OWN_FRAME bool modulo(const mint &n, const Work &work)
{
    const CallBurn burn;
    return on_secret_field(n, [&](auto *field) { return work(std::remove_pointer_t<decltype(field)>(n)); });
}

template <class Field>
using Pair = Wiping<Element<std::remove_cvref_t<Field>>[2]>;

uint32_t byte_at(const uint8_t *bytes, uint32_t count, uint32_t i)
{
    return i < count ? bytes[count - 1 - i] : 0;
}

// Word i of a big-endian number: its bytes 4 i to 4 i + 3, counted from the end.
uint32_t word_at(const uint8_t *bytes, uint32_t count, uint32_t i)
{
    uint32_t out = 0;
    for (uint32_t j = 0; j < 4; ++j) out |= byte_at(bytes, count, 4 * i + j) << (8 * j);
    return out;
}

// All ones if 0 < value < n.
template <class Field>
Mask is_in_range(const Field &f, const Element<Field> &value)
{
    return f.is_reduced(value) & ~f.is_zero(value);
}

}  // namespace

bool read_secret(const mint &n, const uint8_t *bytes, uint32_t count, mint &out)
{
    uint32_t above = 0;
    for (uint32_t i = 4 * n.len; i < count; ++i) above |= byte_at(bytes, count, i);
    for (uint32_t i = 0; i < n.len; ++i) out.words[i] = word_at(bytes, count, i);
    out.len = n.len;
    return modulo(n, [&](const auto &f) {
        Pair<decltype(f)> value;
        read(f, out, (*value)[0]);
        return declassified(is_in_range(f, (*value)[0]) & mask_of_zero(above));
    });
}

void reduce_secret(const mint &p, const uint8_t *bytes, uint32_t count, mint &out)
{
    modulo(p, [&](const auto &f) {
        Wiping<Element<std::remove_cvref_t<decltype(f)>>[3]> values;
        auto &sum = (*values)[0];
        auto &next = (*values)[1];
        auto &shift = (*values)[2];
        const uint32_t words[kMaxSecretWords + 1] = {0, 1};
        const bool by_words = f.words() > 1;  // by bytes if p is a single word
        f.read_words(words, shift);
        if (!by_words) f.set_small(256, shift);
        f.set_zero(sum);
        for (uint32_t i = by_words ? (count + 3) / 4 : count; i-- > 0;) {
            f.mul(sum, shift, sum);
            f.set_small(by_words ? word_at(bytes, count, i) : byte_at(bytes, count, i), next);
            f.add(sum, next, sum);
        }
        write(f, sum, out);
        return true;
    });
}

void write_secret(const mint &wide, uint32_t len, uint8_t *out)
{
    for (uint32_t i = 0; i < len; ++i)
        out[len - 1 - i] = i / 4 < wide.len ? static_cast<uint8_t>(wide.words[i / 4] >> (8 * (i % 4))) : 0;
}

uint32_t secret_length(const uint8_t *bytes, uint32_t count)
{
    uint32_t length = 0;
    Mask seen = 0;
    for (uint32_t i = 0; i < count; ++i) {
        seen |= ~mask_of_zero(bytes[i]);
        length += static_cast<uint32_t>(seen & 1);
    }
    declassify(&length, sizeof length);
    return length;
}

void publish(const mint &wide, mint &out)
{
    mint copy = wide;
    declassify(copy.words, 4 * copy.len);
    copy.len = trimmed_words(copy);
    out = copy;
}

bool is_zero_secret(const mint &wide)
{
    uint32_t any = 0;
    for (uint32_t i = 0; i < wide.len; ++i) any |= wide.words[i];
    return declassified(mask_of_zero(any));
}

bool sums_to_order(const mint &n, const mint &a, const mint *b)
{
    return modulo(n, [&](const auto &f) {
        Pair<decltype(f)> values;
        auto &sum = (*values)[0];
        auto &other = (*values)[1];
        read(f, a, sum);
        f.set_one(other);
        if (b != nullptr) read(f, *b, other);
        f.add(sum, other, sum);
        return declassified(f.is_zero(sum));
    });
}

void add_exactly(const mint &n, const mint &a, const mint &b, mint &out)
{
    modulo(n, [&](const auto &f) {
        Pair<decltype(f)> values;
        read(f, a, (*values)[0]);
        read(f, b, (*values)[1]);
        f.add((*values)[0], (*values)[1], (*values)[0]);
        write(f, (*values)[0], out);
        return true;
    });
    out.len = trimmed_words(out);
}

bool exchange_scalar(const mint &n, const mint &d, const mint &r, const mint &x_bar, mint &out)
{
    mint reduced{};
    mint_mod(&x_bar, &n, &reduced);
    return modulo(n, [&](const auto &f) {
        Pair<decltype(f)> values;
        auto &t = (*values)[0];
        auto &other = (*values)[1];
        read(f, r, t);
        read(f, reduced, other);
        f.mul(t, other, t);
        read(f, d, other);
        f.add(t, other, t);
        write(f, t, out);
        return declassified(~f.is_zero(t));
    });
}

// Checks s by the verifier's relation, s + (r + s) d = k, with d, k and r read afresh: no intermediate result
// of the computation of s is reused.
bool sm2_secret_half(const mint &n, const mint &d, const mint &k, const mint &r, mint &s)
{
    Wiping<mint> result;
    const bool is_good = modulo(n, [&](const auto &f) {
        Wiping<Element<std::remove_cvref_t<decltype(f)>>[4]> values;
        auto &key = (*values)[0];  // d, later 1 + d
        auto &rd = (*values)[1];   // r d, later k - r d
        auto &sum = (*values)[2];  // r + s
        auto &t = (*values)[3];
        read(f, d, key);
        read(f, r, t);
        f.mul(key, t, rd);
        f.set_one(t);
        f.add(key, t, key);
        read(f, k, t);
        f.sub(t, rd, rd);
        const Mask found = f.invert(key, t);
        f.mul(t, rd, t);
        write(f, t, *result);

        read(f, r, sum);
        f.add(sum, t, sum);
        read(f, d, key);
        f.mul(sum, key, sum);
        f.add(sum, t, sum);
        read(f, k, t);
        return declassified(found & f.equal(sum, t));
    });
    if (is_good) publish(*result, s);
    return is_good;
}

// e + r d is computed twice, each time from freshly read numbers.
bool ecdsa_secret_half(const mint &n, const mint &e, const mint &d, const mint &k, const mint &r, mint &s)
{
    Wiping<mint> result;
    const bool is_good = modulo(n, [&](const auto &f) {
        Wiping<Element<std::remove_cvref_t<decltype(f)>>[3]> values;
        auto &sum = (*values)[0];  // e + r d
        auto &product = (*values)[1];
        auto &t = (*values)[2];
        const auto add_up = [&] {
            read(f, d, sum);
            read(f, r, t);
            f.mul(sum, t, sum);
            read(f, e, t);
            f.add(sum, t, sum);
        };
        add_up();
        read(f, k, t);
        const Mask found = f.invert(t, t);
        f.mul(t, sum, product);
        write(f, product, *result);

        read(f, k, t);
        f.mul(product, t, product);
        add_up();
        return declassified(found & f.equal(product, sum));
    });
    if (is_good) publish(*result, s);
    return is_good;
}

void multiply_secrets(const mint &p, const mint &a, const mint &b, mint &out)
{
    modulo(p, [&](const auto &f) {
        Pair<decltype(f)> values;
        read(f, a, (*values)[0]);
        read(f, b, (*values)[1]);
        f.mul((*values)[0], (*values)[1], (*values)[0]);
        write(f, (*values)[0], out);
        return true;
    });
}

bool divide_by_secret(const mint &p, const mint &a, const mint &b, mint &out)
{
    return modulo(p, [&](const auto &f) {
        Pair<decltype(f)> values;
        read(f, b, (*values)[1]);
        const Mask found = f.invert((*values)[1], (*values)[1]);
        read(f, a, (*values)[0]);
        f.mul((*values)[0], (*values)[1], (*values)[0]);
        write(f, (*values)[0], out);
        return declassified(found);
    });
}

}  // namespace zokecc
