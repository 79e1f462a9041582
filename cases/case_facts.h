// What a report says about the case that it is for.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string>

#include "cases/case.h"

namespace cephtool {

// A line "film.json: Hanako, female, 12 years 3 months, lateral, 0.1 mm a pixel", one with the dates if there are any,
// and what is remarked on it, amber with `colour`.
std::string case_heading(const Case& record, bool colour);

// Lines below what is remarked on.
std::string remark_line(const Remark& remark, bool colour);

nlohmann::ordered_json case_facts(const Case& record);
nlohmann::ordered_json json_of(std::span<const Remark> remarks);

}  // namespace cephtool
