// Whatever memory is refused: no exception leaves the library, and what comes out is the result or the failure stated.
#include <CodePage.h>
#include <DefinitionCheck.h>
#include <Framework.h>
#include <JapEra.h>
#include <ResultList.h>
#include <SheetMeasurer.h>
#include <Tools.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "analysis/subject.h"
#include "strength/failing_memory.h"

namespace strength {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double any = -999;

bool same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

TEST(Memory, WithoutItACallGivesTheFailureStatedAndNothingElse) {
    const std::string analysis =
        "title:\nA title that is longer than sixteen bytes\nCalc:\nAn item with a long name=len([S],[V])+case(\"Another "
        "item of the file\")\nAnother item of the file=len([S],[N])\nMean:\nAn item with a long name=angle1([S],[N],[V]):1\n";
    tool_test::AnalysisFolder folder;
    folder.write_analysis(analysis);
    folder.write("CalcMode/list.txt", "1,Mode.txt\n");
    folder.write("CalcMode/Mode.txt", "title:\nA mode with a long name\nPoint:\nA landmark with a long name\n[End]\n");
    const std::string path = folder.root() + "CalcForm/Only.txt", mode = folder.root() + "CalcMode/Mode.txt";
    tool_test::Lateral face = tool_test::small_face();
    face.add_virtual("V", "mid([A],[B])");
    SheetSubject who = face.on_sheet();
    const AnalysisSheet sheet(0, path.c_str());
    CComboBox box;
    struct {
        const char* name;
        std::function<double()> call;
        double failure, other_failure = any;
    } const calls[] = {
        {"AnalysisSheet", [&] { return AnalysisSheet(0, path.c_str()).GetCount(); }, 0},
        {"AnalysisSheet", [&] { return AnalysisSheet(0, analysis.data(), analysis.size()).IsLoaded(); }, 0},
        {"Title", [&] { return sheet.Title().GetLength(); }, 0},
        {"GetItem", [&] { return sheet.GetItem(0).name.GetLength(); }, 0},
        {"Evaluate", [&] { return sheet.Evaluate(0, who).value; }, nan},
        {"Evaluate, a new sheet",
         [&] { return AnalysisSheet(0, analysis.data(), analysis.size()).Evaluate(0, who).value; }, nan, 0},
        {"SheetMeasurer",
         [&] {
             const SheetSet set({&sheet, &sheet});
             SheetMeasurer measurer(set);
             measurer.Measure(who);
             return measurer.Lacks(1, 0, SheetPart::mean, 1, 0) ? nan : measurer.Evaluate(1, 0, 1, 0).value;
         },
         nan},
        {"Missing", [&] { return sheet.Missing(0, SheetPart::mean, who).GetSize(); }, 1},
        {"Calc_1", [&] { return sheet.Calc_1(1, "An item with a long name", who, 1, nullptr, nullptr); }, 0},
        {"Get_MeanSD", [&] { return sheet.Get_MeanSD("An item with a long name", 0, who, 1, 1).GetLength(); }, 0},
        {"ResultList", [&] { return ResultList(sheet, who).GetRow(0).value; }, 0},
        {"DefinitionCheck", [&] { return DefinitionCheck::Path(path.c_str()).files; }, 0},
        {"DefinitionCheck",
         [&] { return DefinitionCheck::Text(CheckFamily::definition, 0, analysis.data(), analysis.size()).files; }, 0},
        {"Position", [&] { return LandmarkTable::Position(0, "V", who).x; }, 0},
        {"Get_Title", [&] { return CCephCalc::Get_Title(path.c_str()).GetLength(); }, 0},
        {"User_Calc",
         [&] { return CCephCalc::User_Calc(0, 0, &face.record, nullptr, nullptr, nullptr, nullptr, 1, 0, nullptr); },
         0},
        {"item", [&] { return face.item("An item with a long name"); }, 0},
        {"norm", [&] { return face.norm("An item with a long name").size(); }, 0},
        {"ReadCalcMode",
         [&] {
             CStringArray points;
             return CCephCalc::ReadCalcMode(mode.c_str(), nullptr, &points, nullptr, nullptr), points.GetSize();
         },
         0},
        {"SetCalcMode", [&] { return box.ResetContent(), CCephCalc::SetCalcMode(0, &box), box.GetCount(); }, 0, 1},
        {"MakeDate", [&] { return CTools::MakeDate("20240305 and more", 1).GetLength(); }, 0},
        {"GetFileTitle", [&] { return CTools::GetFileTitle("/a folder/a file with a long name.txt").GetLength(); }, 0},
        {"GetFileSize", [&] { return CTools::GetFileSize(path.c_str()); }, 0},
        {"ExistFile", [&] { return CTools::ExistFile(path.c_str()); }, 0},
        {"GetErrorText", [] { return GetErrorText(2).GetLength(); }, 0},
        {"CJapEra", [] { return CJapEra().IsDataFileFound(); }, 0},
        {"Utf8FromCodePage932", [] { return Utf8FromCodePage932("\x8D\x9C\x8A\x69 of a child of thirteen").size(); },
         0},
        {"CodePage932FromUtf8",
         [] {
             CString text;
             return CodePage932FromUtf8("a text of more than sixteen", &text);
         },
         0},
    };
    for (const auto& call : calls) {
        const double good = call.call();
        for (const Shortage shortage : {Shortage::once, Shortage::for_good}) {
            int n = 1;
            for (bool refused = true; refused; ++n) {
                double got = any;
                refuse_memory(n, shortage);
                try {
                    got = call.call();
                } catch (...) {
                }
                refused = enough_memory_again();
                ASSERT_TRUE(same(got, good) || (refused && (same(got, call.failure) || same(got, call.other_failure))))
                    << call.name << " without request " << n << " for memory: " << got << ", not " << good;
            }
            EXPECT_GT(n, 2) << call.name;
        }
    }
}

}  // namespace
}  // namespace strength
