// An era table: how many eras there are, their names, codes and spans.
//
//   [MAIN]       n=5              at most 1000
//   [ERA_NAME]   0=… to n-1=…     values keep 100 bytes
//   [ERA_CODE]   0=… to n-1=…
//   [ERA_RANGE]  -1=… to n-1=…    -1: the time before the first era
#pragma once

#include <functional>
#include <string>

#include "framework/text.h"

namespace tool {

struct EraTable {
    CStringArray names, codes;
    CStringArray ranges;  // entry 0: the time before the first era
};

// `value` gives a setting of the table, "" for none.
EraTable read_era_table(const std::function<std::string(const char* section, const char* key)>& value);

}  // namespace tool
