// What a report says about the case that it is for.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "host/case/case.h"

namespace cephtool {

// A line "film.json: Hanako, female, 12 years 3 months, lateral, 0.1 mm a pixel", and one with the dates if there are
// any.
std::string case_heading(const Case& record);

nlohmann::ordered_json case_facts(const Case& record);

}  // namespace cephtool
