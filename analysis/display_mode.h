// Display-mode files: what a tracing shows.
//
// 1. "Point:", "SuppLine:" and "PointSetting:" open a section; "[End]" ends the file. Whole lines, case-sensitive.
// 2. Point and PointSetting lines are taken as they stand. Lines in front of the first section are ignored.
// 3. In SuppLine, attribute lines hold for everything below them: Color=r,g,b  Line=BOLD|other  Decimal=0|1|0.5|other
//    Pos=text  Size=n (all but Size also with a small first letter).
// 4. "=text" is a measurement to print, "[A]-[B]" a line to draw; anything else is ignored.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "DisplayMode.h"
#include "Records.h"

namespace tool {

// In code page 932; views into the file's text.
struct ModeFile {
    struct Value {
        std::string_view item, position;
        COLORREF colour = 0;
        ModeDecimals decimals = ModeDecimals::none;
        int size = 0;
        bool operator==(const Value&) const = default;
    };
    std::vector<std::string_view> points, point_settings;
    std::vector<Value> values;
    std::vector<tagSUPPLINE> lines;
};

// Kept: behind the 30th supplementary line nothing more is read, since the caller's table is full.
ModeFile read_display_mode(std::string_view text);

// All but the file and the number, for hosts.
DisplayMode display_mode(std::string_view text);

// The folder of a kind's display modes in the analysis folder, "" for none.
std::string_view mode_folder_name(int kind);

struct ModeEntry {
    int number;
    std::string path;
};
// The entries of a list, by their names in its folder. Lines without a comma are none.
std::vector<ModeEntry> mode_entries(std::string_view list);
// Those of the kind's list, by whole paths; nothing when it can't be read.
std::vector<ModeEntry> listed_modes(int kind);

}  // namespace tool
