// Rows of a table that hold nothing out of the common, as nearly all do, read sooner than the readers of all formats
// read them. False for all else, which is left to those.
#pragma once

#include <string_view>
#include <vector>

#include "cases/case.h"

namespace cephtool {

// The fields of one line of well-formed text, quoted ones without their quotes.
bool split_plain_row(std::string_view line, std::vector<std::string_view>& fields);

bool read_plain_coordinate(std::string_view text, double& coordinate);

// Puts the value into the case.
using PlainSetting = bool (*)(std::string_view value, Case& record);
// Null for a setting that is never plain.
PlainSetting plain_setting(std::string_view key);

}  // namespace cephtool
