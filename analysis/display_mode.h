// Display-mode files: what a tracing shows.
//
// 1. "Point:", "SuppLine:" and "PointSetting:" open a section; "[End]" ends the file. Whole lines, case-sensitive.
// 2. Point and PointSetting lines are taken as they stand. Lines in front of the first section are ignored.
// 3. In SuppLine, attribute lines hold for everything below them: Color=r,g,b  Line=BOLD|other  Decimal=0|1|0.5|other
//    Pos=text  Size=n (all but Size also with a small first letter).
// 4. "=text" is a measurement to print, "[A]-[B]" a line to draw; anything else is ignored.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Records.h"

namespace tool {

struct DisplayMode {
    std::vector<std::string_view> points, point_settings;  // into the file's text
    std::vector<std::string> measurements;                 // packed with their attributes
    std::vector<tagSUPPLINE> lines;
};

// Kept: behind the 30th supplementary line nothing more is read, since the caller's table is full.
DisplayMode read_display_mode(std::string_view text);

// The folder of a kind's display modes, with its delimiter.
std::string mode_folder(int kind);

struct ModeEntry {
    int number;
    std::string path;
};
// The entries of the kind's list; nothing when it can't be read. Lines without a comma are none.
std::vector<ModeEntry> listed_modes(int kind);

}  // namespace tool
