#include "platform/text.h"

#include "framework/text.h"
#include "golden_rows.h"
#include "gtest/gtest.h"
#include "platform/path.h"

namespace {

std::string offsets_of_characters(std::string_view text) {
    std::string offsets = "0";
    for (std::size_t at = 0; at < text.size();)
        offsets += "," + std::to_string(at += tool::char_length(text.substr(at)));
    return offsets;
}

TEST(Characters, AreSteppedAsRecorded) {
    for (const GoldenRow& row : golden_rows("char_next.tsv"))
        if (row.demanded()) {
            EXPECT_EQ(offsets_of_characters(*row.text("text")), row.field("CharNextA_offsets")) << row.field("id");
        }
    for (const GoldenRow& row : golden_rows("mbsinc.tsv"))
        if (row.demanded()) {
            EXPECT_EQ(offsets_of_characters(*row.text("text")), row.field("msvcr80")) << row.field("id");
        }
}

TEST(Characters, NeverPassTheTerminatingNulBehindALoneLeadByte) {
    const char text[] = "\x83\0\x5C";
    EXPECT_EQ(tool::char_length({text, 1}), 1u);
    EXPECT_EQ(tool::char_length({text, 2}), 1u);
}

TEST(Characters, HaveTheRecordedClasses) {
    const auto ranges = [](auto holds) {
        std::string text;
        for (int first = 0; first < 256; ++first) {
            if (!holds(static_cast<unsigned char>(first))) continue;
            int last = first;
            while (last < 255 && holds(static_cast<unsigned char>(last + 1))) ++last;
            char range[24];  // a comma and two numbers of up to 8 digits
            std::snprintf(range, sizeof range, "%s%02X-%02X", text.empty() ? "" : ",", static_cast<unsigned>(first),
                          static_cast<unsigned>(last));
            text += range;
            first = last;
        }
        return text;
    };
    const std::map<std::string, std::string> own = {
        {"isspace_msvcr80", ranges([](unsigned char c) { return tool::is_space(static_cast<char>(c)); })},
        {"isdigit_msvcr80", ranges([](unsigned char c) { return tool::is_digit(static_cast<char>(c)); })},
        {"_ismbblead_msvcr80", ranges(tool::is_lead_byte)},
        {"_ismbbtrail_msvcr80", ranges(tool::is_trail_byte)},
    };
    for (const GoldenRow& row : golden_rows("ctype.tsv"))
        if (own.contains(row.field("what"))) {
            EXPECT_EQ(own.at(row.field("what")), row.field("result"));
        }
}

int sign(int order) {
    return (order > 0) - (order < 0);
}

TEST(Comparing, GivesTheRecordedOrder) {
    for (const GoldenRow& row : golden_rows("compare.tsv")) {
        const std::string a = *row.text("a"), b = *row.text("b");
        const int orders[] = {sign(CString(a.c_str()).CompareNoCase(b.c_str())),
                              sign(CString(a.c_str()).Compare(b.c_str()))};
        if (!row.demanded()) continue;
        SCOPED_TRACE(row.field("id"));
        EXPECT_EQ(orders[0], row.number("_mbsicmp_msvcr80"));
        EXPECT_EQ(orders[1], row.number("_mbscmp_msvcr80"));
    }
}

TEST(Comparing, TakesNoTrailByteForALetter) {
    EXPECT_TRUE(tool::equal_ignoring_case("Title:", "tITLE:"));
    EXPECT_FALSE(tool::equal_ignoring_case("\x83\x41", "\x83\x61"));  // ア and チ
    EXPECT_FALSE(tool::equal_ignoring_case("@", "`"));
}

TEST(Case, IsMappedAsRecorded) {
    for (const GoldenRow& row : golden_rows("case_map.tsv")) {
        if (!row.demanded()) continue;
        EXPECT_EQ(tool::upper(*row.text("text")), *row.text("CharUpperA")) << row.field("id");
        EXPECT_EQ(tool::lower(*row.text("text")), *row.text("CharLowerA")) << row.field("id");
    }
}

TEST(Case, OfEveryTwoByteLetterComesBack) {
    int letters = 0;
    for (int lead = 0x82; lead <= 0x84; ++lead) {
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            const std::string character = {static_cast<char>(lead), static_cast<char>(trail)};
            const std::string small = tool::lower(character);
            if (small == character) continue;
            ++letters;
            EXPECT_TRUE(tool::is_trail_byte(static_cast<unsigned char>(small[1])));
            EXPECT_EQ(tool::upper(small), character);
        }
    }
    EXPECT_EQ(letters, 26 + 24 + 33);  // Latin, Greek, Cyrillic
}

TEST(Searching, FindsWhatWasRecorded) {
    for (const GoldenRow& row : golden_rows("search.tsv")) {
        if (!row.demanded()) continue;
        const std::string text = *row.text("text");
        std::string wanted = *row.text("wanted");
        const bool by_code = row.field("function") != "_mbsstr";
        if (by_code && wanted == "0") continue;  // the terminating NUL is no character of a view
        if (by_code) {
            const int code = std::stoi(wanted, nullptr, 16);
            wanted = code > 0xFF ? std::string{static_cast<char>(code >> 8), static_cast<char>(code)}
                                 : std::string{static_cast<char>(code)};
        }
        const bool backwards = row.field("function") == "_mbsrchr";
        if (backwards && wanted.size() > 1) continue;
        const std::size_t found = backwards ? tool::find_last_char(text, wanted[0]) : tool::find_text(text, wanted);
        EXPECT_EQ(static_cast<int>(found), row.number("msvcr80")) << row.field("id");
    }
}

TEST(SplitPath, GivesTheRecordedParts) {
    for (const GoldenRow& row : golden_rows("splitpath.tsv")) {
        const std::string path = *row.text("path");
        const tool::PathParts parts = tool::split_path(path);
        EXPECT_EQ(std::string(parts.drive).append(parts.dir).append(parts.name).append(parts.ext), path);
        if (!row.demanded()) continue;
        SCOPED_TRACE(row.field("id"));
        EXPECT_EQ(parts.drive, *row.text("drive_msvcr80"));
        EXPECT_EQ(parts.dir, *row.text("dir_msvcr80"));
        EXPECT_EQ(parts.name, *row.text("name_msvcr80"));
        EXPECT_EQ(parts.ext, *row.text("ext_msvcr80"));
    }
}

}  // namespace
