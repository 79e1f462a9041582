// What a case says about itself beside its landmarks, as "key=value": the comments of CSV, TPS and Slicer's fiducials,
// and the columns of a flat CSV.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/case/case_builder.h"

namespace cephtool {

std::vector<std::string> setting_keys();

// False when the key is none of setting_keys(). Throws an Error for a bad value.
bool read_setting(CaseBuilder& builder, const Source& source, std::string_view key, std::string_view value,
                  std::size_t at);

enum class Remark { setting, unknown };

// Reads a remark "key=value"; any other remark is for people. Throws an Error when the key was set before, and when it
// is a slip of a known one: it must not pass for a remark. `more_keys` are those that the caller knows beside the
// settings.
Remark read_remark(CaseBuilder& builder, const Source& source, std::string_view remark, std::size_t at,
                   const std::vector<std::string>& more_keys = {});

// Key and value of what is known of the case, the kind always.
std::vector<std::pair<std::string, std::string>> settings_of(const Case& record);

}  // namespace cephtool
