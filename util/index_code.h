// Index codes: integers in few characters. What has one digit more than `width` folds its first two digits into a
// letter: "A" for 10, "B" for 11, up to "z".
#pragma once

#include <string>
#include <string_view>

namespace tool {

// `width` counts as 0 to 20. Values are meant to be positive: "-" of a negative one is treated as a digit.
std::string index_code(int value, int width);

// Saturates at 32 bits; "" gives 0.
int index_of_code(std::string_view code);

}  // namespace tool
