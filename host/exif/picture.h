// What the header of a JPEG picture says, in words and units.
#pragma once

#include <algorithm>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "base/error.h"

namespace cephtool {

struct PictureFact {
    const char* key;               // for programs
    const char* label;             // for people; "" when another fact's words include it
    std::optional<double> number;  // for programs, in the unit that the key names
    std::string text;              // for programs, where there is no number
    std::string shown;             // for people; "" when the picture does not tell

    bool is_told() const { return number || !text.empty(); }
};

struct Picture {
    std::string file;  // as it is named in messages
    bool has_exif = false;
    std::vector<PictureFact> facts;  // always the same keys in the same order; texts are safe to show
    std::string note;                // what is damaged, or there but not found
    std::string thumbnail;           // the embedded picture, "" without one
    std::string lost_thumbnail;      // why one that the file has is not found
    std::optional<Error> damage;     // where the header ends too early: the facts are those before

    bool tells_anything() const { return std::ranges::any_of(facts, &PictureFact::is_told); }
};

// Reads the file `path`, or `standard_input` when it is "-". Throws an Error when it is no JPEG picture.
Picture read_picture(const std::string& path, std::istream& standard_input);

}  // namespace cephtool
