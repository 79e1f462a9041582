#pragma once

#include <string>
#include <string_view>

namespace tool {

// Writes a file, whose path is UTF-8; an error is one sentence, "" for none. It is written under another name first,
// then renamed, so that nobody ever sees half a file and a failure leaves the old one. A link stays and what it names
// is replaced; owner and rights stay; a file that nobody may write is left alone. A new file is its owner's alone,
// since it may show a patient.
std::string write_whole_file(const std::string& path, std::string_view bytes);

}  // namespace tool
