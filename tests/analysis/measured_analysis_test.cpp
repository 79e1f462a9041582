// What was measured, drawn again, comes to what was measured.
#include "MeasuredAnalysis.h"

#include <gmock/gmock.h>

#include "AnalysisFolder.h"
#include "CalcTool.h"
#include "LandmarkTable.h"

namespace {

using testing::ElementsAre;
using tool::Kind;
using tool::MeasuredShape;
using tool::ShapeKind;

CPointD point(const MeasuredShape& shape, std::size_t i) {
    return {shape.points.at(i).x, shape.points.at(i).y};
}

// A face of whole and broken coordinates, its own landmark and a virtual one.
tool::Subject face(double shift) {
    tool::Subject subject{.mm_per_pixel = 0.1, .sex = tool::Sex::female, .age_years = 12.2};
    unsigned seed = 1;
    for (int slot = 0; slot < LandmarkTable::Count(0); ++slot) {
        seed = seed * 48271 % 65537;
        subject.landmarks.push_back(
            {LandmarkTable::Name(0, slot), {200.0 + seed % 1201 + shift, 200.0 + seed / 37 % 997}});
    }
    return subject;
}

TEST(MeasureAll, ShapesComeToTheValueWhereverTheyLie) {
    const tool::AnalysisFolder folder(TOOL_SOURCE_DIR "/anaitem");
    int checked = 0;
    for (const tool::Analysis& analysis : folder.analyses(Kind::lateral)) {
        for (const double shift : {0.0, 0.25}) {
            const auto measured = tool::measure_all(analysis, face(shift));
            ASSERT_TRUE(measured) << measured.reason();
            ASSERT_EQ(measured->items.size(), analysis.items().size());
            for (const tool::MeasuredItem& row : measured->items) {
                const std::string& formula = row.item->formula;
                // A distance with a sign: the difference of two lengths, shown as one.
                const bool with_sign =
                    formula.starts_with("len(extension") && formula.find(")-len(extension") != formula.npos;
                const bool plain = formula.find_first_of("+-*/;<>=\"") == std::string::npos;
                if (!row.value || !(plain || with_sign) || row.shapes.empty()) continue;
                const auto length = std::ranges::find(row.shapes, ShapeKind::length, &MeasuredShape::kind);
                EXPECT_TRUE(!with_sign || length != row.shapes.end()) << row.item->name;
                const MeasuredShape& shape = with_sign && length != row.shapes.end() ? *length : row.shapes.back();
                CPointD p[4];
                for (std::size_t i = 0; i < shape.points.size(); ++i) p[i] = point(shape, i);
                double again = *row.value;
                if (shape.kind == ShapeKind::length) again = CCalcTool::Get_Lengthd(&p[0], &p[1], 0.1);
                if (shape.kind == ShapeKind::length_right) again = (p[1].x - p[0].x) * 0.1;
                if (shape.kind == ShapeKind::length_down) again = (p[1].y - p[0].y) * 0.1;
                if (shape.kind == ShapeKind::angle) again = CCalcTool::Angle_Cald(&p[0], &p[1], &p[2]);
                for (const MeasuredShape& made : row.shapes) {
                    const bool constructed = made.kind == ShapeKind::foot || made.kind == ShapeKind::crossing;
                    for (const auto& [from, to] : segments_of(made))
                        EXPECT_TRUE(!constructed || to == made.points.back()) << row.item->name;
                    EXPECT_FALSE(segments_of(made).empty());
                }
                EXPECT_NEAR(again, with_sign ? std::abs(*row.value) : *row.value, 1e-6)
                    << analysis.title() << " " << row.item->name << " " << formula;
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 100);
}

TEST(MeasureAll, FollowsReferencesAlternativesAndConstructions) {
    const auto analysis = *tool::Analysis::from_text(
        Kind::lateral, "a.txt",
        "Calc:\nA=case(\"B\")-1\nB=len([V],vertical([S],[N],[Own]))\nC=len([S],[N])>0;angle1([A],[S],[N]);lenR([S],[N])\n"
        "Stage_Type:\nAge\nStage:\nyoung=0-9\nold=9-\nMean:\nB=1,2\n");
    tool::Subject subject{.landmarks = {{"", {0.5, 10}, 0}, {"N", {10, 10}}, {"Own", {20, 0}}},
                          .virtuals = {{"V", "mid([S],[N])"}},
                          .mm_per_pixel = 1};
    auto measured = *tool::measure_all(analysis, subject);
    EXPECT_EQ(measured.band, -1);
    EXPECT_FALSE(measured.items[1].mean);
    std::vector<ShapeKind> kinds;
    for (const MeasuredShape& shape : measured.items[0].shapes) kinds.push_back(shape.kind);
    EXPECT_THAT(kinds, ElementsAre(ShapeKind::middle, ShapeKind::foot, ShapeKind::length));
    EXPECT_THAT(measured.items[0].shapes[0].points,
                ElementsAre(tool::FilmPoint{0.5, 10}, tool::FilmPoint{10, 10}, tool::FilmPoint{5.25, 10}));
    ASSERT_EQ(measured.items[2].shapes.size(), 2u);
    EXPECT_EQ(measured.items[2].shapes[1].kind, ShapeKind::length_right);
    subject.age_years = 9;
    measured = *tool::measure_all(analysis, subject, tool::Shapes::left_out);
    EXPECT_EQ(measured.items[1].mean, 2);
    EXPECT_TRUE(measured.items[0].shapes.empty());
    for (const auto& landmark : {tool::PlacedLandmark{"sixlet", {1, 1}},
                                 {"\xE2\x99\xAC", {1, 1}},
                                 {"S", {1.1e6, 0}},
                                 {"S", {0.0 / 0.0, 0}},
                                 {"", {1, 1}, 51}}) {
        tool::Subject bad = subject;
        bad.landmarks.push_back(landmark);
        EXPECT_NE(tool::measure_all(analysis, bad).reason(), "") << landmark.name;
    }
    const auto of_men = *tool::Analysis::from_text(
        Kind::lateral, "m.txt", "Stage_Type:\nAge\nStage_M:\na=0-9\nb=9-\nStage_Type2:\nx\nStage2:\nc=I-IIA\nd=IIA-\n");
    for (const auto& [sex, age, dental, band] :
         {std::tuple{std::optional(tool::Sex::male), std::optional(9.0), std::optional(1), 101},
          {std::optional(tool::Sex::female), {}, 1, 100},
          {{}, 9.0, 1, -1},
          {tool::Sex::male, {}, 1, -1},
          {tool::Sex::male, 3.0, {}, -1},
          {tool::Sex::male, 3.0, 0, 0}})
        EXPECT_EQ(norm_band(of_men, {.sex = sex, .age_years = age, .dental_stage = dental}), band);
    subject.mm_per_pixel = 0;
    EXPECT_NE(tool::measure_all(analysis, subject).reason(), "");
}

}  // namespace
