// Names as the system spells them: UTF-8 with "/".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tool::posix {

// The path as it is written, only spelled for the system.
std::string spelled(std::string_view path);

// The existing path that `path` names, each component that is missing as written taken ignoring case; components behind
// one that is not there at all stay as written. Of several candidates the first in byte order.
std::string found(std::string_view path);

// The same in a folder that is spelled for the system, with its "/".
std::string found_in(std::string folder, std::string_view path);

// As `found`, but the last component stays as written: for a name to give.
std::string in_found_folder(std::string_view path);

// A name in code page 932; nothing for one that no path in code page 932 could name.
std::optional<std::string> code_page_name(std::string_view name);

}  // namespace tool::posix
