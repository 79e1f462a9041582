// Any mixture of exported functions in several threads at once comes to what it comes to in one. Built with the thread
// sanitizer (preset "tsan") this also finds what two threads share without a lock.
#include <CalcTool.h>
#include <DefinitionCheck.h>
#include <Exif.h>
#include <Framework.h>
#include <JapEra.h>
#include <ResultList.h>
#include <Tools.h>
#include <UnreadFile.h>
#include <gmock/gmock.h>

#include <random>
#include <thread>

#include "analysis/subject.h"
#include "surface/picture_surface.h"

namespace {

// A few calls that belong together, and what they came to.
struct Turn {
    std::mt19937 random;
    CString own;  // a path that no other turn has
    const AnalysisSheet& shared;
    std::ostringstream out = {};

    int below(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }
    CPoint point() { return {below(2000) + 1, below(2000) + 1}; }
    void tell(const auto&... values) { ((out << values << ' '), ...); }
};
void measure(Turn& t) {
    tool_test::Lateral face;
    for (CPoint& point : face.record.Point) point = t.point();
    face.add_virtual("Mid", "mid([S],[Me])");
    ResultList rows;
    CCephCalc::User_Calc(0, t.below(20), &face.record, &face.virtual_count, face.virtuals, &face.user_count, face.users,
                         t.below(2), 0, &rows);
    for (const ResultRow& row : rows) t.tell(row.title, row.valueText, row.deviationText, UnreadFile());
    for (int item = 0; item < t.shared.GetCount(); ++item) t.tell(t.shared.Evaluate(item, face.on_sheet()).value);
    t.tell(face.calc("angle1([S],[N],[Mid])*2"), CCalcTool::Get_Heron(t.point(), t.point(), t.point(), 0.1));
}
void list(Turn& t) {
    CComboBox stages, modes;
    CCephCalc::SetCalcMode(0, &modes);
    t.tell(CCephCalc::SetStageList(0, &stages, t.below(20), 1, t.below(20), 3, 1, ""), modes.GetCount());
    t.tell(DefinitionCheck::Path(CCephCalc::FormFile(0, t.below(20))).findings.size());
    t.tell(CTools::CalcAge("19990501", nullptr), CJapEra().GetEraYearName(1900 + t.below(150), 1, 9, nullptr));
}
void store(Turn& t) {  // in a folder of its own, and in one settings file with all others
    CString copy = t.own + "copy";
    CTools::MkDir(t.own);
    CFile(t.own + "/\x95\x5C.txt", CFile::modeWrite | CFile::modeCreate).Write("text", 4);
    t.tell(CTools::DirectoryCopy(t.own, copy), CTools::GetFileSize(copy + "\x95\x5C.TXT"));
    for (int i = 0; i < 9; ++i) CTools::WriteProfileIntEx(t.own, std::to_string(i).c_str(), i + 1, "turns.ini");
    for (int i = 0; i < 9; ++i) t.tell(CTools::GetProfileIntEx(t.own, std::to_string(i).c_str(), 0, "turns.ini"));
    t.tell(CTools::ExistFile(TOOL_SOURCE_DIR "/missing"), CTools::ExistFile(TOOL_SOURCE_DIR "/lacking"));
}
void ask(Turn& t) {
    CWnd dialog;
    for (const UINT field : {1u, 2u, 3u}) dialog.AddField(field);
    CTools::SetNengappi(CWnd::FromHandle(dialog.m_hWnd), 1, 2, 3, CTools::MakeDateR("2024/2/29"));
    t.tell(CTools::GetNengappi(&dialog, 1, 2, 3), GetErrorText(2), CTools::GetExecutionFileDirectoryPath());
    t.tell(CExif().DecodeExif(reinterpret_cast<const unsigned char*>("\xFF\xD8\xFF\xD9"), 4));
}
void draw(Turn& t) {
    const auto picture = tool::PictureSurface::create(200, 200, tool::PictureSurface::Look::smooth);
    const tagPOINT curve[] = {t.point(), t.point(), t.point(), t.point()};
    CTools::Draw_SPLine(picture.get(), CPoint(0, 0), 0.1, curve, 4, RGB(255, 0, 0), 2, 1, PS_DASH, 0);
    CTools::Box_MakeH(picture->m_hDC, CRect(0, 0, t.below(200), 100), 1, RGB(0, 0, 255), 104);
    CTools::TextMakeOut(picture.get(), 20, 20, "\x83\x5A\x83\x74\x83\x40", 16, 400, 0, 0, 0, TRANSPARENT);
    t.tell(picture->png());
}

TEST(Threads, MixedCallsComeToWhatTheyComeToInOne) {
    tool_test::AnalysisFolder folder;
    std::filesystem::copy(TOOL_SOURCE_DIR "/anaitem", folder.root(), std::filesystem::copy_options::recursive);
    SetModuleFileNameA((folder.root() + "program").c_str());  // with its era table and settings
    const AnalysisSheet sheet(0, CCephCalc::FormFile(0, 0));
    const auto result = [&](unsigned thread, unsigned turn) {
        Turn t{std::mt19937(turn), CString(folder.root() + std::to_string(thread) + "-" + std::to_string(turn)), sheet};
        constexpr void (*calls[])(Turn&) = {measure, list, store, ask, draw};
        return calls[t.below(5)](t), t.out.str();
    };
    static std::string results[5][250];
    const auto take_all = [&](unsigned thread) {  // each begins elsewhere
        for (unsigned i = 49 * thread, end = i + 250; i < end; ++i) results[thread][i % 250] = result(thread, i % 250);
    };
    std::vector<std::jthread> running;
    for (const unsigned thread : {1u, 2u, 3u, 4u}) running.emplace_back(take_all, thread);
    running.clear();
    take_all(0);
    for (unsigned turn = 0; turn < 250; ++turn)
        for (const auto& each : results) EXPECT_TRUE(each[turn] == results[0][turn]) << "turn " << turn;
}

}  // namespace
