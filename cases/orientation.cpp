#include "cases/orientation.h"

#include <LandmarkTable.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace cephtool {
namespace {

using Vector = std::complex<double>;  // x to the right, y down
using Face = std::unordered_map<std::string_view, Vector>;

constexpr std::size_t fewest_landmarks = 3;
// On 416 readings of 19 landmarks, and on a hundred random choices of 3 to 8 of each, these let through no wrong answer
// but on two readings whose landmarks are mistaken for each other.
constexpr double least_agreement = 0.75;   // 1: all lines tell one angle
constexpr double least_difference = 0.25;  // of both agreements
constexpr double upright_deg = 60;         // to both sides

// Of an average face, in mm; only landmarks that lie far from most others for their spread.
const Face& average_face(Kind kind) {
    static const Face lateral{
        {"S", {85, 85}},        {"N", {156, 76}},    {"Or", {144, 106}},  {"Po", {61, 106}},   {"Ba", {61, 123}},
        {"Ar", {70, 116}},      {"Cd", {72, 107}},   {"PT", {107, 103}},  {"Ptm", {108, 124}}, {"PNS", {107, 127}},
        {"ANS", {160, 128}},    {"A", {156, 132}},   {"B", {152, 172}},   {"Pog", {153, 185}}, {"Gn", {150, 191}},
        {"Me", {146, 193}},     {"Go", {79, 161}},   {"U1", {160, 156}},  {"L1", {158, 153}},  {"UMo", {134, 152}},
        {"LMo", {137, 151}},    {"Gl", {167, 60}},   {"N(s)", {163, 76}}, {"TN", {188, 122}},  {"SN", {171, 132}},
        {"Pog(s)", {165, 184}}, {"C3ua", {68, 172}}, {"C3up", {54, 172}}, {"C3la", {69, 186}}, {"C3lp", {55, 186}},
        {"C4ua", {69, 191}},    {"C4up", {55, 190}}, {"C4la", {70, 205}}, {"C4lp", {56, 204}},
    };
    static const Face frontal{
        {"U3R", {82, 183}},  {"U3L", {118, 183}}, {"U6R", {70, 175}},  {"U6L", {129, 176}}, {"AGR", {56, 197}},
        {"AGL", {145, 196}}, {"L3R", {87, 181}},  {"L3L", {113, 181}}, {"L6R", {72, 181}},  {"L6L", {129, 181}},
        {"JR", {66, 157}},   {"JL", {135, 157}},  {"Me", {101, 217}},  {"NCR", {85, 146}},  {"NCL", {115, 147}},
        {"ZR", {54, 100}},   {"ZL", {146, 100}},  {"ZAR", {34, 134}},  {"ZAL", {166, 134}}, {"ANS", {100, 154}},
        {"A", {100, 170}},   {"B", {100, 190}},   {"6R", {73, 178}},   {"6L", {127, 178}},  {"CG", {100, 103}},
    };
    static const Face none;
    return kind == Kind::lateral ? lateral : kind == Kind::frontal ? frontal : none;
}

// The average face by the slots of the kind's table, with sums over all lines between two of its landmarks.
struct Average {
    explicit Average(Kind kind) : places(static_cast<std::size_t>(LandmarkTable::Count(static_cast<int>(kind)))) {
        for (const auto& [name, place] : average_face(kind)) {
            const int slot = LandmarkTable::Find(static_cast<int>(kind), std::string(name).c_str());
            if (slot >= 0) places[static_cast<std::size_t>(slot)] = {{place, 0}};
        }
        for (auto& here : places) {
            if (!here) continue;
            ++count;
            middle += here->at;
            squares += std::norm(here->at);
            for (const auto& there : places) {
                if (!there || there->at == here->at) continue;
                const Vector line = there->at - here->at;
                lengths += std::abs(line) / 2;
                mirrored += line * line / std::abs(line) / 2.0;
                here->closeness += 1 / std::abs(line);
            }
        }
        middle /= static_cast<double>(std::max<std::size_t>(count, 1));
        squares -= static_cast<double>(count) * std::norm(middle);
    }
    struct Place {
        Vector at;
        double closeness;  // sum of 1 / length of the lines from here
    };
    std::vector<std::optional<Place>> places;
    std::size_t count = 0;
    Vector middle;
    double squares = 0;  // of the distances from the middle, all of them together
    double lengths = 0;
    Vector mirrored;  // sum of directions as seen from those of the mirror image, each as long as its line
};

const Average& average_of(Kind kind) {
    static const Average lateral(Kind::lateral), frontal(Kind::frontal), none(Kind::model);
    return kind == Kind::lateral ? lateral : kind == Kind::frontal ? frontal : none;
}

// Landmarks of a record that the average face has, coordinate by coordinate: all pairs of them are gone through for
// most cases.
class Points {
 public:
    void add(Position here, Vector in_average) {
        if (count_ == most) return;  // more than there are names
        x_[count_] = here.x, y_[count_] = here.y;
        average_x_[count_] = in_average.real(), average_y_[count_] = in_average.imag();
        ++count_;
    }
    std::size_t count() const { return count_; }

