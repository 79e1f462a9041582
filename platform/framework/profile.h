// What the settings functions and the application's profile share.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// Where a settings file lies: one without a folder stands beside the running program.
std::string profile_path(std::string_view file);

// A value of any length, else the default without its trailing blanks.
std::string profile_text(const char* section, const char* key, const char* default_value, const char* file);

}  // namespace tool
