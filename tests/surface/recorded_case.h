// Drawing commands and the rasters that the platform gave them, as recorded in data/rasters.txt.
#pragma once

#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "framework/drawing.h"

namespace recorded {

struct RecordedCase {
    std::string name;
    int width, height;
    std::vector<std::string> commands;
    std::map<char, COLORREF> colors;
    std::string pixels;  // letters, row by row
};

inline COLORREF color_of(const std::string& hex) {
    const unsigned long value = std::stoul(hex, nullptr, 16);
    return RGB(static_cast<int>(value >> 16), static_cast<int>(value >> 8), static_cast<int>(value));
}

inline std::string unpacked(const std::string& row) {
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

inline std::vector<RecordedCase> recorded_cases() {
    std::ifstream file(TOOL_SOURCE_DIR "/tests/surface/data/rasters.txt");
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

// Gives the commands of a case to a surface, which starts white.
class Player {
 public:
    Player(CDC& surface, SIZE size, std::function<void(COLORREF)> set_background_color)
        : surface_(surface), size_(size), set_background_color_(std::move(set_background_color)) {
        set_brush("null");
        surface_.SelectObject(&brush_);
        surface_.SelectObject(&pen_);
    }
    virtual ~Player() = default;

    void play(const std::string& command) {
        std::istringstream words(command);
        std::string name, color;
        int fill_mode = 0;
        words >> name;
        if (name == "pen") {
            words >> style_ >> width_ >> color;
            color_ = color_of(color);
            pen_.CreatePen(style_, width_, color_);
            surface_.SelectObject(&pen_);
        } else if (name == "extpen") {
            words >> std::hex >> style_ >> std::dec >> width_ >> color;
            const LOGBRUSH brush = {BS_SOLID, color_of(color), 0};
            pen_.CreatePen(style_, width_, &brush);
            surface_.SelectObject(&pen_);
        } else if (name == "brush") {
            words >> color;
            set_brush(color);
            surface_.SelectObject(&brush_);
        } else if (name == "fill" || name == "bkcolor") {
            words >> color;
            CBrush brush(color_of(color));
            const RECT all = {0, 0, size_.cx, size_.cy};
            name == "fill" ? surface_.FillRect(&all, &brush) : set_background_color_(color_of(color));
        } else if (name == "fillrgn") {
            words >> color >> fill_mode;
            fill_region(points_of(words), fill_mode, color_of(color));
        } else {
            draw(name, points_of(words, name));
        }
    }

 protected:
    virtual void fill_region(const std::vector<POINT>& points, int mode, COLORREF color) {
        CRgn region;
        region.CreatePolygonRgn(points.data(), static_cast<int>(points.size()), mode);
        CBrush brush(color);
        surface_.FillRgn(&region, &brush);
    }
    virtual void draw(const std::string& name, const std::vector<POINT>& p) {
        if (name == "rop") surface_.SetROP2(p[0].x);
        if (name == "bkmode") surface_.SetBkMode(p[0].x);
        if (name == "move") surface_.MoveTo(p[0].x, p[0].y);
        if (name == "line") surface_.LineTo(p[0].x, p[0].y);
        if (name == "polyline") surface_.Polyline(p.data(), static_cast<int>(p.size()));
        if (name == "rect") surface_.Rectangle(p[0].x, p[0].y, p[1].x, p[1].y);
        if (name == "ellipse") surface_.Ellipse(p[0].x, p[0].y, p[1].x, p[1].y);
    }

    CDC& surface_;
    int style_ = PS_SOLID, width_ = 1;
    COLORREF color_ = 0;
    bool hollow_ = true;

 private:
    void set_brush(const std::string& color) {
        hollow_ = color == "null";
        const LOGBRUSH brush = {static_cast<UINT>(hollow_ ? BS_NULL : BS_SOLID), hollow_ ? 0 : color_of(color), 0};
        brush_.CreateBrushIndirect(&brush);
    }
    // `single` names a command with one number, which becomes x.
    static std::vector<POINT> points_of(std::istream& words, const std::string& single = {}) {
        std::vector<POINT> points;
        for (POINT point{}; words >> point.x && (single == "rop" || single == "bkmode" || words >> point.y);)
            points.push_back(point);
        return points;
    }

    SIZE size_;
    std::function<void(COLORREF)> set_background_color_;
    CPen pen_{PS_SOLID, 1, RGB(0, 0, 0)};
    CBrush brush_;
};

// Rows of a picture in a case's letters; "?" for a colour that the case has not.
inline std::string rows_of(const RecordedCase& recorded, const std::function<COLORREF(int, int)>& pixel) {
    std::string rows;
    for (int y = 0; y < recorded.height; ++y) {
        for (int x = 0; x < recorded.width; ++x) {
            char letter = '?';
            for (const auto& [name, color] : recorded.colors)
                if (pixel(x, y) == color) letter = name;
            rows += letter;
        }
        rows += '\n';
    }
    return rows;
}

// The rows as they were recorded.
inline std::string rows_of(const RecordedCase& recorded) {
    std::string rows;
    for (std::size_t at = 0; at < recorded.pixels.size(); at += static_cast<std::size_t>(recorded.width))
        rows += recorded.pixels.substr(at, static_cast<std::size_t>(recorded.width)) + '\n';
    return rows;
}

}  // namespace recorded
