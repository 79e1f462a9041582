#include "platform/number_text.h"

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

#include "framework/text.h"
#include "golden_rows.h"
#include "gtest/gtest.h"

namespace {

TEST(ReadDouble, GivesTheRecordedBits) {
    for (const GoldenRow& row : golden_rows("atof.tsv")) {
        std::size_t used = 0;
        const double value = tool::read_double(*row.text("text"), &used);
        if (!row.demanded()) continue;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::stoull(row.field("bits_msvcr80"), nullptr, 16))
            << row.field("id");
        EXPECT_EQ(used, static_cast<std::size_t>(row.number("strtod_used_msvcr80"))) << row.field("id");
    }
}

TEST(ReadDouble, SaturatesAndStaysExactAtTheEdges) {
    const struct {
        std::string text;
        double value;
    } cases[] = {
        {"1e309", std::numeric_limits<double>::infinity()},
        {"-1e99999999999999999999", -std::numeric_limits<double>::infinity()},
        {"1e-99999999999999999999", 0},
        {"0e99999999999999999999", 0},
        {"0." + std::string(400, '0') + "1", 0},
        {"0." + std::string(400, '0') + "1e401", 1},
        {"1" + std::string(400, '0') + "e-400", 1},
        {"0x10", 0},
        {"4.9406564584124654e-324", std::numeric_limits<double>::denorm_min()},
        {"1.7976931348623157e308", std::numeric_limits<double>::max()},
    };
    for (const auto& c : cases) EXPECT_EQ(tool::read_double(c.text), c.value) << c.text;
}

TEST(ReadDouble, RoundsEveryPrintedDoubleBackToItself) {
    std::mt19937_64 random(20240229);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) continue;
        CString text;
        text.Format("%.17g", value);
        ASSERT_EQ(tool::read_double(text.View()), value) << text;
        ASSERT_EQ(tool::read_double(text.View()), std::strtod(text, nullptr)) << text;
    }
}

TEST(ReadInt, GivesTheRecordedNumbers) {
    for (const GoldenRow& row : golden_rows("atoi.tsv"))
        EXPECT_EQ(tool::read_int(*row.text("text")), row.number("atoi_msvcr80")) << row.field("id");
    EXPECT_EQ(tool::read_leading_integer("9223372036854775801").value, 9223372036854775801);
    EXPECT_EQ(tool::read_leading_integer("9223372036854775808").value, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(tool::read_leading_integer("-9223372036854775808x").value, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(tool::read_leading_integer("-9223372036854775808x").used, 20u);
}

TEST(Printing, IsExactAsInC99) {
    for (const GoldenRow& row : golden_rows("print_double.tsv")) {
        if (!row.demanded()) continue;
        const double value =
            std::bit_cast<double>(static_cast<std::uint64_t>(std::stoull(row.field("bits"), nullptr, 16)));
        const std::string format = *row.text("format");
        CString text;
        text.Format(format.c_str(), value);
        EXPECT_EQ(text.View(), *row.text("c99")) << row.field("id");
        if (format == "%f") {
            EXPECT_EQ(tool::print_fixed(value, 6), *row.text("c99"));
        }
        if (format == "%.0f") {
            EXPECT_EQ(tool::print_fixed(value, 0), *row.text("c99"));
        }
    }
}

TEST(Printing, OfDoublesAgreesWithTheCLibraryOnAnyBits) {
    std::mt19937_64 random(19580331);
    for (int i = 0; i < 5000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (std::isnan(value)) continue;
        for (const char* format : {"%.3f", "%+g", "%#.4G", "%012.2E", "%-30.9g|"}) {
            char expected[400];
            std::snprintf(expected, sizeof expected, format, value);
            CString text;
            text.Format(format, value);
            ASSERT_STREQ(text, expected) << format;
        }
    }
}

TEST(Printing, OfIntegersTextsAndBareFormatsIsAsRecorded) {
    for (const GoldenRow& row : golden_rows("print_int.tsv")) {
        CString text;
        text.Format(row.text("format")->c_str(), row.number("value"));
        if (row.demanded()) {
            EXPECT_EQ(text.View(), *row.text("msvcr80")) << row.field("id");
        }
    }
    for (const GoldenRow& row : golden_rows("print_text.tsv")) {
        CString text;
        text.Format(row.text("format")->c_str(), row.text("text")->c_str());
        if (row.demanded()) {
            EXPECT_EQ(text.View(), *row.text("msvcr80")) << row.field("id");
        }
    }
    for (const GoldenRow& row : golden_rows("print_format_only.tsv")) {
        CString text;
        text.Format(row.text("format")->c_str());
        if (row.demanded()) {
            EXPECT_EQ(text.View(), *row.text("text_msvcr80")) << row.field("id");
        }
    }
}

TEST(Numbers, KeepTheirPointInALocaleWithACommaForIt) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE"})
        if (std::setlocale(LC_ALL, locale)) break;
    if (*std::localeconv()->decimal_point != ',') GTEST_SKIP() << "the system has no such locale";
    CString text;
    text.Format("%.1f", 2.5);
    EXPECT_STREQ(text, "2.5");
    EXPECT_EQ(tool::read_double("2.5"), 2.5);
    EXPECT_EQ(tool::print_fixed(2.5, 1), "2.5");
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
