#include "analysis/cast_terms.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "analysis/cast_points.h"
#include "geometry/line.h"

namespace tool {
namespace {

std::optional<int> slot_named(std::string_view name) {
    for (int slot = 0; slot < cast_point_count; ++slot)
        if (cast_point_name(slot) == name) return slot;
    return std::nullopt;
}

// The slot of a tooth's mesial point, by its FDI number.
std::optional<int> tooth_named(std::string_view number) {
    for (int slot = 0; slot < curve_slot(CastCurve::upper_coronal); slot += 2)
        if (cast_point_name(slot).substr(0, 2) == number) return slot;
    return std::nullopt;
}

// The slots of the points at which neighbours in one arch face one another.
std::optional<std::array<int, 2>> facing(std::string_view one, std::string_view other) {
    const auto first = tooth_named(one), second = tooth_named(other);
    constexpr int arch = 2 * teeth_in_arch;
    if (!first || !second || *first / arch != *second / arch || std::abs(*first - *second) != 2) return std::nullopt;
    // Teeth are counted from the patient's right: on that side a tooth looks with its mesial point at the next one.
    const auto at = [](int slot, bool at_next) {
        const bool right = slot % arch < arch / 2;
        return right == at_next ? slot : slot + 1;
    };
    return std::array{at(*first, *first < *second), at(*second, *second < *first)};
}

std::optional<CastPlace> place_named(std::string_view text) {
    if (const std::size_t slash = text.find('/'); slash != std::string_view::npos) {
        const auto contact = facing(text.substr(0, slash), text.substr(slash + 1));
        return contact ? std::optional(CastPlace{(*contact)[0], (*contact)[1]}) : std::nullopt;
    }
    if (const auto tooth = tooth_named(text)) return CastPlace{*tooth, *tooth + 1};
    const auto slot = slot_named(text);
    return slot ? std::optional(CastPlace{*slot, *slot}) : std::nullopt;
}

// The parts between the separators; two at least, or none.
std::optional<std::vector<CastPlace>> places_between(std::string_view text, char separator) {
    std::vector<CastPlace> places;
    for (bool last = false; !last;) {
        const std::size_t end = text.find(separator);
        last = end == std::string_view::npos;
        const auto place = place_named(text.substr(0, end));
        if (!place) return std::nullopt;
        places.push_back(*place);
        if (!last) text.remove_prefix(end + 1);
    }
    return places.size() > 1 ? std::optional(places) : std::nullopt;
}

std::optional<CastTerm> term_named(std::string_view text) {
    using Kind = CastTerm::Kind;
    if (const auto tooth = tooth_named(text)) return CastTerm{Kind::way, {{*tooth, *tooth}, {*tooth + 1, *tooth + 1}}};
    if (const std::size_t bar = text.find('|'); bar != std::string_view::npos) {
        const std::string_view one = text.substr(0, bar), other = text.substr(bar + 1);
        const auto points = facing(one, other);
        if (!points) return std::nullopt;
        const auto [a, b] = *points;
        return CastTerm{Kind::gap, {{a, a}, {b, b}, *place_named(one), *place_named(other)}};
    }
    if (const std::size_t foot = text.find('^'); foot != std::string_view::npos) {
        const auto from = place_named(text.substr(0, foot));
        const auto line = places_between(text.substr(foot + 1), '-');
        if (!from || !line || line->size() != 2) return std::nullopt;
        return CastTerm{Kind::height, {*from, (*line)[0], (*line)[1]}};
    }
    const bool wire = text.find('~') != std::string_view::npos;
    auto places = places_between(text, wire ? '~' : '-');
    if (!places) return std::nullopt;
    return CastTerm{wire ? Kind::wire : Kind::way, std::move(*places)};
}

Vec2 at(const CastPlace& place, tagPOINTMO& record) {
    return midpoint(cast_point(record, place.slot), cast_point(record, place.other));
}

std::vector<Vec2> points_of(const CastTerm& term, tagPOINTMO& record) {
    std::vector<Vec2> points;
    for (const CastPlace& place : term.places) points.push_back(at(place, record));
    return points;
}

// The natural cubic spline over the chords between points; those at the place of the one before count once.
class Wire {
 public:
    explicit Wire(std::vector<Vec2> points) : p_(std::move(points)) {
        p_.erase(std::unique(p_.begin(), p_.end()), p_.end());
        for (std::size_t i = 1; i < p_.size(); ++i) chord_.push_back(distance(p_[i - 1], p_[i]));
        if (p_.size() > 1) find_slopes();
    }

    std::size_t pieces() const { return chord_.size(); }

