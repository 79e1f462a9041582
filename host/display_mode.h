// Display modes: which landmarks, lines and values a tracing shows. docs/display_modes.md
#pragma once

#include <string>
#include <vector>

#include "host/case.h"

namespace cephtool {

struct ModeLine {
    std::string from, to;  // landmarks
    std::string colour;    // "#rrggbb"
    bool bold = false;
};

struct ModeValue {
    std::string text;                      // the name of an item
    std::string colour;                    // "#rrggbb"
    std::string decimals, position, size;  // decimals: "0", "1", "2" or "0.5"
};

struct DisplayMode {
    Kind kind;
    int number;  // as the list has it
    std::string title, file;
    std::vector<std::string> landmarks;  // none: all are shown
    std::vector<ModeLine> lines;
    std::vector<ModeValue> values;
    std::vector<std::string> settings;
};

// The modes of a kind that a user can choose, in their order. The profile says in which folder they lie.
std::vector<DisplayMode> listed_modes(Kind kind);

}  // namespace cephtool
