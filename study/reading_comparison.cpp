#include "study/reading_comparison.h"

#include <FilmAxes.h>

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "cases/case_record.h"

namespace cephtool {
namespace {

std::string signed_text(double value, const std::string& like) {
    const std::size_t point = like.find('.');
    const std::string text =
        with_decimals(value, point == std::string::npos ? 0 : static_cast<int>(like.size() - point - 1));
    if (text.find_first_of("123456789") == std::string::npos) return text.substr(text.starts_with('-') ? 1 : 0);
    return value > 0 ? "+" + text : text;
}

std::vector<LandmarkDifference> differences(const Case& first, const Case& second) {
    const auto found = tool::film_axes(static_cast<tool::Kind>(first.kind), subject_of(first));
    const tool::FilmAxes axes = found ? *found : tool::FilmAxes();
    std::vector<LandmarkDifference> all;
    const auto add = [&](const std::vector<Landmark>& before, const std::vector<Landmark>& after) {
        for (const Landmark& landmark : before) {
            const auto again = std::ranges::find(after, landmark.name, &Landmark::name);
            if (again == after.end()) continue;
            const double x = (again->position.x - landmark.position.x) * *first.mm_per_pixel;
            const double y = (again->position.y - landmark.position.y) * *first.mm_per_pixel;
            all.push_back({.name = landmark.name,
                           .along = x * axes.along.x + y * axes.along.y,
                           .across = x * axes.across.x + y * axes.across.y,
                           .distance = std::hypot(x, y)});
        }
    };
    add(first.landmarks, second.landmarks);
    add(first.user, second.user);
    add(first.vertebrae, second.vertebrae);
    return all;
}

}  // namespace

ReadingComparison compared(const Case& first, const Case& second, std::span<const Analysis* const> analyses) {
    ReadingComparison all{
        .landmarks = differences(first, second), .dahlberg_along = {}, .dahlberg_across = {}, .values = {}};
    if (!all.landmarks.empty()) {
        double along = 0, across = 0;
        for (const LandmarkDifference& landmark : all.landmarks)
            along += landmark.along * landmark.along, across += landmark.across * landmark.across;
        const double twice = 2 * static_cast<double>(all.landmarks.size());
        all.dahlberg_along = std::sqrt(along / twice), all.dahlberg_across = std::sqrt(across / twice);
    }
    for (std::size_t i = 0; i < analyses.size(); ++i) {
        const auto one = analyses.subspan(i, 1);
        const CaseResult before = measured(first, one, {}, false), after = measured(second, one, {}, false);
        if (before.analyses.empty() || after.analyses.empty()) continue;  // of another kind
        const auto& items = before.analyses.front().items;
        for (std::size_t item = 0; item < items.size(); ++item) {
            const Measurement& again = after.analyses.front().items[item];
            if (!items[item].value || !again.value) continue;
            const double difference = *again.value - *items[item].value;
            all.values.push_back({.analysis = i,
                                  .item = item,
                                  .first = items[item].value_text,
                                  .second = again.value_text,
                                  .text = signed_text(difference, again.value_text),
                                  .difference = difference,
                                  .dahlberg = std::abs(difference) / std::sqrt(2.0)});
        }
    }
    return all;
}

}  // namespace cephtool
