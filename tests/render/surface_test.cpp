// The framework's own part of a surface: its objects, handles and text in a rectangle.
#include <gtest/gtest.h>

#include <memory>

#include "tests/render/recorded.h"

namespace {

TEST(Surface, RefusesWhatDoesNotExist) {
    tool::RecordingSurface surface;
    CPen none, unknown(9, 1, RGB(0, 0, 0)), user(7 | PS_GEOMETRIC, 1, nullptr), pen(PS_DASH, -3, RGB(1, 2, 3));
    CPen* const first = surface.GetCurrentPen();
    for (CPen* refused : {&none, &unknown, &user, static_cast<CPen*>(nullptr)})
        EXPECT_EQ(surface.SelectObject(refused), nullptr);
    EXPECT_EQ(surface.SelectObject(&pen), first);
    EXPECT_EQ(pen.GetWidth(), 3);
    EXPECT_TRUE(pen.DeleteObject());
    EXPECT_FALSE(pen.DeleteObject());
    EXPECT_EQ(surface.SetROP2(17), 0);
    EXPECT_EQ(surface.SetBkMode(0), 0);
    EXPECT_EQ(surface.GetROP2(), R2_COPYPEN);
    CRgn region;
    const POINT corners[] = {{0, 0}, {1, 1}};
    EXPECT_FALSE(region.CreatePolygonRgn(corners, 1, ALTERNATE) || region.CreatePolygonRgn(corners, 2, 3));
}

TEST(Surface, IsFoundByItsHandleWhileItLives) {
    auto surface = std::make_unique<CDC>();
    const HDC handle = surface->GetSafeHdc();
    EXPECT_EQ(CDC::FromHandle(handle), surface.get());
    surface.reset();
    const CDC next;
    EXPECT_EQ(CDC::FromHandle(handle), nullptr);
    EXPECT_EQ(CDC::FromHandle(nullptr), nullptr);
}

TEST(DrawText, PlacesLinesInTheRectangle) {  // 8 units a byte, 16 a line
    const struct {
        const char* text;
        CRect rect;
        UINT format;
        int height;
        const char* recording;
    } rows[] = {
        {"a b\r\nc\rd\n", {5, 7, 99, 9}, DT_LEFT, 48, "text 5 7 \"a b\"; text 5 23 \"c\"; text 5 39 \"d\"; "},
        {"ab cd  e", {0, 0, 42, 99}, DT_WORDBREAK, 32, "text 0 0 \"ab cd  \"; text 0 16 \"e\"; "},
        {"ab cd e", {0, 0, 40, 99}, DT_WORDBREAK, 32, "text 0 0 \"ab cd \"; text 0 16 \"e\"; "},
        {"abcdef g", {0, 0, 20, 99}, DT_WORDBREAK, 32, "text 0 0 \"abcdef \"; text 0 16 \"g\"; "},
        {"\x8D\xFC\x8A\x70"
         "a",
         {0, 0, 30, 99},
         DT_WORDBREAK,
         32,
         "text 0 0 \"\xE5\x88\xB7\"; text 0 16 \"\xE8\xA7\x92"
         "a\"; "},
        {"a\nb", {0, 0, 99, 50}, DT_SINGLELINE | DT_BOTTOM | DT_CENTER, 16, "text 37 34 \"a\\x0Ab\"; "},
        {"abc", {0, 0, 17, 9}, DT_SINGLELINE | DT_VCENTER | DT_CENTER, 16, "text -3 -3 \"abc\"; "},
        {"a\nb", {0, 0, 99, -50}, DT_RIGHT, 32, "text 91 0 \"a\"; text 91 -16 \"b\"; "},
        {"", {0, 0, 99, 50}, 0, 0, ""},
    };
    for (const auto& row : rows) {
        tool::RecordingSurface surface;
        CRect rect = row.rect;
        EXPECT_EQ(surface.DrawText(row.text, -1, &rect, row.format), row.height) << row.text;
        EXPECT_EQ(joined(surface), std::string("textalign 0; ") + row.recording + "textalign 0") << row.text;
    }
    tool::RecordingSurface surface;
    CRect rect(10, 10, 11, 11);
    EXPECT_EQ(surface.DrawText("abc\nab", 4, &rect, DT_CALCRECT), 16);
    EXPECT_EQ(rect, CRect(10, 10, 34, 26));
    EXPECT_EQ(surface.DrawText("a", -2, &rect, 0), 0);
}

}  // namespace