    // On piece i, the cubic that has the places and slopes of both its ends; t runs from 0 to 1.
    Vec2 at(std::size_t i, double t) const {
        const double s = 1 - t, h = chord_[i];
        return s * s * (1 + 2 * t) * p_[i] + t * t * (1 + 2 * s) * p_[i + 1] + h * t * s * s * slope_[i] -
               h * t * t * s * slope_[i + 1];
    }

    // Its derivative by t.
    Vec2 velocity(std::size_t i, double t) const {
        const Vec2 chord = p_[i + 1] - p_[i];
        const double h = chord_[i], rise = 6 * t * (1 - t), first = (1 - t) * (1 - 3 * t), second = t * (3 * t - 2);
        return {rise * chord.x + h * (first * slope_[i].x + second * slope_[i + 1].x),
                rise * chord.y + h * (first * slope_[i].y + second * slope_[i + 1].y)};
    }

 private:
    // By the usual elimination of three diagonals.
    void find_slopes() {
        const std::size_t n = p_.size();
        std::vector<double> factor(n);
        slope_.resize(n);
        const auto steepness = [&](std::size_t i) { return (p_[i + 1] - p_[i]) / chord_[i]; };
        for (std::size_t i = 0; i < n; ++i) {
            const double before = i == 0 ? 0 : 1 / chord_[i - 1], behind = i + 1 == n ? 0 : 1 / chord_[i];
            Vec2 right;
            if (i > 0) right = right + 3 * before * steepness(i - 1);
            if (i + 1 < n) right = right + 3 * behind * steepness(i);
            const double pivot = 2 * (before + behind) - (i == 0 ? 0 : before * factor[i - 1]);
            factor[i] = behind / pivot;
            slope_[i] = (i == 0 ? right : right - before * slope_[i - 1]) / pivot;
        }
        for (std::size_t i = n - 1; i-- > 0;) slope_[i] = slope_[i] - factor[i] * slope_[i + 1];
    }

    std::vector<Vec2> p_, slope_;
    std::vector<double> chord_;
};

double wire_length(const std::vector<Vec2>& points) {
    const Wire wire(points);
    // Gauss's rule with three points in each part; in 32 parts its error is far below a thousandth of a pixel.
    constexpr int parts = 32;
    constexpr double off = 0.7745966692414834, outer = 5.0 / 18, inner = 8.0 / 18;
    double total = 0;
    for (std::size_t i = 0; i < wire.pieces(); ++i) {
        const auto speed = [&](double t) { return length(wire.velocity(i, t)); };
        for (int part = 0; part < parts; ++part) {
            const double middle = (part + 0.5) / parts, half = 0.5 / parts;
            total +=
                (outer * (speed(middle - off * half) + speed(middle + off * half)) + inner * speed(middle)) / parts;
        }
    }
    return total;
}

}  // namespace

std::optional<std::vector<CastTerm>> cast_terms(std::string_view token) {
    if (token.size() < 2 || token.front() != '[' || token.back() != ']') return std::nullopt;
    std::string_view rest = token.substr(1, token.size() - 2);
    std::vector<CastTerm> terms;
    for (bool last = false; !last;) {
        const std::size_t plus = rest.find('+');
        last = plus == std::string_view::npos;
        auto term = term_named(rest.substr(0, plus));
        if (!term) return std::nullopt;
        terms.push_back(std::move(*term));
        if (!last) rest.remove_prefix(plus + 1);
    }
    return terms;
}

double measured_term(const CastTerm& term, tagPOINTMO& record) {
    const std::vector<Vec2> points = points_of(term, record);
    if (term.kind == CastTerm::Kind::wire) return wire_length(points);
    if (term.kind == CastTerm::Kind::gap) {
        const double apart = distance(points[2], points[3]);
        return apart == 0 ? 0.0 : dot(points[1] - points[0], points[3] - points[2]) / apart;
    }
    double way = 0;
    for (const CastLine& line : lines_of_term(term, record)) way += distance(line[0], line[1]);
    return way;
}

std::vector<CastLine> lines_of_term(const CastTerm& term, tagPOINTMO& record) {
    std::vector<Vec2> points = points_of(term, record);
    if (term.kind == CastTerm::Kind::height)
        points = {points[0], foot_of_perpendicular(points[0], {points[1], points[2]})};
    if (term.kind == CastTerm::Kind::gap) points.resize(2);
    if (term.kind == CastTerm::Kind::wire) {
        constexpr int chords = 8;  // of a piece
        const Wire wire(points);
        points.clear();
        for (std::size_t i = 0; i < wire.pieces(); ++i)
            for (int step = i == 0 ? 0 : 1; step <= chords; ++step)
                points.push_back(wire.at(i, static_cast<double>(step) / chords));
    }
    std::vector<CastLine> lines;
    for (std::size_t i = 1; i < points.size(); ++i) lines.push_back({points[i - 1], points[i]});
    return lines;
}

}  // namespace tool
