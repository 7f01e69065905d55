// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Keys, signatures, ciphertexts and PEM as the command-line tool reads them: accepted input is written
// back unchanged or, if more than one form is accepted, reads as the same.
#include <cstring>

#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_input.h"
#include "tools/ec_key.h"
#include "tools/formats.h"
#include "tools/key_math.h"
#include "tools/pem.h"

using namespace zokecc_fuzz;

namespace {

const named_curve &any_curve(FuzzInput &input) {
    return named_curves[input.below(static_cast<uint32_t>(named_curve_count))];
}

bool same(const ec_key &a, const ec_key &b) { return std::memcmp(&a, &b, sizeof a) == 0; }

void check_written(const ec_key &key) {
    for (key_form form : {KEY_SEC1, KEY_PKCS8, KEY_SPKI}) {
        ByteString der(MAX_KEY_DER);
        der.resize(ec_key_to_der(&key, form, der.data(), der.size()));
        check(der.empty() == (form == KEY_SPKI ? key.point_size == 0 : key.has_private == 0),
              "written if the key has the parts of the form");
        if (der.empty()) continue;
        ec_key want = key, again{};
        if (form == KEY_SPKI) {
            want.has_private = 0;
            std::memset(want.d, 0, sizeof want.d);
        }
        check(ec_key_from_der(&again, der.data(), der.size()) == nullptr, "a written key is read");
        check(same(want, again), "and is the same");
        char pem[MAX_KEY_PEM];
        const size_t size = ec_key_to_pem(&key, form, pem, sizeof pem);
        again = {};
        check(ec_key_from_file(&again, reinterpret_cast<uint8_t *>(pem), size) == nullptr, "so is its PEM");
        check(same(want, again), "and is the same from PEM");
    }
}

void check_key(const ByteString &bytes, const named_curve *expected) {
    const ec_key nothing{};
    ec_key key{};
    key.curve = expected;
    if (ec_key_from_file(&key, bytes.data(), bytes.size()) != nullptr) {
        check(same(key, nothing), "a key that is refused is cleared");
        return;
    }
    check(key.curve != nullptr && (key.has_private || key.point_size > 0), "an accepted key is complete");
    check(expected == nullptr || key.curve == expected, "on the requested curve");
    check_written(key);
    ECCrefPublicKey pub{};
    // secp224r1: a compressed point without a root takes long to refuse.
    if (key.has_private || key.point_size == 0 || (key.point[0] & 6) == 2) return;
    if (point_to_record(key.curve, key.point, key.point_size, &pub) != nullptr) return;
    uint8_t point[MAX_POINT];
    check(record_to_point(key.curve, &pub, 0, point) == key.point_size, "the size of a point");
    check(std::memcmp(point + 1, key.point + 1, key.point_size - 1) == 0, "the point unchanged");
}

void check_pem(const ByteString &bytes, size_t capacity) {
    pem_reader in{reinterpret_cast<const char *>(bytes.data()), bytes.size()};
    char label[PEM_MAX_LABEL];
    ByteString out(capacity);
    size_t size = 0;
    while (pem_read(&in, label, out.data(), capacity, &size) == PEM_OK) {
        check(size > 0 && size <= capacity, "some bytes, that fit");
        std::string text(2 * size + 200, '\0');
        text.resize(pem_write(label, out.data(), size, text.data(), text.size()));
        pem_reader again{text.data(), text.size()};
        char same_label[PEM_MAX_LABEL];
        ByteString same_bytes(size);
        size_t same_size = 0;
        check(pem_read(&again, same_label, same_bytes.data(), size, &same_size) == PEM_OK, "read again");
        check(std::strcmp(label, same_label) == 0, "the same label");
        check_bytes(same_bytes, ByteString(out.begin(), out.begin() + static_cast<std::ptrdiff_t>(size)),
                    "the same bytes");
    }
}

void check_signature(const named_curve &curve, signature_form form, const ByteString &bytes) {
    ECCSignature sig;
    if (read_signature(&curve, form, bytes.data(), bytes.size(), &sig) != nullptr) return;
    ByteString out(MAX_SIGNATURE_BYTES);
    out.resize(write_signature(&curve, form, &sig, out.data()));
    check_bytes(out, bytes, "the signature unchanged");
}

void check_cipher(const named_curve &curve, cipher_form form, const ByteString &bytes) {
    cipher_parts parts;
    if (read_cipher(&curve, form, bytes.data(), bytes.size(), &parts) != nullptr) return;
    check(parts.c2_size > 0 && parts.c2 >= bytes.data() &&
              parts.c2 + parts.c2_size <= bytes.data() + bytes.size() && parts.c3 >= bytes.data() &&
              parts.c3 + CHECK_BYTES <= bytes.data() + bytes.size(),
          "the parts lie in the ciphertext");
    ByteString out(bytes.size());
    check(write_cipher(&curve, form, &parts, out.data(), out.size()) == bytes.size(), "the same size");
    check_bytes(out, bytes, "the ciphertext unchanged");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    const uint32_t what = input.below(8);
    const named_curve &curve = any_curve(input);
    const uint32_t choice = input.below(8);
    const ByteString bytes = input.rest(2048);
    switch (what) {
    case 0: check_pem(bytes, 8 * choice * choice); break;
    case 1: check_signature(curve, choice % 2 == 0 ? SIGNATURE_DER : SIGNATURE_RAW, bytes); break;
    case 2: check_cipher(curve, static_cast<cipher_form>(choice % 5), bytes); break;
    case 3: check_key(bytes, &curve); break;
    default: check_key(bytes, nullptr); break;
    }
    return 0;
}
