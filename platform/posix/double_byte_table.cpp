#include <algorithm>

#include "platform/system.h"

namespace tool {

namespace {

constexpr char16_t characters[] = {
#include "double_byte_characters.inc"
};

}  // namespace

void read_double_byte_table(std::span<char16_t, lead_byte_count * trail_byte_count> table) {
    static_assert(std::size(characters) == table.size());
    std::ranges::copy(characters, table.begin());
}

}  // namespace tool
