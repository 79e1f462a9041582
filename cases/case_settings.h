// What a case says about itself beside its landmarks, as "key=value": the comments of CSV, TPS and Slicer's fiducials,
// and the columns of a flat CSV.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cases/case_builder.h"

namespace cephtool {

std::vector<std::string> setting_keys();

// False when the key is none of setting_keys(). Throws an Error for a bad value.
bool read_setting(CaseBuilder& builder, const Source& source, std::string_view key, std::string_view value,
                  std::size_t at);

enum class Comment { setting, unknown };

// Reads a comment "key=value"; any other comment is for people. Throws an Error when the key was set before, and when
// it is a slip of a known one: it must not pass for a comment. `more_keys` are those that the caller knows beside the
// settings.
Comment read_setting_comment(CaseBuilder& builder, const Source& source, std::string_view text, std::size_t at,
                             const std::vector<std::string>& more_keys = {});

// Key and value of what is known of the case, the kind always.
std::vector<std::pair<std::string, std::string>> settings_of(const Case& record);

}  // namespace cephtool
