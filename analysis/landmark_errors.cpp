#include "analysis/landmark_errors.h"

#include <algorithm>

#include "LandmarkErrors.h"
#include "platform/code_page.h"
#include "platform/number_text.h"
#include "platform/text.h"
#include "util/decimal_text.h"

namespace tool {
namespace {

std::string_view field(std::string_view& rest) {
    const std::size_t comma = std::min(rest.find(','), rest.size());
    const std::string_view text = trimmed(rest.substr(0, comma));
    rest.remove_prefix(std::min(comma + 1, rest.size()));
    return text;
}

std::optional<double> error_mm(std::string_view text) {
    if (text.empty() || !is_number(text)) return std::nullopt;
    const double value = read_double(text);
    return value >= 0 && value <= largest_error_mm ? std::optional(value) : std::nullopt;
}

}  // namespace

ErrorLine next_error_line(std::string_view& text) {
    using Sort = ErrorLine::Kind;
    const std::size_t end = std::min(text.find('\n'), text.size());
    ErrorLine line{.text = trimmed(text.substr(0, end))};
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.text.empty() || line.text.front() == ';') return line;
    if (equal_ignoring_case(line.text, "Lateral:")) return line.kind = Sort::lateral, line;
    if (equal_ignoring_case(line.text, "Frontal:")) return line.kind = Sort::frontal, line;
    line.kind = Sort::broken;
    line.fault = line.text;
    const std::size_t equals = line.text.find('=');
    if (equals == std::string_view::npos) return line;
    line.name = trimmed(line.text.substr(0, equals));
    if (line.name.empty() || line.name.size() > longest_landmark_name ||
        code_page_from_utf8(utf8_from_code_page(line.name)) != line.name)  // half a character
        return line.fault = line.name, line;
    std::string_view rest = line.text.substr(equals + 1);
    for (double* const error : {&line.along_mm, &line.across_mm}) {
        line.fault = field(rest);
        const auto value = error_mm(line.fault);
        if (!value) return line;
        *error = *value;
    }
    std::string_view readings = field(rest);
    line.fault = readings;
    line.assumed = line.name == all_other_landmarks || equal_ignoring_case(readings, assumed_word);
    if (equal_ignoring_case(readings, assumed_word)) readings = {};
    const bool whole = std::ranges::all_of(readings, [](char c) { return c >= '0' && c <= '9'; });
    if (!whole || readings.size() > 6) return line;
    if (!readings.empty() && !line.assumed) line.readings = read_int(readings);  // nobody read what is assumed
    line.source = trimmed(rest);
    line.kind = Sort::landmark;
    return line;
}

LandmarkErrors::LandmarkErrors() : LandmarkErrors(std::span<const LandmarkError>()) {}

LandmarkErrors::LandmarkErrors(std::span<const LandmarkError> errors)
    : errors_(std::make_shared<const std::vector<LandmarkError>>(errors.begin(), errors.end())) {}

LandmarkErrors LandmarkErrors::from_text(std::string_view text) {
    std::vector<LandmarkError> errors;
    std::optional<bool> frontal;
    while (!text.empty()) {
        const ErrorLine line = next_error_line(text);
        if (line.kind == ErrorLine::Kind::lateral) frontal = false;
        if (line.kind == ErrorLine::Kind::frontal) frontal = true;
        if (line.kind != ErrorLine::Kind::landmark || !frontal) continue;
        LandmarkError error{.name = utf8_from_code_page(line.name),
                            .frontal = *frontal,
                            .along_mm = line.along_mm,
                            .across_mm = line.across_mm,
                            .readings = line.readings,
                            .source = utf8_from_code_page(line.source),
                            .assumed = line.assumed};
        const auto same = [&](const LandmarkError& e) { return e.name == error.name && e.frontal == error.frontal; };
        if (std::ranges::none_of(errors, same)) errors.push_back(std::move(error));  // the first holds
    }
    return LandmarkErrors(errors);
}

std::span<const LandmarkError> LandmarkErrors::all() const {
    return *errors_;
}

const LandmarkError* LandmarkErrors::find(std::string_view name, bool frontal) const {
    for (const std::string_view wanted : {name, all_other_landmarks})
        for (const LandmarkError& error : *errors_)
            if (error.frontal == frontal && error.name == wanted) return &error;
    return nullptr;
}

LandmarkErrors LandmarkErrors::measured() const {
    std::vector<LandmarkError> errors = *errors_;
    std::erase_if(errors, [](const LandmarkError& error) { return error.assumed; });
    return LandmarkErrors(errors);
}

std::optional<std::string> LandmarkErrors::to_text(std::string_view heading) const {
    std::string text;
    while (!heading.empty()) {
        const std::size_t end = std::min(heading.find('\n'), heading.size());
        text += "; " + std::string(heading.substr(0, end)) + "\r\n";
        heading.remove_prefix(std::min(end + 1, heading.size()));
    }
    for (const bool frontal : {false, true}) {
        bool begun = false;
        for (const LandmarkError& error : *errors_) {
            if (error.frontal != frontal) continue;
            if (!begun) text += frontal ? "Frontal:\r\n" : "Lateral:\r\n";
            begun = true;
            text += error.name + "=" + print_fixed(error.along_mm, 2) + "," + print_fixed(error.across_mm, 2);
            if (error.assumed)
                text += "," + std::string(assumed_word);
            else if (error.readings > 0 || !error.source.empty())
                text += "," + print_int(error.readings);
            if (!error.source.empty()) text += "," + error.source;
            text += "\r\n";
        }
    }
    return code_page_from_utf8(text);
}

}  // namespace tool
