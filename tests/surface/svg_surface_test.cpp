#include "surface/svg_surface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "CodePage.h"
#include "surface/svg_text.h"

namespace {

using testing::HasSubstr;
using testing::Not;

// Whether every element is closed by its own name and every "<" and "&" of a text is escaped.
bool well_formed(const std::string& xml) {
    std::vector<std::string> open;
    for (std::size_t at = 0; (at = xml.find_first_of("<&", at)) != std::string::npos; ++at) {
        if (xml[at] == '&') {
            if (xml.find(';', at) > at + 5) return false;
            continue;
        }
        const std::size_t end = xml.find('>', at);
        const std::string element = xml.substr(at + 1, end - at - 1), name = element.substr(0, element.find(' '));
        if (element.find('<') != std::string::npos) return false;
        if (name.starts_with('/')) {
            if (open.empty() || '/' + open.back() != name) return false;
            open.pop_back();
        } else if (!element.ends_with('/')) {
            open.push_back(name);
        }
    }
    return open.empty();
}

CString code_page_932(const char* utf8) {
    CString text;
    EXPECT_TRUE(CodePage932FromUtf8(utf8, &text));
    return text;
}

struct Row {
    const char* name;
    void (*draw)(CDC& dc);
    const char* expected;
};

TEST(SvgSurface, DrawsShapesAsShapes) {
    static const POINT corners[] = {{0, 0}, {10, 0}, {10, 5}};
    static CPen dotted(PS_DOT, 1, RGB(255, 0, 0)), none(PS_NULL, 1, RGB(0, 0, 0)), wide(PS_DASH, 2, RGB(255, 0, 0));
    static const LOGBRUSH solid = {BS_SOLID, 0, 0};
    static CPen capped(PS_GEOMETRIC | PS_DASH, 2, &solid);
    static CBrush red(RGB(255, 0, 0));
    const Row rows[] = {
        {"line", [](CDC& dc) { dc.MoveTo(1, 2), dc.LineTo(3, 4); },
         R"(<line x1="1" y1="2" x2="3" y2="4" stroke="#000000" stroke-width="1"/>)"},
        {"dots over a background", [](CDC& dc) { dc.SelectObject(&dotted), dc.LineTo(9, 0); },
         R"(stroke="#ffffff" stroke-width="1" stroke-linecap="butt"/>
  <line x1="0" y1="0" x2="9" y2="0" stroke="#ff0000" stroke-width="1" stroke-linecap="butt" stroke-dasharray="3 3"/>)"},
        {"wide cosmetic dashes are solid", [](CDC& dc) { dc.SelectObject(&wide), dc.LineTo(9, 0); },
         R"(stroke="#ff0000" stroke-width="2"/>)"},
        {"ends of dashes reach into the gaps", [](CDC& dc) { dc.SelectObject(&capped), dc.LineTo(9, 0); },
         R"(stroke-width="2" stroke-dasharray="4 4"/>)"},
        {"polyline", [](CDC& dc) { dc.Polyline(corners, 3); }, R"(<polyline points="0,0 10,0 10,5" stroke=)"},
        {"polygon by parity", [](CDC& dc) { dc.Polygon(corners, 3); }, R"(10,5" fill="#ffffff" fill-rule="evenodd")"},
        {"rectangle", [](CDC& dc) { dc.Rectangle(9, 8, 2, 3); }, R"(<rect x="2" y="3" width="6" height="4")"},
        {"rectangle without an outline", [](CDC& dc) { dc.SelectObject(&none), dc.Rectangle(2, 3, 9, 8); },
         R"(<rect x="1.5" y="2.5" width="6" height="4" fill="#ffffff"/>)"},
        {"one pixel's rectangle", [](CDC& dc) { dc.Rectangle(2, 3, 3, 4); }, "\n</svg>"},
        {"ellipse", [](CDC& dc) { dc.Ellipse(0, 0, 11, 6); }, R"(cx="5" cy="2.5" rx="5" ry="2.5")"},
        {"upper right quarter", [](CDC& dc) { dc.Arc(0, 0, 11, 11, 20, 5, 5, -9); }, R"(d="M10,5 A5,5 0 0 0 5,0")"},
        {"three quarters", [](CDC& dc) { dc.Arc(0, 0, 11, 11, 20, 5, 5, 20); }, R"(d="M10,5 A5,5 0 1 0 5,10")"},
        {"whole circle", [](CDC& dc) { dc.Arc(0, 0, 11, 11, 20, 5, 20, 5); }, R"(<ellipse cx="5")"},
        {"exclusive or", [](CDC& dc) { dc.SetROP2(R2_XORPEN), dc.LineTo(3, 4); }, "mix-blend-mode:difference"},
        {"brush alone copies",
         [](CDC& dc) {
             const RECT r{0, 0, 2, 2};
             dc.SetROP2(R2_XORPEN), dc.FillRect(&r, &red);
         },
         R"(height="2" fill="#ff0000"/>)"},
        {"nothing", [](CDC& dc) { dc.SetROP2(R2_NOP), dc.Ellipse(0, 0, 9, 9); }, "\n</svg>"},
    };
    for (const Row& row : rows) {
        tool::SvgSurface surface(100, 50);
        row.draw(surface);
        EXPECT_THAT(surface.svg(), HasSubstr(row.expected)) << row.name;
        EXPECT_TRUE(well_formed(surface.svg())) << row.name;
    }
}

TEST(SvgSurface, KeepsTextAsTextInItsCell) {
    tool::SvgSurface surface(100, 50);
    const CString text = code_page_932("角 <S&N>\x01");
    surface.SetBkMode(TRANSPARENT);
    surface.SetTextAlign(TA_RIGHT);
    surface.TextOut(10, 20, text, text.GetLength());
    // The cell's top is the upper edge of pixel 20, and MS Gothic's baseline 220 of 256 parts of the cell below.
    EXPECT_THAT(surface.svg(), HasSubstr(R"(<text x="9.5" y="33.25" text-anchor="end" font-family="ＭＳ ゴシック, )"));
    EXPECT_THAT(surface.svg(), HasSubstr(">角 &lt;S&amp;N&gt;</text>"));
    surface.SetBkMode(OPAQUE);
    surface.TextOut(30, 0, "cut here", 3);
    EXPECT_THAT(surface.svg(), HasSubstr(R"(<rect x="5.5" y="-0.5" width="24" height="16" fill="#ffffff"/>)"));
    EXPECT_THAT(surface.svg(), HasSubstr(">cut</text>"));
}

TEST(SvgSurface, LayersAreGroupsWithIdsOfTheirOwn) {
    tool::SvgSurface surface(100, 50);
    for (const char* id : {"軟組織 profile", "1", "1"}) surface.begin_layer(id);
    EXPECT_TRUE(well_formed(surface.svg()));  // although layers are open
    for (int i = 0; i < 4; ++i) surface.end_layer();
    surface.LineTo(1, 1);
    EXPECT_TRUE(well_formed(surface.svg()));
    for (const char* group : {R"(<g id="軟組織_profile">)", R"(<g id="_1">)", R"(<g id="_1-2">)"})
        EXPECT_THAT(surface.svg(), HasSubstr(group));
    EXPECT_THAT(surface.svg(), HasSubstr("  </g>\n  <line "));
}

TEST(SvgSurface, TakesPicturesInOrByLink) {
    tool::SvgSurface surface(100, 50);
    EXPECT_FALSE(surface.draw_background("GIF89a", {0, 0, 10, 10}));
    EXPECT_THAT(surface.svg(), Not(HasSubstr("<image")));
    EXPECT_TRUE(surface.draw_background("\xFF\xD8\xFF\xE0", {0, 0, 10, 20}));
    EXPECT_THAT(surface.svg(),
                HasSubstr(R"(height="20" preserveAspectRatio="none" href="data:image/jpeg;base64,/9j/4A==")"));
    surface.link_background("a&b.png", {0, 0, 10, 20});
    EXPECT_THAT(surface.svg(), HasSubstr(R"(href="a&amp;b.png")"));
}

TEST(SvgSurface, MillimetresAreMillimetres) {
    tool::SvgSurface surface(1000, 2000, 254);
    EXPECT_THAT(surface.svg(), HasSubstr(R"(width="100mm" height="200mm" viewBox="-0.5 -0.5 1000 2000")"));
    EXPECT_EQ(surface.set_map_mode(MM_HIMETRIC), MM_TEXT);
    EXPECT_EQ(surface.set_map_mode(MM_ISOTROPIC), 0);
    EXPECT_EQ(surface.GetMapMode(), MM_HIMETRIC);
    surface.MoveTo(1000, -2000), surface.LineTo(2000, -2050);
    EXPECT_THAT(surface.svg(), HasSubstr(R"(x1="100" y1="200" x2="200" y2="205")"));
    EXPECT_EQ(surface.GetDeviceCaps(HORZSIZE), 100);
    EXPECT_EQ(surface.GetDeviceCaps(VERTRES), 2000);
}

TEST(SvgText, Base64PadsShortGroups) {
    EXPECT_EQ(tool::base64(""), "");
    EXPECT_EQ(tool::base64("f"), "Zg==");
    EXPECT_EQ(tool::base64("fo"), "Zm8=");
    EXPECT_EQ(tool::base64("foobar"), "Zm9vYmFy");
    EXPECT_EQ(tool::svg_number(-0.0001) + ' ' + tool::svg_number(1e20) + ' ' + tool::svg_number(2.5),
              "0 100000000000000000000 2.5");
}

}  // namespace
