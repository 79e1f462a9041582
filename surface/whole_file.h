// Files as one piece. Paths are UTF-8; an error is one sentence, "" for none.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

std::string read_whole_file(const std::string& path, std::size_t limit, std::string* bytes);

// Under another name first, then renamed, so that nobody ever sees half a file and a failure leaves the old one. A link
// stays and what it names is replaced; rights stay; a file that nobody may write is left alone.
std::string write_whole_file(const std::string& path, std::string_view bytes);

// The file that a path stands for, be it there or not: what a link names, else the path itself.
std::string file_behind_links(const std::string& path);

}  // namespace tool
