#include "analysis/composed_stages.h"

#include <algorithm>

#include "platform/char_conversion.h"

namespace tool {
namespace {

std::string number_text(double number) {
    char text[32];
    return {text, to_chars(text, std::end(text), number).ptr};
}

}  // namespace

StageTable stage_table(std::string_view file, int sex, bool second) {
    StageTable table;
    for_each_stage(file, sex, second, [&](const StageLine& line) {
        table.push_back(
            {line.name,
             line.by_age ? age_range(line.range, ZeroBound::open_above_a_nonzero_start) : dental_range(line.range),
             line.by_age});
    });
    return table;
}

std::optional<int> place_in(const StageTable& table, double x) {
    std::optional<int> place;
    for (std::size_t i = 0; i < table.size(); ++i)
        if (table[i].range.contains(x)) place = static_cast<int>(i);
    return place;
}

std::vector<StageRange> cut_at_all_borders(const std::set<const StageTable*>& tables, bool by_age) {
    std::set<double> borders;
    for (const StageTable* table : tables)
        for (const StagePlace& stage : *table)
            if (stage.range.from < stage.range.to) borders.insert({stage.range.from, stage.range.to});
    const auto places_at = [&](double x) {
        std::vector<std::optional<int>> places;
        for (const StageTable* table : tables) places.push_back(place_in(*table, x));
        return places;
    };
    std::vector<StageRange> stages;
    for (auto border = borders.begin(); border != borders.end() && std::next(border) != borders.end(); ++border) {
        const auto places = places_at(*border);
        const bool is_beyond = !by_age && *border >= static_cast<double>(std::size(dental_stages));
        if (is_beyond || std::ranges::none_of(places, [](const auto& place) { return place.has_value(); })) continue;
        const bool goes_on = !stages.empty() && stages.back().to == *border && places_at(stages.back().from) == places;
        if (goes_on)
            stages.back().to = *std::next(border);
        else
            stages.push_back({*border, *std::next(border)});
    }
    return stages;
}

std::string range_text(const StageRange& stage, bool by_age) {
    if (!by_age) {
        const auto end = static_cast<std::size_t>(stage.to);
        return std::string(dental_stages[static_cast<std::size_t>(stage.from)]) + "-" +
               std::string(end < std::size(dental_stages) ? dental_stages[end] : "");
    }
    constexpr double open = 200;
    const bool is_open = stage.to >= open && stage.from > 0;
    return number_text(stage.from) + "-" + (is_open ? "" : number_text(stage.to));
}

}  // namespace tool
