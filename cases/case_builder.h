// Puts a case together from what a reader finds, with the checks that all formats share. `at` is the place in the
// source that a complaint points to.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "cases/case.h"

namespace cephtool {

inline constexpr double largest_coordinate = 1e6;

// The names of the kind's own landmarks.
std::vector<std::string> landmark_names(Kind kind);

// Whether the name is short enough for a landmark of the person's own: five bytes, two for a Japanese character. One
// that has no bytes in the code page is not too long: it is refused for its characters.
bool fits_user_landmark(const std::string& name);

class CaseBuilder {
 public:
    explicit CaseBuilder(const Source& source) : source_(source) {}

    // Remembers that the source gives this setting here. Throws an Error when it did before: whichever of the two
    // went unheard, it could be the right one.
    void first_setting(const std::string& key, std::size_t at);

    void name(std::string_view text, std::size_t at);
    void kind(std::string_view text, std::size_t at);
    void kind(Kind kind) {
        record_.kind = kind;
        kind_is_known_ = true;
    }
    void sex(std::string_view text, std::size_t at);
    void side(std::string_view text, std::size_t at);
    void birth(std::string_view text, std::size_t at);
    void film(std::string_view text, std::size_t at);
    void dental_stage(std::string_view text, std::size_t at);
    void population(std::string_view text, std::size_t at);
    void scale(double mm_per_pixel, std::size_t at);
    void palate(double category, std::size_t at);
    void image(std::string_view path, std::size_t at);
    void outline(Outline outline) { record_.outlines.push_back(std::move(outline)); }
    void remark(Remark remark) { record_.remarks.push_back(std::move(remark)); }
    void note(std::string text) { record_.notes.push_back(std::move(text)); }
    void foreign(ForeignKey key) { record_.foreign.push_back(std::move(key)); }
    // What a reader leaves alone, in words; told once, and of a long list only the beginning.
    void pass_over(const std::string& what);

    // The kind must be known before landmarks are added. A landmark at (0, 0) counts as not placed: it is remarked
    // and left out, since the engine can't tell it from a missing one.
    void landmark(const std::string& name, Position position, std::size_t at);
    void user_landmark(const std::string& name, Position position, std::size_t at);
    // A point of a vertebra, of which a lateral film has some.
    void vertebra_point(const std::string& name, Position position, std::size_t at);
    void virtual_landmark(const std::string& name, const std::string& construction, std::size_t at);

    Kind kind() const { return record_.kind; }
    bool kind_is_known() const { return kind_is_known_; }
    std::optional<double> scale() const { return record_.mm_per_pixel; }
    // Whether a landmark of any sort has this name.
    bool knows(const std::string& name) const;
    double checked_coordinate(double value, std::size_t at) const;

    Case finished();

 private:
    Date date(std::string_view text, std::size_t at) const;
    void check_own_name(const std::string& name, std::size_t most_bytes, std::size_t at) const;
    void first_use(const std::string& name, std::size_t at);
    std::string place_of_first(std::size_t at) const;
    bool placed(const std::string& name, Position position);

    const Source& source_;
    Case record_;
    std::map<std::string, std::size_t> names_, settings_;  // and where each was met
    std::size_t film_at_ = 0;
    bool kind_is_known_ = false;
};

}  // namespace cephtool
