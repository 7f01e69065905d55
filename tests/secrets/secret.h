// What must not be left in memory after a call, in every form that the arithmetic has for it.
#ifndef ZOKECC_TESTS_SECRETS_SECRET_H
#define ZOKECC_TESTS_SECRETS_SECRET_H

#include <zokecc/mint.h>

#include <string>
#include <vector>

#include "tests/support/guarded_buffer.h"

namespace zokecc_test::secrets {

struct Secret {
    std::string name;
    ByteString bytes;  // big-endian
};

// The words in use, so that no part of it is a row of zero bytes.
Secret secret(const std::string &name, const mint &value);

// One form of a secret as it would lie in memory.
struct Image {
    std::string name;  // "the nonce, least significant byte first"
    ByteString bytes;
};

// A part of an image counts as found from 8 bytes on, wherever it begins on a word of the image.
inline constexpr size_t kPartBytes = 8;
inline constexpr size_t kWordBytes = 4;

std::vector<Image> images_of(const std::vector<Secret> &secrets);

}  // namespace zokecc_test::secrets

#endif
