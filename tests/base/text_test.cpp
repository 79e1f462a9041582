#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "base/columns.h"
#include "base/numbers.h"
#include "base/suggestion.h"
#include "base/utf8.h"
#include "base/wording.h"

namespace cephtool {
namespace {

TEST(DisplayWidth, CountsTerminalColumns) {
    const struct {
        const char* text;
        int width;
    } rows[] = {
        {"", 0},           {"SNA", 3},      {"±", 1},       {"ｾﾗ", 2},     {"セラ", 4},   {"下顎角°", 7},
        {"Ａ", 2},         {"か\u3099", 2}, {"e\u0301", 1}, {"\u200B", 0}, {"漢\xFF", 3}, {"\xE3\x82", 2},
        {"\U0001F9B7", 2}, {"–", 1},        {"\u1100", 2},  {"\u1160", 1}, {"\u303F", 1}, {"\U00020000", 2},
    };
    for (const auto& row : rows) EXPECT_EQ(display_width(row.text), row.width) << row.text;
}

TEST(FittedText, NeverTakesMoreColumnsThanGiven) {
    EXPECT_EQ(fitted("Interincisal", 8), "Interin…");
    EXPECT_EQ(fitted("下顎下縁", 8), "下顎下縁");
    EXPECT_EQ(fitted("下顎下縁", 7), "下顎下…");
    EXPECT_EQ(fitted("下顎下縁", 6), "下顎…");
    for (const std::string text : {"Facial angle", "下顎下縁平面角", "a下b顎c", "e\u0301e\u0301e\u0301"})
        for (int width = 0; width < 20; ++width) {
            EXPECT_LE(display_width(fitted(text, width)), width) << text;
            EXPECT_EQ(display_width(left_aligned(fitted(text, width), width)), width) << text;
            EXPECT_EQ(display_width(right_aligned(fitted(text, width), width)), width) << text;
        }
}

TEST(WrappedText, BreaksAtBlanksOnly) {
    EXPECT_EQ(wrapped("missing: Or, Po", 10, "  "), "missing:\n  Or, Po");
    EXPECT_EQ(wrapped("one extraordinarily long word", 5, ""), "one\nextraordinarily\nlong\nword");
    EXPECT_EQ(wrapped("", 5, "  "), "");
    EXPECT_EQ(wrapped("a 上顎の前方位。SNAも", 9, " "), "a 上顎の\n 前方位。\n SNAも");
    for (int width = 1; width < 20; ++width) {
        std::istringstream lines(wrapped("one two three  four", width, ""));
        for (std::string line; std::getline(lines, line);)
            EXPECT_TRUE(display_width(line) <= width || line.find(' ') == std::string::npos) << width << line;
    }
}

TEST(Utf8, MalformedBytesAreFoundWhereTheyStand) {
    const struct {
        std::string text;
        std::size_t at;
    } rows[] = {
        {"plain 漢字 \U0001F9B7", std::string::npos},
        {"a\x80", 1},                 // a trail byte alone
        {"a\xC0\x80", 1},             // overlong
        {"\xE0\x9F\xBF", 0},          // overlong
        {"ab\xED\xA0\x80", 2},        // surrogate
        {"\xF4\x90\x80\x80", 0},      // beyond U+10FFFF
        {"漢\xE3\x82", 3},            // cut
        {"\xF0\x8F\xBF\xBF", 0},      // overlong
        {"\xF8\x88\x80\x80\x80", 0},  // no such lead byte
    };
    for (const auto& row : rows) EXPECT_EQ(first_malformed(row.text), row.at) << row.text;
}

TEST(PrintableText, HoldsNothingThatATerminalObeys) {
    EXPECT_EQ(printable("\x1b[31mred\x07\x7f\xC2\x9B"), "\\x1B[31mred\\x07\\x7F\\x9B");
    EXPECT_EQ(printable("a\u202Egpj\u2066\u061Cb\u200C"), "a\\u202Egpj\\u2066\\u061Cb\u200C");
    EXPECT_EQ(printable("見\xFF"), "見\uFFFD");
    EXPECT_EQ(in_quotes(std::string(1000, 'x')), "\"" + std::string(39, 'x') + "…\"");
}

TEST(Suggestion, IsTheClosestWordWithinASlipForThreeLetters) {
    const std::vector<std::string> words = {"analyze", "analyses", "Pog", "Pog(R)", "N", "Or"};
    const struct {
        const char* typed;
        const char* meant;
    } rows[] = {
        {"analyse", "analyze"},
        {"anaylze", "analyze"},
        {"analysis", "analyses"},
        {"POG(r)", "Pog(R)"},
        {"pog", "Pog"},
        {"Pgo", "Pog"},
        {"n", "N"},
        {"Q", ""},
        {"xyz", ""},
        {"", ""},
        {"convert", ""},
        {"ro", ""},
    };
    for (const auto& row : rows) {
        const std::string expected = *row.meant ? "Did you mean \"" + std::string(row.meant) + "\"?" : "";
        EXPECT_EQ(did_you_mean(row.typed, words), expected) << row.typed;
    }
    EXPECT_EQ(did_you_mean(std::string(100'000, 'a'), words), "");
}

TEST(Numbers, AreReadWholeOrNotAtAll) {
    for (const char* good : {"0", "-1.5", "+2", " 3 ", "1e3", ".5", "5."}) EXPECT_TRUE(number_from(good)) << good;
    for (const char* bad : {"", " ", "-", "1,5", "1 2", "0x10", "inf", "nan", "1e999", "+-1", "1e", "12px"})
        EXPECT_FALSE(number_from(bad)) << bad;
}

TEST(Numbers, ShortestTextGivesTheSameDouble) {
    for (const double value : {0.1, 1.0 / 3, 82.0, -1e-300, 1.7976931348623157e308, 90.00000001175155})
        EXPECT_EQ(number_from(shortest(value)), value);
    EXPECT_EQ(shortest(0.1), "0.1");
    const auto written = [](double value) {
        char text[shortest_room];
        return std::string(text, write_shortest(text, value));
    };
    for (const int divisor : {1, 10, 100, 1000})
        for (int whole = -10'001'000; whole <= 10'001'000; whole += whole > -2000 && whole < 2000 ? 1 : 997)
            for (double value = static_cast<double>(whole) / divisor; const int ulps : {0, 1}) {
                if (ulps > 0) value = std::nextafter(value, 1e9);
                ASSERT_EQ(written(value), shortest(value));
            }
    for (const double value : {0.0, -0.0, 1e-310, 1.7976931348623157e308, 99999.99, 1e5, -1e-300, 1.0 / 3})
        EXPECT_EQ(written(value), shortest(value));
}

TEST(Numbers, AreWrittenForPeople) {
    EXPECT_EQ(with_decimals(82.04, 1), "82.0");
    EXPECT_EQ(with_decimals(-0.04, 1), "0.0");
    EXPECT_EQ(with_decimals(-0.06, 1), "-0.1");
    EXPECT_EQ(with_decimals(9999999.9, 1), "9999999.9");
    EXPECT_EQ(with_decimals(-1.7976931348623157e308, 1), "-1.798e+308");
}

}  // namespace
}  // namespace cephtool
