#include <gtest/gtest.h>

#include <cstring>

#include "Tools.h"
#include "surface/recorded_case.h"
#include "win32/memory_bitmap.h"

namespace {

using namespace recorded;

// Draws with the library's own functions what they can draw.
class ToolsPlayer : public Player {
 public:
    using Player::Player;
    bool drew_all = true;

 protected:
    void fill_region(const std::vector<POINT>&, int, COLORREF) override { drew_all = false; }
    void draw(const std::string& name, const std::vector<POINT>& p) override {
        // Their pens are plain, and the gaps of their dashes show what is below.
        const bool able = style_ <= PS_NULL && (style_ == PS_SOLID || style_ == PS_NULL || gaps_ == TRANSPARENT) &&
                          (rop_ == R2_COPYPEN || rop_ == R2_XORPEN);
        const int exclusive = rop_ == R2_XORPEN;
        if (name == "move") {
            from_ = p[0];
        } else if (name == "line") {
            drew_all = drew_all && able;
            CTools::Line_Make2(&surface_, from_, p[0], 1.0, CPoint(), width_, color_, style_, exclusive);
            from_ = p[0];
        } else if (name == "rect") {
            drew_all = drew_all && able && hollow_;
            CTools::Rect_Make(&surface_, RECT{p[0].x, p[0].y, p[1].x, p[1].y}, 1.0, CPoint(), width_, color_, style_,
                              exclusive);
        } else if (name == "ellipse") {
            drew_all = drew_all && able && hollow_ && !exclusive;
            CTools::Ellipse(&surface_, {p[0].x, p[0].y, p[1].x, p[1].y}, width_, color_, style_);
        } else if (name == "rop") {
            rop_ = static_cast<int>(p[0].x);
        } else if (name == "bkmode") {
            gaps_ = static_cast<int>(p[0].x);
        } else if (name == "polyline") {
            drew_all = false;
        }
    }

