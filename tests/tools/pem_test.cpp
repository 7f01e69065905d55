// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// PEM: only canonical text is accepted, what is written can be read back, nothing is written out of bounds.
#include "pem.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/hex.h"

namespace {

using zokecc_test::ByteString;

struct Read {
    pem_status status;
    std::string label;
    ByteString bytes;
    size_t left;
};

Read read(const std::string &text, size_t capacity = 4096) {
    pem_reader in{text.data(), text.size()};
    char label[PEM_MAX_LABEL] = "";
    ByteString out(capacity + 1, 0xee);
    size_t size = 0;
    const pem_status status = pem_read(&in, label, out.data(), capacity, &size);
    EXPECT_EQ(0xee, out[capacity]);
    out.resize(size);
    return {status, label, out, in.left};
}

std::string block(const std::string &body) { return "-----BEGIN X-----\n" + body + "-----END X-----\n"; }

std::string written(const ByteString &bytes) {
    std::string text(2 * bytes.size() + 100, '\0');
    text.resize(pem_write("A KEY", bytes.data(), bytes.size(), text.data(), text.size()));
    return text;
}

TEST(PemRead, TakesTheExamplesOfRfc4648) {
    const std::string foobar = "foobar";
    for (auto [body, size] : {std::pair{"Zg==\n", 1},
                              {"Zm8=\n", 2},
                              {"Zm9v\n", 3},
                              {"Zm9vYg==\n", 4},
                              {"Zm9v\nYmE=\n", 5},
                              {"Zm9vYmFy\n", 6},
                              {"Zm\n9vYm\r\nFy\n", 6}}) {
        const Read got = read(block(body));
        EXPECT_EQ(PEM_OK, got.status) << body;
        EXPECT_EQ(ByteString(foobar.begin(), foobar.begin() + size), got.bytes) << body;
        EXPECT_EQ("X", got.label);
    }
}

TEST(PemRead, SaysWhatIsWrong) {
    const std::string line(77, 'A');
    const std::pair<std::string, pem_status> table[] = {
        {"", PEM_NO_BEGIN},
        {"BEGIN X", PEM_NO_BEGIN},
        {" -----BEGIN X-----\n", PEM_NO_BEGIN},
        {"-----BEGIN X----\n", PEM_BAD_LABEL},
        {"-----BEGIN -----\n", PEM_BAD_LABEL},
        {"-----BEGIN " + std::string(PEM_MAX_LABEL, 'X') + "-----\n", PEM_BAD_LABEL},
        {"-----BEGIN \t-----\n", PEM_BAD_LABEL},
        {"-----BEGIN X----- \n", PEM_BAD_LABEL},
        {"-----BEGIN X-----\nZg==\n", PEM_NO_END},
        {"-----BEGIN X-----\n", PEM_NO_END},
        {"-----BEGIN X-----\nZg==\n-----BEGIN X-----\n", PEM_NO_END},
        {"-----BEGIN X-----\nZg==\n-----END Y-----\n", PEM_OTHER_END},
        {"-----BEGIN X-----\nZg==\n-----END X----\n", PEM_OTHER_END},
        {block(""), PEM_EMPTY},
        {block("Proc-Type: 4,ENCRYPTED\n\nZg==\n"), PEM_HEADERS},
        {block("Zg=\n"), PEM_BAD_TEXT},
        {block("Zg\n"), PEM_BAD_TEXT},
        {block("Z\n"), PEM_BAD_TEXT},
        {block("Zg=A\n"), PEM_BAD_TEXT},
        {block("Zg==Zg==\n"), PEM_BAD_TEXT},
        {block("Zg===\n"), PEM_BAD_TEXT},
        {block("====\n"), PEM_BAD_TEXT},
        {block("Z===\n"), PEM_BAD_TEXT},
        {block("Zh==\n"), PEM_BAD_TEXT},
        {block("Zm9=\n"), PEM_BAD_TEXT},
        {block("Zm 8=\n"), PEM_BAD_TEXT},
        {block("Zm-_\n"), PEM_BAD_TEXT},
        {block("Zm\xe9=\n"), PEM_BAD_TEXT},
        {block(line + "AAA\n"), PEM_BAD_TEXT},
    };
    for (const auto &[text, status] : table) {
        const Read got = read(text);
        EXPECT_EQ(status, got.status) << text;
        EXPECT_EQ(text.size(), got.left) << text;
        EXPECT_STRNE("", pem_status_text(got.status)) << text;
    }
    EXPECT_EQ(PEM_TOO_LONG, read(block("Zm9vYmFy\n"), 5).status);
    EXPECT_EQ(PEM_OK, read(block("Zm9vYmFy\n"), 6).status);
}

TEST(PemRead, TakesOneBlockAfterTheOther) {
    const std::string text = "words\n" + block("Zg==\n") + "more words\n" + block("Zm8=\n");
    pem_reader in{text.data(), text.size()};
    char label[PEM_MAX_LABEL];
    uint8_t out[8];
    size_t size = 0;
    ASSERT_EQ(PEM_OK, pem_read(&in, label, out, sizeof out, &size));
    EXPECT_EQ(1u, size);
    ASSERT_EQ(PEM_OK, pem_read(&in, label, out, sizeof out, &size));
    EXPECT_EQ(2u, size);
    EXPECT_EQ(PEM_NO_BEGIN, pem_read(&in, label, out, sizeof out, &size));
}

TEST(PemWrite, EveryLengthIsReadAgain) {
    for (size_t size = 1; size < 200; ++size) {
        ByteString bytes(size);
        for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<uint8_t>(37 * i + size);
        const std::string text = written(bytes);
        const Read got = read(text);
        ASSERT_EQ(PEM_OK, got.status) << size;
        EXPECT_EQ(bytes, got.bytes) << size;
        EXPECT_EQ("A KEY", got.label);
        std::string shorter(text.size(), '?');
        EXPECT_EQ(0u, pem_write("A KEY", bytes.data(), size, shorter.data(), text.size() - 1)) << size;
        EXPECT_EQ('?', shorter.back());
        for (size_t cut = 0; cut < text.size() - 1; ++cut)
            ASSERT_NE(PEM_OK, read(text.substr(0, cut)).status) << size << ", " << cut;
    }
}

TEST(PemWrite, BreaksLinesAfter64Characters) {
    const std::string text = written(ByteString(49, 0));
    EXPECT_EQ("-----BEGIN A KEY-----\n" + std::string(64, 'A') + "\nAA==\n-----END A KEY-----\n", text);
    EXPECT_EQ(0u, pem_write(std::string(PEM_MAX_LABEL, 'X').c_str(), nullptr, 0, nullptr, 0));
}

}  // namespace
