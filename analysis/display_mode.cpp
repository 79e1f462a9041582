#include "analysis/display_mode.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "analysis/catalogue.h"
#include "analysis/definition_file.h"
#include "platform/number_text.h"
#include "platform/text.h"
#include "util/delimiter.h"

namespace tool {
namespace {

constexpr int normal_weight = 101, bold_weight = 102;
constexpr std::size_t most_lines = 30;
constexpr std::size_t longest_point_name = sizeof tagSUPPLINE::from - 1;

std::string three_digits(int number) {
    std::string digits = print_int(number);
    return std::string(3 - std::min<std::size_t>(digits.size(), 3), '0') + digits;
}

// "r,g,b"; nothing when a comma is missing. Numbers beyond a byte keep their low one.
std::optional<COLORREF> colour_of(std::string_view text) {
    const std::size_t first = text.find(','),
                      second = text.find(',', first == std::string_view::npos ? first : first + 1);
    if (first == std::string_view::npos || second == std::string_view::npos) return std::nullopt;
    return RGB(read_int(text.substr(0, first)), read_int(text.substr(first + 1, second - first - 1)),
               read_int(text.substr(second + 1)));
}

int decimals_code(std::string_view text) {
    if (text == "0") return 0;
    if (text == "1") return 1;
    return text == "0.5" ? 9 : 2;
}

// The name in the first brackets at or behind `at`, which moves behind them; "" when there are none.
std::string_view bracketed_name(std::string_view line, std::size_t& at) {
    const std::string_view rest = line.substr(at);
    const std::size_t open = find_char(rest, '[');
    if (open == std::string_view::npos) return {};
    const std::size_t length = find_char(rest.substr(open + 1), ']');
    if (length == std::string_view::npos) return {};
    at += open + length + 2;
    return rest.substr(open + 1, length);
}

// What the attribute lines have set so far.
struct Attributes {
    COLORREF colour = 0;
    int weight = bold_weight, decimals = 0, size = 15;
    std::string_view position;

    // Whether the line was one of them. Kept: "size=" in small letters is not.
    bool read(std::string_view line) {
        const auto behind = [line](std::string_view name, std::string_view other) -> std::optional<std::string_view> {
            if (!line.starts_with(name) && !line.starts_with(other)) return std::nullopt;
            return line.substr(name.size());
        };
        if (const auto text = behind("Color=", "color="))
            colour = colour_of(*text).value_or(colour);
        else if (const auto line_text = behind("Line=", "line="))
            weight = upper(*line_text) == "BOLD" ? bold_weight : normal_weight;
        else if (const auto decimal = behind("Decimal=", "decimal="))
            decimals = decimals_code(*decimal);
        else if (const auto place = behind("Pos=", "pos="))
            position = *place;
        else if (const auto number = behind("Size=", "Size="))
            size = read_int(*number);
        else
            return false;
        return true;
    }

    std::string measurement(std::string_view calculation) const {
        std::string entry = three_digits(GetRValue(colour)) + three_digits(GetGValue(colour)) +
                            three_digits(GetBValue(colour)) + print_int(decimals);
        entry.append(position).append("SIZE=").append(print_int(size)).append("CALC=").append(calculation);
        return entry;
    }

    std::optional<tagSUPPLINE> line(std::string_view text) const {
        std::size_t at = 0;
        const std::string_view from = bracketed_name(text, at), to = bracketed_name(text, at);
        if (from.empty() || to.empty()) return std::nullopt;
        tagSUPPLINE line{};
        from.copy(line.from, longest_point_name);
        to.copy(line.to, longest_point_name);
        line.color = colour;
        line.style = weight;
        return line;
    }
};

}  // namespace

DisplayMode read_display_mode(std::string_view text) {
    DisplayMode mode;
    Attributes attributes;
    enum { none, points, lines, point_settings } section = none;
    for_each_line(text, [&](std::string_view line, int) {
        if (line == "Point:") {
            section = points;
        } else if (line == "SuppLine:") {
            section = lines;
        } else if (line == "PointSetting:") {
            section = point_settings;
        } else if (line == "[End]") {
            return true;
        } else if (section == points) {
            mode.points.push_back(line);
        } else if (section == point_settings) {
            mode.point_settings.push_back(line);
        } else if (section == lines && !attributes.read(line)) {
            if (line.starts_with('='))
                mode.measurements.push_back(attributes.measurement(line.substr(1)));
            else if (const auto supplementary = attributes.line(line))
                mode.lines.push_back(*supplementary);
        }
        return mode.lines.size() == most_lines;
    });
    return mode;
}

std::string mode_folder(int kind) {
    constexpr std::string_view folders[] = {"CalcMode", "CalcMode_PA", "CalcMode_Model"};
    std::string folder = analysis_root();
    if (kind >= 0 && kind < static_cast<int>(std::size(folders))) folder += folders[kind];
    return with_delimiter(std::move(folder));
}

std::vector<ModeEntry> listed_modes(int kind) {
    std::vector<ModeEntry> entries;
    const std::string folder = mode_folder(kind), list = file_text(folder + "list.txt");
    for_each_line(list, [&](std::string_view line, int) {
        const std::size_t comma = line.find(',');
        if (comma != std::string_view::npos)
            entries.push_back({read_int(line.substr(0, comma)), folder + std::string(line.substr(comma + 1))});
        return false;
    });
    return entries;
}

}  // namespace tool
