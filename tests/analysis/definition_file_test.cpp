#include <gtest/gtest.h>

#include "analysis/definition_file.h"
#include "analysis/item_text.h"
#include "framework/system.h"
#include "platform/text.h"
#include "tests/analysis/subject.h"

namespace tool_test {
namespace {

using tool::DefinitionFile;
using Look = DefinitionFile::Look;

TEST(KeyLine, CodesAreThoseOfTheSections) {
    constexpr std::string_view names[] = {"title", "Calc", "Stage", "Stage_M",    "Stage_F", "Mean", "Mean_M", "Mean_F",
                                          "SD",    "SD_M", "SD_F",  "Stage_Type", "Comment", "Diag", "Param"};
    const auto expect = [](const std::string& line, int code) {
        EXPECT_EQ(CCephCalc::Str_Check(line.c_str()), code) << line;
    };
    for (int code = 1; code <= 15; ++code) {
        const std::string name(names[code - 1]);
        const bool has_sets = code > 1 && code < 13;
        expect(name + ":", code);
        expect(tool::upper(name) + ":", code);
        expect(name + "1:", has_sets ? code : 0);
        expect(name + "2:", has_sets ? 100 + code : 0);
        for (const std::string& line : {name, " " + name + ":", name + ": ", name + ": x", name + "3:"})
            expect(line, 0);
    }
    for (const char* const line : {"", ":", "S-N:"}) expect(line, 0);
    EXPECT_EQ(CCephCalc::Str_Check(nullptr), 0);
}

TEST(DefinitionFile, TitleAndCommentStandBelowTheirKeys) {
    struct {
        std::string text, title, comment;
    } const cases[] = {
        {"title:\r\n\r\nSample analysis\r\nCalc:\r\n", "Sample analysis", ""},
        {"title:\nCalc:\nS-N=len([S],[N])\n", "", ""},
        {"title:\n\nCalc:\nTITLE:\nSecond", "Second", ""},
        {"stray\r\nComment:\r\nfirst\r\nComment:\r\nsecond", "", "first"},
        {"Comment:\r\n\r\nlate", "", ""},
        {"Comment:\nCalc:\n", "", "Calc:"},
        {"Comment:", "", ""},
        {"title:\r\n\x83\x5C\x95\x5C\r\n", "\x83\x5C\x95\x5C", ""},
        {std::string("title:\0Cut at NUL\0", 18), "Cut at NUL", ""},
    };
    for (const auto& c : cases) {
        const DefinitionFile file(c.text);
        EXPECT_EQ(file.title(), c.title) << c.text;
        EXPECT_EQ(file.comment(), c.comment) << c.text;
    }
}

TEST(DefinitionFile, TheTableFindsWhatTheWalkFinds) {
    const std::string fifty(50, 'n'),
        text = "A=stray\ntitle:\nA=title\nCalc:\nA=1;2:3\nB\n" + fifty +
               "n=cut\n=empty\nCalc2:\nA=second\nC=2\n"
               "SD2:\nA=9\nMean_F:\nA=80\nMean_M2:\nA=70\nMean:\nA=75\nB=\nMean_M1:\nA=60\nSD:\nA=3\nDiag:\nD=1\n";
    DefinitionFile walked(text), indexed(text);
    indexed.build_index();
    const auto same = [&](const auto& a, const auto& b, const std::string& name) {
        ASSERT_EQ(a.has_value(), b.has_value()) << name;
        if (!a) return;
        EXPECT_EQ(a->rest, b->rest) << name;
        EXPECT_EQ(a->section, b->section) << name;
    };
    for (const std::string& name : {std::string("A"), std::string("B"), std::string("C"), std::string("D"), fifty,
                                    fifty + "n", std::string(), std::string("a")}) {
        for (const int sex : {1, 2}) {
            const DefinitionFile fresh(text);  // without a table yet
            const auto walk = fresh.find(name, Look::both, sex), table = indexed.find(name, Look::both, sex);
            same(walk.item, table.item, name);
            same(walk.mean, table.mean, name);
            same(walk.sd, table.sd, name);
        }
    }
    EXPECT_EQ(walked.find("A", Look::norms, 1).mean->rest, "70");
    EXPECT_EQ(walked.find("A", Look::norms, 0).mean->rest, "80");
    EXPECT_EQ(walked.find("A", Look::norms, 1).sd->rest, "9");
    EXPECT_FALSE(walked.find("A", Look::norms, 1).item.has_value());
    EXPECT_FALSE(walked.find("A", Look::item, 1).sd.has_value());
    EXPECT_EQ(walked.find_item(fifty)->rest, "cut");
    for (const std::string section : {"Mean_M", "Mean_F", "SD_M", "SD_F"})
        for (const int sex : {1, 2}) {
            const auto found = DefinitionFile(section + ":\nA=1\n").find("A", Look::norms, sex);
            const bool own = section.ends_with(sex == 1 ? 'M' : 'F'), mean = section.starts_with("Mean");
            EXPECT_TRUE(found.mean.has_value() == (own && mean) && found.sd.has_value() == (own && !mean)) << section;
        }
    EXPECT_EQ(walked.find_item("B")->rest, "");
}

TEST(ItemType, IsCutOffAndDecoded) {
    struct {
        const char *before, *after;
        int column, mode;
    } const cases[] = {{"[S][N]:11", "[S][N]", 1, 3},
                       {"[S][N]", "[S][N]", 0, 1},
                       {"x:0", "x", 0, 1},
                       {"x:2", "x", 2, 1},
                       {"x:3", "x", 0, 0},
                       {"x:9", "x", 0, 0},
                       {"x:10", "x", 0, 3},
                       {"x:12", "x", 2, 3},
                       {"x:13", "x", 0, 2},
                       {"x:", "x", 0, 1},
                       {"a:1b:2", "a:1b", 1, 1},
                       {":5", "", 2, 0},
                       {"x:123456", "x", (1234 - 10) % 3, 2},
                       {"x:4\r\ny:1", "x", 1, 0}};
    for (const auto& c : cases) {
        std::string text = c.before;
        int column = -1, mode = -1;
        CCephCalc::GetType(text.data(), &column, &mode);
        EXPECT_STREQ(text.c_str(), c.after) << c.before;
        EXPECT_EQ(column, c.column) << c.before;
        EXPECT_EQ(mode, c.mode) << c.before;
    }
}

TEST(NumberField, TheLastOneServesEveryFurtherBand) {
    struct {
        std::string text;
        int n;
        std::string field, norm;
    } const cases[] = {{"1.0,2.0,3.0", 5, "3.0", "3.0"},
                       {"1.0,2.0", -4, "1.0", "1.0"},
                       {"1,,3", 1, "", ""},
                       {"", 3, "", ""},
                       {" 1 , 2 ", 1, " 2 ", " 2 "},
                       {"1,", 1, "", ""},
                       {"f(1,2):1,5", 0, "f(1", "f(1,2):1"},
                       {"f(1,2):1,5", 1, "2):1", "5"},
                       {"f(1,[a,b]):1,5", 1, "[a", "5"},
                       {"f(1,2:1,5", 1, "2:1", "f(1,2:1,5"},
                       {"f)(1,2):1,5", 1, "2):1", "5"},
                       {std::string(120, '7') + ",1", 0, std::string(100, '7'), std::string(100, '7')}};
    for (const auto& c : cases) {
        std::string text = c.text;
        EXPECT_EQ(CCephCalc::Get_NumStr(text.data(), c.n).View(), c.field) << c.text << c.n;
        EXPECT_EQ(tool::norm_field(c.text, c.n), c.norm) << c.text << c.n;
    }
}

TEST(Catalogue, NamesTheFilesOfAKind) {
    AnalysisFolder folder;
    folder.write("CalcForm/list.txt", "A.txt\r\n\r\nsub\\B.dat\nLast");
    folder.write("list.txt", "Root.txt");
    const std::string root = folder.root();
    struct {
        int kind, index;
        std::string path;
    } const cases[] = {{0, 0, root + "CalcForm\\A.txt"},
                       {0, 1, root + "CalcForm\\sub\\B.dat"},
                       {0, 2, root + "CalcForm\\Last"},
                       {0, 3, ""},
                       {0, -2, ""},
                       {0, -1, root + "CalcForm\\Ricketts.txt"},
                       {1, 0, ""},
                       {1, -1, ""},
                       {20, 7, root + "CalcForm_Surg\\Surgery.txt"},
                       {99, 0, root + "\\Root.txt"}};
    for (const auto& c : cases)
        EXPECT_EQ(CCephCalc::FormFile(c.kind, c.index).View(), c.path) << c.kind << ' ' << c.index;
}

TEST(Catalogue, StandsBesideTheProgramWithoutASetting) {
    CWinApp plain;  // its profile stands beside the program too, and is not there
    SetModuleFileNameA("C:\\Ceph\\\x95\x5C\\host.exe");
    EXPECT_EQ(CCephCalc::FormFile(0, -1).View(), "C:\\Ceph\\\x95\x5C\\ANAITEM\\CalcForm\\Ricketts.txt");
    SetModuleFileNameA(nullptr);
}

TEST(UsePoint, LooksAtFirstSetItemsOfEveryFile) {
    AnalysisFolder folder;
    folder.write("CalcForm/list.txt", "Gone.txt\r\nA.txt\r\nB.txt\r\n");
    folder.write("CalcForm/A.txt", "Calc:\r\n[Name]=len([S],[N])\r\nCalc2:\r\nx=[Po]\r\nDiag:\r\nx=[Or]\r\n");
    folder.write("CalcForm/B.txt", "Calc1:\r\nx=mid([Pog(R)],[TenLetters]) [ElevenChars] [A\r\n");
    struct {
        const char* name;
        int used;
    } const cases[] = {{"S", 1},      {"N", 1},          {"s", 0},           {"Name", 0},       {"Po", 0}, {"Or", 0},
                       {"Pog(R)", 1}, {"TenLetters", 1}, {"ElevenChars", 0}, {"ElevenChas", 0}, {"A", 0},  {"", 0}};
    for (const auto& c : cases) EXPECT_EQ(CCephCalc::Use_Point(0, c.name), c.used) << c.name;
    EXPECT_EQ(CCephCalc::Use_Point(1, "S"), 0);
    EXPECT_EQ(CCephCalc::Use_Point(20, "S"), 0);
}

}  // namespace
}  // namespace tool_test
