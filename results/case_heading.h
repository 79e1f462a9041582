// The lines above what is told of a case, in a language.
#pragma once

#include <string>

#include "cases/case.h"
#include "results/texts.h"

namespace cephtool {

// As of cases/case_facts.h.
std::string case_heading(const Case& record, bool colour, const Texts& texts);
std::string remark_line(const Remark& remark, bool colour, const Texts& texts);

}  // namespace cephtool
