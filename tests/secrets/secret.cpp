#include "tests/secrets/secret.h"

#include <algorithm>

#include "tests/support/curves.h"

namespace zokecc_test::secrets {

namespace {

constexpr unsigned kShortLimbBits = 29;  // what multiplication on 32-bit processors works with

ByteString reversed(const ByteString &bytes) { return ByteString(bytes.rbegin(), bytes.rend()); }

// Words of this processor, the most significant word first, as a hash reads its input.
ByteString words_from_the_top(const ByteString &bytes) {
    ByteString out;
    for (size_t i = 0; i + kWordBytes <= bytes.size(); i += kWordBytes)
        for (size_t j = kWordBytes; j-- > 0;) out.push_back(bytes[i + j]);
    return out;
}

// Limbs of 29 bits, each in a word, the least significant first.
ByteString short_limbs(const ByteString &bytes) {
    ByteString out;
    const size_t bits = 8 * bytes.size();
    for (size_t first = 0; first < bits; first += kShortLimbBits) {
        uint32_t limb = 0;
        for (size_t i = 0; i < kShortLimbBits && first + i < bits; ++i) {
            const size_t bit = first + i;
            limb |= (bytes[bytes.size() - 1 - bit / 8] >> (bit % 8) & 1u) << i;
        }
        for (size_t j = 0; j < kWordBytes; ++j) out.push_back(static_cast<uint8_t>(limb >> (8 * j)));
    }
    return out;
}

}  // namespace

Secret secret(const std::string &name, const mint &value) {
    return {name, fixed_bytes(value, kWordBytes * value.len)};
}

std::vector<Image> images_of(const std::vector<Secret> &secrets) {
    std::vector<Image> out;
    for (const Secret &s : secrets) {
        out.push_back({s.name + ", most significant byte first", s.bytes});
        // Words and limbs of any size are this on a processor that is little-endian.
        out.push_back({s.name + ", least significant byte first", reversed(s.bytes)});
        out.push_back({s.name + ", most significant word first", words_from_the_top(s.bytes)});
        out.push_back({s.name + ", limbs of 29 bits", short_limbs(s.bytes)});
    }
    return out;
}

}  // namespace zokecc_test::secrets
