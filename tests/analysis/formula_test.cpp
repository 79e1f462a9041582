#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <span>

#include "analysis/measures.h"
#include "tests/analysis/subject.h"

namespace tool_test {
namespace {

TEST(Formula, GivesTheWrittenValues) {
    std::ifstream table(TOOL_TEST_DATA "/formulas.txt");
    int rows = 0;
    for (std::string line; std::getline(table, line);) {
        const std::size_t arrow = line.find("=> ");
        if (line.starts_with('#') || arrow == std::string::npos) continue;
        const std::string formula = arrow == 0 ? "" : line.substr(0, arrow - 1);
        EXPECT_EQ(small_face().calc(formula), std::stod(line.substr(arrow + 3))) << line;
        ++rows;
    }
    EXPECT_GT(rows, 50);
}

TEST(Formula, GroupsCountDownTo400Levels) {
    std::string deep;
    for (int level = 0; level < 500; ++level) deep += "1+(";
    EXPECT_EQ(small_face().calc(deep + "7+7"), 99);         // each level adds 1 to the 0 of the deepest group
    EXPECT_EQ(small_face().calc(deep.substr(1500 - 3 * 50) + "7+7"), 64);
}

// Kept: the short pi, multiplied before it is divided by.
TEST(Formula, AnglesCarryTheShortPi) {
    const double right_angle = 180.0 - std::acos(0.0) * 180.0 / 3.141592654;
    EXPECT_EQ(small_face().calc("angle1([S],[N],[A])"), right_angle);
    EXPECT_EQ(small_face().calc("angle3([S],[N],[A])"), right_angle);
    // From (1, 0) to (0, 1) on the screen is clockwise on the film, hence negative.
    EXPECT_EQ(small_face().calc("angle2([S],[N],[N],[A])"), -(std::acos(0.0) * 180.0 / 3.141592654));
    EXPECT_EQ(small_face().calc("angle4([N],[A],[S],[N])"), std::acos(0.0) * 180.0 / 3.141592654);
}

TEST(Formula, TakesEachFunctionFromOneThatReadsItsArgumentsOff) {
    Lateral face = small_face();
    const std::tuple<unsigned, const char*, std::string> rows[] = {
        {101, "len", "([S],[N])"},           {102, "lenR", "([N],[S])"},       {103, "lenD", "([N],[S])"},
        {104, "angle1", "([S],[N],[A])"},    {109, "angle3", "([S],[A],[N])"}, {105, "angle2", "([S],[N],[A],[S])"},
        {110, "angle4", "([A],[N],[S],[A])"}};
    for (const auto& [code, name, arguments] : rows) {
        std::string text = arguments + "+1";
        EXPECT_EQ(CCephCalc::Calc_Mult(0, code, text.data(), &face.record, nullptr, nullptr, nullptr, nullptr, 1),
                  face.calc(name + arguments))
            << name;
        EXPECT_EQ(text, std::string(arguments.size(), ' ') + "+1") << name;
    }
}

// The rule for numbers, operators and groups as it stands, on a text in which a value takes one place: 'v'.
struct Place {
    char c;
    double value = 0;
};

double literally(std::span<Place> text, bool top_level, std::vector<double>& made) {
    const auto blank = [&](std::size_t from, std::size_t to) { std::fill_n(&text[0] + from, to - from, Place{' '}); };
    const auto first = [](std::span<Place> in) {
        return static_cast<std::size_t>(std::ranges::find(in, ')', &Place::c) - in.begin());
    };
    const auto is_number = [](char c) { return c == ' ' || c == '.' || (c >= '0' && c <= '9'); };
    const auto group = [&](std::size_t open) { return literally(text.subspan(open), false, made); };
    const auto read = [&](std::size_t from, std::size_t to) {
        std::string digits;
        for (; from < to; ++from) digits += text[from].c == ' ' ? "" : std::string(1, text[from].c);
        return digits;
    };
    std::size_t end = text.size();
    if (!top_level && text[0].c == '(') {
        end = first(text);
        if (end < text.size()) text[end] = {' '};
        text[0] = {' '};
    }
    for (const std::string_view pass : {"*/", "+-"})
        for (std::size_t at = 0; at < end; ++at) {
            const char c = text[at].c;
            if (pass.find(c) == pass.npos) continue;
            std::size_t left = at, right = at + 1;
            while (left > 0 && is_number(text[left - 1].c)) --left;
            while (right < end && is_number(text[right].c)) ++right;
            const std::string behind = read(at + 1, right);
            double a = std::atof(read(left, at).c_str()), b = std::atof(behind.c_str());
            if (left > 0 && text[left - 1].c == 'v') {
                a = text[--left].value;
            } else if (left > 0 && text[left - 1].c == ')') {
                int depth = 0;
                std::size_t open = left;
                do depth += text[--open].c == ')' ? 1 : text[open].c == '(' ? -1 : 0;
                while (depth > 0 && open > 0);
                a = depth == 0 ? group(left = open) : 0;
            }
            if (behind.empty() && right < end) {
                const char next = text[right].c;
                const std::size_t group_end = std::min(right + first(text.subspan(right)) + 1, text.size());
                b = next == 'v' ? text[right].value : next == '(' ? group(right) : 0;
                right = next == 'v' ? right + 1 : next == '(' ? group_end : at + 1;
            }
            made.push_back(c == '*' ? a * b : c == '/' ? a / b : c == '+' ? a + b : a - b);
            blank(left, right);
            text[left] = {'v', made.back()};
        }
    blank(0, end);
    return made.empty() ? 0.0 : made.back();
}

TEST(Formula, AgreesWithTheRuleAsItStandsOnRandomTexts) {
    const unsigned seed = std::random_device()();
    std::mt19937 random(seed);
    for (int round = 0; round < 5000; ++round) {
        std::string text;
        for (int length = 1 + static_cast<int>(random() % 24); length-- > 0;)
            text += "12345.+-*/+-*(()) "[random() % 18];
        const bool top_level = random() % 4;
        if (!top_level) text.insert(0, "(");
        std::vector<Place> places;
        for (const char c : text) places.push_back({c});
        std::vector<double> made;
        const double expected = literally(places, top_level, made);
        std::string left;
        for (const Place& place : places) left += place.c;
        double values[100];
        int count = 0;
        std::string work = text;
        const double got = small_face().calc(work, values, count, top_level);
        ASSERT_TRUE(got == expected || (std::isnan(got) && std::isnan(expected))) << text << ", seed " << seed;
        ASSERT_EQ(work, left) << text << ", seed " << seed;
        ASSERT_TRUE(std::ranges::equal(made, std::span(values, count),
                                       [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }))
            << text << ", seed " << seed;
    }
}

TEST(Formula, BlanksWhatItReadAndNothingElse) {
    struct {
        const char* formula;
        int top_level;
        const char* left;
    } const cases[] = {
        {"2+3;100", 1, "   ;100"},
        {"-1", 1, "  "},
        {"(2+3)*4", 0, "     *4"},
        {"(2+3;4)", 0, "    ;4)"},
        {"(1+2)+3)", 0, "     +3)"},
        {"(len([S],[N]))*2", 0, "              *2"},
        {"(case(\"None\"))+1", 0, "              +1"},
        {"(2+(3*4)+len([S],[N]))+1", 0, "                      +1"},
        {"1=2", 0, "   "},
        {"case(\"None\")+1;x", 1, "              ;x"},
    };
    for (const auto& c : cases) {
        std::string text = c.formula;
        double values[100];
        int count = 0;
        small_face().calc(text, values, count, c.top_level);
        EXPECT_EQ(text, c.left) << c.formula;
    }
}

TEST(Formula, SharesTheCallersValues) {
    double values[100] = {41, 42};
    int count = 2;
    std::string bare = "[S]", sum = "d01+1", beyond = "1+d77";
    EXPECT_EQ(small_face().calc(bare, values, count), 42);
    EXPECT_EQ(small_face().calc(sum, values, count), 42);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(small_face().calc(beyond, values, count), 1);
}

TEST(Formula, MakesNinetyNineValuesAndStops) {
    for (const std::string step : {"+1", "+len([S],[N])", "+(1+1)", "*(1", "<1", "+case(\"x\")"}) {
        std::string text = "1";
        for (int i = 0; i < 200; ++i) text += step;
        double values[100] = {};
        int count = 0;
        small_face().calc(text, values, count);
        EXPECT_EQ(count, 99) << step;
        EXPECT_EQ(values[99], 0.0) << step;
    }
    std::string sum = "1";
    for (int i = 0; i < 200; ++i) sum += "+1";
    EXPECT_EQ(small_face().calc(sum), 100);
}

TEST(Formula, EndsWhateverTheNesting) {
    const auto repeated = [](const std::string& piece, int times) {
        std::string text;
        while (times-- > 0) text += piece;
        return text;
    };
    EXPECT_EQ(small_face().calc(repeated("(", 50000) + "1+2" + repeated(")", 50000)), 3);
    EXPECT_EQ(small_face().calc("len(" + repeated("mid([S],", 50000) + "[S]" + repeated(")", 50000) + ",[N])"), 150);
    for (const char* piece :
         {"1+(", "1*((", "angle1(", "len(mid(", "case(\"", "switch(", ")*", "d99-", "\"", "[", "Model"})
        EXPECT_FALSE(std::isnan(small_face().calc(repeated(piece, 20000)))) << piece;
}

TEST(Formula, JapaneseTrailBytesAreNoKeywordsOrBrackets) {
    // Trail bytes: 0x5B "[", 0x5D "]" and 0x6C "l".
    Lateral face = small_face();
    face.add_user("\x83\x5B", {100, 300});
    face.add_user("\x83\x5D", {100, 500});
    EXPECT_EQ(face.calc("len([\x83\x5B],[\x83\x5D])"), 100);
    EXPECT_EQ(face.calc("3\x83\x6C"
                        "en([S],[N])+1"),
              1);
}

TEST(Measures, ACastMeasureIsRoundedThroughText) {
    struct {
        double value;
        int decimals;
        double rounded;
    } const cases[] = {{35.125, 2, 35.12}, {35.135, 2, 35.13}, {35.15, 1, 35.1},  {35.5, 0, 36},
                       {34.5, 0, 34},      {35.24, 9, 35},     {35.25, 9, 35.5},  {35.74, 9, 35.5},
                       {35.75, 9, 36},     {-1, 9, -1},        {35.126, 7, 35.13}};
    for (const auto& c : cases) EXPECT_EQ(tool::rounded_cast_measure(c.value, c.decimals), c.rounded) << c.value;
}

}  // namespace
}  // namespace tool_test
