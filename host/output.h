#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "base/error.h"

namespace cephtool {

// Writes `text` to `out` when `path` is "" or "-", else to the file: whole under another name first, then renamed, so
// that nobody ever sees half a file. Throws an Error when it can't be written.
void write_result(const std::string& text, const std::string& path, std::ostream& out);

// Throws an Error when `output` is one of the files `others`, by whatever name: what is read, or written as well, would
// be lost; "-" is what standard input comes from. Devices and pipes lose nothing. Throws one for a link in a circle,
// too.
void check_output(const std::string& output, const std::vector<std::string>& others);

Error not_written(const std::string& path);
Error link_in_circle(const std::string& path);

// Throws an Error when a file that results rest on was there and could not be read.
void check_all_read();

}  // namespace cephtool