 private:
    CPoint from_;
    int rop_ = R2_COPYPEN, gaps_ = OPAQUE;
};

TEST(DeviceContext, DrawsTheRecordedRastersPixelByPixel) {
    int by_tools = 0;
    for (const RecordedCase& c : recorded_cases()) {
        const MemoryBitmap direct(c.width, c.height), drawn(c.width, c.height);
        CDC dc, tools_dc;
        ASSERT_TRUE(dc.Attach(direct.dc()) && tools_dc.Attach(drawn.dc()));
        Player player(dc, {c.width, c.height}, [&](COLORREF color) { SetBkColor(direct.dc(), color); });
        ToolsPlayer tools(tools_dc, {c.width, c.height}, [](COLORREF) {});
        for (const std::string& command : c.commands) player.play(command), tools.play(command);
        EXPECT_EQ(rows_of(c, [&](int x, int y) { return direct.pixel(x, y); }), rows_of(c)) << c.name;
        if (!tools.drew_all) continue;
        ++by_tools;
        EXPECT_EQ(rows_of(c, [&](int x, int y) { return drawn.pixel(x, y); }), rows_of(c)) << c.name;
    }
    EXPECT_EQ(by_tools, 130);
}

TEST(DeviceContext, ErasesWhatIsDrawnTwiceExclusively) {
    const MemoryBitmap bitmap(60, 60);
    CDC dc;
    dc.Attach(bitmap.dc());
    CTools::Rect_MakeEx(&dc, {5, 5, 50, 40}, 1.0, CPoint(), 3, RGB(10, 20, 30), PS_SOLID, RGB(200, 100, 50));
    std::vector<COLORREF> before, between, after;
    for (std::vector<COLORREF>* pixels : {&before, &between, &after}) {
        for (int i = 0; i < 3600; ++i) pixels->push_back(dc.GetPixel(i % 60, i / 60));
        for (const int style : {PS_SOLID, PS_DASH, PS_DOT, PS_DASHDOTDOT})
            CTools::Line_Make2(&dc, {2, 3 + style}, {57, 41 - style}, 1.0, CPoint(), 1, RGB(255, 255, 255), style, 1);
    }
    EXPECT_NE(before, between);
    EXPECT_EQ(before, after);
}

TEST(DeviceContext, HasItsObjectsAndModesBackAfterwards) {
    const MemoryBitmap bitmap(40, 40);
    const HPEN own_pen = CreatePen(PS_DOT, 1, RGB(1, 2, 3)), later_pen = CreatePen(PS_SOLID, 2, RGB(4, 5, 6));
    SelectObject(bitmap.dc(), own_pen);
    SetROP2(bitmap.dc(), R2_MASKPEN);
    CDC dc;
    ASSERT_TRUE(dc.Attach(bitmap.dc()));
    EXPECT_EQ(dc.GetCurrentPen()->GetStyle(), PS_DOT);
    EXPECT_EQ(dc.GetCurrentPen()->GetColor(), RGB(1, 2, 3));
    EXPECT_EQ(dc.GetROP2(), R2_MASKPEN);
    for (const HPEN expected : {own_pen, later_pen}) {
        CTools::TextMakeOut(&dc, 1, 1, "\x95\x5C", 12, FW_BOLD, 0, 0, RGB(9, 9, 9), TRANSPARENT);
        CTools::Rect_Make(&dc, CRect(2, 2, 20, 20), 1, RGB(7, 7, 7), PS_DASH);
        CTools::Line_MakeH(bitmap.dc(), 1, 1, 9, 9, 1, RGB(7, 7, 7), PS_SOLID);
        EXPECT_EQ(GetCurrentObject(bitmap.dc(), OBJ_PEN), expected);
        EXPECT_EQ(GetROP2(bitmap.dc()), R2_MASKPEN);
        EXPECT_EQ(GetBkMode(bitmap.dc()), OPAQUE);
        SelectObject(bitmap.dc(), later_pen);  // behind the object's back
    }
    EXPECT_EQ(dc.Detach(), bitmap.dc());
    EXPECT_EQ(dc.Detach(), nullptr);
    EXPECT_FALSE(dc.Attach(nullptr));
    EXPECT_TRUE(dc.LineTo(5, 5));  // nowhere
    SelectObject(bitmap.dc(), GetStockObject(BLACK_PEN));
    EXPECT_TRUE(DeleteObject(own_pen) && DeleteObject(later_pen));
}

TEST(DeviceContext, IsFoundByItsHandle) {
    const MemoryBitmap bitmap(30, 30);
    CTools::Box_MakeH(bitmap.dc(), {3, 4, 20, 21}, 1, RGB(255, 0, 0), PS_SOLID);
    EXPECT_EQ(bitmap.pixel(3, 4), RGB(255, 0, 0));
    EXPECT_EQ(bitmap.pixel(20, 21), RGB(255, 255, 255));
    CDC dc;
    dc.Attach(bitmap.dc());
    EXPECT_EQ(CDC::FromHandle(bitmap.dc()), &dc);
    EXPECT_EQ(CDC::FromHandle(reinterpret_cast<HDC>(static_cast<INT_PTR>(0x123456))), nullptr);
    EXPECT_EQ(dc.GetDeviceCaps(LOGPIXELSX), GetDeviceCaps(bitmap.dc(), LOGPIXELSX));
}

// Each object of the system's goes with its description, however often one is made anew or copied.
TEST(DeviceContext, LeavesNoObjectsBehind) {
    const MemoryBitmap bitmap(30, 30);
    CDC dc;
    dc.Attach(bitmap.dc());
    const auto draw = [&] {
        CTools::Rect_MakeEx(&dc, {1, 1, 9, 9}, 1.0, CPoint(), 3, RGB(1, 1, 1), PS_DASH, RGB(2, 2, 2));
        CTools::DrawArrowLine(&dc, {2, 2}, {25, 20}, 6.0, 3, 1.0, CPoint(), 1, RGB(3, 3, 3), PS_SOLID);
        CPen pen(PS_SOLID, 2, RGB(4, 4, 4));
        CPen* const before = dc.SelectObject(&pen);
        CPen copy = pen;
        dc.SelectObject(&copy);
        dc.SelectObject(before);
        pen.CreatePen(PS_DOT, 1, RGB(5, 5, 5));
        EXPECT_NE(pen.GetSafeHandle(), copy.GetSafeHandle());
    };
    for (int i = 0; i < 20000; ++i) draw();  // a process may have 10,000 of them
    CPen pen(PS_SOLID, 1, RGB(0, 0, 0));
    EXPECT_NE(pen.GetSafeHandle(), nullptr);
}

TEST(DeviceContext, WritesJapaneseText) {
    const MemoryBitmap bitmap(200, 40);
    CDC dc;
    dc.Attach(bitmap.dc());
    CFont font;
    LOGFONTA wanted{};
    wanted.lfHeight = -12;
    wanted.lfCharSet = SHIFTJIS_CHARSET;
    std::strcpy(wanted.lfFaceName, "\x82\x6C\x82\x72 \x83\x53\x83\x56\x83\x62\x83\x4E");  // ＭＳ ゴシック
    font.CreateFontIndirectA(&wanted);
    CFont* const before = dc.SelectObject(&font);
    LOGFONTW selected{};
    GetObjectW(GetCurrentObject(bitmap.dc(), OBJ_FONT), sizeof selected, &selected);
    EXPECT_EQ(std::wstring(selected.lfFaceName), L"ＭＳ ゴシック");
    EXPECT_EQ(selected.lfHeight, -12);
    dc.SelectObject(before);
    const CSize one = dc.GetTextExtent("\x95\x5C", 2), two = dc.GetTextExtent("\x95\x5C\x95\x5C", 4);
    EXPECT_EQ(two.cx, 2 * one.cx);
    EXPECT_EQ(dc.GetTextExtent("", 0).cy, one.cy);
    RECT room = {0, 0, 200, 0};
    const int height =
        CTools::Rect_Text(&dc, room, "SNA\r\nSNB", nullptr, 14, FW_NORMAL, 0, RGB(0, 0, 0), DT_CALCRECT | DT_NOPREFIX);
    EXPECT_GE(height, 2 * 10);
}

}  // namespace
