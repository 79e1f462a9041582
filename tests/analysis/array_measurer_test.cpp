// Cases in an array against the same cases one by one: all bits, whatever is missing, degenerate or refused.
#include "ArrayMeasurer.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

#include "AnalysisFolder.h"
#include "LandmarkTable.h"
#include "MeasuredAnalysis.h"

namespace {

using tool::Kind;
using tool::Sex;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

std::string bits(double number) {
    return std::isnan(number) ? "nan" : std::to_string(std::bit_cast<std::uint64_t>(number));
}

struct Cases {
    std::vector<std::string> names;
    std::vector<double> points;  // y of all landmarks stands behind x of all, case by case
    std::vector<tool::ArrayCase> people;

    tool::LandmarkArray array() const {
        const auto bytes = static_cast<std::ptrdiff_t>(names.size() * sizeof(double));
        return {points.data(), 2 * bytes, sizeof(double), bytes};
    }
    double& at(std::size_t place, std::size_t landmark, int axis) {
        return points[(2 * place + static_cast<std::size_t>(axis)) * names.size() + landmark];
    }
    tool::Subject subject(std::size_t place) {
        tool::Subject subject{.mm_per_pixel = people[place].mm_per_pixel, .sex = people[place].sex};
        for (std::size_t i = 0; i < names.size(); ++i) {
            const double x = at(place, i, 0), y = at(place, i, 1);
            const bool is_placed = !std::isnan(x) && !std::isnan(y);
            subject.landmarks.push_back(
                {.name = names[i], .at = is_placed ? tool::FilmPoint{x, y} : tool::FilmPoint{}});
        }
        return subject;
    }
};

// Landmarks here and there, whole or broken; some missing, at one place, or in line with others.
Cases random_cases(Kind kind, unsigned seed, std::size_t count) {
    std::mt19937 random(seed);
    const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    Cases cases;
    const int record = static_cast<int>(measured_on(kind));
    for (int slot = 0; slot < LandmarkTable::Count(record); ++slot)
        cases.names.push_back(LandmarkTable::Name(record, slot));
    for (const char* own : {"Foo", "V0", "Foo"}) cases.names.insert(cases.names.begin() + below(9), own);
    cases.points.resize(2 * cases.names.size() * count);
    for (std::size_t place = 0; place < count; ++place) {
        const int absent = below(3) ? 90 : 4;
        const double fraction = below(4) ? 0 : 1.0 / (below(200) + 1);
        for (std::size_t i = 0; i < cases.names.size(); ++i)
            for (const int axis : {0, 1})
                cases.at(place, i, axis) = below(absent) == 0 ? (below(2) ? nan : -0.0)
                                           : below(15) == 0   ? 90
                                                              : below(800) - (below(9) ? 0 : 400) + below(2) * fraction;
        const std::optional<Sex> sexes[] = {Sex::male, Sex::female, std::nullopt};
        cases.people.push_back({.mm_per_pixel = (below(30) + 1) / 100.0, .sex = sexes[below(3)], .band = below(5) - 1});
    }
    return cases;
}

void expect_as_one_by_one(const tool::Analysis& analysis, unsigned seed, std::size_t count) {
    SCOPED_TRACE(analysis.file().string() + ", seed " + std::to_string(seed));
    Cases cases = random_cases(analysis.kind(), seed, count);
    tool::ArrayMeasurer measurer(analysis, cases.names);
    const std::size_t width = measurer.item_count();
    std::vector<double> found[4], only_values(width * count, 7);
    for (auto& column : found) column.assign(width * count, 7);
    ASSERT_FALSE(measurer.measure(cases.array(), cases.people,
                                  {found[0].data(), found[1].data(), found[2].data(), found[3].data()}));
    ASSERT_FALSE(measurer.measure(cases.array(), cases.people, {only_values.data()}));
    for (std::size_t place = 0; place < count; ++place) {
        auto subject = cases.subject(place);
        subject.band = cases.people[place].band;
        const auto alone = tool::measure_all(analysis, subject, tool::Shapes::left_out);
        ASSERT_TRUE(alone) << alone.reason();
        std::size_t at = place * width;
        for (const tool::MeasuredItem& item : alone->items) {
            if (item.item->heading) continue;
            ASSERT_EQ(
                bits(item.value.value_or(nan)) + " " + bits(item.mean.value_or(nan)) + " " +
                    bits(item.sd.value_or(nan)) + " " + bits(item.deviation.value_or(nan)),
                bits(found[0][at]) + " " + bits(found[1][at]) + " " + bits(found[2][at]) + " " + bits(found[3][at]))
                << item.item->name << "=" << item.item->formula << ", case " << place;
            ASSERT_EQ(bits(found[0][at]), bits(only_values[at])) << item.item->name;
            ++at;
        }
    }
}

TEST(ArrayMeasurer, GivesTheBitsOfCasesOneByOneForAllThatShips) {
    const tool::AnalysisFolder folder(TOOL_SOURCE_DIR "/anaitem");
    unsigned seed = 1;
    for (const Kind kind : tool::all_kinds)
        for (const tool::Analysis& analysis : folder.analyses(kind)) expect_as_one_by_one(analysis, seed++, 150);
}

TEST(ArrayMeasurer, GivesTheBitsOfCasesOneByOneForWhateverFormula) {
    const char* const parts[] = {"len([S],[N])",
                                 "lenR([A],[B])",
                                 "lenD(mid([S],[Foo]),[V0])",
                                 "angle1([S],[N],[A])",
                                 "angle2([S],[N],[Po],[Or])",
                                 "angle2([A],[B],[A],[Foo])",
                                 "len([A],cross([S],[N],[Po],[Or]))",
                                 "len([A],vertical([B],[S],[N]))",
                                 "len([N],AngleBisector([S],[N],[A],70))",
                                 "lenR([N],extension([S],[N],-9.5))",
                                 "len(EffectiveA(),[S])",
                                 "lenD([Nowhere],[S])",
                                 "0",
                                 "2",
                                 "0.5",
                                 "sdv(\"I1\")",
                                 "mean(\"I0\")",
                                 "case(\"I2\")"};
    const char* const joints[] = {"+", "-", "*", "/", "<", "<=", ">", ">=", "="};
    std::mt19937 random(5);
    const auto one_of = [&](const auto& texts) { return std::string(texts[random() % std::size(texts)]); };
    const auto formula = [&] {
        return one_of(parts) + one_of(joints) + one_of(parts) + one_of(joints) + one_of(parts);
    };
    for (unsigned seed = 0; seed < 60; ++seed) {
        std::string text = "Calc:\n";
        for (int i = 0; i < 8; ++i) {
            const std::string first = formula();
            text += "I" + std::to_string(i) + (i % 3 == 2 ? "=switch(" + first + "," + formula() + ")+1" : "=" + first);
            if (i % 3 == 1) text += ";" + formula() + ";" + (random() % 3 ? formula() : "\"text\"");
            text += "\n";
        }
        text += "J=\nK=1+1\nMean:\nI0=7,8,9\nI1=1\nI3=" + formula() +
                ":1,2\nI4=5\nSD_M:\nI0=2\nI4=0\nSD_F:\nI0=3,4\nI3=1\n";
        const auto analysis = tool::Analysis::from_text(Kind::lateral, "random.txt", text);
        ASSERT_TRUE(analysis);
        expect_as_one_by_one(*analysis, 1000 + seed, 70);
        if (HasFailure()) FAIL() << text;
    }
}

TEST(ArrayMeasurer, TellsTheFirstCaseThatARecordRefuses) {
    const auto analysis = tool::Analysis::from_text(Kind::lateral, "one.txt", "Calc:\nA=len([S],[N])\n");
    struct {
        std::vector<std::string> names;
        double x, mm_per_pixel;
    } const rows[] = {
        {{"S", "N"}, 1e7, 0.1}, {{"S", "N"}, 5, 0}, {{"S", "N"}, 5, INFINITY}, {{"S", "too long"}, 5, 0.1}};
    for (const auto& [names, x, mm_per_pixel] : rows) {
        const bool first = names.back() != "N";
        std::vector<double> points(4 * 70, 3), values(70);
        std::vector<tool::ArrayCase> people(70, {.mm_per_pixel = 0.1, .sex = Sex::male});
        points[4 * 67] = x;
        people[67].mm_per_pixel = mm_per_pixel;
        const tool::Subject subject{.landmarks = {{names[0], {x, 3}}, {names[1], {3, 3}}},
                                    .mm_per_pixel = mm_per_pixel};
        const auto refused =
            tool::ArrayMeasurer(*analysis, names).measure({points.data(), 32, 16}, people, {.value = values.data()});
        ASSERT_TRUE(refused);
        EXPECT_EQ(refused->place, first ? 0 : 67);
        EXPECT_EQ(refused->reason, tool::SubjectRecord::of(Kind::lateral, subject).reason());
    }
}

}  // namespace
