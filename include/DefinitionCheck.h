// Addition of this project: finds in the files of an analysis folder what the engine passes over in silence. It reads
// them with the engine's own readers. docs/check.md says what is found and why.
#pragma once

#include <cstddef>
#include <vector>

#include "framework/export.h"
#include "framework/text.h"

// A place in a file where something is not as its author can have meant it.
struct CheckFinding {
    CString path;       // as it was given, or below the folder that was given
    int line = 0;       // from 1; 0: the file as a whole
    int column = 0;     // from 1, in characters: one of two bytes counts as one
    bool note = false;  // worth knowing, but it can be meant so
    CString message;    // what was found and the way out: English, with names from the file in code page 932
};

// What is checked.
enum class CheckFamily {
    definition,       // an analysis: items, norms, growth stages
    definition_list,  // "list.txt" of a folder of analyses
    mode,             // a display mode
    mode_list,        // "list.txt" of a folder of display modes
    eras,             // "Era.dat"
    bone_age,         // "cvba.dat"
    landmark_errors   // "LandmarkError.txt"
};

// What was found.
struct CheckResult {
    int files = 0;                       // that were read
    std::vector<CheckFinding> findings;  // file by file, each in the order of its lines
};

// No exception leaves these. Without the memory that a check takes that is its only finding, and `files` is 0.
class TOOL_API DefinitionCheck {
 public:
    // A text in memory. `kind` as in the calls of CCephCalc tells which landmarks there are; any other than 0, 1, 2,
    // 10 and 20 takes those of all films. Whether the files that a list names are there is not looked at.
    static CheckResult Text(CheckFamily family, int kind, const char* text, std::size_t size);

    // A file, whose family and kind its name and its folder's name tell (an analysis when they tell nothing); an
    // analysis folder with all that the engine reads in it; or one of its folders. A path that can't be read is a
    // finding.
    static CheckResult Path(const char* path);
};
