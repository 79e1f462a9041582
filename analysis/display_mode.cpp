#include "analysis/display_mode.h"

#include <optional>

#include "analysis/catalogue.h"
#include "analysis/definition_file.h"
#include "platform/char_conversion.h"
#include "platform/code_page.h"
#include "platform/folder_file.h"
#include "platform/number_text.h"
#include "platform/system.h"
#include "platform/text.h"
#include "util/delimiter.h"

namespace tool {
namespace {

constexpr int normal_weight = 101, bold_weight = 102;
constexpr std::size_t most_lines = 30;
constexpr std::size_t longest_point_name = sizeof tagSUPPLINE::from - 1;

// "r,g,b"; nothing when a comma is missing. Numbers beyond a byte keep their low one.
std::optional<COLORREF> colour_of(std::string_view text) {
    const std::size_t first = text.find(','),
                      second = text.find(',', first == std::string_view::npos ? first : first + 1);
    if (first == std::string_view::npos || second == std::string_view::npos) return std::nullopt;
    return RGB(read_int(text.substr(0, first)), read_int(text.substr(first + 1, second - first - 1)),
               read_int(text.substr(second + 1)));
}

ModeDecimals decimals_of(std::string_view text) {
    if (text == "0") return ModeDecimals::none;
    if (text == "1") return ModeDecimals::one;
    return text == "0.5" ? ModeDecimals::halves : ModeDecimals::two;
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
    int weight = bold_weight, size = 15;
    ModeDecimals decimals = ModeDecimals::none;
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
            decimals = decimals_of(*decimal);
        else if (const auto place = behind("Pos=", "pos="))
            position = *place;
        else if (const auto number = behind("Size=", "Size="))
            size = read_int(*number);
        else
            return false;
        return true;
    }

    ModeFile::Value value(std::string_view item) const { return {item, position, colour, decimals, size}; }

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

std::optional<ModePlace> place_of(std::string_view position) {
    const std::size_t first = find_char(position, ','), second = position.find(',', first + 1);
    if (first == std::string_view::npos || second == std::string_view::npos) return {};
    const auto right = finite_number(trimmed(position.substr(first + 1, second - first - 1))),
               down = finite_number(trimmed(position.substr(second + 1)));
    if (!right || !down) return {};
    return ModePlace{utf8_from_code_page(trimmed(position.substr(0, first))), *right, *down};
}

Colour colour_of_reference(COLORREF colour) {
    return {GetRValue(colour), GetGValue(colour), GetBValue(colour)};
}

// Empty lines name nothing.
std::vector<std::string> filled(const std::vector<std::string_view>& lines) {
    std::vector<std::string> texts;
    for (const std::string_view line : lines)
        if (!line.empty()) texts.push_back(utf8_from_code_page(line));
    return texts;
}

}  // namespace

ModeFile read_display_mode(std::string_view text) {
    ModeFile mode;
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
                mode.values.push_back(attributes.value(line.substr(1)));
            else if (const auto supplementary = attributes.line(line))
                mode.lines.push_back(*supplementary);
        }
        return mode.lines.size() == most_lines;
    });
    return mode;
}

DisplayMode display_mode(std::string_view text) {
    const ModeFile file = read_display_mode(text);
    DisplayMode mode;
    mode.title = utf8_from_code_page(DefinitionFile(std::string(text)).title());
    mode.every_landmark = file.points.empty();  // an empty line names none, so that a mode can show no landmark
    mode.landmarks = filled(file.points);
    mode.landmark_settings = filled(file.point_settings);
    for (const tagSUPPLINE& line : file.lines) {
        mode.lines.push_back({utf8_from_code_page(line.from), utf8_from_code_page(line.to),
                              colour_of_reference(line.color), line.style == bold_weight});
    }
    for (const ModeFile::Value& value : file.values) {
        mode.values.push_back({utf8_from_code_page(value.item), colour_of_reference(value.colour), value.decimals,
                               utf8_from_code_page(value.position), place_of(value.position), value.size});
    }
    return mode;
}

Result<DisplayMode> DisplayMode::read(const std::filesystem::path& file) {
    const auto text = read_file_at(file, largest_text_file);
    if (!text) return Failure{utf8_from_code_page(error_text(last_error()))};
    DisplayMode mode = display_mode(engine_text(*text));
    mode.file = file;
    return mode;
}

std::string_view mode_folder_name(int kind) {
    constexpr std::string_view folders[] = {"CalcMode", "CalcMode_PA", "CalcMode_Model"};
    return kind >= 0 && kind < static_cast<int>(std::size(folders)) ? folders[kind] : std::string_view();
}

std::vector<ModeEntry> mode_entries(std::string_view list) {
    std::vector<ModeEntry> entries;
    for_each_line(list, [&](std::string_view line, int) {
        const std::size_t comma = line.find(',');
        if (comma != std::string_view::npos)
            entries.push_back({read_int(line.substr(0, comma)), std::string(line.substr(comma + 1))});
        return false;
    });
    return entries;
}

std::vector<ModeEntry> listed_modes(int kind) {
    const std::string folder = with_delimiter(analysis_root().append(mode_folder_name(kind)));
    std::vector<ModeEntry> entries = mode_entries(file_text(folder + std::string(list_file)));
    for (ModeEntry& entry : entries) entry.path.insert(0, folder);
    return entries;
}

}  // namespace tool
