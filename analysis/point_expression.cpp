#include "analysis/point_expression.h"

#include <algorithm>

#include "analysis/functions.h"
#include "analysis/landmark_names.h"
#include "analysis/landmarks.h"
#include "analysis/program_writer.h"
#include "analysis/virtual_landmarks.h"
#include "platform/number_text.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr std::size_t longest_name = 99;
constexpr std::size_t longest_distance = 20;
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

}  // namespace

template <class Arithmetic>
auto PointReader<Arithmetic>::first(std::string_view text) -> std::optional<First> {
    std::size_t end = 0;
    const Frame frame = run(text, -1, {Frame::Shape::first, 1}, &end);
    if (!frame.complete) return std::nullopt;
    return First{frame.points[0], end};
}

template <class Arithmetic>
auto PointReader<Arithmetic>::arguments(std::string_view text, int count) -> Arguments {
    Arguments result{};
    const std::size_t first = std::min(text.find_first_not_of(" \t"), text.size());
    const std::size_t begin = text.substr(first).starts_with('(') ? first + 1 : 0;
    const Frame frame = run(text.substr(begin), -1, {Frame::Shape::arguments, count}, &result.end);
    result.end += begin;
    result.complete = frame.complete;
    result.points = frame.points;
    result.texts = frame.texts;
    return result;
}

template <class Arithmetic>
auto PointReader<Arithmetic>::landmark(std::string_view name) -> Point {
    const auto found = arithmetic_.find(name);
    if (found.source == Landmarks::Source::virtually) return virtual_landmark(found.slot).value_or(Point());
    return arithmetic_.position(found);
}

template <class Arithmetic>
auto PointReader<Arithmetic>::virtual_landmark(int index) -> std::optional<Point> {
    auto& virtuals = arithmetic_.virtuals();
    if (virtuals.refer(-1, index)) {
        note_landmark(index);
    } else {
        virtuals.begin(index);
        run(arithmetic_.virtual_construction(index), index, {Frame::Shape::first, 1}, nullptr);
    }
    if (!virtuals.resolved(index)) return std::nullopt;
    return virtuals.refer(-1, index);
}

template <class Arithmetic>
auto PointReader<Arithmetic>::construction(std::string_view text) -> std::optional<Point> {
    const auto found = first(text);
    return found ? std::optional(found->point) : std::nullopt;
}

// Walks the text with one frame for each construction that is open, and one source for each virtual landmark that is
// being resolved on the way.
template <class Arithmetic>
auto PointReader<Arithmetic>::run(std::string_view text, int landmark, Frame outermost, std::size_t* end) -> Frame {
    frames_.clear();
    sources_.clear();
    frames_.push_back(outermost);
    sources_.push_back({text, 0, landmark, 0, {}, landmark >= 0 ? exchange_degeneracy({}) : std::nullopt});
    for (;;) {
        if (frames_.back().read < frames_.back().needed) {
            find_argument();
            continue;
        }
        Source& source = sources_.back();
        if (frames_.size() - 1 > source.first_frame) {
            const Point point = constructed(frames_.back(), number_and_close());
            const char* const begin = frames_.back().begin;
            frames_.pop_back();
            const char* const end_here = sources_.back().text.data() + sources_.back().at;
            deliver(point, {begin, static_cast<std::size_t>(end_here - begin)});
            continue;
        }
        if (frames_.back().shape == Frame::Shape::arguments) number_and_close();
        const Frame finished = frames_.back();
        const int resolved = source.landmark;
        if (end) *end = source.at;
        if (resolved >= 0) finish_landmark(source, finished);
        if (sources_.size() == 1) return finished;
        const std::string_view called = source.called;
        frames_.pop_back();
        sources_.pop_back();
        deliver(arithmetic_.virtuals().refer(sources_.back().landmark, resolved).value_or(Point()), called);
    }
}

template <class Arithmetic>
void PointReader<Arithmetic>::finish_landmark(Source& source, const Frame& finished) {
    arithmetic_.virtuals().finish(source.landmark, finished.points[0], finished.complete);
    const auto own = exchange_degeneracy(std::move(source.outer));
    if (own) degenerate_landmarks_[source.landmark] = *own;
    note(own);
}

template <class Arithmetic>
void PointReader<Arithmetic>::note_landmark(int index) {
    if (const auto own = degenerate_landmarks_.find(index); own != degenerate_landmarks_.end()) note(own->second);
}

template <class Arithmetic>
void PointReader<Arithmetic>::deliver(Point point, std::string_view text) {
    Frame& frame = frames_.back();
    frame.texts[frame.read] = text;
    frame.points[frame.read++] = point;
}

