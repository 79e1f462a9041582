#include "cases/case_format.h"

#include <algorithm>
#include <cmath>

#include "base/wording.h"
#include "cases/case_names.h"

namespace cephtool {
namespace {

bool is_json(const Source& source) {
    const std::size_t first = source.text.find_first_not_of(" \t\r\n");
    const char opening = first == std::string::npos ? '\0' : source.text[first];
    return opening == '{' || opening == '[' || lower_case(source.name).ends_with(".json");
}

std::vector<Case> read_json_cases(const Source& source, const CaseOptions&) {
    std::vector<Case> cases;
    cases.push_back(read_json_case(source));
    return cases;
}

std::string write_json(const Case& record, const CaseOptions&) {
    return to_json(record);
}

constexpr FormatLosses landmarks_only{true, "outlines"};
constexpr FormatLosses of_tps{true, "names and anchors of outlines", "-"};
constexpr FormatLosses of_challenge{true, "outlines", nullptr,
                                    "all but nineteen landmarks, and everything beside them"};
constexpr CaseFormat own{"json", ".json", {}, false, is_json, read_json_cases, write_json};

// In the order in which they are tried.
constexpr CaseFormat formats[] = {
    {"slicer", ".mrk.json", landmarks_only, false, is_slicer, read_slicer_cases, to_slicer},
    own,
    {"fcsv", ".fcsv", landmarks_only, false, is_fcsv, read_fcsv_cases, to_fcsv},
    {"tps", ".tps", of_tps, true, is_tps, read_tps_cases, to_tps},
    {"challenge", ".txt", of_challenge, false, is_challenge_text, read_challenge_cases, to_challenge_text},
    {"csv", ".csv", landmarks_only, false, [](const Source&) { return true; }, read_csv_cases, to_csv},
};

std::vector<ForeignKey> foreign_keys(const Case& record) {
    std::vector<ForeignKey> keys = record.foreign;
    for (const Outline& outline : record.outlines)
        keys.insert(keys.end(), outline.foreign.begin(), outline.foreign.end());
    return keys;
}

// Own landmarks under whose names the format's reader understands something else.
std::vector<std::string> names_not_kept(const FormatLosses& losses, const Case& record) {
    std::vector<std::string> names;
    for (const Landmark& landmark : record.user) {
        const bool unnamed = losses.unnamed && landmark.name == losses.unnamed;
        if (unnamed || is_reserved(landmark.name, record.kind)) names.push_back(in_quotes(landmark.name));
    }
    return names;
}

}  // namespace

std::span<const CaseFormat> case_formats() {
    return formats;
}

const CaseFormat& own_format() {
    return own;
}

std::vector<std::string> lost_in(const CaseFormat& format, const Case& record) {
    const FormatLosses& losses = format.losses;
    std::vector<std::string> lost = record.passed_over;
    if (losses.keys) {
        for (const ForeignKey& key : foreign_keys(record)) lost.push_back("the key " + in_quotes(key.key));
        if (!record.virtuals.empty()) lost.emplace_back("virtual landmarks");
    }
    if (*losses.outlines && !record.outlines.empty()) lost.emplace_back(losses.outlines);
    if (losses.keys) {
        const std::vector<std::string> names = names_not_kept(losses, record);
        if (!names.empty()) lost.push_back("landmarks of your own named " + joined(names, ", "));
        if (record.palate) lost.emplace_back("the category of the palate");
    }
    if (*losses.always) lost.emplace_back(losses.always);
    return lost;
}

const CaseFormat* format_by_extension(const std::string& path) {
    const std::string lower = lower_case(path);
    const auto found = std::ranges::find_if(formats, [&](const CaseFormat& f) { return lower.ends_with(f.extension); });
    return found == std::end(formats) ? nullptr : &*found;
}

const CaseFormat* format_by_name(const std::string& name) {
    const auto found = std::ranges::find_if(formats, [&](const CaseFormat& format) { return name == format.name; });
    return found == std::end(formats) ? nullptr : &*found;
}

double on_grid(double coordinate) {
    constexpr double steps_a_pixel = 1e5;
    return std::round(coordinate * steps_a_pixel) / steps_a_pixel + 0.0;  // + 0.0: no "-0"
}

Position on_grid(Position point) {
    return {on_grid(point.x), on_grid(point.y)};
}

}  // namespace cephtool
