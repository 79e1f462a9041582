#include "platform/code_page.h"

#include <sstream>

#include "CodePage.h"
#include "golden_rows.h"
#include "gtest/gtest.h"

namespace {

std::string bytes_of_code(unsigned code) {
    return code > 0xFF ? std::string{static_cast<char>(code >> 8), static_cast<char>(code)}
                       : std::string{static_cast<char>(code)};
}

std::string utf8_of(unsigned c) {
    if (c < 0x80) return {static_cast<char>(c)};
    if (c < 0x800) return {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
    return {static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
            static_cast<char>(0x80 | (c & 0x3F))};
}

TEST(CodePage, ReadsTheRecordedTextsAndOddCodes) {
    for (const GoldenRow& row : golden_rows("cp932_strings.tsv")) {
        std::string expected;
        std::istringstream units(row.field("utf16"));
        for (std::string unit; units >> unit;) expected += utf8_of(static_cast<unsigned>(std::stoi(unit, nullptr, 16)));
        EXPECT_EQ(tool::utf8_from_code_page(*row.text("bytes")), expected) << row.field("id");
    }
    for (const GoldenRow& row : golden_rows("cp932_decode_differences.tsv"))
        EXPECT_EQ(
            tool::utf8_from_code_page(bytes_of_code(static_cast<unsigned>(std::stoi(row.field("code"), nullptr, 16)))),
            utf8_of(static_cast<unsigned>(std::stoi(row.field("platform"), nullptr, 16))))
            << row.field("code");
}

TEST(CodePage, ReadsTheRecordedTable) {
    std::ifstream file(TOOL_TEST_DATA "/cp932_table.tsv");
    std::string line;
    std::getline(file, line);
    int rows = 0;
    while (std::getline(file, line)) {
        const auto lead = static_cast<unsigned>(std::stoi(line.substr(0, 2), nullptr, 16));
        std::string_view characters = std::string_view(line).substr(3);
        for (unsigned trail = 0x40; trail <= 0xFC; ++trail) {
            if (trail == 0x7F) continue;
            const auto first = static_cast<unsigned char>(characters.at(0));
            const std::string_view expected = characters.substr(0, first < 0x80 ? 1 : first < 0xE0 ? 2 : 3);
            characters.remove_prefix(expected.size());
            ASSERT_EQ(tool::utf8_from_code_page(bytes_of_code(lead << 8 | trail)),
                      expected == "\uFFFD" ? "\u30FB" : expected);
        }
        ++rows;
    }
    EXPECT_EQ(rows, 25);
}

TEST(CodePage, WritesTheRecordedCodes) {
    for (const GoldenRow& row : golden_rows("cp932_encode.tsv")) {
        const auto text =
            tool::code_page_from_utf8(utf8_of(static_cast<unsigned>(std::stoi(row.field("unicode"), nullptr, 16))));
        if (row.field("platform") == "-") {
            EXPECT_FALSE(text) << row.field("id");
        } else {
            EXPECT_EQ(text.value_or("none"),
                      bytes_of_code(static_cast<unsigned>(std::stoi(row.field("platform"), nullptr, 16))))
                << row.field("id");
        }
    }
}

TEST(CodePage, WritesBackEveryCharacterThatItReads) {
    int characters = 0;
    for (unsigned code = 1; code < 0xFFFF; ++code) {
        const char16_t character = tool::character_of_code(static_cast<std::uint16_t>(code));
        if (character == 0) continue;
        ++characters;
        ASSERT_EQ(tool::character_of_code(tool::code_of_character(character)), character) << code;
        ASSERT_EQ(tool::code_page_from_utf8(utf8_of(character)), bytes_of_code(tool::code_of_character(character)));
    }
    EXPECT_EQ(characters, 255 - 60 + 7724 + 1880);
}

TEST(CodePage, RefusesBrokenUtf8) {
    for (const std::string broken : {"\x80", "\xE3\x81", "\xC0\xAF", "\xE0\x80\xAF", "\xE0\x8E\x91", "\xED\xA0\x80",
                                     "\xF0\x9F\xA6\xB7", "\xE3\x41\x82"}) {
        CString text = "before";
        EXPECT_FALSE(CodePage932FromUtf8(broken.c_str(), &text));
        EXPECT_TRUE(text.IsEmpty());
    }
    EXPECT_EQ(Utf8FromCodePage932(nullptr), "");
    EXPECT_EQ(Utf8FromCodePage932("\x95\x5C\x83"), "表・");
}

}  // namespace
