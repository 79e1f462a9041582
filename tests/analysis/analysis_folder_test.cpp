// The typed interface says what the exported calls say of the same folder, whatever the folder is called.
#include "AnalysisFolder.h"

#include <gmock/gmock.h>

#include "CodePage.h"
#include "Framework.h"
#include "tests/analysis/subject.h"

namespace {

namespace fs = std::filesystem;

std::string slashed(const CString& path) {
    std::string text(path.View());
    std::ranges::replace(text, '\\', '/');
    return text;
}
using testing::ElementsAre;
using tool::FolderPart;
using tool::Kind;
using tool::Sex;
using tool::StageSet;

TEST(AnalysisFolder, HoldsWhatTheCallsOfTheEngineFindInIt) {
    tool_test::AnalysisFolder clinic;
    const fs::path root = fs::path(clinic.root()).parent_path();
    fs::remove_all(root);
    fs::copy(TOOL_SOURCE_DIR "/anaitem", root, fs::copy_options::recursive);
    const tool::AnalysisFolder folder(root);
    EXPECT_TRUE(folder.problems().empty());
    for (const Kind kind : tool::all_kinds) {
        const int code = static_cast<int>(kind);
        for (const tool::Analysis& analysis : folder.analyses(kind)) {
            const CString path = CCephCalc::FormFile(code, *analysis.place());
            EXPECT_TRUE(fs::equivalent(analysis.file(), slashed(path))) << path.View();
            EXPECT_EQ(analysis.title(), Utf8FromCodePage932(CCephCalc::Get_Title(path)));
            EXPECT_EQ(analysis.comment(), Utf8FromCodePage932(CCephCalc::GetComment(code, *analysis.place())));
        }
        int index = 0;
        for (const tool::DisplayMode& mode : folder.modes(kind)) {
            CStringArray points, values, settings;
            const CString path = CCephCalc::CalcModeFile(code, index++);
            CCephCalc::ReadCalcMode(path, nullptr, &points, &values, &settings);
            EXPECT_EQ(mode.title, Utf8FromCodePage932(CCephCalc::Get_Title(path)));
            EXPECT_EQ(mode.values.size(), static_cast<std::size_t>(values.GetSize()));
            EXPECT_EQ(mode.every_landmark, points.IsEmpty() == TRUE);
            for (const tool::ModeValue& value : mode.values) EXPECT_TRUE(value.place) << value.position;
        }
    }
    for (const Sex sex : {Sex::male, Sex::female}) {
        for (double age = 0; age < 30; age += 0.25) {
            EXPECT_EQ(folder.ricketts()->stage_of(StageSet::first, sex, age, {}),
                      CCephCalc::Get_RickettsStage(static_cast<int>(sex), age, 0))
                << age;
        }
        EXPECT_EQ(folder.ricketts()->stage_of(StageSet::first, sex, {}, 3), std::nullopt);
    }
    using namespace std::chrono;
    const auto era = folder.eras()->era_of(2024y / March / 5d);
    EXPECT_EQ(folder.eras()->eras()[era->era].code + std::to_string(era->year), "R6");
    EXPECT_EQ(folder.bone_age(Sex::female).from_file, 4);
}

TEST(AnalysisFolder, TellsWhatCannotBeRead) {
    tool_test::AnalysisFolder clinic;
    clinic.write("\xC3\xBC/calcform/LIST.TXT", "gone.txt\nown.txt\nfolder\n");  // a name outside code page 932
    clinic.write("\xC3\xBC/calcform/Own.txt",
                 "Calc:\nA=len([S],[N])+mid([S],[X1])\nSD_M2:\nStage2:\nold=IIIA-\nStage_Type2:\nteeth\n");
    clinic.write("\xC3\xBC/calcform/folder/x", "");
    const tool::AnalysisFolder folder(fs::path(clinic.root()) / "\xC3\xBC");
    std::vector<std::string> problems;
    for (const tool::FolderProblem& problem : folder.problems())
        problems.push_back(problem.file.filename().string() + (problem.is_there ? "!" : ""));
    EXPECT_THAT(problems, ElementsAre("gone.txt", "folder!"));
    ASSERT_EQ(folder.analyses(Kind::lateral).size(), 1u);
    const tool::Analysis& own = folder.analyses(Kind::lateral)[0];
    EXPECT_THAT(own.title(), testing::StrCaseEq("own"));  // Windows keeps the spelling of the list
    EXPECT_EQ(own.place(), 1);
    EXPECT_TRUE(own.inputs().sex);
    EXPECT_THAT(own.inputs().landmarks, ElementsAre("S", "N", "X1"));
    EXPECT_EQ(folder.ricketts(), nullptr);
    EXPECT_EQ(folder.bone_age(Sex::male).constant, 0.82);
    EXPECT_EQ(tool::AnalysisFolder(folder.path() / "none").problems()[0].part, FolderPart::folder);
    EXPECT_NE(tool::Analysis::read(static_cast<Kind>(7), own.file()).reason(), "");
    EXPECT_NE(tool::Analysis::read(Kind::lateral, "none").reason(), "");
    EXPECT_NE(tool::EraCalendar::read("none").reason() + tool::DisplayMode::read("none").reason(), "");
}

// The host's settings say one decimal; the caller says how many.
TEST(Analysis, RoundsCastsAsTheCallerSays) {
    tool_test::AnalysisFolder clinic;
    clinic.model_decimals = 1;
    tool_test::Subject<tagPOINTMO, 2> cast;
    cast.record.Scale = 0.333;
    cast.place("UCWR", {10, 10});
    cast.place("UCWL", {110, 37});
    const char definition[] = "Calc:\nA=Model([UCAW])\n";
    const auto value = [&](int decimals) {
        const auto analysis = tool::Analysis::from_text(Kind::cast, "a.txt", definition, decimals);
        return analysis->sheet().Evaluate(0, {&cast.record}).value;
    };
    EXPECT_EQ(value(0), 34);
    EXPECT_EQ(value(2), 34.49);
    EXPECT_EQ(value(9), 34.5);
}

}  // namespace
