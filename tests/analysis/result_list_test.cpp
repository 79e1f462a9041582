#include "ResultList.h"

#include <gtest/gtest.h>

#include "tests/analysis/subject.h"

namespace tool_test {
namespace {

constexpr const char* definition =
    "title:\nOwn\nCalc:\nLengths\n"
    "SN=len([S],[N])\nFar=len([S],[N])*100\nAt mean=len([S],[N])\nRatio=len([S],[N])/len([N],[A])\n"
    "Hidden=len([S],[N]):4\nMarked=len([S],[N]):11\nBoth=len([S],[N]):14\n"
    "Verdict=len([S],[N])>5;\"short\";\"long\"\nNo Gn=len([S],[Gn])\nNorm of Gn=len([S],[N])\n"
    "Broken=len([S],[N])/len([S],[S])\nEmpty=\nLengths=1\nHuge=len([S],[N])*1000000\nBy sex=len([S],[N])-mean(\"SN\")\n"
    "Tiny=len([S],[N])-150.001\nFlat=len([S],[N])\nCalc2:\nSecond=len([N],[A])\n"
    "Mean_M:\nSN=140\nMean_F:\nSN=145\nMean:\nFar=15001\nAt mean=150.0\nRatio=1.505\nHidden=140\nMarked=140\nBoth=140\n"
    "Norm of Gn=len([S],[Gn]):1\nTiny=-0.01\nFlat=1\n"
    "SD:\nSN=4\nFar=2\nAt mean=2\nRatio=0.01\nHidden=4\nBoth=4\nNorm of Gn=len([Gn],[Xi])\nTiny=10\nFlat=0\nSD_M:\nMarked=4\nSD_F:\nMarked=5\nMean2:\nSecond=90,80,70\nSD2:\nSecond=6\n";

const AnalysisSheet& sheet() {
    static const AnalysisSheet sheet(0, definition, std::strlen(definition));
    return sheet;
}

const ResultRow& row_of(const ResultList& list, const char* title) {
    for (const ResultRow& row : list)
        if (row.title == title) return row;
    ADD_FAILURE() << "no row " << title;
    return list.GetRow(-1);
}

TEST(ResultList, RowsHoldWhatAListShows) {
    Lateral face = small_face();
    const ResultList list(sheet(), face.on_sheet(1, 200));
    struct {
        const char* title;
        ResultState state;
        const char *value, *unit, *mean, *sd, *deviation, *stars;
        int column = 0;
        bool marked = false;
    } const rows[] = {
        {"Lengths", ResultState::heading, "", "", "", "", "", ""},
        {"SN", ResultState::value, "150.0", "mm", "140.0", "4.0", "+2.50", "**"},
        {"Far", ResultState::value, "15000.0", "mm", "15001.0", "2.0", "-0.50", ""},
        {"At mean", ResultState::value, "150.0", "mm", "150.0", "2.0", "0.00", ""},
        {"Ratio", ResultState::value, "1.50", "", "1.50", "0.01", "-0.50", ""},
        {"Hidden", ResultState::value, "150.0", "mm", "", "", "", "", 1},
        {"Marked", ResultState::value, "150.0", "mm", "140.0", "4.0", "+2.50", "**", 1, true},
        {"Both", ResultState::value, "150.0", "mm", "", "", "", "", 1, true},
        {"Verdict", ResultState::text, "long", "", "", "", "", ""},
        {"No Gn", ResultState::missing, "", "mm", "", "", "", ""},
        {"Norm of Gn", ResultState::value, "150.0", "mm", "", "", "", ""},
        {"Broken", ResultState::not_finite, "", "", "", "", "", ""},
        {"Empty", ResultState::no_formula, "", "", "", "", "", ""},
        {"Lengths", ResultState::no_formula, "", "", "", "", "", ""},
        {"Huge", ResultState::value, "1.500e+08", "mm", "", "", "", ""},
        {"By sex", ResultState::value, "10.0", "mm", "", "", "", ""},
        {"Tiny", ResultState::value, "0.00", "mm", "-0.01", "10.00", "0.00", ""},
        {"Flat", ResultState::value, "150.0", "mm", "1.0", "0.0", "", ""},
        {"Second", ResultState::value, "100.0", "mm", "70.0", "6.0", "+5.00", "*****"},
    };
    ASSERT_EQ(list.GetCount(), static_cast<int>(std::size(rows)));
    EXPECT_EQ(list.Title(), "Own");
    EXPECT_EQ(list.GetColumnCount(), 2);
    for (int i = 0; i < list.GetCount(); ++i) {
        const ResultRow& row = list.GetRow(i);
        const auto& expected = rows[i];
        EXPECT_EQ(row.title, expected.title);
        EXPECT_EQ(row.state, expected.state) << expected.title;
        EXPECT_EQ(row.valueText, expected.value) << expected.title;
        EXPECT_EQ(row.unit, expected.unit) << expected.title;
        EXPECT_EQ(row.meanText, expected.mean) << expected.title;
        EXPECT_EQ(row.sdText, expected.sd) << expected.title;
        EXPECT_EQ(row.deviationText, expected.deviation) << expected.title;
        EXPECT_EQ(row.stars, expected.stars) << expected.title;
        EXPECT_EQ(row.column, expected.column) << expected.title;
        EXPECT_EQ(row.marked, expected.marked) << expected.title;
        // The sheet is the oracle of every number.
        const SheetRow found = sheet().Evaluate(i, face.on_sheet(1, 200));
        EXPECT_EQ(row.value, row.state == ResultState::value ? found.value : 0) << expected.title;
        EXPECT_EQ(row.mean, row.hasMean ? found.mean : 0) << expected.title;
        EXPECT_EQ(row.deviation, row.hasDeviation ? found.deviation : 0) << expected.title;
    }
    EXPECT_EQ(row_of(list, "No Gn").missing.GetAt(0), "Gn");
    const CStringArray& of_norm = row_of(list, "Norm of Gn").normMissing;
    EXPECT_EQ(of_norm.GetAt(0) + " " + of_norm.GetAt(1), "Gn Xi");
    EXPECT_TRUE(of_norm.GetSize() == 2 && list.HasResults() && !ResultList().HasResults());
    EXPECT_TRUE(row_of(list, "Second").second);
    EXPECT_TRUE(row_of(list, "Hidden").hasDeviation);  // the number is there, only not shown
    EXPECT_EQ(list.GetRow(99).title, "");
}

TEST(ResultList, LeavesOutWhatRestsOnAnUnknownSex) {
    Lateral face = small_face();
    const ResultList known(sheet(), face.on_sheet(2));
    EXPECT_EQ(row_of(known, "SN").deviationText, "+1.25");
    EXPECT_FALSE(known.NormsDiffer());
    const ResultList list(sheet(), face.on_sheet(1), false);
    EXPECT_TRUE(list.NormsDiffer());
    EXPECT_EQ(row_of(list, "SN").valueText, "150.0");
    EXPECT_FALSE(row_of(list, "SN").hasDeviation);
    EXPECT_EQ(row_of(list, "SN").meanText + row_of(list, "Marked").meanText, "");  // Marked differs in its SD alone
    EXPECT_EQ(row_of(list, "By sex").state, ResultState::differs_by_sex);
    EXPECT_EQ(row_of(list, "Ratio").deviationText, "-0.50");
}

TEST(ResultList, AnAngleOverOnePointOrACrossingOfParallelsIsNone) {
    Lateral face = small_face();
    face.place("U1R", {430, 390});  // the place of U1
    face.place("Pog", {380, 240});  // Pog-Or is upright, and so is N-A
    face.add_virtual("V", "mid([U1],[U1R])");
    constexpr auto apart = ResultState::value, at_one = ResultState::at_one_place, parallel = ResultState::parallel;
    const struct {
        const char* formula;
        ResultState state;
        const char* names;
    } rows[] = {
        {"180+angle2([U1R],[U1],[N],[A])", at_one, "U1R, U1"},
        {"angle1([S],[N],[A])<angle1([U1],[U1R],[A]);\"a\";\"b\"", at_one, "U1, U1R"},
        {"len([A],vertical([A],mid([U1],[U1R]),[U1]))", at_one, "mid(U1,U1R), U1"},
        {"angle1([V],[U1],[A])", at_one, "V, U1"},
        {"len([U1],[U1R])", at_one, "U1, U1R"},
        {"len([U1],mid([U1],[U1R]))", apart, ", "},
        {"len(mid([U1],[U1R]),[A])", apart, ", "},
        {"len(extension([U1],[U1R],5),[A])", at_one, "U1, U1R"},
        {"len(extension([U1],[U1R],0),[A])", apart, ", "},
        {"len(AngleBisector([U1],[A],[U1R],9),[A])", at_one, "U1, U1R"},
        {"len(cross([N],[A],[Pog],[Or]),[N])", parallel, "N-A, Pog-Or"},
        {"len(cross([S],[N],[Po],[Or]),[N])", parallel, "S-N, Po-Or"},
        {"len(cross([S],[N],[Me],[Go]),[N])", apart, ", "},
        {"len(cross([Me],[Go],vertical([S],[Me],[Go]),vertical([A],[Me],[Go])),[N])", parallel,
         "Me-Go, vertical(S,Me,Go)-vertical(A,Me,Go)"},
        {"len([A],vertical([A],[N],[A]))", apart, ", "},
        {"case(\"0\")*2", at_one, "U1R, U1"},
    };
    std::string text = "Calc:\n";
    for (const auto& row : rows) text += std::to_string(&row - rows) + "=" + row.formula + "\n";
    const ResultList list(AnalysisSheet(0, text.data(), text.size()), face.on_sheet());
    for (const auto& row : rows) {
        const ResultRow& found = list.GetRow(static_cast<int>(&row - rows));
        EXPECT_EQ(found.state, row.state) << row.formula;
        EXPECT_EQ(found.degenerate[0] + ", " + found.degenerate[1], row.names) << row.formula;
        EXPECT_EQ(found.valueText.IsEmpty(), row.state != apart) << row.formula;
    }
}

TEST(ResultList, FacesFillItFromTheFolderOfAnalyses) {
    AnalysisFolder folder;
    folder.write_analysis(definition);
    folder.write("CalcForm_Diag/list.txt", "D.txt\n");
    folder.write("CalcForm_Diag/D.txt", "Calc:\nJaw=len([S],[N])>5;\"back\";\"forward\"\n");
    folder.write("CalcForm_Surg/Surgery.txt", "Calc:\nLevel=len([S],[N])\nUpright=len([N],[A]):2\n");
    Lateral face = small_face();
    ResultList list;
    const SheetSubject s = face.on_sheet();
    const auto fill = [&](int kind, int index) {
        return CCephCalc::User_Calc(kind, index, s.record, s.kCount, s.kPoints, s.uCount, s.uPoints, 1, 0, &list);
    };
    EXPECT_EQ(fill(0, 0), 19);
    EXPECT_EQ(row_of(list, "SN").stars, "**");
    EXPECT_EQ(CCephCalc::User_Diag(0, s.record, s.kCount, s.kPoints, s.uCount, s.uPoints, 1, 0, &list), 1);
    EXPECT_EQ(list.GetRow(0).valueText, "forward");
    EXPECT_EQ(CCephCalc::User_CalcSurg(s.record, s.kCount, s.kPoints, s.uCount, s.uPoints, 1, 0, &list), 2);
    EXPECT_EQ(list.GetRow(1).column, 2);
    EXPECT_EQ(list.GetColumnCount(), 3);
    EXPECT_EQ(fill(0, 1), 0);  // the catalogue ends; the list is empty
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(CCephCalc::User_Calc(0, 0, s.record, nullptr, nullptr, nullptr, nullptr, 1, 0, nullptr), 19);
}

}  // namespace
}  // namespace tool_test
