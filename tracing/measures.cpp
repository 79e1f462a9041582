#include "tracing/measures.h"

#include <MeasuredAnalysis.h>

#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/suggestion.h"
#include "base/wording.h"
#include "cases/case_record.h"
#include "results/names.h"

namespace cephtool {
namespace {

using tool::MeasuredShape;
using tool::ShapeKind;

constexpr const char* colours[] = {"#c2185b", "#00796b", "#ad5a00", "#5e35b1"};  // each measure's its own, in turn
constexpr double text_pt = 9;

struct FoundItem {
    const Analysis* analysis;
    std::size_t place;  // among its items

    const tool::Item& item() const { return analysis->items()[place]; }
    std::string full_name() const { return short_name(*analysis) + ":" + printable(item().name); }
};

std::vector<FoundItem> items_named(std::span<const Analysis* const> analyses, std::string_view name) {
    std::vector<FoundItem> found;
    for (const Analysis* analysis : analyses)
        for (std::size_t i = 0; i < analysis->items().size(); ++i) {
            const tool::Item& item = analysis->items()[i];
            if (!item.heading && lower_case(printable(item.name)) == lower_case(name)) found.push_back({analysis, i});
        }
    return found;
}

FoundItem item_named(std::span<const Analysis> analyses, Kind kind, const std::string& name) {
    std::vector<const Analysis*> of_kind;
    for (const Analysis& analysis : analyses)
        if (case_kind(analysis) == kind) of_kind.push_back(&analysis);
    std::vector<FoundItem> found = items_named(of_kind, name);
    const std::size_t colon = name.find(':');
    if (found.empty() && colon != name.npos) {
        std::vector<const Analysis*> meant = named(analyses, name.substr(0, colon));
        std::erase_if(meant, [&](const Analysis* analysis) { return case_kind(*analysis) != kind; });
        found = items_named(meant, name.substr(colon + 1));
    }
    if (found.empty()) {
        std::vector<std::string> known;
        for (const Analysis* analysis : of_kind)
            for (const tool::Item& item : analysis->items()) known.push_back(printable(item.name));
        const std::string meant = did_you_mean(name, known);
        throw Error(ExitCode::bad_command_line,
                    "no analysis for a " + std::string(name_of(kind)) + " case has an item " + in_quotes(name),
                    (meant.empty() ? "" : meant + " ") + "\"cephtool analyses NAME\" lists the items of one.");
    }
    const bool differ = std::ranges::any_of(
        found, [&](const FoundItem& each) { return each.item().formula != found.front().item().formula; });
    if (differ) {
        std::vector<std::string> names;
        for (const FoundItem& each : found) names.push_back(in_quotes(each.full_name()));
        throw Error(ExitCode::bad_command_line, "several analyses have an item " + in_quotes(name) + " that differ",
                    "Say which: " + joined(names, ", ") + ".");
    }
    return found.front();
}

bool is_measure(ShapeKind kind) {
    return kind <= ShapeKind::line_angle;
}

Position position(tool::FilmPoint point) {
    return {point.x, point.y};
}

// Chords of the arc between the sides of an angle, the shorter way round.
std::vector<tool::Segment> arc_of(const MeasuredShape& angle, double mm_per_pixel) {
    constexpr double usual_mm = 12, most_of_a_side = 0.6, pi = 3.14159265358979323846;
    constexpr int chords = 16;
    if (angle.kind != ShapeKind::angle || angle.points.size() < 3) return {};
    const tool::FilmPoint vertex = angle.points[1];
    const auto way = [&](tool::FilmPoint end) { return tool::FilmPoint{end.x - vertex.x, end.y - vertex.y}; };
    const tool::FilmPoint first = way(angle.points[0]), second = way(angle.points[2]);
    const double shorter = std::min(std::hypot(first.x, first.y), std::hypot(second.x, second.y));
    const double radius = std::min(usual_mm / mm_per_pixel, most_of_a_side * shorter);
    const double from = std::atan2(first.y, first.x);
    const double turn = std::remainder(std::atan2(second.y, second.x) - from, 2 * pi);
    std::vector<tool::Segment> arc;
    tool::FilmPoint last{};
    for (int i = 0; i <= chords; ++i) {
        const double at = from + turn * i / chords;
        const tool::FilmPoint point{vertex.x + radius * std::cos(at), vertex.y + radius * std::sin(at)};
        if (i > 0) arc.push_back({last, point});
        last = point;
    }
    return arc;
}

// Beside the first measure: in the middle of a length or of a line's angle, at the opening of any other.
Position text_place(const std::vector<MeasuredShape>& shapes) {
    const auto measure = std::ranges::find_if(shapes, is_measure, &MeasuredShape::kind);
    const std::vector<tool::FilmPoint>& points = (measure == shapes.end() ? shapes.back() : *measure).points;
    const tool::FilmPoint from = points.front(), to = points.back();
    return {(from.x + to.x) / 2, (from.y + to.y) / 2};
}

std::string text_of(const tool::MeasuredItem& item, const Analysis& analysis, const Texts& texts) {
    const std::string& unit = item.item->unit;
    const bool with_unit = item.state == ResultState::value && !unit.empty();
    const std::string shown = (unit == "deg" || unit == "%" ? "" : " ") + unit_sign(unit);
    const bool english = texts.language() == Language::english;
    const std::string value = item.state != ResultState::text || english
                                  ? item.value_text
                                  : texts.chosen(texts.part(item.value_text), analysis.japanese(item.value_text));
    return label_of(*item.item, texts) + " " + printable(value) + (with_unit ? shown : "");
}

}  // namespace

void add_measure(Tracing& tracing, const Case& record, std::span<const Analysis> analyses, const std::string& name) {
    const FoundItem wanted = item_named(analyses, record.kind, name);
    const auto all = *tool::measure_all(*wanted.analysis, subject_of(record));
    const tool::MeasuredItem& item = all.items[wanted.place];
    const std::string shown_name = printable(item.item->name);
    if (!item.has_result()) {
        tracing.notes.push_back(
            shown_name + " is not drawn: " +
            (item.missing.empty() ? "it can't be measured" : printable(joined(item.missing, ", ")) + " is missing"));
        return;
    }
    if (item.shapes.empty()) {
        tracing.notes.push_back(shown_name + " is not drawn: it measures nothing that lies on the film");
        return;
    }
    const std::string colour = colours[tracing.measures++ % std::size(colours)];
    for (const MeasuredShape& shape : item.shapes) {
        const bool bold = is_measure(shape.kind);
        std::vector<tool::Segment> segments = segments_of(shape);
        std::ranges::move(arc_of(shape, tracing.mm_per_pixel), std::back_inserter(segments));
        for (const tool::Segment& segment : segments)
            tracing.lines.push_back({shown_name, position(segment.from), position(segment.to), colour, bold});
    }
    tracing.values.push_back({text_of(item, *wanted.analysis, Texts(Language::english)), text_place(item.shapes),
                              colour, text_pt, text_of(item, *wanted.analysis, Texts(Language::japanese))});
}

}  // namespace cephtool
