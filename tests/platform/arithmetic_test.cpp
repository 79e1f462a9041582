#include "platform/arithmetic.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <regex>
#include <string>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity(), none = std::numeric_limits<double>::quiet_NaN();

// What the bits of a function's results over many sizes and signs of argument add up to.
std::uint64_t sum_of_bits(double (*function)(double), double largest) {
    std::uint64_t sum = 0, state = 1;
    for (int i = 0; i < 100000; ++i) {
        state = state * 6364136223846793005 + 1442695040888963407;
        const double x = static_cast<double>(static_cast<std::int64_t>(state)) * 0x1p-63 * largest;
        for (const double y : {x, std::ldexp(x, -i % 60)})
            sum = std::rotl(sum, 7) ^ std::bit_cast<std::uint64_t>(function(y));
    }
    return sum;
}

}  // namespace

// MPFR tells what is right (arithmetic_check), where it is. These sums, taken where it agreed, tell it elsewhere.
TEST(Arithmetic, HasTheSameBitsOnEveryPlatform) {
    EXPECT_EQ(sum_of_bits(tool::acos, 1), 0x609b960d89b2b5b7u);
    EXPECT_EQ(sum_of_bits(tool::atan, 1e6), 0x11b9de42886b1c3eu);
    EXPECT_EQ(sum_of_bits(tool::sin, 1e300), 0x7b878699db11a485u);
    EXPECT_EQ(sum_of_bits(tool::cos, 1e300), 0x02db2463a3df507du);
    EXPECT_EQ(sum_of_bits(tool::exp, 746), 0x3ed08c8b7048586eu);
}

TEST(Arithmetic, EndsAndSignsOfZeroAreThoseOfTheStandard) {
    const struct {
        double (*function)(double);
        double argument, result;
    } rows[] = {
        {tool::acos, 1, 0},       {tool::acos, -1, 0x1.921fb54442d18p+1},
        {tool::acos, 1.5, none},  {tool::acos, -inf, none},
        {tool::acos, none, none}, {tool::acos, -0.0, 0x1.921fb54442d18p+0},
        {tool::atan, 0, 0},       {tool::atan, -0.0, -0.0},
        {tool::atan, none, none}, {tool::atan, -inf, -0x1.921fb54442d18p+0},
        {tool::sin, -0.0, -0.0},  {tool::sin, inf, none},
        {tool::sin, none, none},  {tool::sin, -5e-324, -5e-324},
        {tool::cos, -0.0, 1},     {tool::cos, -inf, none},
        {tool::cos, none, none},  {tool::exp, -0.0, 1},
        {tool::exp, inf, inf},    {tool::exp, -inf, 0},
        {tool::exp, none, none},  {tool::exp, 710, inf},
    };
    for (const auto& [function, argument, result] : rows) {
        const double found = function(argument);
        if (result != result)
            EXPECT_TRUE(std::isnan(found)) << argument;
        else
            EXPECT_EQ(std::bit_cast<std::uint64_t>(found), std::bit_cast<std::uint64_t>(result)) << argument;
    }
}

TEST(Arithmetic, NoRoomUsesTheCLibrarysFunctions) {
    const std::regex theirs(R"(std::(a?(cos|sin|tan)h?|atan2|exp2?|expm1|pow|cbrt|hypot|log(10|2|1p)?)\()");
    for (const char* room : {"geometry", "analysis", "render", "util", "exif", "platform"})
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(std::string(TOOL_SOURCE_DIR "/") + room)) {
            if (!entry.is_regular_file()) continue;
            std::ifstream file(entry.path());
            const std::string text(std::istreambuf_iterator<char>(file), {});
            EXPECT_FALSE(std::regex_search(text, theirs)) << entry.path();
        }
}
