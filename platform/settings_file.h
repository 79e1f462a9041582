// The text of a settings ("ini") file. Rules that its author must know:
//
// 1. A line ends at CR LF, CR or LF. Blanks (white space) round it do not count.
// 2. "[name]" opens a section, to the line's last "]"; blanks round the name do not count. What stands in front of the
//    first section belongs to none. A "[" line without "]" opens nothing.
// 3. A line that begins with ";" is a comment. A line without "=", or with nothing in front of it, is passed over.
// 4. The key goes to the first "=", the value from there to the end of the line, both without the blanks round them.
// Then
//    the value loses one pair of equal quotes, ' or ", that encloses it; what they enclose stays, blanks too.
// 5. Names are found without regard to the case of ASCII letters. Kept: the first section of a name is the only one
//    searched, and the first key in it wins, as the platform reads the clinics' files.
// 6. A NUL ends a value.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// A view into `file`.
std::optional<std::string_view> setting(std::string_view file, std::string_view section, std::string_view key);

// In the order of the file; repeated names repeat.
std::vector<std::string_view> setting_sections(std::string_view file);
std::vector<std::string_view> setting_keys(std::string_view file, std::string_view section);

// The file's text with one change; every other byte stays, but for a missing last line end. Line ends are made like
// the file's first one. Nothing when no reader could find the setting again under these names (rules 2 to 4), or the
// value holds a line end.
std::optional<std::string> with_setting(std::string_view file, std::string_view section, std::string_view key,
                                        std::string_view value);
// Without such a key or section the text comes back as it is.
std::string without_setting(std::string_view file, std::string_view section, std::string_view key);
// With everything in it, up to the next section.
std::string without_section(std::string_view file, std::string_view section);

}  // namespace tool