// Moves to the next argument of the innermost construction: reads a landmark, opens a nested construction, or finds
// that the rest is missing, and then stays where it was, since a number may follow.
template <class Arithmetic>
void PointReader<Arithmetic>::find_argument() {
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
        for (const PointFunction& function : point_functions) {
            if (rest[0] != function.name[0] || !rest.starts_with(function.name)) continue;
            if (!rest.substr(function.name.size()).starts_with('(')) continue;
            source.at = at + function.name.size() + 1;
            frame.open_brackets = open_brackets;
            frames_.push_back(
                {Frame::Shape::construction, function.points, function.construction, 0, 0, true, rest.data()});
            return;
        }
        if (frame.shape == Frame::Shape::first) continue;
        if (rest[0] == '(') ++open_brackets;
        if (rest[0] == ')' && open_brackets-- == 0) break;
    }
    frame.complete = false;
    frame.read = frame.needed;
}

template <class Arithmetic>
void PointReader<Arithmetic>::read_name() {
    Source& source = sources_.back();
    const std::size_t begin = source.at + 1;
    const std::size_t close = closing_bracket(source.text, source.at);
    const std::string_view name = source.text.substr(begin, std::min(close - begin, longest_name));
    source.at = close == std::string_view::npos ? source.text.size() : close + 1;
    const std::string_view called = source.text.substr(begin - 1, source.at - (begin - 1));
    const auto found = arithmetic_.find(name);
    if (found.source != Landmarks::Source::virtually) return deliver(arithmetic_.position(found), called);
    if (const auto known = arithmetic_.virtuals().refer(source.landmark, found.slot)) {
        note_landmark(found.slot);
        return deliver(*known, called);
    }
    arithmetic_.virtuals().begin(found.slot);
    const std::size_t first_frame = frames_.size();
    frames_.push_back({Frame::Shape::first, 1});
    sources_.push_back(
        {arithmetic_.virtual_construction(found.slot), 0, found.slot, first_frame, called, exchange_degeneracy({})});
}

// Moves behind the innermost construction's own ")". Returns what stands between the last "," on the way and it. A
// construction that is never closed takes the rest of the text, a function only the arguments that it has read.
template <class Arithmetic>
std::string_view PointReader<Arithmetic>::number_and_close() {
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
    else if (frames_.back().shape != Frame::Shape::arguments)
        source.at = at;
    return number == std::string_view::npos ? std::string_view() : source.text.substr(number, at - number);
}

template <class Arithmetic>
void PointReader<Arithmetic>::expect_apart(Point p, Point q, std::string_view a, std::string_view b) {
    if (degeneracy_ || !arithmetic_.at_one_place(p, q) || a == b) return;
    degeneracy_ = {false, shown(a), shown(b)};
}

template <class Arithmetic>
void PointReader<Arithmetic>::expect_crossing(const Frame& frame) {
    const auto& texts = frame.texts;
    if (degeneracy_ || !arithmetic_.parallel(frame.points)) return;
    degeneracy_ = {true, shown(texts[0]) + "-" + shown(texts[1]), shown(texts[2]) + "-" + shown(texts[3])};
}

template <class Arithmetic>
void PointReader<Arithmetic>::check_constructed(const Frame& frame, double number) {
    if (!frame.complete || degeneracy_) return;
    const auto apart = [&](std::size_t i, std::size_t j) {
        expect_apart(frame.points[i], frame.points[j], frame.texts[i], frame.texts[j]);
    };
    switch (frame.construction) {
        case Construction::foot: return apart(1, 2);
        case Construction::crossing: apart(0, 1), apart(2, 3); return expect_crossing(frame);
        case Construction::bisector: apart(0, 1); return apart(0, 2);
        case Construction::extension:
            if (number != 0) apart(0, 1);
            return;
        default: return;
    }
}

template <class Arithmetic>
auto PointReader<Arithmetic>::constructed(const Frame& frame, std::string_view text) -> Point {
    if (frame.construction == Construction::effective_a) return effective_a();
    double number = 0.0;
    if (frame.construction == Construction::bisector) number = read_int(text);
    if (frame.construction == Construction::extension) number = read_double(text.substr(0, longest_distance));
    check_constructed(frame, number);
    return arithmetic_.constructed(frame.construction, frame.points, number);
}

template <class Arithmetic>
auto PointReader<Arithmetic>::effective_a() -> Point {
    if (!is_lateral(arithmetic_.kind())) return {};
    const auto fixed = [&](std::string_view name) { return arithmetic_.position(arithmetic_.find(name)); };
    const Point n = fixed("N"), a = fixed("A"), root = fixed("U1R"), edge = fixed("U1");
    expect_apart(n, a, "N", "A");
    expect_apart(root, edge, "U1R", "U1");
    return arithmetic_.effective_a(n, a, {root, edge}, fixed("U1C"));
}

template class PointReader<Landmarks>;
template class PointReader<ProgramWriter>;

}  // namespace tool
