// Addition of this project: what a tracing shows, as a display mode of the analysis folder says it
// (docs/display_modes.md). Texts are UTF-8.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Result.h"
#include "framework/export.h"

namespace tool {

struct Colour {
    std::uint8_t red = 0, green = 0, blue = 0;
    bool operator==(const Colour&) const = default;
};

struct ModeLine {
    std::string from, to;  // landmarks
    Colour colour;
    bool bold = true;
    bool operator==(const ModeLine&) const = default;
};

enum class ModeDecimals { none, one, two, halves };  // halves: rounded to 0.5

// Where a value stands: so many mm to the right of a landmark and below it.
struct ModePlace {
    std::string landmark;
    double right_mm = 0, down_mm = 0;
    bool operator==(const ModePlace&) const = default;
};

struct ModeValue {
    std::string item;  // its name in an analysis
    Colour colour;
    ModeDecimals decimals = ModeDecimals::none;
    std::string position;            // as the file has it
    std::optional<ModePlace> place;  // the same, when it says "LANDMARK,right,down"
    int size = 15;                   // height of the letters in points
    bool operator==(const ModeValue&) const = default;
};

struct DisplayMode {
    std::filesystem::path file;
    int number = 0;  // as the list has it
    std::string title;
    bool every_landmark = true;  // is shown; then none is listed
    std::vector<std::string> landmarks;
    std::vector<ModeLine> lines;  // at most 30: behind the 30th nothing more is read
    std::vector<ModeValue> values;
    std::vector<std::string> landmark_settings;

    // The file's number is 0.
    static TOOL_API Result<DisplayMode> read(const std::filesystem::path& file);
};

}  // namespace tool
