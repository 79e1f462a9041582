// Point expressions: landmarks in square brackets and constructions over them. In the order in which they are tried:
//
//   mid(P,P)             the middle of two points
//   vertical(P,P,P)      foot of the perpendicular from the first on the line through the other two
//   cross(P,P,P,P)       where the lines 1-2 and 3-4 meet; (0, 0) when parallel
//   AngleBisector(P,P,P,n)  n pixels from the first point, the vertex, along the bisector of the angle to the others
//   extension(P,P,d)     d mm beyond the second point on the line from the first
//   EffectiveA()         effective point A of a lateral film: U1C moved for the upper incisor's inclination
//   [name]               a landmark
//
// 1. Arguments are point expressions; text between them is passed over, so blanks and commas do not matter.
// 2. An argument is looked for up to the construction's own ")"; a missing one is (0, 0), a missing number 0.
// 3. An unknown landmark is (0, 0), and not an error.
// 4. Characters are read double-byte aware: a trail byte is never a bracket.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/arithmetic.h"
#include "analysis/landmarks.h"

namespace tool {

// Why a line, an angle or a crossing over placed landmarks is undefined. The engine computes with it all the same; who
// shows the value should not.
struct Degeneracy {
    bool parallel = false;      // two lines that should cross; else two points that should lie apart
    std::string first, second;  // as the formula has them: "U1", "mid(UMo,LMo)"; lines as "PNS-ANS"
};

// Reads point expressions over one set of landmarks, in an arithmetic (arithmetic.h). Nesting of any depth takes heap,
// not stack.
template <class Arithmetic>
class PointReader {
 public:
    using Point = typename Arithmetic::Point;

    explicit PointReader(Arithmetic& arithmetic) : arithmetic_(arithmetic) {}

    struct First {
        Point point;
        std::size_t end;  // bytes of the text that were read
    };
    // The first point expression in the text.
    std::optional<First> first(std::string_view text);

    struct Arguments {
        bool complete;  // all of them were there
        std::array<Point, 4> points;
        std::array<std::string_view, 4> texts;  // as written, landmarks in their brackets
        std::size_t end;                        // bytes read, the own ")" included
    };
    // The `count` (at most 4) arguments of a function; its "(" comes first, behind blanks if any.
    Arguments arguments(std::string_view text, int count);

    Point landmark(std::string_view name);
    // A virtual landmark by index, or a construction that is in no list; nothing when it fails.
    std::optional<Point> virtual_landmark(int index);
    std::optional<Point> construction(std::string_view text);

    Arithmetic& arithmetic() { return arithmetic_; }

    // The first that was met since it was last exchanged, those of virtual landmarks included wherever they were
    // resolved.
    const std::optional<Degeneracy>& degeneracy() const { return degeneracy_; }
    std::optional<Degeneracy> exchange_degeneracy(std::optional<Degeneracy> other) {
        return std::exchange(degeneracy_, std::move(other));
    }
    void note(const std::optional<Degeneracy>& met) {
        if (!degeneracy_) degeneracy_ = met;
    }
    // Notes one when the two points, as written in `a` and `b`, lie at one place.
    void expect_apart(Point p, Point q, std::string_view a, std::string_view b);

 private:
    // A construction whose arguments are being read, or a text's whole.
    struct Frame {
        enum class Shape { first, arguments, construction } shape;
        int needed;
        Construction construction{};
        int read = 0;
        int open_brackets = 0;  // "(" met between arguments
        bool complete = true;
        const char* begin = nullptr;  // of the construction's text
        std::array<Point, 4> points{};
        std::array<std::string_view, 4> texts{};
    };
    // A text being read: the caller's or a virtual landmark's construction. Its frames begin at first_frame.
    struct Source {
        std::string_view text;
        std::size_t at;
        int landmark;  // -1 when the text is nobody's
        std::size_t first_frame;
        std::string_view called = {};          // the landmark as the text further out has it
        std::optional<Degeneracy> outer = {};  // met before, further out
    };

    Frame run(std::string_view text, int landmark, Frame outermost, std::size_t* end);
    void find_argument();
    void read_name();
    std::string_view number_and_close();
    Point constructed(const Frame& frame, std::string_view number);
    Point effective_a();
    void check_constructed(const Frame& frame, double number);
    void expect_crossing(const Frame& frame);
    void deliver(Point point, std::string_view text);
    void finish_landmark(Source& source, const Frame& finished);
    void note_landmark(int index);

    Arithmetic& arithmetic_;
    std::vector<Frame> frames_;
    std::vector<Source> sources_;
    std::optional<Degeneracy> degeneracy_;
    std::map<int, Degeneracy> degenerate_landmarks_;  // virtual ones, by index
};

}  // namespace tool
