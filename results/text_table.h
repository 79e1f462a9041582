#pragma once

#include <span>
#include <string_view>

namespace cephtool {

// One text in both languages.
struct TextRow {
    std::string_view english, japanese;
};
std::span<const TextRow> all_texts();

}  // namespace cephtool
