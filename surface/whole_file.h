// Files as one piece. Paths are UTF-8; an error is one sentence, "" for none.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

// Of a plain file; anything else, such as a device, is an error.
std::string read_whole_file(const std::string& path, std::size_t limit, std::string* bytes);

// Under another name first, then renamed, so that nobody ever sees half a file and a failure leaves the old one. A link
// stays and what it names is replaced; owner and rights stay; a file that nobody may write is left alone. A new file is
// its owner's alone, since it may show a patient.
std::string write_whole_file(const std::string& path, std::string_view bytes);

}  // namespace tool
