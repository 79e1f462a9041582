#include "platform/char_conversion.h"

#include <bit>
#include <random>
#include <sstream>

#include "gtest/gtest.h"

// The replacement for libraries without doubles in <charconv>, against <charconv> itself.
#ifdef __cpp_lib_to_chars
namespace {

namespace by_stdio = tool::by_stdio;

template <class... Format>
void expect_same_text(double value, std::ptrdiff_t room, Format... format) {
    char text[2][800] = {};
    const auto own = by_stdio::to_chars(text[0], text[0] + room, value, format...);
    const auto known = std::to_chars(text[1], text[1] + room, value, format...);
    ASSERT_EQ(own.ec, known.ec) << value;
    ASSERT_EQ(own.ptr - text[0], known.ptr - text[1]) << value;
    if (own.ec != std::errc()) return;
    ASSERT_EQ(std::string(text[0], own.ptr), std::string(text[1], known.ptr));
}

TEST(CharConversionByStdio, WritesWhatCharconvWrites) {
    using enum std::chars_format;
    std::vector<double> numbers{0., -0., 0.1, 2.5, 1e5, 123456, 1e21, 1e22, 1e23, 5e-324, HUGE_VAL, -HUGE_VAL};
    std::mt19937_64 random(20261122);
    for (int i = 0; i < 2000; ++i) {
        const auto bits = static_cast<std::int64_t>(random());
        const double any = std::bit_cast<double>(bits);
        numbers.push_back(std::isnan(any) ? 0 : any);
        numbers.push_back(static_cast<double>(bits >> (bits & 63)));
        numbers.push_back(static_cast<double>(bits >> 40) / 1000);
    }
    for (const double value : numbers)
        for (const std::ptrdiff_t room : {5, 800}) {
            expect_same_text(value, room);
            expect_same_text(value, room, fixed);
            expect_same_text(value, room, fixed, 3);
            expect_same_text(value, room, scientific, 16);
            expect_same_text(value, room, general, 6);
        }
}

TEST(CharConversionByStdio, ReadsWhatCharconvReads) {
    std::istringstream words(
        "- . 1. .5 -.5e1 +1 1e 1e+ 1e5x 1E-5 0x10 1,5 1.5.5 --1 1e309 1e-400 0e999 -0 0.000 1e-310 e5 00012 "
        "4.9406564584124654e-324 2.4703282292062327e-324 179769313486231580793e289");
    std::vector<std::string> texts{"", " 1"};
    for (std::string word; words >> word;) texts.push_back(word);
    std::mt19937 random(20261122);
    const std::string letters = "0123456789012345678901234567890123456789..ee+-x ";
    for (int i = 0; i < 20000; ++i)
        for (std::size_t length = random() % 30, at = (texts.emplace_back(), 0); at < length; ++at)
            texts.back() += letters[random() % letters.size()];
    for (const std::string& text : texts) {
        double own = 42, known = 42;
        const char* const end = text.data() + text.size();
        const auto got = by_stdio::from_chars(text.data(), end, own);
        const auto wanted = std::from_chars(text.data(), end, known);
        EXPECT_EQ(got.ec, wanted.ec) << text;
        EXPECT_EQ(got.ptr, wanted.ptr) << text;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(own), std::bit_cast<std::uint64_t>(known)) << text;
    }
}

}  // namespace
#endif
