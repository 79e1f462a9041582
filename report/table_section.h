// A table with its chart on the pages of a report.
#pragma once

#include "report/pages.h"
#include "report/result_table.h"

namespace cephtool {

// Below each other: title, norms, rows. Short tables stay on one page; where a longer one goes on, its head is
// repeated.
void add_table(Pages& pages, const ResultTable& table);

}  // namespace cephtool
