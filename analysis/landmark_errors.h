// LandmarkError.txt line by line. There are comments, which begin with ";", the key lines "Lateral:" and "Frontal:",
// and below them "NAME=along,across[,readings[,source]]". "assumed" in the place of the readings marks a figure that
// nobody measured; that of the name "*", which is for all landmarks without a line, is always one.
#pragma once

#include <optional>
#include <string_view>

namespace tool {

struct ErrorLine {
    enum class Kind { nothing, lateral, frontal, landmark, broken } kind = Kind::nothing;
    std::string_view text{};  // views into the file
    std::string_view name{}, source{};
    std::string_view fault{};  // of a broken line: the part of it that can't be read
    double along_mm = 0, across_mm = 0;
    int readings = 0;
    bool assumed = false;
};

inline constexpr std::size_t longest_landmark_name = 5;  // bytes; of a record's own landmarks
inline constexpr std::string_view all_other_landmarks = "*", assumed_word = "assumed";
inline constexpr double largest_error_mm = 100;

// Takes the first line off the text.
ErrorLine next_error_line(std::string_view& text);

}  // namespace tool
