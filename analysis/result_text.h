// Numbers of a result list as text.
#pragma once

#include <optional>
#include <string>

namespace tool {

// Digits behind the point of an item's numbers: as many as its norm was written with, within 1 (2 for an item without a
// unit) and 2.
int item_decimals(bool has_unit, std::optional<double> mean, std::optional<double> sd);

// Never "-0.0". Values from 10^7 on are written as "1.235e+08".
std::string number_text(double value, int decimals);

// With its sign, unless it is 0 in two decimals: "+2.43".
std::string deviation_text(double deviation);

// One for every whole SD; more than five are not counted out: "*****+".
std::string deviation_stars(double deviation);

}  // namespace tool