    // Of all lines between two points: the sum of their directions as seen from those of the average face, and from
    // those of its mirror image, each as long as the line is in the average face; and the sum of these lengths.
    struct Sums {
        Vector turned, mirrored;
        double all = 0;
    };
    Sums sums() const {
        // Sums for each point, since the compiler may not change the order of additions to do several at once.
        double same_x[most]{}, same_y[most]{}, other_x[most]{}, other_y[most]{}, lengths[most]{};
        for (std::size_t i = 1; i < count_; ++i)
            for (std::size_t j = 0; j < i; ++j) {
                const double x = x_[i] - x_[j], y = y_[i] - y_[j], square = x * x + y * y;
                const double inverse = 1 / std::sqrt(square), shorter = square > 0 ? inverse : 0.0;
                const double along = x * shorter, down = y * shorter;
                const double average_x = average_x_[i] - average_x_[j], average_y = average_y_[i] - average_y_[j];
                same_x[j] += along * average_x + down * average_y;
                same_y[j] += down * average_x - along * average_y;
                other_x[j] += along * average_x - down * average_y;
                other_y[j] += along * average_y + down * average_x;
                const double length = std::sqrt(average_x * average_x + average_y * average_y);
                lengths[j] += square > 0 ? length : 0.0;
            }
        Sums sums;
        for (std::size_t j = 0; j < count_; ++j) {
            sums.turned += Vector(same_x[j], same_y[j]);
            sums.mirrored += Vector(other_x[j], other_y[j]);
            sums.all += lengths[j];
        }
        return sums;
    }

 private:
    static constexpr std::size_t most = 64;
    double x_[most], y_[most], average_x_[most], average_y_[most];
    std::size_t count_ = 0;
};

// Whether a face with all landmarks is so near to the average one that it surely lies right, which is quicker to see
// than all lines. When landmarks lie at s (a + e) with a from the average face, where s turns and enlarges and e are
// the residuals, a line of length L turns by an angle with a cosine of at least 1 - 2 d^2 / L^2 for the difference d of
// its ends' residuals, and d^2 is at most twice the sum of their squares. Seen from the mirror image, what it adds
// moves by no more than 2 d.
bool is_plainly_right(const Case& record) {
    const Average& average = average_of(record.kind);
    if (average.count < fewest_landmarks || !record.vertebrae.empty()) return false;
    std::size_t count = 0;
    Vector middle, turn;
    const auto each = [&](auto visit) {
        for (const auto& [name, position, slot] : record.landmarks)
            if (const auto& place = average.places[static_cast<std::size_t>(slot)])
                visit(Vector(position.x, position.y), place->at - average.middle, place->closeness);
    };
    if (std::ranges::any_of(record.landmarks, [](const Landmark& landmark) { return landmark.slot < 0; })) return false;
    each([&](Vector here, Vector in_average, double) {
        ++count;
        middle += here;
        turn += here * std::conj(in_average);
    });
    if (count != average.count || turn == Vector()) return false;
    const double all = static_cast<double>(count);
    middle /= all;
    turn /= average.squares;  // the least squares' s
    double squares = 0, lost = 0;
    each([&](Vector here, Vector in_average, double closeness) {
        const double square = std::norm(here - middle - turn * in_average) / std::norm(turn);
        squares += square;
        lost += 4 * square * closeness;
    });
    constexpr double for_rounding = 0.001;
    const double turned = average.lengths - lost;
    const double mirrored = std::abs(average.mirrored) + 2 * (all - 1) * std::sqrt(all * squares);
    return turned > (least_agreement + for_rounding) * average.lengths &&
           turned - mirrored > (least_difference + for_rounding) * average.lengths;
}

}  // namespace

Orientation orientation(const Case& record) {
    if (is_plainly_right(record)) return Orientation::right;
    Points points;
    const auto& places = average_of(record.kind).places;
    for (const Landmark& landmark : record.landmarks) {
        const int slot = landmark.slot >= 0 ? landmark.slot
                                            : LandmarkTable::Find(static_cast<int>(record.kind), landmark.name.c_str());
        if (slot < 0) continue;
        if (const auto& place = places[static_cast<std::size_t>(slot)]) points.add(landmark.position, place->at);
    }
    const Face& average = average_face(record.kind);
    for (const Landmark& landmark : record.vertebrae)
        if (const auto found = average.find(landmark.name); found != average.end())
            points.add(landmark.position, found->second);
    if (points.count() < fewest_landmarks) return Orientation::unknown;
    const auto [turned, mirrored, all] = points.sums();
    if (!(all > 0)) return Orientation::unknown;
    const double as_turned = std::abs(turned), as_mirrored = std::abs(mirrored);
    if (std::max(as_turned, as_mirrored) < least_agreement * all ||
        std::abs(as_turned - as_mirrored) < least_difference * all)
        return Orientation::unknown;
    if (as_turned > as_mirrored) return Orientation::right;
    // Against the average face with its y turned round, whose own is the direction (1, 0).
    const double turn_deg = std::abs(std::arg(mirrored)) * 180 / std::acos(-1.0);
    return turn_deg <= upright_deg         ? Orientation::y_flipped
           : turn_deg >= 180 - upright_deg ? Orientation::mirrored
                                           : Orientation::reversed;
}

}  // namespace cephtool
