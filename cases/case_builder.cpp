#include "cases/case_builder.h"

#include <Analysis.h>
#include <LandmarkTable.h>

#include <algorithm>
#include <cmath>

#include "base/date_reader.h"
#include "base/library_name.h"
#include "base/numbers.h"
#include "base/suggestion.h"
#include "base/wording.h"
#include "cases/case_record.h"
#include "cases/vertebrae.h"

namespace cephtool {
namespace {

constexpr std::size_t most_virtual_landmarks = 1000;
constexpr std::size_t longest_user_name = sizeof(tagUPOINT::Name) - 1;
constexpr std::size_t longest_virtual_name = sizeof(tagKPOINT::Name) - 1;
constexpr std::size_t longest_construction = sizeof(tagKPOINT::Construction) - 1;

constexpr std::size_t no_place = std::string::npos;

// Bytes in the code page that the engine's records hold, or `no_place` when a character has none there.
std::size_t record_bytes(const std::string& text) {
    const std::optional<CString> bytes = library_name(text);
    return bytes ? static_cast<std::size_t>(bytes->GetLength()) : no_place;
}

}  // namespace

std::vector<std::string> landmark_names(Kind kind) {
    std::vector<std::string> names;
    const int code = static_cast<int>(kind);
    for (int slot = 0; slot < LandmarkTable::Count(code); ++slot) names.emplace_back(LandmarkTable::Name(code, slot));
    return names;
}

bool fits_user_landmark(const std::string& name) {
    const std::size_t bytes = record_bytes(name);
    return bytes == no_place || bytes <= longest_user_name;
}

void CaseBuilder::pass_over(const std::string& what) {
    constexpr std::size_t most_named = 12;
    std::vector<std::string>& named = record_.passed_over;
    if (named.size() > most_named || std::ranges::find(named, what) != named.end()) return;
    named.push_back(named.size() == most_named ? "and more" : what);
}

void CaseBuilder::first_setting(const std::string& key, std::size_t at) {
    const auto [met, is_new] = settings_.emplace(key, at);
    if (is_new) return;
    throw source_.error_at(at, "the setting " + in_quotes(key) + " is given a second time",
                           place_of_first(met->second));
}

void CaseBuilder::name(std::string_view text, std::size_t at) {
    if (has_control_character(text)) throw source_.error_at(at, "a control character in the case's name");
    record_.name = text;
}

void CaseBuilder::image(std::string_view path, std::size_t at) {
    if (path.empty() || has_control_character(path)) {
        throw source_.error_at(at, in_quotes(path) + " is no name of a picture file");
    }
    record_.image = path;
}

void CaseBuilder::kind(std::string_view text, std::size_t at) {
    for (const Kind candidate : all_kinds)
        if (text == name_of(candidate)) return kind(candidate);
    throw source_.error_at(at, in_quotes(text) + " is no kind of case", "Use \"lateral\", \"frontal\" or \"model\".");
}

void CaseBuilder::sex(std::string_view text, std::size_t at) {
    if (text == "male" || text == "m") {
        record_.sex = Sex::male;
    } else if (text == "female" || text == "f") {
        record_.sex = Sex::female;
    } else {
        throw source_.error_at(at, in_quotes(text) + " is no sex that norms are kept for",
                               "Use \"male\" or \"female\", or leave it out.");
    }
}

void CaseBuilder::side(std::string_view text, std::size_t at) {
    for (const Side candidate : {Side::left, Side::right})
        if (text == name_of(candidate)) record_.side = candidate;
    if (!record_.side) throw source_.error_at(at, in_quotes(text) + " is no side", "Use \"left\" or \"right\".");
}

Date CaseBuilder::date(std::string_view text, std::size_t at) const {
    try {
        return read_date(text);
    } catch (const Error& error) {
        throw source_.error_at(at, error.what(), error.way_out);
    }
}

void CaseBuilder::birth(std::string_view text, std::size_t at) {
    record_.birth = date(text, at);
}

void CaseBuilder::film(std::string_view text, std::size_t at) {
    record_.film = date(text, at);
    film_at_ = at;
}

void CaseBuilder::population(std::string_view text, std::size_t at) {
    record_.population = tool::population_named(text).name;
    if (record_.population.empty() || has_control_character(text))
        throw source_.error_at(
            at, in_quotes(text) + " is no population",
            "Write one that norms are known of, such as Japanese; \"cephtool analyses\" lists them.");
}
void CaseBuilder::dental_stage(std::string_view text, std::size_t at) {
    const std::vector<std::string> stages(std::begin(dental_stages), std::end(dental_stages));
    if (std::ranges::find(stages, text) == stages.end()) {
        const std::string meant = did_you_mean(text, stages);
        throw source_.error_at(at, in_quotes(text) + " is none of Hellman's dental stages",
                               (meant.empty() ? "" : meant + " ") + "They are " + joined(stages, ", ") + ".");
    }
    record_.dental_stage = text;
}

void CaseBuilder::scale(double mm_per_pixel, std::size_t at) {
    if (!is_scale(mm_per_pixel)) {
        throw source_.error_at(at, "a pixel can't be " + shortest(mm_per_pixel) + " mm wide",
                               "The scale is the width of one pixel in millimetres, such as 0.1.");
    }
    record_.mm_per_pixel = mm_per_pixel;
}

void CaseBuilder::palate(double category, std::size_t at) {
    constexpr int most = 99;
    if (record_.kind != Kind::model) throw source_.error_at(at, "only a case of kind \"model\" has a palate");
    if (!(category >= 0 && category <= most) || category != std::floor(category)) {
        throw source_.error_at(at, shortest(category) + " is no category of a palate",
                               "Use a whole number from 0 to " + std::to_string(most) + ".");
    }
    record_.palate = static_cast<int>(category);
}

double CaseBuilder::checked_coordinate(double value, std::size_t at) const {
    if (!(std::abs(value) <= largest_coordinate)) {
        throw source_.error_at(at, "the coordinate " + shortest(value) + " lies outside every image",
                               "Coordinates are pixels from -1000000 to 1000000.");
    }
    return value;
}

bool CaseBuilder::knows(const std::string& name) const {
    return names_.contains(name) || LandmarkTable::Find(static_cast<int>(record_.kind), name.c_str()) >= 0;
}

void CaseBuilder::check_own_name(const std::string& name, std::size_t most_bytes, std::size_t at) const {
    const std::size_t bytes = record_bytes(name);
    if (bytes == no_place || has_control_character(name) || name.find_first_of("[]\"") != std::string::npos) {
        throw source_.error_at(at, "the name " + in_quotes(name) + " holds a character that formulas can't use",
                               "Use letters, digits or Japanese, without brackets and quotes.");
    }
    if (bytes == 0 || bytes > most_bytes) {
        throw source_.error_at(
            at, "the name " + in_quotes(name) + " takes " + std::to_string(bytes) + " bytes",
            "Names of this sort have 1 to " + std::to_string(most_bytes) + " bytes; a Japanese character takes two.");
    }
}

void CaseBuilder::first_use(const std::string& name, std::size_t at) {
    const auto [met, is_new] = names_.emplace(name, at);
    if (!is_new) throw source_.error_at(at, "a second landmark " + in_quotes(name), place_of_first(met->second));
}

std::string CaseBuilder::place_of_first(std::size_t at) const {
    return "The first is in line " + std::to_string(source_.error_at(at, "").line) + ". Keep one of them.";
}

bool CaseBuilder::placed(const std::string& name, Position position) {
    if (!counts_as_absent(position)) return true;
    remark({"landmark_at_origin", "Landmark %1 at (0, 0) counts as not placed.", {in_quotes(name)}});
    return false;
}

void CaseBuilder::landmark(const std::string& name, Position position, std::size_t at) {
    const int slot = LandmarkTable::Find(static_cast<int>(record_.kind), name.c_str());
    if (slot < 0) {
        const std::string meant = did_you_mean(name, landmark_names(record_.kind));
        throw source_.error_at(at, in_quotes(name) + " is no landmark of a " + name_of(record_.kind) + " case",
                               (meant.empty() ? "" : meant + " ") + "A landmark of your own goes under \"user\".");
    }
    first_use(name, at);
    if (placed(name, position)) record_.landmarks.push_back({name, position, slot});
}

void CaseBuilder::user_landmark(const std::string& name, Position position, std::size_t at) {
    if (LandmarkTable::Find(static_cast<int>(record_.kind), name.c_str()) >= 0) {
        throw source_.error_at(at, in_quotes(name) + " is a landmark of every " + name_of(record_.kind) + " case",
                               "Formulas would never find your own. Put it under \"landmarks\" or rename it.");
    }
    if (record_.user.size() == USER_POINT_MAX) {
        throw source_.error_at(at, "more than " + std::to_string(USER_POINT_MAX) + " landmarks of your own",
                               "Leave some out.");
    }
    check_own_name(name, longest_user_name, at);
    first_use(name, at);
    if (placed(name, position)) record_.user.push_back({name, position});
}

void CaseBuilder::vertebra_point(const std::string& name, Position position, std::size_t at) {
    if (record_.kind != Kind::lateral) {
        throw source_.error_at(at, "only a case of kind \"lateral\" has points of vertebrae");
    }
    const std::vector<std::string> names = vertebra_point_names();
    if (std::ranges::find(names, name) == names.end()) {
        const std::string meant = did_you_mean(name, names);
        throw source_.error_at(at, in_quotes(name) + " is no point of a vertebra",
                               (meant.empty() ? "" : meant + " ") + "docs/case_format.md shows where they lie.");
    }
    first_use(name, at);
    if (placed(name, position)) record_.vertebrae.push_back({name, position});
}

void CaseBuilder::virtual_landmark(const std::string& name, const std::string& construction, std::size_t at) {
    if (LandmarkTable::Find(static_cast<int>(record_.kind), name.c_str()) >= 0) {
        throw source_.error_at(at, in_quotes(name) + " is a landmark of every " + name_of(record_.kind) + " case",
                               "Formulas would never find the virtual one. Rename it.");
    }
    if (record_.virtuals.size() == most_virtual_landmarks) {
        throw source_.error_at(at, "more than " + std::to_string(most_virtual_landmarks) + " virtual landmarks",
                               "Leave some out.");
    }
    check_own_name(name, longest_virtual_name, at);
    first_use(name, at);
    const std::size_t bytes = record_bytes(construction);
    if (bytes == 0 || bytes > longest_construction || has_control_character(construction)) {
        throw source_.error_at(at,
                               "the construction of " + in_quotes(name) + " is no formula of 1 to " +
                                   std::to_string(longest_construction) + " bytes",
                               "Write a point such as mid([U1],[L1]).");
    }
    record_.virtuals.push_back({name, construction});
}

Case CaseBuilder::finished() {
    if (record_.birth && record_.film && *record_.film < *record_.birth) {
        throw source_.error_at(
            film_at_,
            "the film of " + text_of(*record_.film) + " was taken before birth (" + text_of(*record_.birth) + ")",
            "Check both dates.");
    }
    return std::move(record_);
}

}  // namespace cephtool
