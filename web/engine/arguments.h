// What JavaScript gives: cases, and what is wanted of them.
#pragma once

#include <emscripten/val.h>

#include <optional>
#include <string>
#include <vector>

#include "cases/case.h"
#include "web/engine/drawings.h"
#include "web/engine/folders.h"

namespace engine {

// Of JSON. Throws an Error for what is none.
cephtool::Case case_of(const std::string& json);
std::vector<cephtool::Case> cases_of(const std::string& json);
std::vector<int> numbers_of(const std::string& json);
// By their numbers, of open folders.
std::vector<const cephtool::Analysis*> analyses_in(const std::string& json);
TracingWish wish_of(const std::string& json);

// Of its name. Throws an Error for a name of none.
cephtool::Kind kind_of(const std::string& name);

// Of an object with width, height and bytes; nothing of undefined and null.
std::optional<cephtool::Film> film_of(const emscripten::val& film);

}  // namespace engine
