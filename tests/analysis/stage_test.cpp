#include <gtest/gtest.h>

#include <cmath>

#include "CalcTool.h"
#include "LandmarkTable.h"
#include "analysis/growth_stage.h"
#include "framework/system.h"
#include "tests/analysis/subject.h"

namespace tool_test {
namespace {

TEST(DentalStage, OrdinalsFollowHellman) {
    struct {
        const char* text;
        double ordinal;
    } const cases[] = {{"I", 0},   {"IIA", 1}, {"IIC", 2}, {"IIIA", 3}, {"IIIB", 4}, {"IIIC", 5},   {"IVA", 6},
                       {"IVC", 7}, {"VA", 8},  {"", 9},    {"iiia", 9}, {"IIB", 9},  {" IIIB ", 4}, {"II A", 9}};
    for (const auto& c : cases) EXPECT_EQ(CCephCalc::GetDentalAge(c.text), c.ordinal) << c.text;
    EXPECT_EQ(CCephCalc::GetDentalAge(nullptr), 9);
}

TEST(StageRange, ReadsItsTextAndTheTwoMeaningsOfZero) {
    struct {
        const char* text;
        double from, to, list_to, dental_from, dental_to;
    } const cases[] = {{"18", 18, 200, 200, 9, 100},     {"0-12", 0, 12, 12, 9, 9}, {"12-0", 12, 200, 200, 9, 9},
                       {"0-0", 0, 200, 0, 9, 9},         {"", 0, 0, 0, 9, 100},     {"IIA-IIIB", 0, 200, 0, 1, 4},
                       {"5.5-6.5", 5.5, 6.5, 6.5, 9, 9}, {"-3", 0, 3, 3, 9, 9},     {"9-", 9, 200, 200, 9, 9},
                       {"IIIC", 0, 200, 200, 5, 100}};
    for (const auto& c : cases) {
        const auto open = tool::age_range(c.text, tool::ZeroBound::open_above);
        const auto list = tool::age_range(c.text, tool::ZeroBound::open_above_a_nonzero_start);
        const auto dental = tool::dental_range(c.text);
        EXPECT_EQ(open.from, c.from) << c.text;
        EXPECT_EQ(open.to, c.to) << c.text;
        EXPECT_EQ(list.to, c.list_to) << c.text;
        EXPECT_EQ(dental.from, c.dental_from) << c.text;
        EXPECT_EQ(dental.to, c.dental_to) << c.text;
    }
}

const char* const ricketts =
    "stray=0-200\r\nCalc:\r\nFacial=len([S],[N])*2:1\r\n\r\nAngle=angle1([S],[N],[A])\r\nNoSD=1+1\r\nFlat=1+2\r\n"
    "Stage_M:\r\nboy early=0-9\r\n\r\nboy late=9-18\r\nStage_F:\r\neveryone=0-200\r\nParam:\r\n"
    "Stage_F:\r\ngirl=0-14\r\nStage_Type:\r\nBone\r\nripe=4-5\r\nSD:\r\nFacial=10\r\nAngle=2\r\nFlat=0\r\n"
    "Mean:\r\nFacial=290\r\nAngle=80,89\r\nNoSD=1\r\nFlat=2\r\nStage1:\r\nadult=18\r\noverlap=17-19\r\n";

TEST(RickettsStage, TheLastStageThatMatchesWins) {
    AnalysisFolder folder;
    folder.write("CalcForm/Ricketts.txt", ricketts);
    struct {
        int sex;
        double age, value;
        int stage;
    } const cases[] = {{1, 8.9, 0, 0}, {1, 9, 0, 1},   {1, 30, 0, 0},  // "Bone" holds for the adults below it
                       {1, 30, 18, 3}, {1, 30, 20, 2}, {1, 30, 17, 3},  {2, 3, 0, 1},
                       {2, 14, 0, 0},  {2, 3, 4.5, 2}, {2, 3, 18.5, 4}, {2, 999, 0, 0}};
    for (const auto& c : cases)
        EXPECT_EQ(CCephCalc::Get_RickettsStage(c.sex, c.age, c.value), c.stage)
            << c.sex << ' ' << c.age << ' ' << c.value;
    folder.write("CalcForm/Ricketts.txt", "");
    EXPECT_EQ(CCephCalc::Get_RickettsStage(1, 9, 0), 0);
}

TEST(RickettsParam, ScoresAnItemByNumber) {
    AnalysisFolder folder;
    folder.write("CalcForm/Ricketts.txt", ricketts);
    struct {
        int item, band;
        const char* name;
        double score, value, sd, mean;
    } const cases[] = {{0, 0, "Facial", 1, 300, 10, 290},
                       {2, 0, "NoSD", 0, 2, 0, 1},
                       {3, 0, "Flat", INFINITY, 3, 0, 2},
                       {4, 0, "kept", 0, -7, -7, -7},
                       {-1, 0, "kept", 0, -7, -7, -7}};
    for (const auto& c : cases) {
        Lateral face = small_face();
        char name[51] = "kept";
        double value = -7, sd = -7, mean = -7;
        EXPECT_EQ(CCephCalc::Get_RickettsParam(&face.record, c.item, 1, c.band, 0, 0, name, &value, &sd, &mean),
                  c.score);
        EXPECT_STREQ(name, c.name);
        EXPECT_EQ(value, c.value);
        EXPECT_EQ(sd, c.sd);
        EXPECT_EQ(mean, c.mean);
    }
    Lateral face = small_face();
    const auto score = [&](int band) {
        return CCephCalc::Get_RickettsParam(&face.record, 1, 1, band, 0, 0, nullptr, nullptr, nullptr, nullptr);
    };
    EXPECT_NEAR(score(0), 5.0, 1e-6);
    EXPECT_NEAR(score(1), 0.5, 1e-6);
}

TEST(StageList, FillsTheBoxAndSelects) {
    AnalysisFolder folder;
    folder.write_analysis(
        "Stage:\nchild=0-12\nteen=12-18\nadult=18\nnever=0-0\nMean2:\nStage_Type2:\nHellman\nStage2:\nearly=IIA-IIIA\n"
        "Mean:\nlate=IIIA\nSD2:\n");
    struct {
        double age, dental;
        int set;
        const char* selected;
        int count, chosen;
        const char* last;
    } const cases[] = {{11, 9, 1, "", 4, 0, "never"},     {12, 9, 0, "", 4, 1, "never"},
                       {60, 9, 1, "teen", 4, 1, "never"}, {60, 9, 1, "Teen", 4, 2, "never"},
                       {-5, 9, 1, "", 4, 0, "never"},     {0, 1, 2, "", 3, 0, "late"},
                       {0, 3, 2, "", 3, 2, "late"},       {0, 9, 2, "Mean:", 3, 1, "late"}};
    for (const auto& c : cases) {
        CComboBox combo;
        combo.AddString("before");
        EXPECT_EQ(CCephCalc::SetStageList(0, &combo, 0, 1, c.age, c.dental, c.set, c.selected), c.count);
        ASSERT_EQ(combo.GetCount(), c.count);
        EXPECT_EQ(combo.GetCurSel(), c.chosen) << c.age << ' ' << c.dental << ' ' << c.selected;
        CString last;
        combo.GetLBText(c.count - 1, last);
        EXPECT_EQ(last, c.last);
    }
    CComboBox combo;
    folder.write_analysis("Stage:\n" + std::string(60, 'n') + "=0-12\n");
    EXPECT_EQ(CCephCalc::SetStageList(0, &combo, 0, 1, 9, 9, 1, nullptr), 1);
    EXPECT_EQ(combo.GetLBTextLen(0), 49);
    EXPECT_EQ(CCephCalc::SetStageList(0, &combo, 5, 1, 9, 9, 1, "x"), 0);
}

TEST(BoneAge, IsTheSumOfThreeRatios) {
    tagCVBA points{};
    const auto place = [&](int index, int x, int y) { points.Point[index] = CPoint(x, y); };
    place(14, 100, 200), place(15, 200, 200), place(11, 190, 150), place(12, 100, 170), place(13, 150, 170);
    place(20, 100, 400), place(21, 200, 400), place(17, 195, 340), place(16, 105, 360), place(18, 100, 370),
        place(19, 220, 370);
    // A/B = 50/50, C/D = 60/120, C/E = 60/40.
    AnalysisFolder folder;
    EXPECT_EQ(CCephCalc::Calc_CVBA(&points, 1), 0.82 + 13.17 * 1.0 + 0.0 * 0.5 + 5.01 * 1.5);
    EXPECT_EQ(CCephCalc::Calc_CVBA(&points, 2), -0.2 + 6.2 * 1.0 + 5.9 * 0.5 + 4.74 * 1.5);
    folder.write("cvba.dat", "[CVB_AGE]\r\nPARAM_M0=1\r\nparam_m2 = 10 years\r\nPARAM_F3=x\r\n");
    EXPECT_EQ(CCephCalc::Calc_CVBA(&points, 1), 1 + 13.17 * 1.0 + 10 * 0.5 + 5.01 * 1.5);
    EXPECT_EQ(CCephCalc::Calc_CVBA(&points, 0), -0.2 + 6.2 * 1.0 + 5.9 * 0.5 + 0.0);
    // Kept: without a folder in the settings the one beside the program is not asked.
    folder.write("ANAITEM/cvba.dat", "[CVB_AGE]\r\nPARAM_M0=100\r\n");
    SetModuleFileNameA((folder.root() + "host").c_str());
    {
        const CWinApp plain;
        EXPECT_EQ(CCephCalc::Calc_CVBA(&points, 1), 0.82 + 13.17 * 1.0 + 0.0 * 0.5 + 5.01 * 1.5);
    }
    SetModuleFileNameA(nullptr);
    tagCVBA empty{};
    EXPECT_TRUE(std::isnan(CCephCalc::Calc_CVBA(&empty, 1)));
}

TEST(LateralRecord, AuxiliaryPointsArePlacedOnce) {
    const auto completed = [](double scale, CPoint slot_54) {
        tagPOINTLAT record{};
        record.Scale = scale;
        record.Point[34] = CPoint(500, 600);
        record.Point[54] = slot_54;
        CCephCalc::Check_LatPoint(&record);
        const tagPOINTLAT once = record;
        CCephCalc::Check_LatPoint(&record);
        EXPECT_EQ(std::memcmp(&once, &record, sizeof once), 0);
        return record;
    };
    struct {
        double scale;
        CPoint before, after;
    } const cases[] = {{0.1, {0, 0}, {470, 650}}, {0.1, {0, 7}, {0, 7}},         {0.3, {0, 0}, {490, 616}},
                       {0, {0, 0}, {0, 0}},       {1e-12, {0, 0}, {0, 0}},       {-0.1, {0, 0}, {530, 550}},
                       {NAN, {0, 0}, {0, 0}},     {INFINITY, {0, 0}, {500, 600}}};
    for (const auto& c : cases) EXPECT_EQ(completed(c.scale, c.before).Point[54], c.after) << c.scale;
    const tagPOINTLAT record = completed(0.1, {});
    const CPoint others[] = {{30, -100}, {0, 50}, {50, 30}, {-20, 20}};
    for (int i = 0; i < 4; ++i) EXPECT_EQ(record.Point[55 + i], others[i]) << i;
}

TEST(LateralRecord, ConstructsOnlyFromPlacedLandmarks) {
    tagPOINTLAT face{};
    const auto slot = [&](const char* name) { return LandmarkTable::Find(0, name); };
    const auto place = [&](const char* name, int x, int y) { face.Point[slot(name)] = CPoint(x, y); };
    face.Scale = 0.1;
    CPointD origin(7, 7), toward(7, 7);
    EXPECT_EQ(CCalcTool::Point_Make(&face) + CCalcTool::Get_Profiro_Status(&face), 0);
    EXPECT_EQ(CCalcTool::Get_Org(&face, CCalcTool::ORG_FRANKFORT, &origin, &toward), 0);
    EXPECT_EQ(origin.x, 7);
    place("Ar", 100, -40), place("Go(P)", 100, 0), place("Me", 200, 121), place("Go(L)", 150, 111);
    place("Ba", 1, 2), place("Po", 0, 0), place("Or", 200, 30), place("PTV", 90, 70);
    EXPECT_EQ(CCalcTool::Point_Make(&face), 2);
    EXPECT_EQ(face.Point[slot("Go")], CPoint(100, 101));
    EXPECT_EQ(face.Point[56], CPoint(1, 52));
    EXPECT_EQ(face.Point[57], CPoint());  // Cd is not placed
    EXPECT_EQ(CCalcTool::Point_Make(&face), 0);
    place("N", 190, 0), place("Pog", 190, 100);
    EXPECT_EQ(CCalcTool::Point_Make2(&face, slot("Gn"), &origin), 1);
    EXPECT_TRUE(origin == CPointD(190, 119));
    EXPECT_EQ(CCalcTool::Point_Make2(&face, slot("N"), &origin), 0);
    EXPECT_EQ(CCalcTool::Get_Profiro_Status(&face), CCalcTool::PROFIRO_FACIAL | CCalcTool::PROFIRO_MANDIBLE);
    EXPECT_EQ(CCalcTool::Get_Org(&face, CCalcTool::ORG_FRANKFORT, &origin, &toward), 0);
    place("Po", 0, 30);
    EXPECT_EQ(CCalcTool::Get_Org(&face, CCalcTool::ORG_FRANKFORT, &origin, &toward), 1);
    EXPECT_TRUE(origin == CPointD(90, 30) && toward == CPointD(200, 30));
    EXPECT_EQ(CCalcTool::Get_Org(&face, CCalcTool::ORG_MANDIBLE, &origin, nullptr), 1);
    EXPECT_TRUE(origin == CPointD(200, 121));
    for (const int plane : {-1, 4}) EXPECT_EQ(CCalcTool::Get_Org(&face, plane, &origin, &toward), 0);
    for (int i = 0; i < LandmarkTable::Count(0); ++i) face.Point[i] = CPoint(i + 1, 2 * i);
    EXPECT_EQ(CCalcTool::Get_Profiro_Status(&face), 511);
}

}  // namespace
}  // namespace tool_test
