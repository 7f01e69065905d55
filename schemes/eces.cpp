// Encryption that masks the message by multiplication: c = M x(k Q) mod p.
#include <cstring>

#include "base/burn.h"
#include "base/wipe.h"
#include "mint/plain.h"
#include "mint/value.h"
#include "schemes/records.h"

namespace {

using zokecc::kFailed;
using zokecc::Wiping;

constexpr uint8_t kPrefix = 0x04;
constexpr uint32_t kMaxPlainBytes = 100;

// The message as an integer modulo p, for any length: word after word from the top.
void read_reduced(const uint8_t *bytes, uint32_t count, const mint &p, mint &out)
{
    uint32_t first = count % 4;
    octetstring_to_mint(bytes, first, &out);
    for (uint32_t i = first; i < count; i += 4) {
        Wiping<mint> word;
        octetstring_to_mint(bytes + i, 4, word.get());
        mint_left_move(&out, 32);
        zokecc::mod_add(out, *word, p, out);
    }
    mint_mod(&out, &p, &out);
}

// Writes numbers one behind the other while there is room for a whole one.
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

// C1 = k G and S = k Q with S.x other than zero. False if no nonce gives one; a recipient for whom none can
// is not worth a thousand of them.
bool draw_points(const zokecc::CurveView &curve, const ecc_point &Q, ecc_point &C1, ecc_point &S)
{
    if (zokecc::has_only_zero_multiples(curve, Q)) return false;
    Wiping<mint> k;
    for (uint32_t draw = 0; draw < zokecc::kMaxFruitlessDraws; ++draw) {
        if (gen_random_number(k.get(), &curve.n) != 0) return false;
        zokecc::multiply_base(curve, *k, C1);
        S = ecc_point{};
        zokecc::multiply(curve, *k, Q, S);
        if (!zokecc::is_zero(S.x)) return true;
    }
    return false;
}

}  // namespace

int32_t Eces_Encry(const ecc_point_bytes *recipient, const uint8_t *message, uint32_t message_len,
                   uint8_t *out, int32_t out_capacity)
{
    const zokecc::CallBurn burn;
    if (!zokecc::is_readable(recipient) || out == nullptr || (message == nullptr && message_len > 0))
        return kFailed;
    if (!zokecc::curve_is_installed()) return kFailed;
    const zokecc::CurveView curve = zokecc::global_view();
    ecc_point Q{};
    Wiping<mint> M;
    zokecc::read_point(*recipient, Q);
    read_reduced(message, message_len, curve.p, *M);

    ecc_point C1{};
    Wiping<ecc_point> S;
    if (!draw_points(curve, Q, C1, *S)) return kFailed;
    mint c{};
    mint_mod_mul(M.get(), &S->x, &curve.p, &c);

    out[0] = kPrefix;
    const uint32_t capacity = out_capacity > 0 ? static_cast<uint32_t>(out_capacity) : 0;
    NumberWriter writer(out + 1, capacity, 4 * zokecc::used_words(curve.p));
    writer.put(C1.x);
    writer.put(C1.y);
    writer.put(c);
    return static_cast<int32_t>(writer.total());
}

// KEPT: the shortest encoding is given back, so leading zero bytes of the message are lost. Held
// by EcesDecry.KeptLeadingZeroBytesAreLost.
int32_t Eces_Decry(const ecc_scalar *d, const uint8_t *cipher, uint32_t cipher_len, uint8_t *out)
{
    const zokecc::CallBurn burn;
    if (!zokecc::is_readable(d) || cipher == nullptr || out == nullptr) return kFailed;
    if (!zokecc::curve_is_installed()) return kFailed;
    const zokecc::CurveView curve = zokecc::global_view();
    Wiping<mint> scalar;
    zokecc::read_scalar(*d, *scalar);
    if (mint_compare(scalar.get(), &curve.n) >= 0 || cipher[0] != kPrefix) return kFailed;
    const uint32_t width = cipher_len / 3;
    if (width > zokecc::kMintBytes) return kFailed;

    ecc_point C1{};
    mint c{};
    octetstring_to_mint(cipher + 1, width, &C1.x);
    octetstring_to_mint(cipher + 1 + width, width, &C1.y);
    octetstring_to_mint(cipher + 1 + 2 * width, width, &c);
    Wiping<ecc_point> S;
    if (!zokecc::multiply(curve, *scalar, C1, *S)) return kFailed;
    Wiping<mint> M;
    mint_EEA_algo(&S->x, &curve.p, M.get());
    mint_mod_mul(&c, M.get(), &curve.p, M.get());

    Wiping<uint8_t[kMaxPlainBytes]> plain;
    uint32_t length = 0;
    mint_to_octetstring(M.get(), kMaxPlainBytes, *plain, &length);
    std::memcpy(out, *plain, length);
    out[length] = 0;
    return static_cast<int32_t>(length);
}
