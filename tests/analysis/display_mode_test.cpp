#include <gtest/gtest.h>

#include "tests/analysis/subject.h"

namespace tool_test {
namespace {

struct Mode {
    tagSUPPLINE lines[31];
    CStringArray points, calcs, settings;

    explicit Mode(const std::string& path) {
        std::memset(static_cast<void*>(lines), 0x55, sizeof lines);
        points.Add("kept");
        CCephCalc::ReadCalcMode(path.c_str(), lines, &points, &calcs, &settings);
    }
    int line_count() const {
        int count = 0;
        while (count < 31 && lines[count].from[0] != 0x55) ++count;
        return count;
    }
};

TEST(DisplayMode, ReadsSectionsAttributesAndMeasurements) {
    AnalysisFolder folder;
    folder.write(
        "mode.txt",
        "title:\r\nSample\r\n[S]-[N]\r\nPoint:\r\nS\r\n\r\n Color=1,2,3\r\nSuppLine:\r\n[S]-[N]\r\n=first\r\n"
        "Color=255,0,7\r\nLine=bold \r\nLINE=BOLD\r\nDecimal=0.5\r\nPos=10,20\r\nSize=12\r\nsize=99\r\n"
        "from [LongName] to [B]\r\n=ANB\r\ncolor=10,20\r\ndecimal=0.50\r\npos=\r\nline=Bold\r\ncolor=300,-1,x\r\n"
        "[A] [] "
        "[B]\r\n[A\r\n[A]]\r\n[\x83\x5D]-[\x83\x5B]\r\n=\r\nPointSetting:\r\nsetting\r\n[End]\r\nPoint:\r\nunread\r\n");
    const Mode mode(folder.root() + "mode.txt");
    const auto joined = [](const CStringArray& list) {
        std::string all;
        for (int i = 0; i < list.GetSize(); ++i) all += std::string(list[i].View()) + "|";
        return all;
    };
    EXPECT_EQ(joined(mode.points), "kept|S|| Color=1,2,3|");
    EXPECT_EQ(joined(mode.settings), "setting|");
    EXPECT_EQ(joined(mode.calcs), "0000000000SIZE=15CALC=first|255000007910,20SIZE=12CALC=ANB|0442550002SIZE=12CALC=|");
    struct {
        const char *from, *to;
        COLORREF colour;
        int style;
    } const lines[] = {
        {"S", "N", 0, 102}, {"LongN", "B", RGB(255, 0, 7), 101}, {"\x83\x5D", "\x83\x5B", RGB(44, 255, 0), 102}};
    ASSERT_EQ(mode.line_count(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_STREQ(mode.lines[i].from, lines[i].from);
        EXPECT_STREQ(mode.lines[i].to, lines[i].to);
        EXPECT_EQ(mode.lines[i].color, lines[i].colour) << i;
        EXPECT_EQ(mode.lines[i].style, lines[i].style) << i;
    }
}

TEST(DisplayMode, StopsBehindTheThirtiethLine) {
    AnalysisFolder folder;
    std::string text = "SuppLine:\n";
    for (int i = 0; i < 31; ++i) text += "[S]-[N]\n";
    folder.write("mode.txt", text + "=late\nPointSetting:\nlate\n");
    const Mode mode(folder.root() + "mode.txt");
    EXPECT_EQ(mode.line_count(), 30);
    EXPECT_TRUE(mode.calcs.IsEmpty());
    EXPECT_TRUE(mode.settings.IsEmpty());
    EXPECT_EQ(Mode(folder.root() + "none.txt").line_count(), 0);
    CCephCalc::ReadCalcMode((folder.root() + "mode.txt").c_str(), nullptr, nullptr, nullptr, nullptr);
}

TEST(DisplayModeList, TheTwoCountsDiffer) {
    AnalysisFolder folder;
    folder.write("CalcMode/list.txt", "no comma\r\n7,a.txt\r\n8,untitled.txt\r\n9,gone.txt\r\n x,b.txt");
    folder.write("CalcMode/a.txt", "title:\r\nFirst\r\n");
    folder.write("CalcMode/untitled.txt", "Point:\r\n");
    folder.write("CalcMode/b.txt", "title:\nSecond\n");
    folder.write("CalcMode_PA/list.txt", "1,none.txt\r\n");
    CComboBox combo;
    CCephCalc::SetCalcMode(0, &combo);
    ASSERT_EQ(combo.GetCount(), 3);
    EXPECT_EQ(combo.GetCurSel(), 0);
    EXPECT_TRUE(combo.IsWindowEnabled());
    const char* const texts[] = {"-----------", "First", "Second"};
    const DWORD_PTR data[] = {0, 7, 0};
    for (int i = 0; i < 3; ++i) {
        CString text;
        combo.GetLBText(i, text);
        EXPECT_EQ(text, texts[i]);
        EXPECT_EQ(combo.GetItemData(i), data[i]);
    }
    const char* const files[] = {"a.txt", "untitled.txt", "b.txt", ""};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(CCephCalc::CalcModeFile(0, i).View(), *files[i] ? folder.root() + "CalcMode/" + files[i] : "");
    EXPECT_TRUE(CCephCalc::CalcModeFile(0, -1).IsEmpty());
    for (const int kind : {1, 2, 9}) {  // nothing usable, no list, no folder of its own
        CComboBox empty;
        CCephCalc::SetCalcMode(kind, &empty);
        EXPECT_EQ(empty.GetCount(), 1) << kind;
        EXPECT_FALSE(empty.IsWindowEnabled()) << kind;
    }
    folder.write("list.txt", "1,CalcMode/a.txt\r\n");
    EXPECT_EQ(CCephCalc::CalcModeFile(9, 0).View(), folder.root() + "CalcMode/a.txt");
}

TEST(DisplayModePoint, AnEmptyListAcceptsEveryName) {
    CStringArray points;
    EXPECT_EQ(CCephCalc::CheckCalcModePoint(&points, "S"), 1);
    EXPECT_EQ(CCephCalc::CheckCalcModePoint(nullptr, "S"), 1);
    points.Add("N");
    points.Add("S ");
    EXPECT_EQ(CCephCalc::CheckCalcModePoint(&points, "N"), 1);
    EXPECT_EQ(CCephCalc::CheckCalcModePoint(&points, "S"), 0);
    EXPECT_EQ(CCephCalc::CheckCalcModePoint(&points, "n"), 0);
}

}  // namespace
}  // namespace tool_test
