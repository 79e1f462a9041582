#include "analysis/point_expression.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "analysis/landmark_names.h"
#include "analysis/virtual_landmarks.h"
#include "geometry/angle.h"
#include "geometry/line.h"
#include "geometry/translation.h"
#include "platform/number_text.h"
#include "platform/text.h"

namespace tool {

struct PointReader::Prefix {
    std::string_view text;
    Shape shape;
    int points;
};

const PointReader::Prefix PointReader::prefixes[] = {
    {"mid(", Shape::middle, 2},          {"vertical(", Shape::foot, 3},
    {"cross(", Shape::crossing, 4},      {"AngleBisector(", Shape::bisector, 3},
    {"extension(", Shape::extension, 2}, {"EffectiveA(", Shape::effective_a, 0},
};

namespace {

constexpr std::size_t longest_name = 99;
constexpr std::size_t longest_distance = 20;

// Rounding moves a constructed point by less, a landmark by more.
constexpr double one_place_px = 1e-6;
constexpr double parallel_sine = 1e-12;
constexpr std::size_t longest_shown = 60;

// A point as a person would write it: without brackets, and cut to its construction's name where it is long.
std::string shown(std::string_view text) {
    std::string plain;
    if (text.size() > longest_shown) return std::string(text.substr(0, text.find('('))) + "(...)";
    std::ranges::copy_if(text, std::back_inserter(plain), [](char c) { return c != '[' && c != ']'; });
    return plain;
}

// Position of the "]" that closes the "[" at `open`, or npos.
std::size_t closing_bracket(std::string_view text, std::size_t open) {
    for (std::size_t at = open + 1; at < text.size(); at += char_length(text.substr(at)))
        if (text[at] == ']') return at;
    return std::string_view::npos;
}

std::string_view construction_of(const tagKPOINT& landmark) {
    return {landmark.Construction, strnlen(landmark.Construction, sizeof landmark.Construction)};
}

}  // namespace

std::vector<std::string_view> PointReader::construction_names() {
    std::vector<std::string_view> names;
    for (const Prefix& prefix : prefixes) names.push_back(prefix.text.substr(0, prefix.text.size() - 1));
    return names;
}

std::optional<PointReader::Point> PointReader::first(std::string_view text) {
    std::size_t end = 0;
    const Frame frame = run(text, -1, Shape::first, 1, &end);
    if (!frame.complete) return std::nullopt;
    return Point{frame.points[0], end};
}

PointReader::Arguments PointReader::arguments(std::string_view text, int count) {
    Arguments result{};
    const std::size_t first = std::min(text.find_first_not_of(" \t"), text.size());
    const std::size_t begin = text.substr(first).starts_with('(') ? first + 1 : 0;
    const Frame frame = run(text.substr(begin), -1, Shape::arguments, count, &result.end);
    result.end += begin;
    result.complete = frame.complete;
    result.points = frame.points;
    result.texts = frame.texts;
    return result;
}

Vec2 PointReader::landmark(std::string_view name) {
    const Landmarks::Found found = landmarks_.find(name);
    if (found.source == Landmarks::Source::virtually) return virtual_landmark(found.slot).value_or(Vec2());
    return landmarks_.position(found);
}

std::optional<Vec2> PointReader::virtual_landmark(int index) {
    if (landmarks_.virtuals().refer(-1, index)) {
        note_landmark(index);
    } else {
        landmarks_.virtuals().begin(index);
        run(construction_of(landmarks_.virtual_landmark(index)), index, Shape::first, 1, nullptr);
    }
    if (!landmarks_.virtuals().resolved(index)) return std::nullopt;
    return landmarks_.virtuals().refer(-1, index);
}

std::optional<Vec2> PointReader::construction(std::string_view text) {
    const auto point = first(text);
    return point ? std::optional(point->position) : std::nullopt;
}

// Walks the text with one frame for each construction that is open, and one source for each virtual landmark that is
// being resolved on the way.
PointReader::Frame PointReader::run(std::string_view text, int landmark, Shape shape, int needed, std::size_t* end) {
    frames_.clear();
    sources_.clear();
    frames_.push_back({shape, needed});
    sources_.push_back({text, 0, landmark, 0, {}, landmark >= 0 ? exchange_degeneracy({}) : std::nullopt});
    for (;;) {
        if (frames_.back().read < frames_.back().needed) {
            find_argument();
            continue;
        }
        Source& source = sources_.back();
        if (frames_.size() - 1 > source.first_frame) {
            const Vec2 point = constructed(frames_.back(), number_and_close());
            const char* const begin = frames_.back().begin;
            frames_.pop_back();
            deliver(point, {begin, sources_.back().text.data() + sources_.back().at});
            continue;
        }
        if (frames_.back().shape == Shape::arguments) number_and_close();
        const Frame finished = frames_.back();
        const int resolved = source.landmark;
        if (end) *end = source.at;
        if (resolved >= 0) finish_landmark(source, finished);
        if (sources_.size() == 1) return finished;
        const std::string_view called = source.called;
        frames_.pop_back();
        sources_.pop_back();
        deliver(landmarks_.virtuals().refer(sources_.back().landmark, resolved).value_or(Vec2()), called);
    }
}

void PointReader::finish_landmark(Source& source, const Frame& finished) {
    landmarks_.virtuals().finish(source.landmark, finished.points[0], finished.complete);
    const auto own = exchange_degeneracy(std::move(source.outer));
    if (own) degenerate_landmarks_[source.landmark] = *own;
    note(own);
}

void PointReader::note_landmark(int index) {
    if (const auto own = degenerate_landmarks_.find(index); own != degenerate_landmarks_.end()) note(own->second);
}

void PointReader::deliver(Vec2 point, std::string_view text) {
    Frame& frame = frames_.back();
    frame.texts[frame.read] = text;
    frame.points[frame.read++] = point;
}

// Moves to the next argument of the innermost construction: reads a landmark, opens a nested construction, or finds
// that the rest is missing, and then stays where it was, since a number may follow.
void PointReader::find_argument() {
    Frame& frame = frames_.back();
    Source& source = sources_.back();
    int open_brackets = frame.open_brackets;
    for (std::size_t at = source.at; at < source.text.size(); at += char_length(source.text.substr(at))) {
        const std::string_view rest = source.text.substr(at);
        if (rest[0] == '[') {
            source.at = at;
            frame.open_brackets = open_brackets;
            return read_name();
        }
        for (const Prefix& prefix : prefixes) {
            if (rest[0] != prefix.text[0] || !rest.starts_with(prefix.text)) continue;
            source.at = at + prefix.text.size();
            frame.open_brackets = open_brackets;
            frames_.push_back({prefix.shape, prefix.points, 0, 0, true, rest.data()});
            return;
        }
        if (frame.shape == Shape::first) continue;
        if (rest[0] == '(') ++open_brackets;
        if (rest[0] == ')' && open_brackets-- == 0) break;
    }
    frame.complete = false;
    frame.read = frame.needed;
}

void PointReader::read_name() {
    Source& source = sources_.back();
    const std::size_t begin = source.at + 1;
    const std::size_t close = closing_bracket(source.text, source.at);
    const std::string_view name = source.text.substr(begin, std::min(close - begin, longest_name));
    source.at = close == std::string_view::npos ? source.text.size() : close + 1;
    const std::string_view called = source.text.substr(begin - 1, source.at - (begin - 1));
    const Landmarks::Found found = landmarks_.find(name);
    if (found.source != Landmarks::Source::virtually) return deliver(landmarks_.position(found), called);
    if (const auto known = landmarks_.virtuals().refer(source.landmark, found.slot)) {
        note_landmark(found.slot);
        return deliver(*known, called);
    }
    landmarks_.virtuals().begin(found.slot);
    const std::size_t first_frame = frames_.size();
    frames_.push_back({Shape::first, 1});
    sources_.push_back({construction_of(landmarks_.virtual_landmark(found.slot)), 0, found.slot, first_frame, called,
                        exchange_degeneracy({})});
}

// Moves behind the innermost construction's own ")". Returns what stands between the last "," on the way and it. A
// construction that is never closed takes the rest of the text, a function only the arguments that it has read.
std::string_view PointReader::number_and_close() {
    Source& source = sources_.back();
    int open_brackets = frames_.back().open_brackets;
    std::size_t number = std::string_view::npos, at = source.at;
    for (; at < source.text.size(); at += char_length(source.text.substr(at))) {
        const char c = source.text[at];
        if (c == ',') number = at + 1;
        if (c == '(') ++open_brackets;
        if (c == ')' && open_brackets-- == 0) break;
        if (c == '[') at = std::min(closing_bracket(source.text, at), source.text.size() - 1);
    }
    at = std::min(at, source.text.size());
    if (at < source.text.size())
        source.at = at + 1;
    else if (frames_.back().shape != Shape::arguments)
        source.at = at;
    return number == std::string_view::npos ? std::string_view() : source.text.substr(number, at - number);
}

void PointReader::expect_apart(Vec2 p, Vec2 q, std::string_view a, std::string_view b) {
    const Vec2 way = q - p;
    if (degeneracy_ || std::abs(way.x) > one_place_px || std::abs(way.y) > one_place_px || a == b) return;
    degeneracy_ = {false, shown(a), shown(b)};
}

void PointReader::expect_crossing(const Frame& frame) {
    const auto& p = frame.points;
    const auto& texts = frame.texts;
    const Vec2 ab = p[1] - p[0], cd = p[3] - p[2];
    const double lengths = std::sqrt(ab.x * ab.x + ab.y * ab.y) * std::sqrt(cd.x * cd.x + cd.y * cd.y);
    if (degeneracy_ || std::abs(ab.x * cd.y - ab.y * cd.x) > parallel_sine * lengths) return;
    degeneracy_ = {true, shown(texts[0]) + "-" + shown(texts[1]), shown(texts[2]) + "-" + shown(texts[3])};
}

void PointReader::check_constructed(const Frame& frame, std::string_view number) {
    if (!frame.complete || degeneracy_) return;
    const auto apart = [&](std::size_t i, std::size_t j) {
        expect_apart(frame.points[i], frame.points[j], frame.texts[i], frame.texts[j]);
    };
    switch (frame.shape) {
        case Shape::foot: return apart(1, 2);
        case Shape::crossing: apart(0, 1), apart(2, 3); return expect_crossing(frame);
        case Shape::bisector: apart(0, 1); return apart(0, 2);
        case Shape::extension:
            if (read_double(number.substr(0, longest_distance)) != 0) apart(0, 1);
            return;
        default: return;
    }
}

Vec2 PointReader::constructed(const Frame& frame, std::string_view number) {
    const auto& p = frame.points;
    check_constructed(frame, number);
    switch (frame.shape) {
        case Shape::middle: return midpoint(p[0], p[1]);
        case Shape::foot: return foot_of_perpendicular(p[0], {p[1], p[2]});
        case Shape::crossing: return intersection_or_empty({p[0], p[1]}, {p[2], p[3]});
        case Shape::bisector: {
            // Kept: the arms are cut at 100 pixels, whatever the scale, and n counts pixels.
            const double pixel = landmarks_.steps(), arm_length = 100.0 * pixel;
            const Vec2 arm = translated_along(p[0], p[1], p[0], arm_length, 0.0, 1.0);
            const Vec2 other_arm = translated_along(p[0], p[2], p[0], arm_length, 0.0, 1.0);
            return translated_along(p[0], midpoint(arm, other_arm), p[0], read_int(number) * pixel, 0.0, 1.0);
        }
        case Shape::extension:
            return translated_along(p[0], p[1], p[1], read_double(number.substr(0, longest_distance)), 0.0,
                                    landmarks_.scale());
        case Shape::effective_a: return effective_a();
        default: return {};
    }
}

// U1C moved at right angles to N-A by 0.4 mm for each degree that the upper incisor leans away from 12 degrees to N-A.
Vec2 PointReader::effective_a() {
    if (!is_lateral(landmarks_.kind())) return {};
    const Vec2 n = landmarks_.fixed("N"), a = landmarks_.fixed("A");
    const Vec2 root = landmarks_.fixed("U1R"), edge = landmarks_.fixed("U1");
    expect_apart(n, a, "N", "A");
    expect_apart(root, edge, "U1R", "U1");
    const double lean = signed_angle({n, a}, {root, edge});
    return translated_along(n, a, landmarks_.fixed("U1C"), (lean - 12.0) * -1.0 * 0.4, -90.0, landmarks_.scale());
}

}  // namespace tool
