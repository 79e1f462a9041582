// Display modes: which landmarks, lines and values a tracing shows. docs/display_modes.md
#pragma once

#include <string>
#include <vector>

#include "cases/case.h"

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
    bool every_landmark = true;  // shown; then none is listed
    std::vector<std::string> landmarks;
    std::vector<ModeLine> lines;
    std::vector<ModeValue> values;
    std::vector<std::string> settings;
};

// The modes of a kind that a user can choose, in their order. The profile says in which folder they lie.
std::vector<DisplayMode> listed_modes(Kind kind);

// Those whose number, title or file name, with or without extension, is `name`. None is an Error of the command line,
// in which `wanted_for` (" for a lateral case", or "") says what it was wanted for.
std::vector<DisplayMode> modes_named(const std::vector<DisplayMode>& modes, const std::string& name,
                                     const std::string& wanted_for = "");

// The mode of this name for a kind of case, the first that is listed when it is "". Throws an Error as modes_named
// does.
DisplayMode chosen_mode(Kind kind, const std::string& name);

}  // namespace cephtool
