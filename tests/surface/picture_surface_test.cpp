#include "surface/picture_surface.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <random>

#include "CodePage.h"
#include "Tools.h"
#include "tests/surface/font_of.h"

namespace {

using tool::PictureSurface;
using Look = PictureSurface::Look;

std::string pixels_of(const PictureSurface& surface) {
    std::string all;
    for (int y = 0; y < surface.height(); ++y)
        for (int x = 0; x < surface.width(); ++x) all += std::to_string(surface.pixel(x, y)) + ' ';
    return all;
}

// Every operation, with coordinates also far outside, drawn in whatever mode is set.
void draw_everything(CDC& dc, unsigned seed) {
    std::mt19937 random(seed);
    const auto any = [&random] {
        const int special[] = {0, INT_MIN, INT_MAX, -7, 100000};
        const auto n = random();
        return n % 16 < 2 ? special[n / 16 % 5] : static_cast<int>(n / 16 % 70) - 10;
    };
    const LOGBRUSH solid = {BS_SOLID, RGB(1, 200, 3), 0};
    CPen pens[] = {CPen(PS_SOLID, 1, RGB(255, 255, 255)), CPen(PS_DASHDOT, 1, RGB(9, 99, 199)),
                   CPen(PS_SOLID, 4, RGB(1, 2, 3)), CPen(PS_DASH | PS_GEOMETRIC | PS_ENDCAP_SQUARE, 3, &solid),
                   CPen(PS_DOT | PS_GEOMETRIC, 1000, &solid)};
    CBrush brush(RGB(70, 80, 90));
    dc.SelectObject(&brush);
    for (CPen& pen : pens) {
        dc.SelectObject(&pen);
        const POINT points[] = {{any(), any()}, {any(), any()}, {any(), any()}, {any(), any()}};
        dc.MoveTo(any(), any()), dc.LineTo(any(), any());
        dc.MoveTo(5, 9), dc.LineTo(any(), 9);
        dc.Polyline(points, 4);
        dc.Polygon(points, 4);
        dc.Rectangle(any(), any(), any(), any());
        dc.Ellipse(any(), any(), any(), any());
        dc.Arc(any(), any(), any(), any(), any(), any(), any(), any());
        CRgn region;
        region.CreatePolygonRgn(points, 4, WINDING);
        dc.FillRgn(&region, &brush);
    }
}

TEST(PictureSurface, DrawingTwiceInExclusiveOrRestoresEveryPixel) {
    for (const Look look : {Look::crisp, Look::smooth}) {
        const auto surface = PictureSurface::create(50, 40, look, RGB(10, 20, 30));
        draw_everything(*surface, 1);
        const std::string before = pixels_of(*surface);
        surface->SetROP2(R2_XORPEN);
        for (unsigned seed = 0; seed < 20; ++seed) {
            draw_everything(*surface, seed);
            EXPECT_NE(pixels_of(*surface), before);
            draw_everything(*surface, seed);
            ASSERT_EQ(pixels_of(*surface), before) << seed;
        }
    }
}

// One stroke at a time: where two overlap, exclusive or shows it.
TEST(PictureSurface, ExclusiveOrOverBlackIsCopying) {
    constexpr int styles[] = {PS_SOLID, PS_DASH, PS_GEOMETRIC | PS_DASHDOT, PS_GEOMETRIC | PS_DOT | PS_ENDCAP_SQUARE};
    for (const int style : styles) {
        for (int width = 1; width < 8; ++width) {
            std::string pictures[2];
            for (const int xored : {0, 1}) {
                const auto surface = PictureSurface::create(60, 60, Look::crisp, RGB(0, 0, 0));
                const LOGBRUSH brush = {BS_SOLID, RGB(200, 100, 50), 0};
                CPen pen(style, width, &brush);
                surface->SelectObject(&pen);
                surface->SetBkMode(TRANSPARENT);
                if (xored) surface->SetROP2(R2_XORPEN);
                surface->MoveTo(50, 12), surface->LineTo(7, 40);
                pictures[xored] = pixels_of(*surface);
            }
            EXPECT_EQ(pictures[0], pictures[1]) << style << ' ' << width;
        }
    }
}

// Whether it is drawn by the rule for lines along an axis, as round or square, or as any other polyline.
TEST(PictureSurface, AWideLineLiesAsManyPixelsAboveItsMiddleAsHalfItsWidth) {
    for (const int ends : {PS_ENDCAP_ROUND, PS_ENDCAP_SQUARE, PS_ENDCAP_FLAT})
        for (const bool upright : {false, true})
            for (const int count : {2, 3})
                for (int width = 2; width < 9; ++width) {
                    const auto surface = PictureSurface::create(60, 60, Look::crisp);
                    const LOGBRUSH black = {BS_SOLID, 0, 0};
                    CPen pen(PS_GEOMETRIC | ends, width, &black);
                    surface->SelectObject(&pen);
                    const POINT level[] = {{10, 30}, {50, 30}, {20, 30}}, down[] = {{30, 10}, {30, 50}, {30, 20}};
                    surface->Polyline(upright ? down : level, count);
                    for (int i = 0; i < 60; ++i)
                        ASSERT_EQ(surface->pixel(upright ? i : 35, upright ? 35 : i) == 0,
                                  i >= 30 - width / 2 && i < 30 - width / 2 + width)
                            << ends << upright << count << ' ' << width << ' ' << i;
                }
}

// What lies outside neither costs time nor changes what lies inside.
TEST(PictureSurface, ClippingChangesNoPixel) {
    std::mt19937 random(7);
    const auto any = [&random] { return static_cast<int>(random() % 300) - 150; };
    for (int i = 0; i < 200; ++i) {
        const auto small = PictureSurface::create(20, 20, Look::crisp),
                   large = PictureSurface::create(400, 400, Look::crisp);
        const POINT a = {any(), any()}, b = {any(), any()}, c = {any(), any()}, d = {any(), any()};
        CPen dashes(PS_DASHDOTDOT, 1, RGB(255, 0, 0));
        for (const auto& [surface, shift] : {std::pair(small.get(), 0), std::pair(large.get(), 180)}) {
            const POINT points[] = {{a.x + shift, a.y + shift}, {b.x + shift, b.y + shift}, {c.x + shift, c.y + shift}};
            surface->Ellipse(points[0].x, points[0].y, points[1].x, points[1].y);
            surface->Polygon(points, 3);
            surface->Arc(points[1].x, points[1].y, points[2].x, points[2].y, d.x + shift, d.y + shift, a.x + shift,
                         c.y + shift);
            surface->SelectObject(&dashes);
            surface->Polyline(points, 3);
        }
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 20; ++x) ASSERT_EQ(small->pixel(x, y), large->pixel(x + 180, y + 180)) << i;
    }
}

