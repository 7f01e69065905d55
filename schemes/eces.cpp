// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Encryption that masks the message by multiplication: c = M x(k Q) mod p.
#include "base/burn.h"
#include "base/wipe.h"
#include "mint/plain.h"
#include "mint/value.h"
#include "schemes/records.h"

using namespace zokecc;

namespace {

constexpr uint8_t kPrefix = 0x04;

// Reads a message of any length as an integer modulo p, word by word from the top.
void read_reduced(const CurveView &curve, const uint8_t *bytes, uint32_t count, mint &out)
{
    if (kHardened) return read_message(curve, bytes, count, out);
    const mint &p = curve.p;
    uint32_t first = count % 4;
    octetstring_to_mint(bytes, first, &out);
    for (uint32_t i = first; i < count; i += 4) {
        Wiping<mint> word;
        octetstring_to_mint(bytes + i, 4, word.get());
        mint_left_move(&out, 32);
        mod_add(out, *word, p, out);
    }
    mint_mod(&out, &p, &out);  // only needed for fewer than four bytes
}

// Writes numbers one after the other as long as a whole one fits.
class NumberWriter {
public:
    NumberWriter(uint8_t *out, uint32_t capacity, uint32_t width)
        : out_(out), capacity_(capacity), width_(width)
    {
    }

    void put(const mint &number)
    {
        uint32_t written = 0;
        if (capacity_ - total_ < width_)
            capacity_ = total_;
        else
            mint_to_fixedlen_os(&number, width_, width_, &written, out_ + total_);
        total_ += written;
    }
    uint32_t total() const { return total_; }

private:
    uint8_t *out_;
    uint32_t capacity_;
    uint32_t width_;
    uint32_t total_ = 0;
};

// C1 = k G and S = k Q with a nonzero S.x. False if no nonce leads to one; if it is clear from Q that none
// can, no nonce is drawn.
bool draw_points(const CurveView &curve, const ecc_point &Q, ecc_point &C1, ecc_point &S)
{
    if (has_only_zero_multiples(curve, Q)) return false;
    Wiping<mint> k;
    for (uint32_t draw = 0; draw < kMaxFruitlessDraws; ++draw) {
        if (!draw_private(curve, *k)) return false;
        if (!public_point(curve, *k, C1)) continue;
        S = ecc_point{};
        if (shared_point(curve, *k, Q, S) == Step::done && !is_zero_coordinate(S.x)) return true;
    }
    return false;
}

}  // namespace

int32_t Eces_Encry(const ecc_point_bytes *recipient, const uint8_t *message, uint32_t message_len,
                   uint8_t *out, int32_t out_capacity)
{
    const CallBurn burn;
    if (!is_readable(recipient) || out == nullptr || (message == nullptr && message_len > 0)) return kFailed;
    if (!curve_is_installed()) return kFailed;
    const CurveView curve = global_view();
    ecc_point Q{};
    Wiping<mint> M;
    read_point(*recipient, Q);
    if (!may_meet_secrets(curve, Q)) return kFailed;
    read_reduced(curve, message, message_len, *M);

    ecc_point C1{};
    Wiping<ecc_point> S;
    if (!draw_points(curve, Q, C1, *S)) return kFailed;
    mint c{};
    mask_by_product(curve, *M, S->x, c);

    out[0] = kPrefix;
    const uint32_t capacity = out_capacity > 0 ? static_cast<uint32_t>(out_capacity) : 0;
    NumberWriter writer(out + 1, capacity, 4 * used_words(curve.p));
    writer.put(C1.x);
    writer.put(C1.y);
    writer.put(c);
    return static_cast<int32_t>(writer.total());
}

// KEPT: returns the shortest encoding, so leading zero bytes of the message are lost. Held by
// EcesDecry.KeptLeadingZeroBytesAreLost.
int32_t Eces_Decry(const ecc_scalar *d, const uint8_t *cipher, uint32_t cipher_len, uint8_t *out)
{
    const CallBurn burn;
    if (!is_readable(d) || cipher == nullptr || out == nullptr) return kFailed;
    if (!curve_is_installed()) return kFailed;
    const CurveView curve = global_view();
    Wiping<mint> scalar;
    if (!read_scalar(*d, *scalar) || cipher[0] != kPrefix) return kFailed;
    const uint32_t width = cipher_len / 3;
    if (width > kMintBytes) return kFailed;

    ecc_point C1{};
    mint c{};
    octetstring_to_mint(cipher + 1, width, &C1.x);
    octetstring_to_mint(cipher + 1 + width, width, &C1.y);
    octetstring_to_mint(cipher + 1 + 2 * width, width, &c);
    if (!may_meet_secrets(curve, C1)) return kFailed;
    Wiping<ecc_point> S;
    if (shared_point(curve, *scalar, C1, *S) != Step::done) return kFailed;
    Wiping<mint> M;
    unmask_by_product(curve, c, S->x, *M);
    const uint32_t length = write_shortest(*M, out);
    out[length] = 0;
    return static_cast<int32_t>(length);
}
