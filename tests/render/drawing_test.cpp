// Every drawing function: what it records, what it leaves behind, and what it does with extreme arguments.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "Tools.h"
#include "tests/render/recorded.h"

namespace {

constexpr COLORREF red = RGB(255, 0, 0), blue = RGB(0, 0, 255);
const std::string thin_red = "pen 0 1 ff0000";
const std::string gothic = "\xEF\xBC\xAD\xEF\xBC\xB3 \xE3\x82\xB4\xE3\x82\xB7\xE3\x83\x83\xE3\x82\xAF";

// The recording of a drawing together with what it puts back on a fresh surface.
std::string stroked(const std::string& pen, const std::string& drawing) {
    return "bkmode 1; " + pen + "; " + drawing + "; pen 0 1 000000; bkmode 2";
}
std::string line(const std::string& pen, const std::string& from, const std::string& to) {
    return stroked(pen, "move " + from + "; line " + to);
}
std::string hollow(const std::string& pen, const std::string& drawing) {
    return "brush null; " + stroked(pen, drawing) + "; brush ffffff";
}
std::string erasable(const std::string& drawing) {
    return "rop 7; " + drawing + "; rop 13";
}
std::string spot(const std::string& bounds) {
    return "pen 0 1 ff0000; brush ff0000; ellipse " + bounds + "; brush ffffff; pen 0 1 000000";
}
// `font` from weight to quality.
std::string lettered(int background, const std::string& font, const std::string& text) {
    const std::string set = font.empty() ? "" : "font " + font + "; ",
                      back = "; font 16 400 0 0 0 128 0 \"" + gothic + '"';
    return "bkmode " + std::to_string(background) + "; textcolor ff0000; " + set + text + (font.empty() ? "" : back) +
           "; textcolor 000000; bkmode 2";
}
std::string in_gothic(const std::string& font) {
    return font + " \"" + gothic + '"';
}

// A call of CTools on the surface d, named by its own text.
#define CALL(call, recording)                            \
    Drawing {                                            \
#call, [=](CDC * d) { CTools::call; }, recording \
    }

struct Drawing {
    const char* name;
    std::function<void(CDC*)> draw;
    std::string recording;
};

const tagPOINT landmarks[] = {{10, 10}, {20, 30}, {0, 0}, {40, 50}};
const int sides[][2] = {{0, 1}, {1, 2}, {3, 0}, {0, 4}, {-1, 0}};
const tagPOINT curve[] = {{0, 0}, {3, 0}, {6, 0}};
tagDPOINT a{1.7, 2.2}, b{-3.9, 8.0};

// Device coordinates are 1.5 * v, cut, less (10, 1), where a call is zoomed.
const std::vector<Drawing>& drawings() {
    const CPoint offset(10, 1);
    const CRect r(3, 5, 21, 33), wide(0, 0, 100, 60);
    static const std::vector<Drawing> all = {
        CALL(Draw_Line(d, 1, 2, 3, 4, 3, red, 0, 0), line("pen 0 3 ff0000", "1 2", "3 4")),
        CALL(Draw_Line(d, 1, 2, 3, 4, 3, red, 104, 1), line("pen 1 1 ff0000", "1 -2", "3 -4")),
        CALL(Draw_Line_Image(d, 1, 2, 3, 4, 3, red, 1, 1), line("pen 1 3 ff0000", "1 -2", "3 -4")),
        CALL(Line_Make2(d, CPoint(3, -3), CPoint(5, 0), 1.5, offset, 2, red, 0, 0),
             line("pen 0 2 ff0000", "-6 -5", "-3 -1")),
        CALL(Line_Make2(d, CPoint(3, -3), CPoint(5, 0), 1.5, offset, 2, red, 0, 1),
             erasable(line("pen 0 2 ff0000", "-6 -5", "-3 -1"))),
        CALL(Line_Make2_Image(d, CPoint(4, 4), CPoint(8, 8), 1.5, offset, 9, red, 0, 0, 750),
             line("pen 0 2 ff0000", "-4 5", "2 11")),
        CALL(Line_Make2_Image(d, CPoint(4, 4), CPoint(8, 8), 1.5, offset, 9, red, 1, 1, 1600),
             erasable(line("pen 1 4 ff0000", "-4 5", "2 11"))),
        CALL(Line_Maked(d, &a, &b, 1.5, offset, 5, red, 0), line("pen 0 7 ff0000", "-8 2", "-15 11")),
        CALL(Draw_LineF(d, offset, 1.5, CPoint(3, 1), CPoint(5, 0), 1, red, 101), line(thin_red, "-6 0", "-3 -1")),
        CALL(Draw_LineF(d, 3, 1, 5, 0, 1.5, offset, 1, red, 101), line(thin_red, "-6 0", "-3 -1")),
        CALL(Line_Pile(d, landmarks, 4, sides, 5, 1.5, offset, 1, red, 0, 1),
             erasable(line(thin_red, "5 14", "20 44") + "; " + line(thin_red, "50 74", "5 14"))),
        CALL(Line_Pile_Image(d, landmarks, 4, sides, 1, 1.5, offset, 1, red, 0, 0, 2250),
             line("pen 0 6 ff0000", "5 14", "20 44")),
        CALL(DrawArrowLine(d, CPoint(100, 100), CPoint(200, 100), 20.0, 3, 1.0, CPoint(0, 0), 1, red, 0),
             line(thin_red, "100 100", "200 100") +
                 "; fillrgn ff0000 1 100 100 119 93 119 107; fillrgn ff0000 1 200 100 181 93 181 107"),
        CALL(DrawArrowLine(d, CPoint(100, 100), CPoint(200, 100), 20.0, 2, 1.5, offset, 1, red, 0),
             line(thin_red, "140 149", "290 149") + "; fillrgn ff0000 1 200 100 181 93 181 107"),
        CALL(Parallel_Line(d, CPoint(0, 0), CPoint(10, 2), CPoint(50, 30), wide, 10, 1, red, nullptr, 1, 1.5, 0, 0),
             line(thin_red, "-10 29", "140 59")),
        CALL(Parallel_Line_Image(d, &a, &a, &a, wide, 10, 1, red, nullptr, 2, 1.5, 0, 1, 1),
             line("pen 1 2 ff0000", "-9 1", "-9 -89")),
        CALL(Vartical_Line(d, CPoint(0, 0), CPoint(10, 2), CPoint(50, 30), wide, 10, 1, red, nullptr, 1, 1.5, 0, 0),
             line(thin_red, "74 -1", "56 89")),
        CALL(Vartical_Line_Image(d, CPoint(7, 0), CPoint(7, 5), CPoint(50, 30), wide, 10, 1, red, nullptr, 1, 1.5, 0,
                                 104),
             line("pen 1 1 ff0000", "-10 44", "140 44")),
        CALL(Spot(d, CPoint(10, 20), 1.5, offset, 3, red, 0), spot("0 24 9 33")),
        CALL(Spot(d, CPoint(0, 0), 0.2, CPoint(0, 0), 1, red, 0), spot("-1 -1 1 1")),
        CALL(Spot2(d, CPoint(10, 20), 1.5, offset, 3, red, 0), spot("2 26 8 32")),
        CALL(DrawRect(d, 1, 2, 3, 4, 2, red, 1, 1), hollow("extpen 10101 2 ff0000", "rect 1 -2 3 -4")),
        CALL(Rect_Make(d, r, 1, red, 0), hollow(thin_red, "rect 3 5 21 33")),
        CALL(Rect_Make(d, r, 1.5, offset, 1, red, 0, 1), erasable(hollow(thin_red, "rect -6 6 21 48"))),
        CALL(Ellipse(d, r, 1, red, 0), hollow(thin_red, "ellipse 3 5 21 33")),
        CALL(EllipseF(d, r, 1.5, offset, 1, red, 0), hollow(thin_red, "ellipse -6 6 21 48")),
        CALL(Draw_Circle(d, CPoint(10, 20), 2.5, 1.5, offset, 1, red, 0), hollow(thin_red, "ellipse 1 25 8 32")),
        CALL(Arc_MakeF(d, r, CPoint(30, 19), CPoint(12, 0), 1.5, offset, 1, red, 0),
             stroked(thin_red, "arc -6 6 21 48 35 27 8 -1")),
        CALL(Rect_MakeEx(d, r, 1.5, offset, 1, red, 0, blue),
             "bkmode 1; pen 0 1 ff0000; brush 0000ff; rect -6 6 21 48; brush ffffff; pen 0 1 000000; bkmode 2"),
        CALL(Frame_Make(d, CRect(9, 8, 3, 2), red), "framerect ff0000 3 2 9 8"),
        CALL(Area_Make(d, r, red), "fillrect ff0000 3 5 21 33"),
        CALL(Area_MakeF(d, r, -1.5, offset, red), "fillrect ff0000 -41 -50 -14 -8"),
        CALL(Line_MakeH(d ? d->GetSafeHdc() : nullptr, 1, 2, 3, 4, 1, red, 0), line(thin_red, "1 2", "3 4")),
        CALL(Box_MakeH(d ? d->GetSafeHdc() : nullptr, r, 1, red, 0), hollow(thin_red, "rect 3 5 21 33")),
        CALL(P_Line(d, 10, 20, 1.5, 0.5, 1, 1, -30, 2, 1, red, 0), line(thin_red, "16 -10", "-30 -11")),
        CALL(P_Area(d, 10, 20, 1.5, 0.5, 1, 1, 30, 22, red), "fillrect ff0000 16 -21 60 -10"),
        CALL(P_Text(d, 10, 20, 1.5, 0.5, 1, 1, "SNA", 30, 700, 9, 1, red),
             lettered(1, "30 700 1 0 0 128 3 \"Times New Roman\"", "text 16 -10 \"SNA\"")),
        CALL(TextMakeOut(d, 5, 6, "\x8D\xFC \"1\"", 12, 400, 9, 1, red, OPAQUE),
             lettered(2, in_gothic("12 400 1 0 0 128 2"), "text 5 6 \"\xE5\x88\xB7 \\x221\\x22\"")),
        CALL(TextMakeOut(d, 5, 6, "A", 0, 400, 9, 1, red, TRANSPARENT), lettered(1, "", "text 5 6 \"A\"")),
        CALL(TextMake(d, 5, 6, "A", 12, 700, 9, 0, red, TRANSPARENT, 1, 1, 0),
             lettered(1, "12 700 0 0 1 128 3 \"Times New Roman\"", "text 5 -6 \"A\"")),
        CALL(TextMake(d, 5, 6, "A", 12, 700, 8, 1, red, OPAQUE, 2, 0, 1),
             lettered(2, in_gothic("12 700 1 1 0 128 3"), "text 5 6 \"A\"")),
        CALL(Draw_Text(d, CPoint(3, 5), 1.5, offset, "A", 12, red),
             lettered(1, in_gothic("12 400 0 0 0 128 3"), "text -6 6 \"A\"")),
        CALL(Rect_Text(d, CRect(0, 0, 50, 40), "AB\nC", nullptr, 10, 400, 0, red, DT_RIGHT),
             lettered(1, in_gothic("10 400 0 0 0 128 3"),
                      "textalign 0; text 40 0 \"AB\"; text 45 10 \"C\"; textalign 0")),
        CALL(Rect_Text_LF(d, CRect(0, 0, 50, 40), "A", nullptr, red, DT_CENTER | DT_VCENTER | DT_SINGLELINE),
             lettered(1, "", "textalign 0; text 21 12 \"A\"; textalign 0")),
        CALL(Draw_SPLine(d, offset, 1.5, curve, 2, red, 2, 1, 1, 1),
             stroked("extpen 10101 2 ff0000", "polyline -10 1 -6 1")),
        CALL(Draw_SPLine(d, CPoint(1, 1), 1.0, curve, 3, red, 1, 0, 0, 0), stroked(thin_red, "polyline -1 -1")),
        CALL(Draw_SPLine_Image(d, CPoint(1, 1), 1.0, curve, 3, red, 2, 1, 1, 0),
             stroked("pen 1 2 ff0000", "polyline -1 -1")),
    };
    return all;
}

TEST(Drawing, RecordsEachCall) {
    for (const Drawing& drawing : drawings()) EXPECT_EQ(recorded(drawing.draw), drawing.recording) << drawing.name;
}

TEST(Drawing, LeavesNoState) {
    for (const bool printing : {false, true})
        for (const Drawing& drawing : drawings()) {
            tool::RecordingSurface surface;
            surface.m_bPrinting = printing;
            CPen pen(PS_DOT, 3, blue);
            CBrush brush(blue);
            CFont font;
            const LOGFONTA description = {};
            font.CreateFontIndirectA(&description);
            surface.SelectObject(&pen), surface.SelectObject(&brush), surface.SelectObject(&font);
            surface.SetROP2(R2_MASKPEN), surface.SetBkMode(TRANSPARENT);
            surface.SetTextColor(blue), surface.SetTextAlign(TA_CENTER | TA_BASELINE);
            const auto state = [&surface] {
                return std::tuple(surface.GetCurrentPen(), surface.GetCurrentBrush(), surface.GetCurrentFont(),
                                  surface.GetROP2(), surface.GetBkMode(), surface.GetTextColor(),
                                  surface.GetTextAlign());
            };
            const auto before = state();
            drawing.draw(&surface);
            EXPECT_EQ(state(), before) << drawing.name;
        }
}

TEST(Drawing, WithoutASurfaceDoesNothing) {
    for (const Drawing& drawing : drawings()) drawing.draw(nullptr);
    tool::RecordingSurface surface;
    CTools::Draw_SPLine(&surface, {0, 0}, 1.0, nullptr, 9, red, 1, 0, 0, 0);
    CTools::Draw_SPLine(&surface, {0, 0}, 1.0, curve, 1, red, 1, 0, 0, 0);
    CTools::Line_Pile(&surface, nullptr, 3, sides, 3, 1.0, {0, 0}, 1, red, 0, 0);
    EXPECT_EQ(surface.text(), "");
    EXPECT_EQ(CTools::Rect_Text(&surface, CRect(), nullptr, nullptr, 9, 400, 0, red, 0), 0);
    EXPECT_EQ(CTools::Rect_Text(nullptr, CRect(), "A\nB", nullptr, 9, 400, 0, red, 0), 0);
    EXPECT_EQ(CTools::Rect_Text(&surface, CRect(), "A\nB", nullptr, 9, 400, 0, red, 0), 18);
}

// `end` and the two ends of the line, from p's parallel or perpendicular to (0, 0)-(dx, dy) in 1000 x 600.
struct Construction {
    int dx, dy;
    bool perpendicular;
    const char *from, *to;
    CPoint end;
};

TEST(ConstructionLine, IsClippedAgainstTheEdgesThatItsSlopeNames) {
    const Construction rows[] = {
        {1000, 500, false, "-99 0", "1100 600", {1100, 600}},       // slope 0.5: top and bottom
        {1000, 499, false, "0 51", "1000 550", {1000, 550}},        // below it left and right
        {1000, -1400, false, "0 1000", "1000 -399", {1000, -399}},  // the threshold is lopsided
        {1000, -1500, false, "700 0", "300 600", {700, 0}},         // -1.5: top and bottom again
        {0, 9, false, "500 0", "500 600", {500, 0}},                // on a tie the first end
        {0, 0, false, "500 0", "500 600", {500, 0}},
        {9, 0, false, "0 300", "1000 300", {1000, 300}},
        {9, 0, true, "500 0", "500 600", {500, 0}},
        {0, 9, true, "0 300", "1000 300", {1000, 300}},
        {0, 0, true, "0 300", "1000 300", {1000, 300}},
        {1400, 1000, true, "0 1000", "1000 -399", {1000, -399}},
        {-2, 1, true, "350 0", "650 600", {650, 600}},
    };
    for (const Construction& row : rows) {
        CPoint end(-7, -7), untouched_by_drawing(-7, -7);
        const CRect r(0, 0, 1000, 600);
        const auto draw = [&](CDC* d, CPoint* out, int width) {
            const tagDPOINT p{500.0, 300.0};
            (row.perpendicular ? CTools::Vartical_Line : CTools::Parallel_Line)(
                d, CPoint(0, 0), CPoint(row.dx, row.dy), &p, r, 0, 0, red, out, width, 1.0, 1.0, 0, 0);
        };
        EXPECT_EQ(recorded([&](CDC* d) { draw(d, &end, 1); }), line(thin_red, row.from, row.to))
            << row.dx << ' ' << row.dy;
        EXPECT_EQ(end, row.end) << row.dx << ' ' << row.dy;
        EXPECT_EQ(recorded([&](CDC* d) { draw(d, &untouched_by_drawing, 0); }), "");
        EXPECT_EQ(untouched_by_drawing, row.end);
    }
}

TEST(Mapping, CutsTowardZeroBeforeTheOffsetAndIntoThirtyTwoBits) {
    constexpr int most = std::numeric_limits<int>::max(), least = std::numeric_limits<int>::min();
    const struct {
        int v;
        double zoom;
        int offset, expected;
    } rows[] = {
        {3, 1.5, 10, -6},         {-3, 0.3, 0, 0},        {3, 0.3, 0, 0},          {-3, 1.5, -10, 6},
        {most, 1.0, -1, most},    {least, 1.0, 1, least}, {most, 2.0, most, most}, {7, 1e300, 5, most},
        {-7, HUGE_VAL, 5, least}, {0, HUGE_VAL, 5, 0},    {7, std::nan(""), 5, 0}, {most, 1.0, most, 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(recorded([&](CDC* d) {
                      CTools::Line_Make2(d, {row.v, 1}, {1, row.v}, row.zoom, {row.offset, row.offset}, 1, red, 0, 0);
                  }).find("move " + std::to_string(row.expected) + ' '),
                  std::string("bkmode 1; pen 0 1 ff0000; ").size())
            << row.v << " * " << row.zoom << " - " << row.offset;
    EXPECT_EQ(recorded([=](CDC* d) { CTools::Draw_Line(d, least, least, most, most, 1, red, 0, 1); }),
              line(thin_red, "-2147483648 2147483647", "2147483647 -2147483647"));
}

}  // namespace
