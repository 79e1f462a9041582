#include "analysis/sample.h"

#include <charconv>

#include "analysis/definition_file.h"

namespace tool {
namespace {

constexpr int oldest = 150;

std::optional<int> years(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 0 || number > oldest) return std::nullopt;
    return number;
}

}  // namespace

std::optional<AgeRange> age_range_of_sample(std::string_view text) {
    const std::size_t dash = text.find('-');
    if (dash == std::string_view::npos) return std::nullopt;
    const auto from = years(text.substr(0, dash));
    const std::string_view behind = text.substr(dash + 1);
    if (!from || behind.empty()) return from ? std::optional(AgeRange{*from, std::nullopt}) : std::nullopt;
    const auto to = years(behind);
    return to && *from <= *to ? std::optional(AgeRange{*from, to}) : std::nullopt;
}

Sample sample_of(std::string_view file) {
    Sample sample;
    bool in_section = false, ages_seen = false, population_seen = false, variant_seen = false;
    for_each_line(file, [&](std::string_view line, int code) {
        if (code != content_line) in_section = code == parameter_section;
        const std::size_t equals = line.find('=');
        if (!in_section || code != content_line || equals == std::string_view::npos) return false;
        const std::string_view name = line.substr(0, equals), value = line.substr(equals + 1);
        if (name == ages_key && !ages_seen) {
            ages_seen = true;
            sample.ages = age_range_of_sample(value);
        } else if (name == population_key && !population_seen) {
            population_seen = true;
            sample.population = value;
        } else if (name == variant_key && !variant_seen) {
            variant_seen = true;
            sample.variant_of = value;
        }
        for (const auto& [key, lines] : {std::pair(sign_key, &sample.signs), std::pair(japanese_key, &sample.japanese),
                                         std::pair(unverified_key, &sample.unverified)})
            if (name.starts_with(key)) lines->emplace(name.substr(key.size()), value);
        return false;
    });
    return sample;
}

}  // namespace tool
