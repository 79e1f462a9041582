// The pen of every style code, on the screen and in each map mode of a printer.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

#include "Tools.h"
#include "tests/render/recorded.h"

namespace {

using Draw = void(CDC* dc, int width, COLORREF color, int style);

constexpr tagPOINT points[] = {{0, 0}, {50, 60}, {100, 0}};

constexpr Draw* line = [](CDC* dc, int width, COLORREF color, int style) {
    CTools::Draw_Line(dc, 0, 0, 9, 9, width, color, style, 0);
};
constexpr Draw* curve = [](CDC* dc, int width, COLORREF color, int style) {
    CTools::Draw_SPLine(dc, {}, 1.0, points, 3, color, static_cast<unsigned>(width), 0, style, 0);
};
constexpr Draw* line_into_image = [](CDC* dc, int width, COLORREF color, int style) {
    CTools::Draw_Line_Image(dc, 0, 0, 9, 9, width, color, style, 0);
};
constexpr Draw* curve_into_image = [](CDC* dc, int width, COLORREF color, int style) {
    CTools::Draw_SPLine_Image(dc, {}, 1.0, points, 3, color, static_cast<unsigned>(width), 0, style, 0);
};

// Style and width (high half:low half), then the pen on the screen and, printing, in MM_TEXT, MM_LOMETRIC, MM_HIMETRIC
// and MM_LOENGLISH.
void expect_pens(std::initializer_list<Draw*> draws, int pixels, int mm, const char* table) {
    std::istringstream rows(table);
    for (std::string row; std::getline(rows, row);) {
        std::istringstream words(row);
        int style, high, low;
        char colon;
        if (!(words >> style >> high >> colon >> low)) continue;
        for (int mode = 0; mode <= MM_LOENGLISH; ++mode) {
            std::string expected;
            words >> expected;
            std::replace(expected.begin(), expected.end(), '.', ' ');
            for (Draw* const draw : draws) {
                tool::RecordingSurface surface;
                surface.set_size(pixels, pixels, mm, mm);
                surface.m_bPrinting = mode != 0;
                if (mode) surface.set_map_mode(mode);
                draw(&surface, high * 65536 + low, RGB(1, 2, 3), style);
                EXPECT_EQ(joined(surface).find("bkmode 1; " + expected + " 010203; "), 0u)
                    << row << ", map mode " << mode << ": " << joined(surface);
            }
        }
    }
}

TEST(Pen, OfALineOrCurveFollowsStyleWidthAndPrinter) {  // 4960 / 210 is 23 pixels a millimetre, cut
    expect_pens({line, curve}, 4960, 210, R"(
          0 0:5  pen.0.5         pen.0.11        pen.0.5        pen.0.50         pen.0.5
          0 0:0  pen.0.0         pen.0.2         pen.0.1        pen.0.10         pen.0.0
          1 0:1  pen.1.1         extpen.10101.2  pen.1.1        extpen.10101.10  pen.1.1
          1 0:5  extpen.10101.5  extpen.10101.11 extpen.10101.5 extpen.10101.50  extpen.10101.5
          2 0:7  extpen.10102.7  extpen.10102.16 extpen.10102.7 extpen.10102.70  extpen.10102.7
          3 0:2  extpen.10103.2  extpen.10103.4  extpen.10103.2 extpen.10103.20  extpen.10103.2
          4 0:3  extpen.10104.3  extpen.10104.6  extpen.10104.3 extpen.10104.30  extpen.10104.3
          5 0:3  pen.5.3         pen.5.6         pen.5.3        pen.5.30         pen.5.3
          6 0:3  pen.6.3         pen.6.6         pen.6.3        pen.6.30         pen.6.3
          7 0:3  pen.0.3         pen.0.6         pen.0.3        pen.0.30         pen.0.3
         -1 0:3  pen.0.3         pen.0.6         pen.0.3        pen.0.30         pen.0.3
        107 0:3  pen.0.3         pen.0.6         pen.0.3        pen.0.30         pen.0.3
        101 6:3  pen.0.1         pen.0.6         pen.0.3        pen.0.30         pen.0.1
        102 6:3  pen.0.2         pen.0.13        pen.0.6        pen.0.60         pen.0.2
        102 0:3  pen.0.2         pen.0.2         pen.0.1        pen.0.10         pen.0.2
        103 6:3  pen.2.1         extpen.10102.6  extpen.10102.3 extpen.10102.30  pen.2.1
        104 0:5  pen.1.1         extpen.10101.11 extpen.10101.5 extpen.10101.50  pen.1.1
        105 0:1  pen.3.1         extpen.10103.2  pen.3.1        extpen.10103.10  pen.3.1
        106 0:1  pen.4.1         extpen.10104.2  pen.4.1        extpen.10104.10  pen.4.1)");
}

TEST(Pen, IsNeverThinnerInPixelsThanTheWidthGiven) {  // 4 pixels a millimetre
    expect_pens({line, curve}, 840, 210, "0 0:20 pen.0.20 pen.0.20 pen.0.20 pen.0.200 pen.0.20");
    expect_pens({line, curve}, 840, 0, "0 0:20 pen.0.20 pen.0.20 pen.0.20 pen.0.200 pen.0.20");
}

TEST(Pen, IntoAnImageIsCosmeticAndFollowsThePrinterOnlyForTheThickStyle) {
    expect_pens({line_into_image, curve_into_image}, 4960, 210, R"(
          0 0:5  pen.0.5  pen.0.5   pen.0.5   pen.0.5   pen.0.5
          1 0:5  pen.1.5  pen.1.5   pen.1.5   pen.1.5   pen.1.5
          4 0:2  pen.4.2  pen.4.2   pen.4.2   pen.4.2   pen.4.2
          9 0:3  pen.0.3  pen.0.3   pen.0.3   pen.0.3   pen.0.3
        101 6:3  pen.0.1  pen.0.1   pen.0.1   pen.0.1   pen.0.1
        102 0:4  pen.0.4  pen.0.13  pen.0.13  pen.0.13  pen.0.13
        103 0:5  pen.2.1  pen.2.1   pen.2.1   pen.2.1   pen.2.1
        104 0:5  pen.1.1  pen.1.1   pen.1.1   pen.1.1   pen.1.1
        105 0:5  pen.3.1  pen.3.1   pen.3.1   pen.3.1   pen.3.1
        106 0:5  pen.4.1  pen.4.1   pen.4.1   pen.4.1   pen.4.1)");
    // 0.6 mm is less than two pixels.
    expect_pens({line_into_image, curve_into_image}, 630, 210, "102 0:4 pen.0.4 pen.0.2 pen.0.6 pen.0.60 pen.0.2");
}

}  // namespace
