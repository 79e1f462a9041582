#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <vector>

#include "surface/picture_surface.h"

namespace {

struct RecordedCase {
    std::string name;
    int width, height;
    std::vector<std::string> commands;
    std::map<char, COLORREF> colors;
    std::string pixels;  // letters, row by row
};

COLORREF color_of(const std::string& hex) {
    const unsigned long value = std::stoul(hex, nullptr, 16);
    return RGB(static_cast<int>(value >> 16), static_cast<int>(value >> 8), static_cast<int>(value));
}

std::string unpacked(const std::string& row) {
    std::istringstream words(row);
    std::string runs, times, result;
    words >> runs >> times;
    for (std::size_t at = 0; at < runs.size(); ++at) {
        const std::size_t letter = runs.find_first_not_of("0123456789", at);
        result.append(letter > at ? std::stoul(runs.substr(at)) : 1, runs[letter]);
        at = letter;
    }
    std::string rows;
    for (int i = times.empty() ? 1 : std::stoi(times.substr(1)); i > 0; --i) rows += result;
    return rows;
}

std::vector<RecordedCase> recorded_cases() {
    std::ifstream file(TOOL_TEST_DATA "/rasters.txt");
    std::vector<RecordedCase> cases;
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "case") {
            RecordedCase& added = cases.emplace_back();
            words >> added.name >> added.width >> added.height;
            while (std::getline(file, line) && line != "end") added.commands.push_back(line);
        } else if (word == "colors") {
            while (words >> word) cases.back().colors[word[0]] = color_of(word.substr(2));
            while (std::getline(file, line) && line != "endraster") cases.back().pixels += unpacked(line);
        }
    }
    return cases;
}

// Gives the commands of a case to a surface.
class Player {
 public:
    explicit Player(tool::PictureSurface& surface) : surface_(surface) {
        const LOGBRUSH none = {BS_NULL, 0, 0};
        brush_.CreateBrushIndirect(&none);
        surface_.SelectObject(&brush_);
    }

    void play(const std::string& command) {
        std::istringstream words(command);
        std::string name, color;
        int style = 0, width = 0;
        words >> name;
        if (name == "pen") {
            words >> style >> width >> color;
            pen_.CreatePen(style, width, color_of(color));
            surface_.SelectObject(&pen_);
        } else if (name == "extpen") {
            words >> std::hex >> style >> std::dec >> width >> color;
            const LOGBRUSH brush = {BS_SOLID, color_of(color), 0};
            pen_.CreatePen(style, width, &brush);
            surface_.SelectObject(&pen_);
        } else if (name == "brush") {
            words >> color;
            const LOGBRUSH brush = {color == "null" ? BS_NULL : BS_SOLID, color == "null" ? 0 : color_of(color), 0};
            brush_.CreateBrushIndirect(&brush);
        } else if (name == "fill" || name == "bkcolor") {
            words >> color;
            CBrush brush(color_of(color));
            const RECT all = {0, 0, surface_.width(), surface_.height()};
            name == "fill" ? surface_.FillRect(&all, &brush) : void(surface_.set_background_color(color_of(color)));
        } else if (name == "fillrgn") {
            words >> color >> style;
            const std::vector<POINT> points = points_of(words);
            CRgn region;
            region.CreatePolygonRgn(points.data(), static_cast<int>(points.size()), style);
            CBrush brush(color_of(color));
            surface_.FillRgn(&region, &brush);
        } else {
            draw(name, points_of(words, name));
        }
    }

 private:
    // `single` names a command with one number, which becomes x.
    static std::vector<POINT> points_of(std::istream& words, const std::string& single = {}) {
        std::vector<POINT> points;
        for (POINT point{}; words >> point.x && (single == "rop" || single == "bkmode" || words >> point.y);)
            points.push_back(point);
        return points;
    }
    void draw(const std::string& name, const std::vector<POINT>& p) {
        if (name == "rop") surface_.SetROP2(p[0].x);
        if (name == "bkmode") surface_.SetBkMode(p[0].x);
        if (name == "move") surface_.MoveTo(p[0].x, p[0].y);
        if (name == "line") surface_.LineTo(p[0].x, p[0].y);
        if (name == "polyline") surface_.Polyline(p.data(), static_cast<int>(p.size()));
        if (name == "rect") surface_.Rectangle(p[0].x, p[0].y, p[1].x, p[1].y);
        if (name == "ellipse") surface_.Ellipse(p[0].x, p[0].y, p[1].x, p[1].y);
    }

    tool::PictureSurface& surface_;
    CPen pen_;
    CBrush brush_;
};

// Rows of a picture in a case's letters; "?" for a colour that the case has not.
std::string rows_of(const RecordedCase& recorded, const tool::PictureSurface* surface) {
    std::string rows;
    for (int y = 0; y < recorded.height; ++y) {
        for (int x = 0; x < recorded.width; ++x) {
            char letter = '?';
            for (const auto& [name, color] : recorded.colors)
                if (surface && surface->pixel(x, y) == color) letter = name;
            rows += surface ? letter : recorded.pixels[static_cast<std::size_t>(y * recorded.width + x)];
        }
        rows += '\n';
    }
    return rows;
}

TEST(RecordedRaster, IsDrawnPixelByPixel) {
    const std::vector<RecordedCase> cases = recorded_cases();
    ASSERT_EQ(cases.size(), 266u);
    for (const RecordedCase& recorded : cases) {
        const auto surface =
            tool::PictureSurface::create(recorded.width, recorded.height, tool::PictureSurface::Look::crisp);
        Player player(*surface);
        for (const std::string& command : recorded.commands) player.play(command);
        EXPECT_EQ(rows_of(recorded, surface.get()), rows_of(recorded, nullptr)) << recorded.name;
    }
}

}  // namespace