TEST(PictureSurface, ArcsOfBothWaysMakeTheEllipse) {
    const auto arcs = PictureSurface::create(60, 60, Look::crisp), whole = PictureSurface::create(60, 60, Look::crisp);
    whole->Arc(5, 3, 54, 40, 9, 9, 9, 9);
    for (const int end : {0, 30, 59}) {
        arcs->Arc(5, 3, 54, 40, 59, 10, end, 50), arcs->Arc(5, 3, 54, 40, end, 50, 59, 10);
        EXPECT_EQ(pixels_of(*arcs), pixels_of(*whole)) << end;
    }
    const auto quarter = PictureSurface::create(21, 21, Look::crisp);
    quarter->Arc(0, 0, 21, 21, 20, 10, 10, 0);
    EXPECT_TRUE(quarter->pixel(20, 10) == 0 && quarter->pixel(10, 0) == 0) << "both ends belong to it";
}

TEST(PictureSurface, SmoothLinesShadeAndCrispOnesDoNot) {
    for (const Look look : {Look::crisp, Look::smooth}) {
        const auto surface = PictureSurface::create(30, 30, look);
        surface->LineTo(29, 13);
        int shades = 0;
        for (int x = 0; x < 30; ++x)
            for (int y = 0; y < 30; ++y) shades += surface->pixel(x, y) != 0 && surface->pixel(x, y) != 0xFFFFFF;
        EXPECT_EQ(shades > 0, look == Look::smooth);
        surface->FillRect(std::array{RECT{10, 20, 13, 22}}.data(), std::array{CBrush(RGB(1, 2, 3))}.data());
        EXPECT_EQ(surface->pixel(10, 20), RGB(1, 2, 3));
        EXPECT_EQ(surface->pixel(12, 21), RGB(1, 2, 3));
        EXPECT_EQ(surface->pixel(13, 22), RGB(255, 255, 255));
        EXPECT_EQ(surface->pixel(30, 0), CLR_INVALID);
    }
}

TEST(PictureSurface, LaysTextIntoItsCell) {
    const auto surface = PictureSurface::create(200, 100, Look::crisp);
    CString text;
    ASSERT_TRUE(CodePage932FromUtf8("角角", &text));
    EXPECT_EQ(surface->GetTextExtent(text, 4).cy, 16);
    CFont font;
    make_font(font, -40, "Times New Roman");
    surface->SelectObject(&font);
    EXPECT_EQ(surface->GetTextExtent("x", 1).cy, 44);  // an em of 40 in this face's cell of 2268 / 2048 ems
    make_font(font, 40, "Times New Roman");
    EXPECT_EQ(surface->GetTextExtent("x", 1).cy, 40);
    surface->set_background_color(RGB(0, 0, 255));
    surface->TextOut(50, 30, " ", 1);  // the cell alone
    EXPECT_EQ(surface->pixel(50, 29), RGB(255, 255, 255));
    EXPECT_EQ(surface->pixel(50, 30), RGB(0, 0, 255));
    EXPECT_EQ(surface->pixel(50, 69), RGB(0, 0, 255));
    EXPECT_EQ(surface->pixel(50, 70), RGB(255, 255, 255));
    EXPECT_EQ(surface->pixel(49, 50), RGB(255, 255, 255));
}

TEST(PictureSurface, RefusesSizesItCannotHave) {
    EXPECT_EQ(PictureSurface::create(0, 10, Look::crisp), nullptr);
    EXPECT_EQ(PictureSurface::create(10, PictureSurface::side_limit + 1, Look::crisp), nullptr);
    EXPECT_EQ(PictureSurface::create(10, 10, Look::crisp, 0, 0.0), nullptr);
    const std::string png = PictureSurface::create(1, 1, Look::smooth)->png();
    EXPECT_EQ(png.substr(png.find("pHYs") + 4, 4), std::string("\0\0\x0E\xC4", 4));  // 3779.5 pixels a metre
}

TEST(PictureSurface, ADrawingBecomesALineImage) {
    const auto surface = PictureSurface::create(5, 3, Look::crisp);
    CTools::Draw_Line(surface.get(), 1, 1, 4, 1, 1, RGB(200, 0, 0), PS_SOLID, 0);
    unsigned char image[15];
    EXPECT_EQ(CTools::MakeLineImg(surface.get(), image, 5, 3, 128), 1);
    for (int i = 0; i < 15; ++i) EXPECT_EQ(image[i], i >= 6 && i < 9 ? 255 : 0) << i;
}

}  // namespace
