#include "cases/case_format.h"

#include <algorithm>
#include <cmath>

#include "base/wording.h"

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

// In the order in which they are tried.
constexpr CaseFormat formats[] = {
    {"slicer", ".mrk.json", is_slicer, read_slicer_cases, to_slicer},
    {"json", ".json", is_json, read_json_cases, write_json},
    {"fcsv", ".fcsv", is_fcsv, read_fcsv_cases, to_fcsv},
    {"tps", ".tps", is_tps, read_tps_cases, to_tps},
    {"challenge", ".txt", is_challenge_text, read_challenge_cases, to_challenge_text},
    {"csv", ".csv", [](const Source&) { return true; }, read_csv_cases, to_csv},
};

}  // namespace

std::span<const CaseFormat> case_formats() {
    return formats;
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
