// CDC::DrawText: text in a rectangle, line by line.
#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>
#include <vector>

#include "framework/drawing.h"
#include "platform/framework/surface_state.h"
#include "platform/text.h"

namespace {

int length_of(std::string_view text) {
    return static_cast<int>(std::min<std::size_t>(text.size(), std::numeric_limits<int>::max()));
}

// Coordinates are added in 64 bits and cut to 32.
int bounded(std::int64_t coordinate) {
    return static_cast<int>(
        std::clamp<std::int64_t>(coordinate, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// Up to the first line end, which is taken off `rest` too: CR LF, LF or CR.
std::string_view take_line(std::string_view& rest) {
    const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end);
    if (!rest.empty()) rest.remove_prefix(rest.starts_with("\r\n") ? 2 : 1);
    return line;
}

// As much of a line as fits into the width, broken behind blanks and on both sides of a double-byte character; at
// least its first word, however wide.
std::string_view fitting_part(const CDC& dc, std::string_view line, std::int64_t width) {
    std::size_t fitting = 0;
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t step = tool::char_length(line.substr(at));
        at += step;
        const bool may_break = at == line.size() || step == 2 || line[at - 1] == ' ' ||
                               tool::is_lead_byte(static_cast<unsigned char>(line[at]));
        if (!may_break) continue;
        const std::string_view shown = line.substr(0, line.find_last_not_of(' ', at - 1) + 1);
        if (fitting > 0 && dc.GetTextExtent(line.data(), length_of(shown)).cx > width) break;
        fitting = at;
    }
    return line.substr(0, fitting);
}

std::vector<std::string_view> lines_of(const CDC& dc, std::string_view text, std::int64_t width, UINT format) {
    if (format & DT_SINGLELINE) return {text};
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        std::string_view line = take_line(text);
        do {
            const std::string_view part = format & DT_WORDBREAK ? fitting_part(dc, line, width) : line;
            lines.push_back(part);
            line.remove_prefix(part.size());
        } while (!line.empty());
    }
    return lines;
}

}  // namespace

namespace tool {

int draw_text(CDC& dc, LPCSTR text, int count, RECT* rect, UINT format) {
    if (!text || !rect || count < -1) return 0;
    const std::string_view whole(text, count < 0 ? std::strlen(text) : static_cast<std::size_t>(count));
    const std::int64_t width = std::int64_t{rect->right} - rect->left, line_height = dc.GetTextExtent("", 0).cy;
    // In the map modes whose y points up a rectangle's bottom is below its top.
    const int down = rect->bottom < rect->top ? -1 : 1;
    const std::vector<std::string_view> lines = lines_of(dc, whole, width, format);
    const std::int64_t height = line_height * static_cast<std::int64_t>(lines.size());

    std::int64_t y = rect->top, widest = 0;
    if (format & DT_SINGLELINE) {
        const std::int64_t room = std::int64_t{rect->bottom} - rect->top - down * height;
        if (format & DT_BOTTOM)
            y += room;
        else if (format & DT_VCENTER)
            y += room / 2;
    }
    const UINT align_before = dc.SetTextAlign(TA_LEFT | TA_TOP);
    for (const std::string_view line : lines) {
        const std::int64_t line_width = dc.GetTextExtent(line.data(), length_of(line)).cx;
        const std::int64_t room = width - line_width;
        const std::int64_t x = rect->left + (format & DT_RIGHT ? room : format & DT_CENTER ? room / 2 : 0);
        if (!(format & DT_CALCRECT)) dc.TextOut(bounded(x), bounded(y), line.data(), length_of(line));
        widest = std::max(widest, line_width);
        y += down * line_height;
    }
    dc.SetTextAlign(align_before);
    if (format & DT_CALCRECT) {
        rect->right = bounded(rect->left + widest);
        rect->bottom = bounded(rect->top + down * height);
    }
    return bounded(height);
}

}  // namespace tool
